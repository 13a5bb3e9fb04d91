// The records of the large data stores (common/record_layout.h). The disk-
// array and multi-array records are also the headers of their files, so
// their bytes are the same on every target. None of them has a member wider
// than 4 bytes and every member sits at a multiple of its size, so the 32-bit
// and the 64-bit layouts coincide; both are declared and checked all the
// same, so that a member added later shows where they part.
#pragma once

#include "common/record_layout.h"

#include <cstddef>
#include <cstdint>

namespace brindle::stores {

inline constexpr int32_t kDiskArrayHeaderSize = 200;
inline constexpr int32_t kMultiArrayHeaderSize = 748;
inline constexpr int16_t kHugeArrayRecordSize = 68;
inline constexpr int kSlots = 20; // arrays of a multi-array file
inline constexpr int kNameWidth = 128;
inline constexpr char kSignature[] = "KOV_347"; // 7 characters, no terminator in the record

} // namespace brindle::stores

#define BRINDLE_STORE_RECORDS                                                                                         \
    struct DiskArrayRecord {                                                                                          \
        int16_t HeaderSize;    /* 200 */                                                                              \
        char Signature[7];                                                                                            \
        char FileName[128];    /* ends at the first zero byte or space */                                            \
        uint8_t Reserved1;                                                                                            \
        int16_t VarType;       /* element type code */                                                               \
        int32_t Rows, Cols, Sheets;                                                                                   \
        int32_t Handle;        /* a number of the handle table; -1 when not open */                                  \
        int32_t ElementSize, FileSize, FullBlocks, LastBlock, SheetElements;                                          \
        int32_t LastOffset, LastSeek, Elapsed;                                                                        \
        int16_t NoSpaces;                                                                                             \
        char Reserved2[10];                                                                                           \
    };                                                                                                                \
    struct HugeArrayRecord {                                                                                          \
        int16_t RecordSize;    /* 68 */                                                                               \
        int16_t VarType;                                                                                              \
        int32_t Rows, Cols, Sheets;                                                                                   \
        int32_t Handle;        /* a number of the handle table; 0 when none */                                       \
        int32_t ElementSize, TotalSize, GigaBlocks, GigaRest, SheetElements, LastOffset;                              \
        int16_t NoSpaces;                                                                                             \
        char Reserved[22];                                                                                            \
    };                                                                                                                \
    struct MultiArrayRecord {                                                                                         \
        int16_t HeaderSize;    /* 748 */                                                                              \
        char Signature[7];                                                                                            \
        char FileName[128];                                                                                           \
        uint8_t Reserved1;                                                                                            \
        int16_t VarType[20];   /* 0: the slot is not used */                                                         \
        int16_t NoSpaces[20];                                                                                         \
        char Reserved2[2];                                                                                            \
        int32_t Rows[20], Cols[20], Sheets[20];                                                                       \
        int32_t Handle;                                                                                               \
        int32_t FileSize;                                                                                             \
        int32_t ElementSize[20], SheetElements[20], DataStart[20];                                                    \
        int32_t LastOffset, LastSeek, Elapsed;                                                                        \
        char Reserved3[28];                                                                                           \
    };

#define BRINDLE_STORE_RECORD_CHECKS                                                                                   \
    static_assert(offsetof(DiskArrayRecord, HeaderSize) == 0);                                                        \
    static_assert(offsetof(DiskArrayRecord, Signature) == 2);                                                         \
    static_assert(offsetof(DiskArrayRecord, FileName) == 9);                                                          \
    static_assert(offsetof(DiskArrayRecord, Reserved1) == 137);                                                       \
    static_assert(offsetof(DiskArrayRecord, VarType) == 138);                                                         \
    static_assert(offsetof(DiskArrayRecord, Rows) == 140);                                                            \
    static_assert(offsetof(DiskArrayRecord, Cols) == 144);                                                            \
    static_assert(offsetof(DiskArrayRecord, Sheets) == 148);                                                          \
    static_assert(offsetof(DiskArrayRecord, Handle) == 152);                                                          \
    static_assert(offsetof(DiskArrayRecord, ElementSize) == 156);                                                     \
    static_assert(offsetof(DiskArrayRecord, FileSize) == 160);                                                        \
    static_assert(offsetof(DiskArrayRecord, FullBlocks) == 164);                                                      \
    static_assert(offsetof(DiskArrayRecord, LastBlock) == 168);                                                       \
    static_assert(offsetof(DiskArrayRecord, SheetElements) == 172);                                                   \
    static_assert(offsetof(DiskArrayRecord, LastOffset) == 176);                                                      \
    static_assert(offsetof(DiskArrayRecord, LastSeek) == 180);                                                        \
    static_assert(offsetof(DiskArrayRecord, Elapsed) == 184);                                                         \
    static_assert(offsetof(DiskArrayRecord, NoSpaces) == 188);                                                        \
    static_assert(offsetof(DiskArrayRecord, Reserved2) == 190);                                                       \
    static_assert(sizeof(DiskArrayRecord) == 200);                                                                    \
    static_assert(offsetof(HugeArrayRecord, RecordSize) == 0);                                                        \
    static_assert(offsetof(HugeArrayRecord, VarType) == 2);                                                           \
    static_assert(offsetof(HugeArrayRecord, Rows) == 4);                                                              \
    static_assert(offsetof(HugeArrayRecord, Cols) == 8);                                                              \
    static_assert(offsetof(HugeArrayRecord, Sheets) == 12);                                                           \
    static_assert(offsetof(HugeArrayRecord, Handle) == 16);                                                           \
    static_assert(offsetof(HugeArrayRecord, ElementSize) == 20);                                                      \
    static_assert(offsetof(HugeArrayRecord, TotalSize) == 24);                                                        \
    static_assert(offsetof(HugeArrayRecord, GigaBlocks) == 28);                                                       \
    static_assert(offsetof(HugeArrayRecord, GigaRest) == 32);                                                         \
    static_assert(offsetof(HugeArrayRecord, SheetElements) == 36);                                                    \
    static_assert(offsetof(HugeArrayRecord, LastOffset) == 40);                                                       \
    static_assert(offsetof(HugeArrayRecord, NoSpaces) == 44);                                                         \
    static_assert(offsetof(HugeArrayRecord, Reserved) == 46);                                                         \
    static_assert(sizeof(HugeArrayRecord) == 68);                                                                     \
    static_assert(offsetof(MultiArrayRecord, HeaderSize) == 0);                                                       \
    static_assert(offsetof(MultiArrayRecord, Signature) == 2);                                                        \
    static_assert(offsetof(MultiArrayRecord, FileName) == 9);                                                         \
    static_assert(offsetof(MultiArrayRecord, Reserved1) == 137);                                                      \
    static_assert(offsetof(MultiArrayRecord, VarType) == 138);                                                        \
    static_assert(offsetof(MultiArrayRecord, NoSpaces) == 178);                                                       \
    static_assert(offsetof(MultiArrayRecord, Reserved2) == 218);                                                      \
    static_assert(offsetof(MultiArrayRecord, Rows) == 220);                                                           \
    static_assert(offsetof(MultiArrayRecord, Cols) == 300);                                                           \
    static_assert(offsetof(MultiArrayRecord, Sheets) == 380);                                                         \
    static_assert(offsetof(MultiArrayRecord, Handle) == 460);                                                         \
    static_assert(offsetof(MultiArrayRecord, FileSize) == 464);                                                       \
    static_assert(offsetof(MultiArrayRecord, ElementSize) == 468);                                                    \
    static_assert(offsetof(MultiArrayRecord, SheetElements) == 548);                                                  \
    static_assert(offsetof(MultiArrayRecord, DataStart) == 628);                                                      \
    static_assert(offsetof(MultiArrayRecord, LastOffset) == 708);                                                     \
    static_assert(offsetof(MultiArrayRecord, LastSeek) == 712);                                                       \
    static_assert(offsetof(MultiArrayRecord, Elapsed) == 716);                                                        \
    static_assert(offsetof(MultiArrayRecord, Reserved3) == 720);                                                      \
    static_assert(sizeof(MultiArrayRecord) == 748);

namespace brindle::stores::layout32 {
#pragma pack(push, 4)
BRINDLE_STORE_RECORDS
#pragma pack(pop)
BRINDLE_STORE_RECORD_CHECKS
} // namespace brindle::stores::layout32

namespace brindle::stores::layout64 {
BRINDLE_STORE_RECORDS
BRINDLE_STORE_RECORD_CHECKS
} // namespace brindle::stores::layout64

#undef BRINDLE_STORE_RECORDS
#undef BRINDLE_STORE_RECORD_CHECKS

namespace brindle::stores {
using DiskArrayRecord = common::BuildRecord<layout32::DiskArrayRecord, layout64::DiskArrayRecord>;
using HugeArrayRecord = common::BuildRecord<layout32::HugeArrayRecord, layout64::HugeArrayRecord>;
using MultiArrayRecord = common::BuildRecord<layout32::MultiArrayRecord, layout64::MultiArrayRecord>;
} // namespace brindle::stores

// The records as this build reads and writes them, under the names the
// export prototypes declare.
struct DiskArray : brindle::stores::DiskArrayRecord {};
struct HugeArray : brindle::stores::HugeArrayRecord {};
struct MultiArray : brindle::stores::MultiArrayRecord {};
static_assert(sizeof(DiskArray) == 200 && sizeof(HugeArray) == 68 && sizeof(MultiArray) == 748);
