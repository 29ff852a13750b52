#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include "PlistCore/memory/ZeroedArray.h"

namespace plist::detail {

namespace {

TEST(ZeroedArrayTest, itemsAreZeroAtFirst) {
    for (const std::size_t count : {std::size_t{1}, std::size_t{1000}, std::size_t{1000000}}) {
        ZeroedArray<std::uint64_t> array(count);
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < count; ++i) {
            sum += array[i];
            array[i] = i + 1;
        }
        EXPECT_EQ(sum, 0U);
        EXPECT_EQ(array[count - 1], count);
    }
}

TEST(ZeroedArrayTest, moves) {
    for (const std::size_t count : {std::size_t{10}, std::size_t{1000000}}) {
        ZeroedArray<std::uint32_t> first(count);
        first[count - 1] = 7;
        ZeroedArray<std::uint32_t> second(std::move(first));
        ZeroedArray<std::uint32_t> third;
        third = std::move(second);
        EXPECT_EQ(third[count - 1], 7U);
    }
}

TEST(ZeroedArrayTest, refusesImpossibleCounts) {
    for (const std::size_t count :
         {std::numeric_limits<std::size_t>::max(), std::numeric_limits<std::size_t>::max() / 8}) {
        EXPECT_THROW(ZeroedArray<std::uint64_t> array(count), std::bad_alloc);
    }
}

}  // namespace

}  // namespace plist::detail
