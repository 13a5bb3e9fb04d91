#include "crypto/block_framing.h"

#include "crypto/cipher_target.h"
#include "crypto/secret_buffer.h"
#include "crypto/secure_wipe.h"
#include "platform/file.h"

#include <algorithm>
#include <cstring>

namespace brindle::crypto {

namespace {

std::size_t chain_width(std::size_t block) noexcept { return std::min(kChainBytes, block); }

// Enciphers `bytes` (whole blocks) in place.
void encipher_run(const BlockCipher &cipher, uint8_t *bytes, std::size_t size, const ChainIv *iv) noexcept {
    const std::size_t block = cipher.block_size();
    const std::size_t blocks = size / block;
    if (iv == nullptr) {
        cipher.encrypt_blocks(bytes, bytes, blocks);
        return;
    }
    cipher.encrypt_chained(iv->data(), bytes, blocks, chain_width(block));
}

// Deciphers `size` bytes (whole blocks) of `in` into `out`, which does not
// overlap it. `before` is the ciphertext block before `in` (CBC), or null
// when `in` starts the chain.
void decipher_run(const BlockCipher &cipher, const uint8_t *in, uint8_t *out, std::size_t size,
                  const ChainIv *iv, const uint8_t *before) noexcept {
    const std::size_t block = cipher.block_size();
    const std::size_t blocks = size / block;
    cipher.decrypt_blocks(in, out, blocks);
    if (iv == nullptr)
        return;
    const std::size_t width = chain_width(block);
    for (std::size_t b = 0; b < blocks; ++b) {
        const uint8_t *previous = b > 0 ? in + (b - 1) * block : before != nullptr ? before : iv->data();
        for (std::size_t i = 0; i < width; ++i)
            out[b * block + i] ^= previous[i];
    }
}

std::size_t padded(std::size_t n, std::size_t block) noexcept { return (n + block - 1) / block * block; }

} // namespace

std::optional<ChainIv> chain_iv(std::string_view iv) noexcept {
    ChainIv v{};
    if (iv.empty())
        return v;
    if (iv.size() < 16)
        return std::nullopt;
    std::memcpy(v.data(), iv.data(), kChainBytes);
    return v;
}

std::size_t enciphered_size(std::size_t plain, std::size_t block) noexcept { return padded(plain, block) + 1; }

void encipher_bytes(const BlockCipher &cipher, std::span<const uint8_t> plain, const ChainIv *iv,
                    uint8_t *out) noexcept {
    const std::size_t block = cipher.block_size();
    const std::size_t total = padded(plain.size(), block);
    if (!plain.empty())
        std::memcpy(out, plain.data(), plain.size());
    std::memset(out + plain.size(), 0, total - plain.size());
    encipher_run(cipher, out, total, iv);
    out[total] = static_cast<uint8_t>(total - plain.size());
}

std::optional<std::size_t> deciphered_size(std::span<const uint8_t> enciphered, std::size_t block) noexcept {
    const std::size_t n = enciphered.size();
    if (n == 0)
        return std::nullopt;
    if (n % block == 0)
        return n;
    if (n % block != 1)
        return std::nullopt;
    const std::size_t body = n - 1;
    const std::size_t count = enciphered[body];
    if (count >= block || count > body)
        return std::nullopt;
    return body - count;
}

void decipher_bytes(const BlockCipher &cipher, std::span<const uint8_t> enciphered, const ChainIv *iv,
                    uint8_t *out) noexcept {
    const std::size_t block = cipher.block_size();
    const auto size = deciphered_size(enciphered, block);
    if (!size || *size == 0)
        return;
    const std::size_t body = enciphered.size() / block * block;
    // Every block but the last is all data; the last goes through a scratch
    // block so that its padding never lands in `out`.
    const std::size_t leading = body - block;
    decipher_run(cipher, enciphered.data(), out, leading, iv, nullptr);
    uint8_t last[16];
    decipher_run(cipher, enciphered.data() + leading, last, block, iv,
                 leading > 0 ? enciphered.data() + leading - block : nullptr);
    std::memcpy(out + leading, last, *size - leading);
    secure_wipe(last, sizeof last);
}

int32_t encipher_file(const BlockCipher &cipher, std::string_view source, std::string_view target,
                      const ChainIv *iv) {
    const std::size_t block = cipher.block_size();
    SecretBuffer buffer(kChunkBytes);
    if (!buffer.ok())
        return kFileNoBuffer;
    platform::File in;
    if (const int32_t code = open_cipher_source(source, target, in, kFileSourceNotOpened, kFileTargetNotCreated))
        return code;
    CipherTarget out(target);
    if (!out.open())
        return kFileTargetNotCreated;
    uint64_t total = 0;
    bool counted = false;
    for (;;) {
        const int64_t got = in.read(buffer.data(), kChunkBytes);
        if (got < 0)
            return kFileReadFailed;
        if (got == 0)
            break;
        const auto n = static_cast<std::size_t>(got);
        const std::size_t size = padded(n, block);
        std::memset(buffer.data() + n, 0, size - n);
        encipher_run(cipher, buffer.data(), size, iv);
        if (!out.write(buffer.data(), size))
            return kFileWriteFailed;
        total += size;
        if (size != n) {
            const auto count = static_cast<uint8_t>(size - n);
            if (!out.write(&count, 1))
                return kFileCountWriteFailed;
            total += 1;
            counted = true;
        }
        if (n < kChunkBytes)
            break; // the end of the source
    }
    if (!counted) {
        const uint8_t zero = 0;
        if (!out.write(&zero, 1))
            return kFileCountWriteFailed;
        total += 1;
    }
    if (!out.finish())
        return kFileWriteFailed;
    return byte_count_result(total);
}

int32_t decipher_file(const BlockCipher &cipher, std::string_view source, std::string_view target,
                      const ChainIv *iv) {
    const std::size_t block = cipher.block_size();
    // One chunk and one block more: when the buffer fills, at least a block
    // follows the chunk, so the count byte cannot belong to it.
    const std::size_t capacity = kChunkBytes + block;
    SecretBuffer input(capacity);
    SecretBuffer plain(kChunkBytes);
    if (!input.ok() || !plain.ok())
        return kFileNoBuffer;
    platform::File in;
    if (const int32_t code = open_cipher_source(source, target, in, kFileSourceNotOpened, kFileTargetNotCreated))
        return code;
    CipherTarget out(target);
    if (!out.open())
        return kFileTargetNotCreated;
    uint64_t total = 0;
    std::size_t have = 0;
    for (;;) {
        const int64_t got = in.read(input.data() + have, capacity - have);
        if (got < 0)
            return kFileReadFailed;
        have += static_cast<std::size_t>(got);
        if (have == capacity) {
            decipher_run(cipher, input.data(), plain.data(), kChunkBytes, iv, nullptr);
            if (!out.write(plain.data(), kChunkBytes))
                return kFileWriteFailed;
            total += kChunkBytes;
            std::memmove(input.data(), input.data() + kChunkBytes, block);
            have = block;
            continue;
        }
        // The end: the last chunk (whole blocks, at most one chunk) and the
        // count byte.
        if (have == 0 || (have - 1) % block != 0)
            return kFileReadFailed;
        const std::size_t body = have - 1;
        const std::size_t count = input.data()[body];
        if (count >= block || count > body)
            return kFileReadFailed;
        decipher_run(cipher, input.data(), plain.data(), body, iv, nullptr);
        if (!out.write(plain.data(), body - count))
            return kFileWriteFailed;
        total += body - count;
        break;
    }
    if (!out.finish())
        return kFileWriteFailed;
    return byte_count_result(total);
}

} // namespace brindle::crypto
