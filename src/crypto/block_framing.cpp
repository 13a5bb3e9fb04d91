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

// The file forms read and write eight chunks at a time: fewer system calls,
// and the chained form runs the eight chunks' chains side by side. The
// layout stays the chunk's, whatever the batch.
constexpr std::size_t kBatchBytes = 8 * kChunkBytes;

// Enciphers `chunks` whole chunks in place, each chained from the IV.
void encipher_chunks(const BlockCipher &cipher, uint8_t *bytes, std::size_t chunks, const ChainIv *iv) noexcept {
    if (chunks == 0)
        return;
    const std::size_t block = cipher.block_size();
    if (iv == nullptr)
        cipher.encrypt_blocks(bytes, bytes, chunks * kChunkBytes / block);
    else
        cipher.encrypt_chained_runs(iv->data(), bytes, kChunkBytes / block, chunks, chain_width(block));
}

// Deciphers `size` bytes (whole blocks) of `in` into `out`: whole chunks
// and at most one short last one, each chained from the IV.
void decipher_chunks(const BlockCipher &cipher, const uint8_t *in, uint8_t *out, std::size_t size,
                     const ChainIv *iv) noexcept {
    if (iv == nullptr) {
        decipher_run(cipher, in, out, size, nullptr, nullptr);
        return;
    }
    for (std::size_t at = 0; at < size; at += kChunkBytes)
        decipher_run(cipher, in + at, out + at, std::min(kChunkBytes, size - at), iv, nullptr);
}

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
    SecretBuffer buffer(kBatchBytes);
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
        const int64_t got = in.read(buffer.data(), kBatchBytes);
        if (got < 0)
            return kFileReadFailed;
        // Whole chunks, then the short last chunk if the source ends here
        // (when the batch is short, at most seven chunks precede it, so its
        // padding fits the buffer).
        const auto n = static_cast<std::size_t>(got);
        const std::size_t whole = n / kChunkBytes;
        const std::size_t tail = n - whole * kChunkBytes;
        encipher_chunks(cipher, buffer.data(), whole, iv);
        std::size_t size = whole * kChunkBytes;
        const std::size_t padded_tail = padded(tail, block);
        if (tail > 0) {
            std::memset(buffer.data() + n, 0, padded_tail - tail);
            encipher_run(cipher, buffer.data() + size, padded_tail, iv);
            size += padded_tail;
        }
        if (size > 0 && !out.write(buffer.data(), size))
            return kFileWriteFailed;
        total += size;
        if (padded_tail != tail) {
            const auto count = static_cast<uint8_t>(padded_tail - tail);
            if (!out.write(&count, 1))
                return kFileCountWriteFailed;
            total += 1;
            counted = true;
        }
        if (n < kBatchBytes)
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
    // One batch and one block more: when the buffer fills, at least a block
    // follows the batch, so the count byte cannot belong to it.
    const std::size_t capacity = kBatchBytes + block;
    SecretBuffer input(capacity);
    SecretBuffer plain(kBatchBytes);
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
            decipher_chunks(cipher, input.data(), plain.data(), kBatchBytes, iv);
            if (!out.write(plain.data(), kBatchBytes))
                return kFileWriteFailed;
            total += kBatchBytes;
            std::memmove(input.data(), input.data() + kBatchBytes, block);
            have = block;
            continue;
        }
        // The end: the last chunks (whole blocks, at most one batch) and the
        // count byte.
        if (have == 0 || (have - 1) % block != 0)
            return kFileReadFailed;
        const std::size_t body = have - 1;
        const std::size_t count = input.data()[body];
        if (count >= block || count > body)
            return kFileReadFailed;
        decipher_chunks(cipher, input.data(), plain.data(), body, iv);
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
