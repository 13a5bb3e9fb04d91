#include "crypto/diamond.h"

#include "crypto/secure_wipe.h"

#include <array>
#include <bit>
#include <cstring>

namespace brindle::crypto {

namespace {

static_assert(std::endian::native == std::endian::little, "the permutation loads blocks as little-endian words");

// CRC-32 (reflected polynomial 0xEDB88320), one byte at a time.
constexpr std::array<uint32_t, 256> kCrcTable = [] {
    std::array<uint32_t, 256> t{};
    for (uint32_t i = 0; i < 256; ++i) {
        uint32_t v = i;
        for (int k = 0; k < 8; ++k)
            v = (v & 1) ? (v >> 1) ^ 0xEDB88320u : v >> 1;
        t[i] = v;
    }
    return t;
}();

// The key stream of the box generation: a CRC over the key bytes, again and
// again, with the key length (two bytes) after every pass.
class KeyStream {
  public:
    explicit KeyStream(std::span<const uint8_t> key) : key_(key) {}

    // A value in 0..max, from the fewest low bits of the CRC that cover max;
    // values above max are drawn again, and after 97 draws one is brought
    // into range by subtracting max. `previous` (Diamond2) maps each key
    // byte through the box made before.
    unsigned draw(unsigned max, const uint8_t *previous) {
        if (max == 0)
            return 0;
        unsigned mask = 0;
        for (unsigned m = max; m > 0; m >>= 1)
            mask = (mask << 1) | 1;
        unsigned tries = 0, value;
        do {
            const uint8_t k = key_[index_++];
            feed(previous != nullptr ? previous[k] : k);
            if (index_ >= key_.size()) {
                index_ = 0;
                feed(static_cast<uint8_t>(key_.size()));
                feed(static_cast<uint8_t>(key_.size() >> 8));
            }
            value = crc_ & mask;
            if (++tries > 97 && value > max)
                value -= max;
        } while (value > max);
        return value;
    }

    ~KeyStream() { secure_wipe(&crc_, sizeof crc_); }

  private:
    void feed(uint8_t b) { crc_ = kCrcTable[(crc_ ^ b) & 0xFF] ^ (crc_ >> 8); }

    std::span<const uint8_t> key_;
    std::size_t index_ = 0;
    uint32_t crc_ = 0xFFFFFFFFu;
};

// One box: the values 255, 254, .. 0 in turn go to the draw-th of the
// places still free (counting from place 0).
void make_box(KeyStream &stream, uint8_t *box, const uint8_t *previous) {
    uint8_t free_places[256];
    for (int i = 0; i < 256; ++i)
        free_places[i] = static_cast<uint8_t>(i);
    for (unsigned n = 256; n-- > 0;) {
        const unsigned pos = stream.draw(n, previous);
        box[free_places[pos]] = static_cast<uint8_t>(n);
        std::memmove(free_places + pos, free_places + pos + 1, n - pos);
    }
    secure_wipe(free_places, sizeof free_places);
}

constexpr uint64_t kLowBits = 0x0101010101010101ull;

inline uint64_t load64(const uint8_t *p) {
    uint64_t v;
    std::memcpy(&v, p, 8);
    return v;
}
inline void store64(uint8_t *p, uint64_t v) { std::memcpy(p, &v, 8); }

// Byte i of the result takes bit b from byte (i + b) mod 8: bit plane b is
// the block rotated down by b bytes. The inverse rotates up.
inline uint64_t permute8(uint64_t x) {
    uint64_t y = x & kLowBits;
    for (int b = 1; b < 8; ++b)
        y |= std::rotr(x, 8 * b) & (kLowBits << b);
    return y;
}
inline uint64_t unpermute8(uint64_t x) {
    uint64_t y = x & kLowBits;
    for (int b = 1; b < 8; ++b)
        y |= std::rotl(x, 8 * b) & (kLowBits << b);
    return y;
}

// The same over 16 bytes (lo = bytes 0..7, hi = bytes 8..15).
inline void permute16(uint64_t &lo, uint64_t &hi) {
    uint64_t ylo = lo & kLowBits, yhi = hi & kLowBits;
    for (int b = 1; b < 8; ++b) {
        const int s = 8 * b;
        const uint64_t mask = kLowBits << b;
        ylo |= ((lo >> s) | (hi << (64 - s))) & mask;
        yhi |= ((hi >> s) | (lo << (64 - s))) & mask;
    }
    lo = ylo, hi = yhi;
}
inline void unpermute16(uint64_t &lo, uint64_t &hi) {
    uint64_t ylo = lo & kLowBits, yhi = hi & kLowBits;
    for (int b = 1; b < 8; ++b) {
        const int s = 8 * b;
        const uint64_t mask = kLowBits << b;
        ylo |= ((lo << s) | (hi >> (64 - s))) & mask;
        yhi |= ((hi << s) | (lo >> (64 - s))) & mask;
    }
    lo = ylo, hi = yhi;
}

template <std::size_t Block> inline void substitute(const uint8_t *boxes, uint8_t *x) {
    for (std::size_t i = 0; i < Block; ++i)
        x[i] = boxes[256 * i + x[i]];
}

// One block through the rounds: boxes of round 0, then for each later round
// the permutation and that round's boxes. Deciphering runs the inverse
// boxes from the last round down with the inverse permutation.
template <std::size_t Block, bool Forward>
void crypt(const uint8_t *boxes, unsigned rounds, const uint8_t *in, uint8_t *out) {
    constexpr std::size_t kRound = 256 * Block;
    uint8_t x[Block];
    std::memcpy(x, in, Block);
    const uint8_t *box = Forward ? boxes : boxes + (rounds - 1) * kRound;
    substitute<Block>(box, x);
    for (unsigned r = 1; r < rounds; ++r) {
        if constexpr (Block == 8) {
            store64(x, Forward ? permute8(load64(x)) : unpermute8(load64(x)));
        } else {
            uint64_t lo = load64(x), hi = load64(x + 8);
            if (Forward)
                permute16(lo, hi);
            else
                unpermute16(lo, hi);
            store64(x, lo), store64(x + 8, hi);
        }
        box = Forward ? box + kRound : box - kRound;
        substitute<Block>(box, x);
    }
    std::memcpy(out, x, Block);
    secure_wipe(x, Block);
}

} // namespace

bool diamond_rounds_valid(unsigned rounds, std::size_t block) noexcept {
    if (block == 16)
        return rounds >= 5 && rounds <= 15;
    if (block == 8)
        return rounds >= 4 && rounds <= 30;
    return false;
}

DiamondKey::DiamondKey(DiamondVersion version, std::span<const uint8_t> key, unsigned rounds, std::size_t block)
    : block_(block), rounds_(rounds), forward_(rounds * block * 256), inverse_(rounds * block * 256) {
    KeyStream stream(key);
    const bool revised = version == DiamondVersion::diamond2;
    for (std::size_t b = 0; b < rounds * block; ++b) {
        uint8_t *box = forward_.data() + 256 * b;
        make_box(stream, box, revised && b > 0 ? box - 256 : nullptr);
        uint8_t *inverse = inverse_.data() + 256 * b;
        for (int v = 0; v < 256; ++v)
            inverse[box[v]] = static_cast<uint8_t>(v);
    }
}

DiamondKey::~DiamondKey() {
    secure_wipe(forward_.data(), forward_.size());
    secure_wipe(inverse_.data(), inverse_.size());
}

void DiamondKey::encrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept {
    for (std::size_t b = 0; b < blocks; ++b, in += block_, out += block_) {
        if (block_ == 16)
            crypt<16, true>(forward_.data(), rounds_, in, out);
        else
            crypt<8, true>(forward_.data(), rounds_, in, out);
    }
}

void DiamondKey::decrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept {
    for (std::size_t b = 0; b < blocks; ++b, in += block_, out += block_) {
        if (block_ == 16)
            crypt<16, false>(inverse_.data(), rounds_, in, out);
        else
            crypt<8, false>(inverse_.data(), rounds_, in, out);
    }
}

std::unique_ptr<DiamondKey> make_diamond_key(std::span<const uint8_t> key, unsigned rounds, std::size_t block) {
    if (key.empty() || !diamond_rounds_valid(rounds, block))
        return nullptr;
    return std::make_unique<DiamondKey>(DiamondVersion::diamond, key, rounds, block);
}

std::size_t diamond_mode_block(int mode) noexcept { return (mode & 1) != 0 ? 16 : 8; }

unsigned diamond_mode_rounds(int mode) noexcept { return (mode < 1 ? mode : mode - 1) < 2 ? 15 : 30; }

} // namespace brindle::crypto
