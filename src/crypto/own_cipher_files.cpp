#include "crypto/own_cipher_files.h"

#include "crypto/block_framing.h"
#include "crypto/cipher_target.h"

namespace brindle::crypto {

int32_t own_cipher_file(std::string_view source, std::string_view target,
                        const std::function<void(std::span<uint8_t>)> &block) {
    static constexpr FileFailureCodes kCodes{kOwnNoBuffer, kOwnSourceNotOpened, kOwnTargetNotCreated, kOwnReadFailed,
                                             kOwnWriteFailed};
    return transform_file_chunks(source, target, kChunkBytes, kCodes, block);
}

} // namespace brindle::crypto
