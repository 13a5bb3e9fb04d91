#include "crypto/cipher_feedback.h"

#include "crypto/block_framing.h"
#include "crypto/cipher_target.h"
#include "crypto/secure_wipe.h"

#include <cstring>

namespace brindle::crypto {

FeedbackStream::FeedbackStream(const RubyKey &key) noexcept : key_(key) {
    std::memset(feedback_, 0, sizeof feedback_);
    key_.encrypt(feedback_, keystream_);
}

FeedbackStream::~FeedbackStream() {
    secure_wipe(keystream_, sizeof keystream_);
    secure_wipe(feedback_, sizeof feedback_);
}

template <bool Decrypt> void FeedbackStream::run(const uint8_t *in, uint8_t *out, std::size_t size) noexcept {
    std::size_t i = 0;
    // Byte by byte to the end of a block begun in an earlier call, then
    // whole blocks as 64-bit words, then the bytes left.
    for (; i < size && used_ != 0; ++i)
        step<Decrypt>(in[i], out[i]);
    for (; size - i >= 8; i += 8) {
        uint64_t x, k, y;
        std::memcpy(&x, in + i, 8);
        std::memcpy(&k, keystream_, 8);
        y = x ^ k;
        std::memcpy(out + i, &y, 8);
        std::memcpy(feedback_, Decrypt ? &x : &y, 8);
        key_.encrypt(feedback_, keystream_);
    }
    for (; i < size; ++i)
        step<Decrypt>(in[i], out[i]);
}

template <bool Decrypt> inline void FeedbackStream::step(uint8_t x, uint8_t &out) noexcept {
    const uint8_t y = static_cast<uint8_t>(x ^ keystream_[used_]);
    feedback_[used_] = Decrypt ? x : y;
    out = y;
    if (++used_ == 8) {
        key_.encrypt(feedback_, keystream_);
        used_ = 0;
    }
}

void FeedbackStream::encrypt(const uint8_t *in, uint8_t *out, std::size_t size) noexcept { run<false>(in, out, size); }
void FeedbackStream::decrypt(const uint8_t *in, uint8_t *out, std::size_t size) noexcept { run<true>(in, out, size); }

int32_t feedback_file(const RubyKey &key, bool decrypt, std::string_view source, std::string_view target) {
    static constexpr FileFailureCodes kCodes{kFileNoBuffer, kFileSourceNotOpened, kFileTargetNotCreated, kFileReadFailed,
                                             kFileWriteFailed};
    FeedbackStream stream(key);
    return transform_file_chunks(source, target, kChunkBytes, kCodes, [&](std::span<uint8_t> chunk) {
        if (decrypt)
            stream.decrypt(chunk.data(), chunk.data(), chunk.size());
        else
            stream.encrypt(chunk.data(), chunk.data(), chunk.size());
    });
}

} // namespace brindle::crypto
