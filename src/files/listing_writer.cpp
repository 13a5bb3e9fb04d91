#include "files/listing_writer.h"

#include <utility>

namespace brindle::files {

namespace {

constexpr size_t kBlock = 32768;

} // namespace

ListingWriter::ListingWriter(platform::File file) : file_(std::move(file)) { buffer_.reserve(kBlock + 300); }

bool ListingWriter::add(std::string_view directory, std::string_view name) {
    buffer_.append(directory).append(name).append("\r\n");
    return buffer_.size() < kBlock || flush();
}

bool ListingWriter::flush() {
    const bool ok = buffer_.empty() || file_.write(buffer_.data(), buffer_.size());
    buffer_.clear();
    failed_ = failed_ || !ok;
    return ok;
}

bool ListingWriter::finish() {
    flush();
    return file_.close() && !failed_;
}

} // namespace brindle::files
