// The iterative tree walk behind the recursive searches and totals. Links
// (listed, never walked into) are checked through the exports.
#include "files/tree_walk.h"

#include "support/mem_temp_dir.h"
#include "support/temp_dir.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

using namespace brindle::files;
using brindle::platform::DirEntry;
using brindle::platform::EntryDetail;
using brindle::platform::kAttrDirectory;
namespace fs = std::filesystem;

namespace {

void touch(const std::string &name) {
    std::FILE *f = std::fopen(name.c_str(), "wb");
    ASSERT_NE(f, nullptr) << name;
    std::fclose(f);
}

// The entries a walk reports, in order; an entry named `stop` ends the walk
// after it is seen, a directory named `skip` is not entered.
std::vector<std::string> walk(std::string_view root, bool recurse, std::vector<std::string> *entered = nullptr,
                              std::string_view stop = "", std::string_view skip = "") {
    std::vector<std::string> seen;
    walk_tree(
        root, EntryDetail::Kind, recurse,
        [&](const std::string &dir, const DirEntry &e) {
            seen.push_back(dir + e.name);
            return e.name != stop;
        },
        [&](const std::string &dir, const DirEntry &e) {
            if (entered != nullptr)
                entered->push_back(dir + e.name);
            return e.name != skip;
        },
        [] { return true; });
    return seen;
}

class Walk : public brindle::test::TempDirTest {};

} // namespace

TEST_F(Walk, EntriesFirstThenSubdirectoriesDepthFirst) {
    fs::create_directories("r/a/x");
    fs::create_directories("r/b");
    fs::create_directories("r/.git/obj");
    for (const char *f : {"r/f1", "r/a/f2", "r/a/x/f3", "r/b/f4", "r/.hidden"})
        touch(f);
    std::vector<std::string> entered;
    EXPECT_EQ(walk("r", true, &entered),
              (std::vector<std::string>{"r\\a", "r\\b", "r\\f1", "r\\a\\f2", "r\\a\\x", "r\\a\\x\\f3", "r\\b\\f4"}));
    EXPECT_EQ(entered, (std::vector<std::string>{"r\\a", "r\\a\\x", "r\\b"}));
    // Without recursion only the root's own entries; a root ending in a
    // backslash gets no second one.
    EXPECT_EQ(walk("r\\", false), (std::vector<std::string>{"r\\a", "r\\b", "r\\f1"}));
    // Refusing to enter skips that subtree only; a false entry stops all.
    EXPECT_EQ(walk("r", true, nullptr, "", "a"), (std::vector<std::string>{"r\\a", "r\\b", "r\\f1", "r\\b\\f4"}));
    EXPECT_EQ(walk("r", true, nullptr, "f2", "b"), (std::vector<std::string>{"r\\a", "r\\b", "r\\f1", "r\\a\\f2"}));
    EXPECT_TRUE(walk("missing", true).empty());
}

// 100,000 files in memory: on a journalled disk making them takes minutes.
class BigWalk : public brindle::test::MemTempDirTest {};

TEST_F(BigWalk, HundredThousandFilesAndADeepChain) {
    // 100 directories of 1,000 files each, and a chain 400 levels deep.
    for (int d = 0; d < 100; ++d) {
        const std::string dir = "big/d" + std::to_string(d);
        fs::create_directories(dir);
        for (int f = 0; f < 1000; ++f)
            touch(dir + "/f" + std::to_string(f));
    }
    std::string deep = "big/chain";
    fs::create_directory(deep);
    for (int i = 0; i < 400; ++i)
        fs::create_directory(deep += "/c");
    touch(deep + "/leaf");

    size_t files = 0, dirs = 0, max_path = 0;
    walk_tree("big", EntryDetail::Size, true, [&](const std::string &dir, const DirEntry &e) {
        (e.attributes & kAttrDirectory ? dirs : files) += 1;
        max_path = std::max(max_path, dir.size() + e.name.size());
        return true;
    });
    EXPECT_EQ(files, 100001u);
    EXPECT_EQ(dirs, 100u + 1u + 400u);
    EXPECT_EQ(max_path, std::string("big\\chain").size() + 400 * 2 + 5) << "the leaf at the bottom was reached";
}
