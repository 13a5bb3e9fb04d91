// Duplicate removal in place and through a scratch file against std::unique,
// and the scratch file's life: made under a fresh name, gone afterwards.
#include "arrays/dedup_engine.h"
#include "arrays/scratch_file.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <vector>

using namespace brindle::arrays;

namespace {

class DedupEngine : public brindle::test::TempDirTest {
  protected:
    // Sorted pairs of Longs with many repeats, as units of 8 bytes; enough
    // of them that the file passes through several buffered pieces.
    static std::vector<std::pair<int32_t, int32_t>> sample() {
        std::mt19937 gen(9);
        std::vector<std::pair<int32_t, int32_t>> v(20000);
        for (auto &p : v)
            p = {static_cast<int32_t>(gen() % 50), static_cast<int32_t>(gen() % 200)};
        std::sort(v.begin(), v.end());
        return v;
    }
    static size_t file_count() {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator("."), {}));
    }
};

auto *bytes(auto &v) { return reinterpret_cast<unsigned char *>(v.data()); }

} // namespace

TEST_F(DedupEngine, InPlaceAndThroughFileLikeStdUnique) {
    const auto original = sample();
    auto expect = original;
    expect.erase(std::unique(expect.begin(), expect.end()), expect.end());
    ASSERT_GT(expect.size() * 8, size_t{32768}); // more than one piece of the file

    auto in_place = original;
    ASSERT_EQ(dedup_in_place(bytes(in_place), in_place.size(), 8), expect.size());
    in_place.resize(expect.size());
    EXPECT_EQ(in_place, expect);

    auto through = original;
    int32_t error = 0;
    {
        ScratchFile scratch("");
        ASSERT_TRUE(scratch.created());
        EXPECT_EQ(file_count(), 1u);
        ASSERT_EQ(dedup_through_file(bytes(through), through.size(), 8, scratch.file(), &error), expect.size());
    }
    EXPECT_EQ(error, 0);
    through.resize(expect.size());
    EXPECT_EQ(through, expect);
    EXPECT_EQ(file_count(), 0u); // removed on the way out
}

TEST_F(DedupEngine, EdgeRuns) {
    std::vector<int16_t> same(7, 4);
    EXPECT_EQ(dedup_in_place(bytes(same), same.size(), 2), 1u);
    std::vector<int16_t> none;
    EXPECT_EQ(dedup_in_place(bytes(none), 0, 2), 0u);
    std::vector<int16_t> distinct = {1, 2, 3};
    EXPECT_EQ(dedup_in_place(bytes(distinct), 3, 2), 3u);
    EXPECT_EQ(distinct, (std::vector<int16_t>{1, 2, 3}));
}

TEST_F(DedupEngine, ScratchFileNeverTakesAnExistingName) {
    write_file("given.tmp", "old");
    {
        ScratchFile named("given.tmp"); // a name the caller gives is replaced
        ASSERT_TRUE(named.created());
        ScratchFile fresh("");
        ASSERT_TRUE(fresh.created());
        EXPECT_EQ(file_count(), 2u);
    }
    EXPECT_EQ(file_count(), 0u);
    ScratchFile bad("no-such-dir/x.tmp");
    EXPECT_FALSE(bad.created());
}
