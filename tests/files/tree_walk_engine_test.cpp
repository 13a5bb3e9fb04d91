// The iterative tree walk behind the recursive searches and totals.
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

class Walk : public brindle::test::TempDirTest {
  protected:
    static void touch(const std::string &name) {
        std::FILE *f = std::fopen(name.c_str(), "wb");
        ASSERT_NE(f, nullptr) << name;
        std::fclose(f);
    }
};

} // namespace

TEST_F(Walk, EntriesFirstThenSubdirectoriesDepthFirst) {
    fs::create_directories("r/a/x");
    fs::create_directories("r/b");
    touch("r/f1");
    touch("r/a/f2");
    touch("r/a/x/f3");
    touch("r/b/f4");
    touch("r/.hidden");
    fs::create_directories("r/.git/obj");
    std::vector<std::string> seen, entered;
    WalkTree(
        "r", EntryDetail::Kind, true,
        [&](const std::string &dir, const DirEntry &e) {
            seen.push_back(dir + e.name);
            return true;
        },
        [&](const std::string &dir, const DirEntry &e) {
            entered.push_back(dir + e.name);
            return true;
        },
        [] { return true; });
    EXPECT_EQ(seen, (std::vector<std::string>{"r\\a", "r\\b", "r\\f1", "r\\a\\f2", "r\\a\\x", "r\\a\\x\\f3",
                                              "r\\b\\f4"}));
    EXPECT_EQ(entered, (std::vector<std::string>{"r\\a", "r\\a\\x", "r\\b"}));

    // Without recursion only the root's own entries; a root ending in a
    // backslash gets no second one.
    seen.clear();
    WalkTree("r\\", EntryDetail::Kind, false, [&](const std::string &dir, const DirEntry &e) {
        seen.push_back(dir + e.name);
        return true;
    });
    EXPECT_EQ(seen, (std::vector<std::string>{"r\\a", "r\\b", "r\\f1"}));

    // Refusing to enter skips that subtree only; a false entry stops all.
    seen.clear();
    WalkTree(
        "r", EntryDetail::Kind, true,
        [&](const std::string &dir, const DirEntry &e) {
            seen.push_back(dir + e.name);
            return e.name != "f2";
        },
        [](const std::string &, const DirEntry &e) { return e.name != "b"; }, [] { return true; });
    EXPECT_EQ(seen, (std::vector<std::string>{"r\\a", "r\\b", "r\\f1", "r\\a\\f2"}));

    seen.clear();
    WalkTree("missing", EntryDetail::Kind, true, [&](const std::string &, const DirEntry &) {
        seen.push_back("x");
        return true;
    });
    EXPECT_TRUE(seen.empty());
}

TEST_F(Walk, LinksAreListedButNeverWalkedInto) {
    fs::create_directories("loop/inner");
    touch("loop/inner/file");
    std::error_code e1, e2;
    fs::create_directory_symlink("..", "loop/inner/up", e1);         // a cycle
    fs::create_directory_symlink("../../loop", "loop/inner/again", e2); // another
    if (e1 || e2)
        GTEST_SKIP() << "no symbolic links here";
    size_t files = 0, dirs = 0, visits = 0;
    WalkTree("loop", EntryDetail::Kind, true, [&](const std::string &, const DirEntry &e) {
        (e.attributes & kAttrDirectory ? dirs : files) += 1;
        return ++visits < 100; // stop a runaway walk; the counts then fail

    });
    EXPECT_EQ(files, 1u);
    EXPECT_EQ(dirs, 3u) << "inner, up and again are directories";
}

// 100,000 files in memory: on a journalled disk making them takes minutes.
class BigWalk : public brindle::test::MemTempDirTest {};

TEST_F(BigWalk, HundredThousandFilesAndADeepChain) {
    // 100 directories of 1,000 files each, and a chain 400 levels deep.
    for (int d = 0; d < 100; ++d) {
        const std::string dir = "big/d" + std::to_string(d);
        fs::create_directories(dir);
        for (int f = 0; f < 1000; ++f) {
            std::FILE *file = std::fopen((dir + "/f" + std::to_string(f)).c_str(), "wb");
            ASSERT_NE(file, nullptr);
            std::fclose(file);
        }
    }
    std::string deep = "big/chain";
    fs::create_directory(deep);
    for (int i = 0; i < 400; ++i) {
        deep += "/c";
        fs::create_directory(deep);
    }
    std::FILE *leaf = std::fopen((deep + "/leaf").c_str(), "wb");
    ASSERT_NE(leaf, nullptr);
    std::fclose(leaf);

    size_t files = 0, dirs = 0, max_path = 0;
    WalkTree("big", EntryDetail::Size, true, [&](const std::string &dir, const DirEntry &e) {
        (e.attributes & kAttrDirectory ? dirs : files) += 1;
        max_path = std::max(max_path, dir.size() + e.name.size());
        return true;
    });
    EXPECT_EQ(files, 100001u);
    EXPECT_EQ(dirs, 100u + 1u + 400u);
    EXPECT_EQ(max_path, std::string("big\\chain").size() + 400 * 2 + 5) << "the leaf at the bottom was reached";
}
