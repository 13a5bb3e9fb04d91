// The caller's path record that cSplitPath fills: four variable-length
// strings, each a string handle owned by the caller's record. The handles
// take 4 bytes in the 32-bit layout and 8 in the 64-bit one
// (common/record_layout.h), so here the two layouts part.
#pragma once

#include "common/record_layout.h"
#include "platform/ole.h"

#include <cstddef>
#include <cstdint>

namespace brindle::files::layout32 {

#pragma pack(push, 4)
struct PathParts {
    uint32_t Drive;
    uint32_t Directory;
    uint32_t FileName;
    uint32_t Ext;
};
#pragma pack(pop)

static_assert(offsetof(PathParts, Drive) == 0);
static_assert(offsetof(PathParts, Directory) == 4);
static_assert(offsetof(PathParts, FileName) == 8);
static_assert(offsetof(PathParts, Ext) == 12);
static_assert(sizeof(PathParts) == 16);

} // namespace brindle::files::layout32

namespace brindle::files::layout64 {

struct PathParts {
    alignas(8) uint64_t Drive;
    alignas(8) uint64_t Directory;
    alignas(8) uint64_t FileName;
    alignas(8) uint64_t Ext;
};

static_assert(offsetof(PathParts, Drive) == 0);
static_assert(offsetof(PathParts, Directory) == 8);
static_assert(offsetof(PathParts, FileName) == 16);
static_assert(offsetof(PathParts, Ext) == 24);
static_assert(sizeof(PathParts) == 32);

} // namespace brindle::files::layout64

// The record as this build reads and writes it, with real string handles
// where the layouts above hold their bits.
struct PathParts {
    BSTR Drive;     // "C:" or empty
    BSTR Directory; // with its leading and trailing separator
    BSTR FileName;  // without extension
    BSTR Ext;       // with its full stop
};

namespace brindle::files {
using PathPartsLayout = common::BuildRecord<layout32::PathParts, layout64::PathParts>;
static_assert(sizeof(BSTR) == sizeof(PathPartsLayout::Drive));
static_assert(offsetof(::PathParts, Drive) == offsetof(PathPartsLayout, Drive));
static_assert(offsetof(::PathParts, Directory) == offsetof(PathPartsLayout, Directory));
static_assert(offsetof(::PathParts, FileName) == offsetof(PathPartsLayout, FileName));
static_assert(offsetof(::PathParts, Ext) == offsetof(PathPartsLayout, Ext));
static_assert(sizeof(::PathParts) == sizeof(PathPartsLayout));
} // namespace brindle::files
