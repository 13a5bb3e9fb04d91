// The committed fuzz inputs (tests/data/fuzz/<target>/: seeds, and every
// input that once found a fault) replayed through the same target bodies
// the fuzzers run (fuzz/*_fuzz.cpp): each input must pass its target's
// checks, here and under the sanitizers, on every platform the tests run.
#include "fuzz_target.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path kCorpora = fs::path(BRINDLE_TEST_DATA) / "fuzz";

std::vector<unsigned char> contents(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    return std::vector<unsigned char>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST(FuzzReplay, EveryCorpusBelongsToATargetAndEveryTargetHasInputs) {
    const auto &targets = brindle::fuzz::targets();
    ASSERT_GE(targets.size(), 12u);
    std::set<std::string> with_inputs;
    for (const auto &dir : fs::directory_iterator(kCorpora)) {
        const std::string name = dir.path().filename().string();
        EXPECT_TRUE(targets.count(name) == 1) << "tests/data/fuzz/" << name << " names no fuzz target";
        if (dir.is_directory() && !fs::is_empty(dir.path()))
            with_inputs.insert(name);
    }
    for (const auto &[name, entry] : targets)
        EXPECT_TRUE(with_inputs.count(name) == 1) << "no committed input for the fuzz target " << name;
}

TEST(FuzzReplay, CommittedInputsPassTheirTargetsChecks) {
    size_t replayed = 0;
    for (const auto &[name, entry] : brindle::fuzz::targets()) {
        const fs::path dir = kCorpora / name;
        if (!fs::is_directory(dir))
            continue;
        for (const auto &file : fs::directory_iterator(dir)) {
            const std::vector<unsigned char> input = contents(file.path());
            try {
                entry(input.data(), input.size());
            } catch (const brindle::fuzz::Finding &finding) {
                ADD_FAILURE() << name << "/" << file.path().filename().string() << ": " << finding.what();
            }
            ++replayed;
        }
    }
    EXPECT_GT(replayed, 0u);
}

} // namespace
