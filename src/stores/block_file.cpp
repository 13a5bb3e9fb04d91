#include "stores/block_file.h"

#include "files/path_names.h"
#include "platform/file.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace brindle::stores {

namespace {

constexpr size_t kPiece = 32768;

// The size in an int32_t result; a block of 2 GB or more cannot report its
// size in a Long, and the stores never make one.
int32_t transferred(size_t size) { return size > INT32_MAX ? INT32_MAX : static_cast<int32_t>(size); }

} // namespace

int32_t block_file_name_code(std::string_view name) {
    if (name.empty())
        return kBlockEmptyName;
    return files::filename_validity(name) == files::kNameValid ? 0 : kBlockBadName;
}

int32_t save_block(std::string_view name, const void *data, size_t size) {
    if (const int32_t code = block_file_name_code(name); code != 0)
        return code;
    if (!platform::delete_if_exists(name))
        return kBlockCannotDelete;
    platform::File file = platform::File::open(name, platform::OpenMode::Create);
    if (!file.is_open())
        return kBlockCannotOpen;
    const auto *p = static_cast<const uint8_t *>(data);
    for (size_t done = 0; done < size;) {
        const size_t n = std::min(kPiece, size - done);
        if (!file.write(p + done, n)) {
            file.close();
            platform::delete_file(name);
            return n == kPiece ? kBlockPieceWriteFailed : kBlockLastWriteFailed;
        }
        done += n;
    }
    if (!file.close()) {
        platform::delete_file(name);
        return kBlockLastWriteFailed;
    }
    if (platform::file_size(name) != static_cast<int64_t>(size)) {
        platform::delete_file(name);
        return kBlockBadSize;
    }
    return transferred(size);
}

int32_t load_block(std::string_view name, void *data, size_t size, size_t head,
                   const std::function<bool(const uint8_t *head)> &accept_head) {
    if (const int32_t code = block_file_name_code(name); code != 0)
        return code;
    if (platform::file_size(name) != static_cast<int64_t>(size))
        return kBlockBadSize;
    platform::File file = platform::File::open(name, platform::OpenMode::ReadWrite);
    if (!file.is_open())
        return kBlockCannotOpen;
    auto *p = static_cast<uint8_t *>(data);
    size_t done = 0;
    if (accept_head) {
        head = std::min(head, size);
        std::vector<uint8_t> first(head);
        if (file.read(first.data(), head) != static_cast<int64_t>(head))
            return head == kPiece ? kBlockPieceReadFailed : kBlockLastReadFailed;
        if (!accept_head(first.data()))
            return kBlockBadSize;
        std::memcpy(p, first.data(), head);
        done = head;
    }
    while (done < size) {
        const size_t n = std::min(kPiece, size - done);
        const int64_t got = file.read(p + done, n);
        if (got < 0)
            return n == kPiece ? kBlockPieceReadFailed : kBlockLastReadFailed;
        if (got == 0)
            return kBlockBadSize; // the file shrank meanwhile
        done += static_cast<size_t>(got);
    }
    return transferred(size);
}

} // namespace brindle::stores
