#include "platform/replace_file.h"

#include "platform/clock.h"
#include "platform/file_info.h"

#include <atomic>
#include <cstdio>

namespace brindle::platform {

File create_file_beside(std::string_view beside, std::string *name) {
    const size_t cut = beside.find_last_of("\\/:");
    const std::string dir(cut == std::string_view::npos ? std::string_view() : beside.substr(0, cut + 1));
    static std::atomic<uint32_t> counter{0};
    uint32_t seed = process_id() * 2654435761u ^ tick_count();
    for (int attempt = 0; attempt < 100; ++attempt) {
        seed = seed * 1664525u + 1013904223u + counter.fetch_add(1);
        char leaf[32];
        std::snprintf(leaf, sizeof leaf, "~br%08x.tmp", seed);
        *name = dir + leaf;
        int error = 0;
        File f = File::open(*name, OpenMode::CreateNew, &error);
        if (f.is_open())
            return f;
        if (error != kFileExists)
            break;
    }
    name->clear();
    return File();
}

} // namespace brindle::platform
