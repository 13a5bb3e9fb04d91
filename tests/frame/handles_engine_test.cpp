// The handle table: numbers name exactly one open object of one kind.
#include "frame/handles.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

using namespace brindle::frame;

struct Counted : HandleObject {
    explicit Counted(int *alive) : alive_(alive) { ++*alive_; }
    ~Counted() override { --*alive_; }
    int *alive_;
};

TEST(HandleTable, NumbersNameOneObjectOfOneKindUntilRemoved) {
    int alive = 0;
    const int32_t before = handles_open();
    const int32_t a = handle_add(HandleKind::DiskArray, std::make_shared<Counted>(&alive));
    const int32_t b = handle_add(HandleKind::HugeArray, std::make_shared<Counted>(&alive));
    ASSERT_GT(a, 0);
    ASSERT_GT(b, 0);
    EXPECT_NE(a, b);
    EXPECT_EQ(handles_open(), before + 2);
    EXPECT_NE(handle_find(HandleKind::DiskArray, a), nullptr);
    EXPECT_EQ(handle_find(HandleKind::HugeArray, a), nullptr); // wrong kind
    EXPECT_EQ(handle_find(HandleKind::DiskArray, b), nullptr);
    for (int32_t bogus : {0, -1, a + 1, a ^ 0x10000, a & 0xFFFF, 0x7FFFFFFF})
        EXPECT_EQ(handle_find(HandleKind::DiskArray, bogus), nullptr) << bogus;

    // A holder keeps the object alive after its removal; the number is dead.
    std::shared_ptr<HandleObject> held = handle_find(HandleKind::DiskArray, a);
    EXPECT_NE(handle_remove(HandleKind::DiskArray, a), nullptr);
    EXPECT_EQ(handle_remove(HandleKind::DiskArray, a), nullptr);
    EXPECT_EQ(alive, 2);
    held.reset();
    EXPECT_EQ(alive, 1);

    // The slot comes back under another number.
    const int32_t c = handle_add(HandleKind::DiskArray, std::make_shared<Counted>(&alive));
    EXPECT_EQ(c & 0xFFFF, a & 0xFFFF);
    EXPECT_NE(c, a);
    EXPECT_EQ(handle_find(HandleKind::DiskArray, a), nullptr);
    handle_remove(HandleKind::DiskArray, c);
    handle_remove(HandleKind::HugeArray, b);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(handles_open(), before);
}

TEST(HandleTable, AFullTableRefusesAndRecovers) {
    int alive = 0;
    std::vector<int32_t> numbers;
    for (;;) {
        const int32_t n = handle_add(HandleKind::Stream, std::make_shared<Counted>(&alive));
        if (n == 0)
            break;
        numbers.push_back(n);
        ASSERT_LE(numbers.size(), static_cast<size_t>(kMaxHandles));
    }
    EXPECT_EQ(handles_open(), kMaxHandles);
    EXPECT_EQ(std::set<int32_t>(numbers.begin(), numbers.end()).size(), numbers.size());
    for (int32_t n : numbers) {
        EXPECT_GT(n, 0);
        EXPECT_NE(n, -1);
    }
    handle_remove(HandleKind::Stream, numbers.back());
    const int32_t again = handle_add(HandleKind::Stream, std::make_shared<Counted>(&alive));
    EXPECT_NE(again, 0);
    EXPECT_NE(again, numbers.back());
    numbers.back() = again;
    for (int32_t n : numbers)
        handle_remove(HandleKind::Stream, n);
    EXPECT_EQ(alive, 0);
}

} // namespace
