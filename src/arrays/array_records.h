// The records of the typed-array family (common/record_layout.h). They hold
// only Integers and Longs, so the 32-bit and the 64-bit layouts coincide;
// both are declared and checked all the same, so that a member added later
// shows where they part.
#pragma once

#include "common/record_layout.h"

#include <cstddef>
#include <cstdint>

namespace brindle::arrays::layout32 {

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

} // namespace brindle::arrays::layout32

namespace brindle::arrays::layout64 {

// The same members aligned to their size up to 8 (none is larger than 4).
struct ArrayParameters {
    int32_t Reserved;
    int16_t LowerBound;
    int16_t UpperBound;
    int16_t ElementSize;
    int16_t Dimensions;
    int16_t Count;
};

struct TypedSortDescriptor {
    int32_t RecordSize;
    int32_t CurrentKey;
    int16_t KeyOffset[10];
    uint16_t KeyLength[10];
    int16_t KeyType[10];
    int16_t KeyOrder[10];
};

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

} // namespace brindle::arrays::layout64

// The records as this build reads and writes them, under the names the
// export prototypes declare.
struct ArrayParameters : brindle::common::BuildRecord<brindle::arrays::layout32::ArrayParameters,
                                                      brindle::arrays::layout64::ArrayParameters> {};
struct TypedSortDescriptor : brindle::common::BuildRecord<brindle::arrays::layout32::TypedSortDescriptor,
                                                          brindle::arrays::layout64::TypedSortDescriptor> {};
static_assert(sizeof(ArrayParameters) == 16 && sizeof(TypedSortDescriptor) == 88);
