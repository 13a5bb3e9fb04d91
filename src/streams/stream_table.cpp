#include "streams/stream_table.h"

#include <mutex>
#include <set>
#include <vector>

namespace brindle::streams {

namespace {

using frame::HandleKind;

// The numbers of the streams cFopen opened, for cFcloseall and cFflushall
// (the table itself cannot list its numbers).
std::mutex &open_lock() {
    static std::mutex m;
    return m;
}
std::set<int32_t> &open_numbers() {
    static std::set<int32_t> numbers;
    return numbers;
}

int32_t standard_numbers[3] = {0, 0, 0};

} // namespace

int32_t open_stream(std::string_view path, std::string_view mode) {
    std::unique_ptr<Stream> s = Stream::open(path, mode);
    if (!s)
        return 0;
    std::shared_ptr<Stream> shared(std::move(s));
    std::lock_guard<std::mutex> hold(open_lock());
    const int32_t number = frame::handle_add(HandleKind::Stream, shared);
    if (number != 0)
        open_numbers().insert(number);
    return number;
}

std::shared_ptr<Stream> find_stream(int32_t number) { return frame::handle_get<Stream>(HandleKind::Stream, number); }

int close_stream(int32_t number) {
    std::shared_ptr<Stream> s = find_stream(number);
    if (!s)
        return kEof;
    if (s->is_standard()) {
        std::lock_guard<std::mutex> hold(s->lock);
        s->flush();
        return kEof;
    }
    {
        std::lock_guard<std::mutex> hold(open_lock());
        if (!frame::handle_remove(HandleKind::Stream, number))
            return kEof; // closed meanwhile
        open_numbers().erase(number);
    }
    std::lock_guard<std::mutex> hold(s->lock);
    return s->close();
}

int32_t close_all_streams() {
    std::vector<std::shared_ptr<Stream>> closing;
    {
        std::lock_guard<std::mutex> hold(open_lock());
        for (const int32_t number : open_numbers())
            if (auto object = frame::handle_remove(HandleKind::Stream, number))
                closing.push_back(std::static_pointer_cast<Stream>(object));
        open_numbers().clear();
    }
    for (auto &s : closing) {
        std::lock_guard<std::mutex> hold(s->lock);
        s->close();
    }
    return static_cast<int32_t>(closing.size());
}

int32_t flush_all_streams() {
    std::vector<std::shared_ptr<Stream>> open;
    {
        std::lock_guard<std::mutex> hold(open_lock());
        for (const int32_t number : open_numbers())
            if (auto s = find_stream(number))
                open.push_back(s);
        for (const int32_t number : standard_numbers)
            if (auto s = find_stream(number))
                open.push_back(s);
    }
    for (auto &s : open) {
        std::lock_guard<std::mutex> hold(s->lock);
        s->flush();
    }
    // The runtime counts its three standard streams as open whether or not
    // the caller has asked for them.
    int32_t count = 3;
    for (auto &s : open)
        if (!s->is_standard())
            ++count;
    return count;
}

int32_t standard_stream(platform::StdStream which) {
    std::lock_guard<std::mutex> hold(open_lock());
    int32_t &number = standard_numbers[static_cast<int>(which)];
    if (number == 0 || !find_stream(number)) {
        std::shared_ptr<Stream> s(Stream::standard(which));
        number = frame::handle_add(HandleKind::Stream, s);
    }
    return number;
}

} // namespace brindle::streams
