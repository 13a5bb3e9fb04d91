// The client's streams as numbers of the handle table: what cFopen hands
// out and every stream export looks up again. A closed, stale or random
// number finds nothing. The three standard streams get numbers of their own
// on first use and are never closed.
#pragma once

#include "streams/stream.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace brindle::streams {

// Opens a stream and registers it; 0 when it cannot be opened (or the
// table is full).
int32_t open_stream(std::string_view path, std::string_view mode);
// The stream `number` names, or null.
std::shared_ptr<Stream> find_stream(int32_t number);
// Closes and unregisters: the close result, or kEof for a number that names
// no stream and for a standard stream (flushed, left open).
int close_stream(int32_t number);
// Closes every stream but the standard ones; the number closed.
int32_t close_all_streams();
// Flushes every stream; the number of open streams, the standard three
// included.
int32_t flush_all_streams();
// The number of a standard stream (0 only when the table is full).
int32_t standard_stream(platform::StdStream which);

} // namespace brindle::streams
