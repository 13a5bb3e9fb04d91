#include "crypto/cipher_target.h"

#include "crypto/secret_buffer.h"

#include <climits>

namespace brindle::crypto {

CipherTarget::CipherTarget(std::string_view name)
    : name_(name), file_(platform::File::open(name, platform::OpenMode::Overwrite)), created_(file_.is_open()) {}

CipherTarget::~CipherTarget() {
    if (kept_)
        return;
    file_.close();
    if (created_)
        platform::delete_file(name_);
}

bool CipherTarget::finish() noexcept {
    const bool cut = written_ <= static_cast<uint64_t>(INT64_MAX) && file_.truncate(static_cast<int64_t>(written_));
    kept_ = file_.close() && cut;
    return kept_;
}

int32_t open_cipher_source(std::string_view source, std::string_view target, platform::File &in,
                           int32_t source_code, int32_t target_code) {
    in = platform::File::open(source, platform::OpenMode::Read);
    if (!in.is_open())
        return source_code;
    if (platform::same_file(source, target))
        return target_code;
    return 0;
}

int32_t byte_count_result(uint64_t total) noexcept {
    return total > static_cast<uint64_t>(INT32_MAX) ? INT32_MAX : static_cast<int32_t>(total);
}

int32_t transform_file_chunks(std::string_view source, std::string_view target, std::size_t chunk_bytes,
                              const FileFailureCodes &codes, const std::function<void(std::span<uint8_t>)> &chunk) {
    SecretBuffer buffer(chunk_bytes);
    if (!buffer.ok())
        return codes.no_buffer;
    platform::File in;
    if (const int32_t code = open_cipher_source(source, target, in, codes.source_not_opened, codes.target_not_created))
        return code;
    CipherTarget out(target);
    if (!out.open())
        return codes.target_not_created;
    uint64_t total = 0;
    for (;;) {
        const int64_t got = in.read(buffer.data(), chunk_bytes);
        if (got < 0)
            return codes.read_failed;
        if (got == 0)
            break;
        const auto n = static_cast<std::size_t>(got);
        chunk(std::span<uint8_t>(buffer.data(), n));
        if (!out.write(buffer.data(), n))
            return codes.write_failed;
        total += n;
        if (n < chunk_bytes)
            break;
    }
    if (!out.finish())
        return codes.write_failed;
    return byte_count_result(total);
}

} // namespace brindle::crypto
