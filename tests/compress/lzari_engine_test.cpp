// The LZARI engine in memory: round trips around its limits, independence of
// successive calls, and decoding of damaged and hostile streams. The exact
// output is checked against vectors of the published program in the export
// tests.
#include "compress/lzari.h"
#include "compress/test_inputs.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace brindle::compress;
using namespace brindle::test;

namespace {

std::string encode(const std::string &in) {
    MemorySource source(in);
    StringSink sink;
    EXPECT_TRUE(lzari_encode(source, static_cast<uint32_t>(in.size()), sink));
    return sink.str();
}

LzariDecode decode(const std::string &in, std::string *out) {
    MemorySource source(in);
    StringSink sink;
    const LzariDecode status = lzari_decode(source, sink);
    *out = sink.str();
    return status;
}

} // namespace

TEST(LzariEngine, RoundTripsAroundRingAndMatchLimits) {
    for (Kind kind : {Kind::Same, Kind::Text, Kind::Random, Kind::SmallAlphabet})
        for (size_t size : {1, 2, 3, 4, 79, 80, 81, 160, 4015, 4016, 4096, 4097, 8192, 100000}) {
            const std::string in = make_input(kind, size, static_cast<uint32_t>(size) + 7);
            const std::string packed = encode(in);
            ASSERT_GE(packed.size(), 4u);
            EXPECT_EQ(packed.substr(0, 4), std::string({static_cast<char>(size & 0xFF), static_cast<char>(size >> 8 & 0xFF),
                                                        static_cast<char>(size >> 16 & 0xFF), '\0'}))
                << "header " << size;
            std::string out;
            EXPECT_EQ(decode(packed, &out), LzariDecode::Ok);
            EXPECT_EQ(out, in) << kind_name(kind) << " " << size;
        }
    // Spaces match the ring's initial contents from the first byte on.
    const std::string spaces(4000, ' ');
    EXPECT_LT(encode(spaces).size(), 120u);
    std::string out;
    decode(encode(spaces), &out);
    EXPECT_EQ(out, spaces);
}

TEST(LzariEngine, EmptyInputIsTheHeaderAlone) {
    EXPECT_EQ(encode(""), std::string(4, '\0'));
    std::string out = "junk";
    EXPECT_EQ(decode(std::string(4, '\0'), &out), LzariDecode::Ok);
    EXPECT_EQ(out, "");
    for (size_t n : {0, 1, 3}) {
        EXPECT_EQ(decode(std::string(n, '\x05'), &out), LzariDecode::NoHeader) << n;
        EXPECT_EQ(out, "");
    }
}

TEST(LzariEngine, SuccessiveCallsDoNotInfluenceEachOther) {
    const std::string a = make_input(Kind::Text, 20000, 1), b = make_input(Kind::Random, 5000, 2);
    const std::string first = encode(a);
    encode(b);
    std::string ignored;
    decode(encode(b).substr(0, 100), &ignored); // a decoder stopped half-way
    EXPECT_EQ(encode(a), first);
    std::string out;
    decode(first, &out);
    EXPECT_EQ(out, a);
}

TEST(LzariEngine, DamagedStreamsStayWithinTheClaimedLength) {
    std::mt19937 rng(1989);
    const std::string source = make_input(Kind::Text, 30000, 4);
    const std::string packed = encode(source);
    for (int round = 0; round < 300; ++round) {
        std::string damaged = packed;
        if (round % 2 == 0) {
            damaged.resize(4 + rng() % (packed.size() - 4));
        } else {
            for (int f = 0; f < 3; ++f)
                damaged[4 + rng() % (damaged.size() - 4)] ^= static_cast<char>(1 + rng() % 255);
        }
        std::string out;
        const LzariDecode status = decode(damaged, &out);
        EXPECT_NE(status, LzariDecode::NoHeader);
        EXPECT_LE(out.size(), source.size());
        if (status == LzariDecode::Ok) {
            EXPECT_EQ(out.size(), source.size());
        }
        // Cut or changed, the bytes before the damage still decode the same.
        if (round % 2 == 0 && damaged.size() > 1000) {
            EXPECT_EQ(out.substr(0, 100), source.substr(0, 100));
        }
    }
}

TEST(LzariEngine, AShortStreamClaimingGigabytesStopsEarly) {
    for (const std::string &stream : {std::string("\xFF\xFF\xFF\xFF", 4), std::string("\xFF\xFF\xFF\xFF\x12\x34", 6),
                                      std::string("\x00\x00\x00\x40", 4) + std::string(50, '\x00')}) {
        std::string out;
        EXPECT_EQ(decode(stream, &out), LzariDecode::Stopped);
        // 64 bytes of missing input can stand for only so much.
        EXPECT_LT(out.size(), 8u << 20);
    }
    // A valid stream is never taken for a short one, even when its last
    // symbols are decoded from the bits after its end.
    for (size_t size : {1, 2, 5, 33, 1000})
        for (Kind kind : {Kind::Same, Kind::Random}) {
            const std::string in = make_input(kind, size, 3);
            std::string out;
            EXPECT_EQ(decode(encode(in), &out), LzariDecode::Ok);
            EXPECT_EQ(out, in);
        }
}
