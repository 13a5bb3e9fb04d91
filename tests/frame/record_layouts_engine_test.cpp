// Both layouts of every record a client passes, worked out by hand from the
// Type blocks of exports/*.bas and VB's rules: 32-bit VB and VBA align a
// member to its size but at most 4, 64-bit VBA to its size up to 8 (String
// handles take 4 bytes, or 8 with 8-byte alignment); the size rounds up to
// the largest alignment. The build must use the layout of its word size.
#include "arrays/array_records.h"
#include "files/path_record.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {

// offsetof of each member in declaration order, then the size.
template <class R> std::vector<size_t> array_parameters_layout() {
    return {offsetof(R, Reserved),    offsetof(R, LowerBound), offsetof(R, UpperBound),
            offsetof(R, ElementSize), offsetof(R, Dimensions), offsetof(R, Count), sizeof(R)};
}
template <class R> std::vector<size_t> sort_descriptor_layout() {
    return {offsetof(R, RecordSize), offsetof(R, CurrentKey), offsetof(R, KeyOffset), offsetof(R, KeyLength),
            offsetof(R, KeyType),    offsetof(R, KeyOrder),   sizeof(R)};
}
template <class R> std::vector<size_t> path_parts_layout() {
    return {offsetof(R, Drive), offsetof(R, Directory), offsetof(R, FileName), offsetof(R, Ext), sizeof(R)};
}

} // namespace

TEST(RecordLayouts, ArrayParameters) {
    // Long at 0; five Integers at 4, 6, 8, 10, 12; 14 bytes rounded up to
    // the Long's 4. No member is over 4 bytes, so 64-bit VBA agrees.
    const std::vector<size_t> both = {0, 4, 6, 8, 10, 12, 16};
    EXPECT_EQ(array_parameters_layout<brindle::arrays::layout32::ArrayParameters>(), both);
    EXPECT_EQ(array_parameters_layout<brindle::arrays::layout64::ArrayParameters>(), both);
    EXPECT_EQ(sizeof(ArrayParameters), 16u);
    EXPECT_EQ(offsetof(ArrayParameters, Count), 12u);
}

TEST(RecordLayouts, TypedSortDescriptor) {
    // Two Longs (0, 4), then four arrays of ten Integers, 20 bytes each:
    // 8, 28, 48, 68; 88 bytes, already a multiple of 4. Same in 64-bit VBA.
    const std::vector<size_t> both = {0, 4, 8, 28, 48, 68, 88};
    EXPECT_EQ(sort_descriptor_layout<brindle::arrays::layout32::TypedSortDescriptor>(), both);
    EXPECT_EQ(sort_descriptor_layout<brindle::arrays::layout64::TypedSortDescriptor>(), both);
    EXPECT_EQ(sizeof(TypedSortDescriptor), 88u);
    EXPECT_EQ(offsetof(TypedSortDescriptor, KeyOrder), 68u);
}

TEST(RecordLayouts, PathPartsDiffer) {
    // Four String handles: 4 bytes each at 0, 4, 8, 12 (16 in all) for
    // 32-bit clients; 8 bytes each at 0, 8, 16, 24 (32) for 64-bit VBA.
    const std::vector<size_t> vb32 = {0, 4, 8, 12, 16};
    const std::vector<size_t> vba64 = {0, 8, 16, 24, 32};
    EXPECT_EQ(path_parts_layout<brindle::files::layout32::PathParts>(), vb32);
    EXPECT_EQ(path_parts_layout<brindle::files::layout64::PathParts>(), vba64);
    EXPECT_EQ(path_parts_layout<PathParts>(), sizeof(void *) == 8 ? vba64 : vb32);
}
