// The listing writer: every line arrives, in order, across block boundaries.
#include "files/listing_writer.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <string>

using brindle::files::ListingWriter;
namespace platform = brindle::platform;

class ListingWriterEngine : public brindle::test::TempDirTest {};

TEST_F(ListingWriterEngine, LinesAcrossBlocks) {
    std::string expect;
    {
        ListingWriter listing(platform::File::open("list.txt", platform::OpenMode::Create));
        for (int i = 0; i < 5000; ++i) { // about 80 KiB: several blocks
            const std::string dir = i % 2 ? "sub\\" : "";
            const std::string name = "file" + std::to_string(i) + ".dat";
            ASSERT_TRUE(listing.add(dir, name));
            expect += dir + name + "\r\n";
        }
        EXPECT_TRUE(listing.finish());
    }
    EXPECT_EQ(read_file("list.txt"), expect);
}

TEST_F(ListingWriterEngine, EmptyListingIsAnEmptyFile) {
    ListingWriter listing(platform::File::open("empty.txt", platform::OpenMode::Create));
    EXPECT_TRUE(listing.finish());
    EXPECT_TRUE(std::filesystem::exists("empty.txt"));
    EXPECT_EQ(read_file("empty.txt"), "");
}

TEST_F(ListingWriterEngine, FailedWriteIsReported) {
    // A handle that is not open cannot be written: the first block fails.
    ListingWriter listing{platform::File()};
    bool ok = true;
    for (int i = 0; i < 5000 && ok; ++i)
        ok = listing.add("", "a-rather-long-file-name-for-the-listing.txt");
    EXPECT_FALSE(ok);
    EXPECT_FALSE(listing.finish());
}
