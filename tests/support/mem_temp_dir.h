// A scratch directory like TempDirTest's, made on a memory file system
// (/dev/shm) when there is one, for tests that create thousands of files:
// on a journalled disk each creation costs a millisecond or more.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace brindle::test {

class MemTempDirTest : public ::testing::Test {
  protected:
    // Test programs of several worktrees may run at once: each process gets
    // its own directories.
    static std::string process_tag() {
        static const std::string tag = std::to_string(std::random_device{}());
        return tag;
    }
    void SetUp() override {
        std::error_code e;
        const std::filesystem::path shm = "/dev/shm";
        const auto base = std::filesystem::is_directory(shm, e) ? shm : std::filesystem::temp_directory_path();
        const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = base / (std::string("brindle-mem-") + info->test_suite_name() + "-" + info->name() + "-" + process_tag());
        std::filesystem::remove_all(dir_, e);
        std::filesystem::create_directories(dir_);
        old_ = std::filesystem::current_path();
        std::filesystem::current_path(dir_);
    }
    void TearDown() override {
        std::filesystem::current_path(old_);
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }

    std::filesystem::path old_, dir_;
};

} // namespace brindle::test
