#include "arrays/scratch_file.h"

#include "platform/file_info.h"
#include "runtime/unique_name.h"

#include <utility>

namespace brindle::arrays {

using platform::File;
using platform::OpenMode;

ScratchFile::ScratchFile(std::string_view given) {
    if (!given.empty()) {
        create(std::string(given), OpenMode::CreateReadWrite);
        return;
    }
    // The unique-name maker's template, "~aXXXXXX" first. When the name
    // it makes is taken all the same (a call at once created it after
    // the maker looked, or a dangling link, which the maker does not
    // see, has it), the next template is tried: "~b", "~c", ...
    for (int attempt = 0; attempt < 26 && !created_; ++attempt) {
        std::string name = std::string{'~', static_cast<char>('a' + attempt)} + "XXXXXX";
        if (!runtime::make_unique_name(&name) ||
            create(std::move(name), OpenMode::CreateNew) != platform::kFileExists)
            return;
    }
}

ScratchFile::~ScratchFile() {
    file_.close();
    if (created_)
        platform::delete_if_exists(name_);
}

int ScratchFile::create(std::string name, OpenMode mode) {
    int error = 0;
    file_ = File::open(name, mode, &error);
    created_ = file_.is_open();
    if (created_)
        name_ = std::move(name);
    return created_ ? 0 : error;
}

} // namespace brindle::arrays
