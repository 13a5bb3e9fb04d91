// The records of the typed-array family, laid out as VB lays out the
// caller's user-defined types (4-byte alignment).
#pragma once

#include <cstddef>
#include <cstdint>

#pragma pack(push, 4)

// Filled by cArrayPrm from dimension 1 of any array. VB's Len of it is 14;
// in memory it occupies 16 bytes.
struct ArrayParameters {
    int32_t Reserved;    // always 0
    int16_t LowerBound;  // truncated to 16 bits
    int16_t UpperBound;  // truncated to 16 bits
    int16_t ElementSize;
    int16_t Dimensions;
    int16_t Count;       // UpperBound - LowerBound + 1 in 16 bits
};

// The keys of cSortTypedArray: up to ten, used from the first whose order
// is not 0 until the next whose order is 0.
struct TypedSortDescriptor {
    int32_t RecordSize;      // written back: the array's element size
    int32_t CurrentKey;      // working field: the key being compared
    int16_t KeyOffset[10];   // byte offset of the key in the record
    uint16_t KeyLength[10];  // text keys: characters compared, 0 = to the zero byte
    int16_t KeyType[10];     // how the field is read and compared
    int16_t KeyOrder[10];    // 0 unused, > 0 ascending, < 0 descending
};

#pragma pack(pop)

static_assert(offsetof(ArrayParameters, Reserved) == 0);
static_assert(offsetof(ArrayParameters, LowerBound) == 4);
static_assert(offsetof(ArrayParameters, UpperBound) == 6);
static_assert(offsetof(ArrayParameters, ElementSize) == 8);
static_assert(offsetof(ArrayParameters, Dimensions) == 10);
static_assert(offsetof(ArrayParameters, Count) == 12);
static_assert(sizeof(ArrayParameters) == 16);

static_assert(offsetof(TypedSortDescriptor, RecordSize) == 0);
static_assert(offsetof(TypedSortDescriptor, CurrentKey) == 4);
static_assert(offsetof(TypedSortDescriptor, KeyOffset) == 8);
static_assert(offsetof(TypedSortDescriptor, KeyLength) == 28);
static_assert(offsetof(TypedSortDescriptor, KeyType) == 48);
static_assert(offsetof(TypedSortDescriptor, KeyOrder) == 68);
static_assert(sizeof(TypedSortDescriptor) == 88);
