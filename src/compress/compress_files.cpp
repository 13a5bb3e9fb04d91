#include "compress/compress_files.h"

#include "common/ascii.h"

#include <climits>

namespace brindle::compress {

int32_t check_file_names(std::string_view source, std::string_view target) {
    if (source.empty())
        return -1;
    if (target.empty())
        return -2;
    // The runtime's _stricmp: ASCII letters fold to one case, nothing else does.
    if (common::equal_no_case(source, target) || platform::same_file(source, target))
        return -3;
    return 0;
}

int32_t target_size_result(std::string_view target) {
    const int64_t size = platform::file_size(target);
    if (size < 0)
        return -7;
    return size > INT32_MAX ? INT32_MAX : static_cast<int32_t>(size);
}

bool FileSource::refill() {
    if (failed_)
        return false;
    const int64_t got = file_.read(buffer_.data(), buffer_.size());
    if (got < 0)
        failed_ = true;
    if (got <= 0)
        return false;
    pos_ = buffer_.data();
    end_ = pos_ + got;
    return true;
}

FileSink::FileSink(platform::File &file) : file_(file), buffer_(kBufferSize) {
    begin_ = pos_ = buffer_.data();
    end_ = begin_ + buffer_.size();
}

void FileSink::drain() {
    if (!failed_ && pos_ != begin_ && !file_.write(begin_, static_cast<size_t>(pos_ - begin_)))
        failed_ = true;
    pos_ = begin_;
}

bool FileSink::finish() {
    drain();
    return !failed_;
}

} // namespace brindle::compress
