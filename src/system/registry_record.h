// The caller's key-information record that cRegistryKeyInfo fills: five
// Longs and a variable-length string, whose handle takes 4 bytes in the
// 32-bit layout and 8 (aligned to 8) in the 64-bit one
// (common/record_layout.h).
#pragma once

#include "common/record_layout.h"
#include "platform/ole.h"

#include <cstddef>
#include <cstdint>

namespace brindle::system::layout32 {

#pragma pack(push, 4)
struct RegistryKeyInfo {
    int32_t SubKeys;
    int32_t MaxSubKeyLen;
    int32_t Values;
    int32_t MaxValueNameLen;
    int32_t MaxValueLen;
    uint32_t Summary;
};
#pragma pack(pop)

static_assert(offsetof(RegistryKeyInfo, SubKeys) == 0);
static_assert(offsetof(RegistryKeyInfo, MaxSubKeyLen) == 4);
static_assert(offsetof(RegistryKeyInfo, Values) == 8);
static_assert(offsetof(RegistryKeyInfo, MaxValueNameLen) == 12);
static_assert(offsetof(RegistryKeyInfo, MaxValueLen) == 16);
static_assert(offsetof(RegistryKeyInfo, Summary) == 20);
static_assert(sizeof(RegistryKeyInfo) == 24);

} // namespace brindle::system::layout32

namespace brindle::system::layout64 {

struct RegistryKeyInfo {
    int32_t SubKeys;
    int32_t MaxSubKeyLen;
    int32_t Values;
    int32_t MaxValueNameLen;
    int32_t MaxValueLen;
    alignas(8) uint64_t Summary;
};

static_assert(offsetof(RegistryKeyInfo, SubKeys) == 0);
static_assert(offsetof(RegistryKeyInfo, MaxSubKeyLen) == 4);
static_assert(offsetof(RegistryKeyInfo, Values) == 8);
static_assert(offsetof(RegistryKeyInfo, MaxValueNameLen) == 12);
static_assert(offsetof(RegistryKeyInfo, MaxValueLen) == 16);
static_assert(offsetof(RegistryKeyInfo, Summary) == 24);
static_assert(sizeof(RegistryKeyInfo) == 32);

} // namespace brindle::system::layout64

// The record as this build reads and writes it, with a real string handle
// where the layouts above hold its bits.
struct RegistryKeyInfo {
    int32_t SubKeys;
    int32_t MaxSubKeyLen;
    int32_t Values;
    int32_t MaxValueNameLen;
    int32_t MaxValueLen; // bytes
    BSTR Summary;        // "SubKeys;MaxSubKeyLen;Values;MaxValueNameLen;MaxValueLen"
};

namespace brindle::system {
using RegistryKeyInfoLayout = common::BuildRecord<layout32::RegistryKeyInfo, layout64::RegistryKeyInfo>;
static_assert(sizeof(BSTR) == sizeof(RegistryKeyInfoLayout::Summary));
static_assert(offsetof(::RegistryKeyInfo, SubKeys) == offsetof(RegistryKeyInfoLayout, SubKeys));
static_assert(offsetof(::RegistryKeyInfo, MaxSubKeyLen) == offsetof(RegistryKeyInfoLayout, MaxSubKeyLen));
static_assert(offsetof(::RegistryKeyInfo, Values) == offsetof(RegistryKeyInfoLayout, Values));
static_assert(offsetof(::RegistryKeyInfo, MaxValueNameLen) == offsetof(RegistryKeyInfoLayout, MaxValueNameLen));
static_assert(offsetof(::RegistryKeyInfo, MaxValueLen) == offsetof(RegistryKeyInfoLayout, MaxValueLen));
static_assert(offsetof(::RegistryKeyInfo, Summary) == offsetof(RegistryKeyInfoLayout, Summary));
static_assert(sizeof(::RegistryKeyInfo) == sizeof(RegistryKeyInfoLayout));
} // namespace brindle::system
