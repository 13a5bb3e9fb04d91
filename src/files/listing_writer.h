// The listing files of the search exports: one name a line, each line ending
// CR LF, gathered and written in blocks of about 32 KiB.
#pragma once

#include "platform/file.h"

#include <string>
#include <string_view>

namespace brindle::files {

class ListingWriter {
  public:
    // Writes into `file`, which must be open for writing.
    explicit ListingWriter(platform::File file);

    // Adds the line `directory` + `name` + CR LF; false when a block write
    // failed (the listing is then incomplete and should end).
    bool add(std::string_view directory, std::string_view name);

    // Writes what is gathered and closes the file; false when any write of
    // the listing or the close failed.
    bool finish();

  private:
    bool flush();

    platform::File file_;
    std::string buffer_;
    bool failed_ = false;
};

} // namespace brindle::files
