// Reads the known-answer files under tests/data/vectors: '#' lines are
// comments anywhere, records are blocks of NAME=HEX lines separated by blank
// lines.
#pragma once

#include <cstdint>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace brindle::test {

using VectorRecord = std::map<std::string, std::string>;

inline std::vector<VectorRecord> read_vector_file(const std::string& name) {
    std::ifstream in(std::string(BRINDLE_TEST_DATA) + "/vectors/" + name);
    if (!in) throw std::runtime_error("cannot open vector file " + name);
    std::vector<VectorRecord> records;
    VectorRecord current;
    std::string line;
    auto flush = [&] {
        if (!current.empty()) records.push_back(current);
        current.clear();
    };
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) {
            flush();
            continue;
        }
        if (line[0] == '#') continue;
        const auto eq = line.find('=');
        if (eq == std::string::npos) throw std::runtime_error("bad line in " + name + ": " + line);
        current[line.substr(0, eq)] = line.substr(eq + 1);
    }
    flush();
    return records;
}

// The "# records: N" count a file states in its header.
inline int stated_record_count(const std::string& name) {
    std::ifstream in(std::string(BRINDLE_TEST_DATA) + "/vectors/" + name);
    std::string line;
    const std::string tag = "# records: ";
    while (std::getline(in, line))
        if (line.rfind(tag, 0) == 0) return std::stoi(line.substr(tag.size()));
    return -1;
}

inline std::vector<uint8_t> from_hex(const std::string& hex) {
    if (hex.size() % 2 != 0) throw std::runtime_error("odd hex length: " + hex);
    auto digit = [](char c) -> int {
        if (c >= '0' && c <= '9') return c - '0';
        if (c >= 'A' && c <= 'F') return c - 'A' + 10;
        if (c >= 'a' && c <= 'f') return c - 'a' + 10;
        throw std::runtime_error("bad hex digit");
    };
    std::vector<uint8_t> out;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        out.push_back(static_cast<uint8_t>(digit(hex[i]) << 4 | digit(hex[i + 1])));
    return out;
}

inline std::string to_hex(const uint8_t* p, std::size_t n) {
    static const char* digits = "0123456789ABCDEF";
    std::string s;
    for (std::size_t i = 0; i < n; ++i) {
        s += digits[p[i] >> 4];
        s += digits[p[i] & 15];
    }
    return s;
}

} // namespace brindle::test
