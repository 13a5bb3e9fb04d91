// Profile files: the exports. Every string arrives by value and is read up
// to its first zero byte; an empty key or value stands for none at all.
#include "frame/frame.h"
#include "platform/profile.h"
#include "system/profile_lists.h"

#include <string>

using namespace brindle::frame;
using namespace brindle::system;
namespace platform = brindle::platform;

namespace {

std::string text_of(BSTR s) { return std::string(StrArg::by_val(s).text()); }

} // namespace

BRINDLE_EXPORT(BSTR) cGetIni(BSTR Section, BSTR Key, BSTR DefaultValue, BSTR FileName) {
    return guarded_string([&] {
        return new_string(profile_value(text_of(Section), text_of(Key), text_of(DefaultValue), text_of(FileName)));
    });
}

BRINDLE_EXPORT(int32_t) cPutIni(BSTR Section, BSTR Key, BSTR Value, BSTR FileName) {
    return guarded(int32_t{0}, [&] {
        const std::string section = text_of(Section), key = text_of(Key), value = text_of(Value),
                          file = text_of(FileName);
        return platform::profile_write(section.c_str(), key.empty() ? nullptr : key.c_str(),
                                       value.empty() ? nullptr : value.c_str(), file.c_str());
    });
}

BRINDLE_EXPORT(int32_t) cFlushIni(BSTR FileName) {
    return guarded(int32_t{0}, [&] { return platform::profile_write(nullptr, nullptr, nullptr, text_of(FileName).c_str()); });
}

BRINDLE_EXPORT(BSTR) cGetSectionItems(BSTR Section, BSTR FileName, int16_t *Count) {
    return guarded_string([&] {
        int16_t count = 0;
        const std::string items = section_items(text_of(Section), text_of(FileName), &count);
        if (Count != nullptr)
            *Count = count;
        return new_string(items);
    });
}

BRINDLE_EXPORT(BSTR) cGetSectionIni(BSTR FileName, int16_t *Count) {
    return guarded_string([&] {
        int16_t count = 0;
        const std::string names = section_list(text_of(FileName), &count);
        if (Count != nullptr)
            *Count = count;
        return new_string(names);
    });
}

BRINDLE_EXPORT(BSTR) cGetSystemDirectory() {
    return guarded_string([] { return new_string(directory_text(platform::system_directory)); });
}

BRINDLE_EXPORT(BSTR) cGetWindowsDirectory() {
    return guarded_string([] { return new_string(directory_text(platform::windows_directory)); });
}
