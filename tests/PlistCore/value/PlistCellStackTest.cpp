#include <gtest/gtest.h>

#include <cstdint>
#include <new>

#include "PlistCore/value/PlistCellStack.h"

namespace plist::detail {

namespace {

void fill(PlistCellStack& stack, std::size_t count) {
    for (std::size_t number = 0; number < count; ++number) {
        stack.push(PlistCell::ofUid(number));
    }
}

TEST(PlistCellStackTest, growsToItsCapacityAndNoFurther) {
    for (const std::size_t capacity : {1U, 2U, 4095U, 4096U, 4097U, 300000U}) {
        PlistCellStack stack(capacity);
        EXPECT_EQ(stack.size(), 0U);
        fill(stack, capacity);
        EXPECT_EQ(stack.size(), capacity);
        EXPECT_EQ(stack.back().word(), capacity - 1);
        EXPECT_THROW(stack.push(PlistCell()), std::bad_alloc);
        EXPECT_EQ(stack.size(), capacity);
    }
    PlistCellStack stack(0);
    EXPECT_NO_THROW(stack.push(PlistCell()));
}

TEST(PlistCellStackTest, showsAndDropsWhatIsOnTop) {
    PlistCellStack stack(100);
    fill(stack, 10);
    const auto top = stack.from(7);
    ASSERT_EQ(top.size(), 3U);
    EXPECT_EQ(top[0].word(), 7U);
    EXPECT_EQ(top[2].word(), 9U);
    EXPECT_TRUE(stack.from(10).empty());
    stack.shrink(7);
    EXPECT_EQ(stack.size(), 7U);
    EXPECT_EQ(stack.back().word(), 6U);
    stack.push(PlistCell::ofUid(77));
    EXPECT_EQ(stack.back().word(), 77U);
    EXPECT_EQ(stack.from(0).size(), 8U);
}

TEST(PlistCellStackTest, refusesImpossibleSizes) {
    EXPECT_THROW(PlistCellStack(SIZE_MAX), std::bad_alloc);
    EXPECT_THROW(PlistCellStack(SIZE_MAX / 2 / sizeof(PlistCell)), std::bad_alloc);
}

}  // namespace

}  // namespace plist::detail
