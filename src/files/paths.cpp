// Path names: the exports. Names arrive by value and are read up to their
// first zero byte, as the system sees a name. Only cFullPath, cFileDrive,
// cFilePathExists, cFileIsLegal and cUniqueFileName look at the disk.
#include "common/ascii.h"
#include "files/path_names.h"
#include "files/path_record.h"
#include "frame/frame.h"
#include "platform/directory.h"
#include "platform/file_info.h"
#include "runtime/unique_name.h"

using namespace brindle::frame;
using namespace brindle::files;
namespace platform = brindle::platform;

namespace {


using brindle::common::equal_no_case;

} // namespace

// Validates first; an invalid name empties all four fields and its code is
// the result.
BRINDLE_EXPORT(int16_t) cSplitPath(BSTR Path, PathParts *Parts) {
    return guarded(int16_t{kNameInvalid}, [&] {
        const std::string_view path = StrArg::by_val(Path).text();
        const int16_t code = filename_validity(path);
        if (Parts == nullptr)
            return code;
        if (code != kNameValid) {
            for (BSTR *f : {&Parts->Drive, &Parts->Directory, &Parts->FileName, &Parts->Ext})
                put_string_field(f, {});
            return code;
        }
        const PathPieces p = split_path(path);
        put_string_field(&Parts->Drive, p.drive);
        put_string_field(&Parts->Directory, p.dir);
        put_string_field(&Parts->FileName, p.name);
        put_string_field(&Parts->Ext, p.ext);
        return code;
    });
}

BRINDLE_EXPORT(BSTR) cMakePath(BSTR Drive, BSTR Directory, BSTR FileName, BSTR Ext) {
    return guarded_string([&] {
        const std::string joined = make_path(StrArg::by_val(Drive).text(), StrArg::by_val(Directory).text(),
                                            StrArg::by_val(FileName).text(), StrArg::by_val(Ext).text());
        return new_string(joined);
    });
}

// Absolute against the current directory, within 260 characters.
BRINDLE_EXPORT(BSTR) cFullPath(BSTR Path) {
    return guarded_string([&] {
        const std::string_view path = StrArg::by_val(Path).text();
        std::string out;
        if (path.empty() || !platform::full_path(path, &out, 260))
            return empty_string();
        return new_string(out);
    });
}

BRINDLE_EXPORT(BSTR) cTruncatePath(BSTR Path, int32_t MaxLength) {
    return guarded_string([&] { return new_string(truncate_path(StrArg::by_val(Path).text(), MaxLength)); });
}

BRINDLE_EXPORT(BSTR) cDefaultExtension(BSTR FileName, BSTR Ext) {
    return guarded_string([&] {
        const std::string_view name = StrArg::by_val(FileName).text();
        if (name.empty())
            return empty_string();
        return new_string(default_extension(name, StrArg::by_val(Ext).text()));
    });
}

// Meant to replace an extension, it keeps an existing one: the name is
// stripped only on a copy that is then thrown away, and clients rely on the
// result being that of cDefaultExtension.
BRINDLE_EXPORT(BSTR) cFixedExtension(BSTR FileName, BSTR Ext) { return cDefaultExtension(FileName, Ext); }

// An extension with a leading full stop takes the fixed rule, one without
// the default rule; both give the same text (an empty extension leaves the
// name as it is in every rule).
BRINDLE_EXPORT(BSTR) cAddExtension(BSTR FileName, BSTR Ext) { return cDefaultExtension(FileName, Ext); }

BRINDLE_EXPORT(BSTR) cStripExtension(BSTR FileName) {
    return guarded_string([&] { return new_string(strip_extension(StrArg::by_val(FileName).text())); });
}

BRINDLE_EXPORT(BSTR) cStripFilePath(BSTR FileName) {
    return guarded_string([&] { return new_string(strip_file_path(StrArg::by_val(FileName).text())); });
}

BRINDLE_EXPORT(BSTR) cStripFileName(BSTR FileName) {
    return guarded_string([&] {
        const std::string_view name = StrArg::by_val(FileName).text();
        if (name.empty())
            return empty_string();
        return new_string(strip_file_name(name));
    });
}

// The drive letter from the runtime's status call, or a blank when the
// file cannot be found.
BRINDLE_EXPORT(BSTR) cFileDrive(BSTR FileName) {
    return guarded_string([&] {
        platform::FileStatus st;
        const std::string_view name = StrArg::by_val(FileName).text();
        if (name.empty() || platform::file_status(name, &st) != 0 || st.drive < 0 || st.drive > 25)
            return new_string(" ");
        const char letter = static_cast<char>('A' + st.drive);
        return new_string(std::string_view(&letter, 1));
    });
}

BRINDLE_EXPORT(int16_t) cIsFilenameValid(BSTR FileName) {
    return filename_validity(StrArg::by_val(FileName).text());
}

// Every component that exists must be found under its own name: a wildcard
// or a short alias that the system resolves to another entry fails. A
// component that does not exist is no failure.
BRINDLE_EXPORT(int16_t) cFileIsLegal(BSTR FileName) {
    return guarded(int16_t{0}, [&] {
        std::string name(StrArg::by_val(FileName).text());
        if (name.empty())
            return int16_t{0};
        for (char &c : name)
            if (c == '/')
                c = '\\';
        if (name.back() == '\\')
            name.pop_back();
        platform::DirectorySearch search;
        while (!name.empty() && !(name.size() == 2 && name[1] == ':')) {
            const size_t sep = name.rfind('\\');
            const std::string_view component =
                sep == std::string::npos ? std::string_view(name) : std::string_view(name).substr(sep + 1);
            if (search.first(name, platform::EntryDetail::Kind) && !equal_no_case(search.entry().name, component))
                return int16_t{0};
            search.close();
            if (sep == std::string::npos)
                break;
            name.resize(sep);
        }
        return int16_t{-1};
    });
}

// "~~XXXXXX" with a one- or two-character prefix in front; a prefix of
// other lengths is ignored so that the name keeps its eight characters.
BRINDLE_EXPORT(BSTR) cUniqueFileName(BSTR *Prefix) {
    return guarded_string([&] {
        std::string name = "~~XXXXXX";
        const std::string_view prefix = StrArg::by_ref(Prefix).text();
        if (prefix.size() == 1 || prefix.size() == 2)
            name.replace(0, prefix.size(), prefix);
        if (!brindle::runtime::make_unique_name(&name))
            return empty_string();
        return new_string(name);
    });
}

// -1 when the file or directory exists, else the runtime's error number.
BRINDLE_EXPORT(int16_t) cFilePathExists(BSTR FileName) {
    return guarded(int16_t{platform::kNoSuchFile}, [&] {
        platform::FileStatus st;
        const int error = platform::file_status(StrArg::by_val(FileName).text(), &st);
        return error == 0 ? int16_t{-1} : static_cast<int16_t>(error);
    });
}
