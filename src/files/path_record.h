// The caller's path record that cSplitPath fills: four variable-length
// strings, each a string handle owned by the caller's record.
#pragma once

#include "platform/ole.h"

#include <cstddef>

#pragma pack(push, 4)
struct PathParts {
    BSTR Drive;     // "C:" or empty
    BSTR Directory; // with its leading and trailing separator
    BSTR FileName;  // without extension
    BSTR Ext;       // with its full stop
};
#pragma pack(pop)

static_assert(offsetof(PathParts, Drive) == 0);
static_assert(offsetof(PathParts, Directory) == sizeof(BSTR));
static_assert(offsetof(PathParts, FileName) == 2 * sizeof(BSTR));
static_assert(offsetof(PathParts, Ext) == 3 * sizeof(BSTR));
static_assert(sizeof(PathParts) == 4 * sizeof(BSTR));
