#include "crypto/own_cipher_files.h"

#include "crypto/block_framing.h"
#include "crypto/cipher_target.h"
#include "crypto/secret_buffer.h"

namespace brindle::crypto {

int32_t own_cipher_file(std::string_view source, std::string_view target,
                        const std::function<void(std::span<uint8_t>)> &block) {
    SecretBuffer buffer(kChunkBytes);
    if (!buffer.ok())
        return kOwnNoBuffer;
    platform::File in;
    if (const int32_t code = open_cipher_source(source, target, in, kOwnSourceNotOpened, kOwnTargetNotCreated))
        return code;
    CipherTarget out(target);
    if (!out.open())
        return kOwnTargetNotCreated;
    uint64_t total = 0;
    for (;;) {
        const int64_t got = in.read(buffer.data(), kChunkBytes);
        if (got < 0)
            return kOwnReadFailed;
        if (got == 0)
            break;
        const auto n = static_cast<std::size_t>(got);
        block(std::span<uint8_t>(buffer.data(), n));
        if (!out.write(buffer.data(), n))
            return kOwnWriteFailed;
        total += n;
        if (n < kChunkBytes)
            break;
    }
    if (!out.finish())
        return kOwnWriteFailed;
    return byte_count_result(total);
}

} // namespace brindle::crypto
