#include "files/block_copy.h"

#include "platform/file.h"
#include "platform/file_info.h"
#include "platform/file_ops.h"

#include <climits>
#include <memory>
#include <new>

namespace brindle::files {

namespace {

// Bigger than the 32,768 bytes a block once was: the same bytes land in
// the target, in fewer calls.
constexpr size_t kBuffer = size_t{32768} * 8;

// A 32-bit running total, wrapping as the Long it is returned in.
int32_t as_long(uint64_t total) { return static_cast<int32_t>(static_cast<uint32_t>(total)); }

int32_t copy_open(platform::File &in, platform::File &out) {
    int64_t moved = 0;
    switch (platform::copy_offload(in, out, &moved)) {
    case platform::Offload::Done:
        return as_long(static_cast<uint64_t>(moved));
    case platform::Offload::Failed:
        return kCopyWriteError;
    case platform::Offload::Unsupported:
        break;
    }
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[kBuffer]);
    if (!buffer)
        return kCopyNoBuffer;
    uint64_t total = 0;
    for (;;) {
        const int64_t got = in.read(buffer.get(), kBuffer);
        if (got < 0)
            return kCopyReadError;
        if (got == 0)
            break;
        if (!out.write(buffer.get(), static_cast<size_t>(got)))
            return kCopyWriteError;
        total += static_cast<uint64_t>(got);
    }
    return as_long(total);
}

} // namespace

int32_t block_copy(std::string_view source, std::string_view target) {
    platform::File in = platform::File::open(source, platform::OpenMode::Read);
    if (!in.is_open())
        return kCopySourceOpen;
    // Emptying the target would empty the source: refuse before opening it.
    if (platform::same_file(source, target))
        return kCopyTargetOpen;
    platform::File out = platform::File::open(target, platform::OpenMode::Create);
    if (!out.is_open())
        return kCopyTargetOpen;
    int32_t result = copy_open(in, out);
    if (!out.close() && result >= 0)
        result = kCopyWriteError; // the last bytes could not be written
    in.close();
    // A failure, or a total past 2 GB that reads as negative, loses the target.
    if (result < 0)
        platform::remove_file(target);
    return result;
}

int32_t force_copy(std::string_view source, std::string_view target, bool force) {
    if (force) {
        uint32_t now = 0;
        if (platform::get_attributes(target, &now) == platform::kNoError && !(now & platform::kAttrDirectory) &&
            !platform::same_file(source, target))
            platform::set_attributes(target, 0);
    }
    const int32_t copied = block_copy(source, target);
    if (force && copied >= 0) {
        uint32_t attributes = 0;
        if (platform::get_attributes(source, &attributes) != platform::kNoError ||
            platform::set_attributes(target, attributes & ~static_cast<uint32_t>(platform::kAttrReparsePoint)) !=
                platform::kNoError)
            return -1;
    }
    return copied;
}

bool stepped_copy(std::string_view source, std::string_view target, const std::function<void(int32_t)> &start,
                  const std::function<void()> &step) {
    constexpr size_t kBlock = 32768;
    platform::File in = platform::File::open(source, platform::OpenMode::Read);
    if (!in.is_open() || platform::same_file(source, target))
        return false;
    const int64_t size = in.size();
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[kBlock]);
    if (size < 0 || !buffer)
        return false;
    platform::File out = platform::File::open(target, platform::OpenMode::Create);
    if (!out.is_open())
        return false;
    start(static_cast<int32_t>(size / static_cast<int64_t>(kBlock) > INT32_MAX ? INT32_MAX : size / static_cast<int64_t>(kBlock)));
    bool ok = true;
    for (;;) {
        const int64_t got = in.read(buffer.get(), kBlock);
        if (got <= 0) {
            ok = got == 0;
            break;
        }
        if (!out.write(buffer.get(), static_cast<size_t>(got))) {
            ok = false;
            break;
        }
        step();
    }
    ok = out.close() && ok;
    if (!ok)
        platform::remove_file(target);
    return ok;
}

} // namespace brindle::files
