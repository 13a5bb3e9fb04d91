#include "crypto/cipher_target.h"

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

} // namespace brindle::crypto
