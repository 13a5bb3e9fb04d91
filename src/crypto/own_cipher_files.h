// The file forms of the own ciphers (layered and autokey): the source in
// blocks of 32,768 bytes (the last shorter), each transformed by itself and
// written; no header, no padding, the target as long as the source.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace brindle::crypto {

// Results of the own-cipher file forms other than a byte count.
enum OwnFileCode : int32_t {
    kOwnEmptyKey = -1,
    kOwnWriteFailed = -32740,
    kOwnReadFailed = -32730,
    kOwnSourceNotOpened = -32750,
    kOwnTargetNotCreated = -32751, // also when the target is the source itself
    kOwnNoBuffer = -32760,
};

// Copies `source` into `target` (Windows paths) through `block`, called on
// each block in order. Returns the bytes written (at most 2,147,483,647
// reported) or an OwnFileCode; on a code the target is deleted. The work
// buffer is wiped before it is freed.
int32_t own_cipher_file(std::string_view source, std::string_view target,
                        const std::function<void(std::span<uint8_t>)> &block);

} // namespace brindle::crypto
