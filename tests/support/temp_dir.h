// A fresh scratch directory per test, made the current directory so tests
// use relative names; removed with everything in it afterwards.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace brindle::test {

class TempDirTest : public ::testing::Test {
  protected:
    void SetUp() override {
        old_ = std::filesystem::current_path();
        const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
        // The clock reading keeps two runs of the suite at once (two build
        // trees, say) out of each other's directories.
        dir_ = std::filesystem::temp_directory_path() /
               (std::string("brindle-") + info->test_suite_name() + "-" + info->name() + "-" +
                std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
        std::filesystem::current_path(dir_);
    }
    void TearDown() override {
        std::filesystem::current_path(old_);
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }

    // Writes a file byte for byte (binary).
    static void write_file(const std::string &name, std::string_view bytes) {
        std::ofstream out(name, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        ASSERT_TRUE(out.good()) << name;
    }
    // Reads a whole file (binary); empty when missing.
    static std::string read_file(const std::string &name) {
        std::ifstream in(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    std::filesystem::path old_, dir_;
};

} // namespace brindle::test
