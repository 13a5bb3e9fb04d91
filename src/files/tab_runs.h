// Runs of spaces turned into tabs and tabs into spaces, without regard to
// columns or tab stops, in 32,768-byte blocks.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::files {

enum TabCode : int32_t {
    kTabBadWidth = -1,   // compressing with a width below 1
    kTabBlockTooBig = -2 // an expanded block would pass 65,536 bytes
};

// Every run of k spaces becomes k / width tabs then k % width spaces; a run
// cut by a block's end counts as two runs. Bytes written, kTabBadWidth, or a
// TextFileCode (kTextTargetNotCreated also when both names are one file).
int32_t compress_tabs(std::string_view source, std::string_view target, int32_t width);

// Every tab becomes `width` spaces (none when width is below 1). A block
// whose tabs × width + length passes 65,536 ends the call with
// kTabBlockTooBig. Bytes written or a code; partial targets are deleted.
int32_t expand_tabs(std::string_view source, std::string_view target, int32_t width);

} // namespace brindle::files
