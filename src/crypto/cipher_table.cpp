#include "crypto/cipher_table.h"

#include "crypto/cast256.h"
#include "crypto/des.h"
#include "crypto/idea.h"
#include "crypto/mars.h"
#include "crypto/rc6.h"
#include "crypto/rijndael.h"
#include "crypto/serpent.h"
#include "crypto/twofish.h"

#include <cstring>

namespace brindle::crypto {

namespace {

// A core with a fixed key size behind the framing's interface. The core
// wipes its key schedule when it is destroyed; the key bytes are read from
// the caller's string, not copied.
template <class Core, std::size_t KeyBytes, std::size_t Block> class CoreCipher final : public BlockCipher {
  public:
    explicit CoreCipher(std::span<const uint8_t> key) : core_(std::span<const uint8_t, KeyBytes>(key.data(), KeyBytes)) {}
    std::size_t block_size() const noexcept override { return Block; }
    void encrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept override {
        core_.encrypt_blocks(in, out, blocks);
    }
    void decrypt_blocks(const uint8_t *in, uint8_t *out, std::size_t blocks) const noexcept override {
        core_.decrypt_blocks(in, out, blocks);
    }
    void encrypt_chained(const uint8_t *iv, uint8_t *bytes, std::size_t blocks,
                         std::size_t width) const noexcept override {
        if constexpr (requires { &Core::encrypt_chained; }) {
            uint8_t start[Block] = {};
            std::memcpy(start, iv, width);
            core_.encrypt_chained(std::span<const uint8_t, Block>(start, Block), bytes, bytes, blocks, width);
        } else {
            BlockCipher::encrypt_chained(iv, bytes, blocks, width);
        }
    }
    void encrypt_chained_runs(const uint8_t *iv, uint8_t *bytes, std::size_t run_blocks, std::size_t runs,
                              std::size_t width) const noexcept override {
        if constexpr (requires { &Core::encrypt_chained_runs; }) {
            uint8_t start[Block] = {};
            std::memcpy(start, iv, width);
            core_.encrypt_chained_runs(std::span<const uint8_t, Block>(start, Block), bytes, run_blocks, runs, width);
        } else {
            BlockCipher::encrypt_chained_runs(iv, bytes, run_blocks, runs, width);
        }
    }

  private:
    Core core_;
};

template <class Core, std::size_t KeyBytes, std::size_t Block>
std::unique_ptr<BlockCipher> make_core(std::span<const uint8_t> key) {
    return std::make_unique<CoreCipher<Core, KeyBytes, Block>>(key);
}

constexpr CipherRow kRows[] = {
    {CipherId::rijndael, "Rijndael", 32, 16, make_core<RijndaelKey, 32, 16>},
    {CipherId::serpent, "Serpent", 32, 16, make_core<SerpentKey, 32, 16>},
    {CipherId::twofish, "Twofish", 32, 16, make_core<TwofishKey, 32, 16>},
    {CipherId::des, "DES", 8, 8, make_core<DesKey, 8, 8>},
    {CipherId::idea, "IDEA", 16, 8, make_core<IdeaKey, 16, 8>},
    {CipherId::mars, "MARS", 32, 16, make_core<MarsKey, 32, 16>},
    {CipherId::rc6, "RC6", 32, 16, make_core<Rc6Key, 32, 16>},
    {CipherId::cast256, "CAST-256", 32, 16, make_core<Cast256Key, 32, 16>},
};

} // namespace

const CipherRow *cipher_row(CipherId id) noexcept {
    for (const CipherRow &row : kRows)
        if (row.id == id)
            return &row;
    return nullptr;
}

const CipherRow *aes_candidate(int code) noexcept {
    const int c = code % 20; // C's remainder: a negative code stays negative
    if (c < 1 || c > 5)
        return nullptr;
    return cipher_row(static_cast<CipherId>(c));
}

} // namespace brindle::crypto
