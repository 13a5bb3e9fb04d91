// Any bytes given to the block-cipher decryption: the string layout
// (deciphered_size, decipher_bytes) and the file form (decipher_file) on
// every cipher of the table, ECB and the 15-byte CBC. No access outside the
// buffers; a string result is never longer than its input and a file result
// never longer than the source; a refused file leaves no target; what is
// accepted enciphers back to the same bytes (minus a missing count byte).
// Layout of an input: a selector byte (bits 0-1 and 4 the cipher of the
// table, bit 2 CBC, bit 3 the file form, bit 5 the keyed ciphers: bits 0-1
// then choose Diamond 16-byte, Diamond Lite, Diamond2 16-byte or RUBY's
// feedback), then the enciphered bytes. RUBY's feedback accepts any bytes
// and enciphers them back exactly.
#include "crypto/block_framing.h"
#include "crypto/cipher_feedback.h"
#include "crypto/cipher_table.h"
#include "crypto/diamond.h"
#include "crypto/diamond2.h"
#include "crypto/diamond_cipher.h"
#include "crypto/ruby.h"
#include "fuzz_target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace brindle::crypto;
namespace fs = std::filesystem;

namespace {

// The library speaks Windows names: "\tmp\x" is /tmp/x on POSIX.
std::string windows_name(const fs::path &p) {
    std::string name = p.string();
    for (char &c : name)
        if (c == '/')
            c = '\\';
    return name;
}

int file_form(const BlockCipher &cipher, const ChainIv *iv, const uint8_t *data, size_t size) {
    std::random_device random;
    const std::string tag = std::to_string(random());
    const fs::path source = fs::temp_directory_path() / ("brindle-cipher-fuzz-" + tag + ".enc");
    const fs::path target = fs::temp_directory_path() / ("brindle-cipher-fuzz-" + tag + ".out");
    {
        std::ofstream out(source, std::ios::binary);
        out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
    }
    const int32_t r = decipher_file(cipher, windows_name(source), windows_name(target), iv);
    std::error_code e;
    if (r < 0) {
        FUZZ_CHECK(r == kFileReadFailed);
        FUZZ_CHECK(!fs::exists(target, e));
    } else {
        FUZZ_CHECK(static_cast<size_t>(r) < size);
        FUZZ_CHECK(fs::file_size(target, e) == static_cast<uintmax_t>(r));
        // Enciphered again it gives the source back (its padding was zeros
        // only if the source was made by us; compare the length).
        const int32_t again = encipher_file(cipher, windows_name(target), windows_name(source), iv);
        FUZZ_CHECK(again == static_cast<int32_t>(size));
    }
    fs::remove(source, e);
    fs::remove(target, e);
    return 0;
}

const std::vector<uint8_t> &fuzz_key() {
    static const std::vector<uint8_t> key(40, 0x3C);
    return key;
}

int feedback_form(bool file, const uint8_t *data, size_t size) {
    static const RubyKey key(fuzz_key());
    if (!file) {
        std::vector<uint8_t> plain(size), back(size);
        FeedbackStream(key).decrypt(data, plain.data(), size);
        FeedbackStream(key).encrypt(plain.data(), back.data(), size);
        FUZZ_CHECK(std::equal(back.begin(), back.end(), data));
        return 0;
    }
    std::random_device random;
    const std::string tag = std::to_string(random());
    const fs::path source = fs::temp_directory_path() / ("brindle-feedback-fuzz-" + tag + ".enc");
    const fs::path target = fs::temp_directory_path() / ("brindle-feedback-fuzz-" + tag + ".out");
    {
        std::ofstream out(source, std::ios::binary);
        out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
    }
    FUZZ_CHECK(feedback_file(key, true, windows_name(source), windows_name(target)) == static_cast<int32_t>(size));
    FUZZ_CHECK(feedback_file(key, false, windows_name(target), windows_name(source)) == static_cast<int32_t>(size));
    std::ifstream in(source, std::ios::binary);
    const std::vector<uint8_t> again((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    FUZZ_CHECK(again.size() == size && std::equal(again.begin(), again.end(), data));
    std::error_code e;
    fs::remove(source, e);
    fs::remove(target, e);
    return 0;
}

// The Diamond ciphers at the rounds the keyed exports use (built once: the
// key setup is the slow part).
const BlockCipher &keyed_cipher(int which) {
    static const DiamondCipher diamond16(make_diamond_key(fuzz_key(), 15, 16));
    static const DiamondCipher diamond8(make_diamond_key(fuzz_key(), 30, 8));
    static const DiamondCipher diamond2(make_diamond2_key(fuzz_key(), 8, 16));
    return which == 0 ? diamond16 : which == 1 ? diamond8 : diamond2;
}

} // namespace

BRINDLE_FUZZ_TARGET(cipher_decrypt) {
    if (size < 1 || size > (1u << 17))
        return 0;
    const uint8_t selector = data[0];
    ++data, --size;
    const bool keyed = (selector & 32) != 0;
    if (keyed && (selector & 3) == 3)
        return feedback_form((selector & 8) != 0, data, size);
    static const CipherId ids[] = {CipherId::rijndael, CipherId::des,     CipherId::idea,    CipherId::mars,
                                   CipherId::rc6,      CipherId::cast256, CipherId::serpent, CipherId::twofish};
    std::unique_ptr<BlockCipher> owned;
    if (!keyed)
        owned = cipher_row(ids[(selector & 3) | ((selector >> 2) & 4)])->make(fuzz_key());
    const BlockCipher &cipher_ref = keyed ? keyed_cipher(selector & 3) : *owned;
    const BlockCipher *cipher = &cipher_ref;
    const std::size_t block = cipher->block_size();
    ChainIv iv;
    iv.fill(0xA5);
    const ChainIv *chain = (selector & 4) != 0 && block == 16 ? &iv : nullptr;
    if ((selector & 8) != 0)
        return file_form(*cipher, chain, data, size);
    const std::span<const uint8_t> in(data, size);
    const auto plain_size = deciphered_size(in, block);
    if (!plain_size)
        return 0;
    FUZZ_CHECK(*plain_size <= size);
    std::vector<uint8_t> plain(*plain_size);
    decipher_bytes(*cipher, in, chain, plain.data());
    // Enciphered again: the same blocks, as long as the padding it dropped
    // was zero bytes; at least the length and the count byte must agree.
    std::vector<uint8_t> back(enciphered_size(plain.size(), block));
    encipher_bytes(*cipher, plain, chain, back.data());
    if (size % block == 1)
        FUZZ_CHECK(back.size() == size && back.back() == in.back());
    return 0;
}
