#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>

#include "PlistCore/memory/LargeMemory.h"

namespace plist::detail {

namespace {

using LargeMemory::Pages;
using LargeMemory::unit;

TEST(LargeMemoryTest, isZeroAndAligned) {
    for (const Pages pages : {Pages::usual, Pages::huge}) {
        const std::size_t size = 3 * unit;
        auto* const memory = static_cast<char*>(LargeMemory::map(size, pages));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % unit, 0U);
        EXPECT_TRUE(std::all_of(memory, memory + size, [](char byte) { return byte == 0; }));
        memory[0] = 'a';
        memory[size - 1] = 'z';
        EXPECT_EQ(memory[size - 1], 'z');
        LargeMemory::unmap(memory, size);
    }
}

TEST(LargeMemoryTest, sizesAreRoundedUp) {
    EXPECT_EQ(LargeMemory::rounded(0), 0U);
    EXPECT_EQ(LargeMemory::rounded(1), unit);
    EXPECT_EQ(LargeMemory::rounded(unit), unit);
    EXPECT_EQ(LargeMemory::rounded(unit + 1), 2 * unit);
}

TEST(LargeMemoryTest, refusesImpossibleSizes) {
    EXPECT_THROW(LargeMemory::map(0, Pages::usual), std::bad_alloc);
    EXPECT_THROW(LargeMemory::map(std::size_t{1} << 62, Pages::usual), std::bad_alloc);
    EXPECT_THROW(LargeMemory::map(std::numeric_limits<std::size_t>::max() - unit + 1, Pages::huge),
                 std::bad_alloc);
}

}  // namespace

}  // namespace plist::detail
