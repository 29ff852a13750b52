#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

#include "PlistCore/binary/EqualObjectTable.h"

namespace plist::detail {

namespace {

constexpr auto never = [](std::uint32_t) { return false; };
constexpr auto always = [](std::uint32_t) { return true; };

}  // namespace

TEST(EqualObjectTableTest, findsWhatWasAdded) {
    EqualObjectTable table(10);
    EXPECT_EQ(table.findOrAdd(1, 0, always), std::nullopt);
    EXPECT_EQ(table.findOrAdd(1, 1, always), 0U);
    EXPECT_EQ(table.findOrAdd(1, 1, never), std::nullopt);
    EXPECT_EQ(table.findOrAdd(1, 2, [](std::uint32_t number) { return number == 1; }), 1U);
}

TEST(EqualObjectTableTest, asksOnlyWhereTheUpperHalfOfTheHashIsTheSame) {
    EqualObjectTable table(10);
    table.findOrAdd(std::uint64_t{7} << 32, 0, never);
    EXPECT_EQ(table.findOrAdd(std::uint64_t{7 + 1024} << 32, 1, always), std::nullopt);
    EXPECT_EQ(table.findOrAdd(std::uint64_t{7} << 32 | 5, 2, always), 0U);
    EXPECT_EQ(table.findOrAdd(std::uint64_t{7 + 1024} << 32, 2, always), 1U);
}

// Every hash of four numbers is the same one, so that they stand in one run of slots.
TEST(EqualObjectTableTest, growsPastWhatWasExpected) {
    EqualObjectTable table(0);
    const std::uint32_t count = 10000;
    const auto hash = [](std::uint32_t number) { return std::uint64_t{number / 4} << 32; };
    for (std::uint32_t number = 0; number < count; ++number) {
        ASSERT_EQ(table.findOrAdd(hash(number), number, never), std::nullopt);
    }
    for (std::uint32_t number = 0; number < count; ++number) {
        const auto isNumber = [number](std::uint32_t other) { return other == number; };
        ASSERT_EQ(table.findOrAdd(hash(number), count, isNumber), number);
    }
}

TEST(EqualObjectTableTest, tellsWhichObjectIsLikely) {
    EqualObjectTable table(10);
    const std::uint64_t hash = std::uint64_t{7} << 32;
    table.prefetch(hash);
    EXPECT_EQ(table.likely(hash), std::nullopt);
    table.findOrAdd(hash, 3, never);
    EXPECT_EQ(table.likely(hash), 3U);
    EXPECT_EQ(table.likely(std::uint64_t{7 + 1024} << 32), std::nullopt);
}

// Large tables have memory of another kind.
TEST(EqualObjectTableTest, holdsManyObjects) {
    const std::uint32_t count = 400000;
    EqualObjectTable table(count);
    const auto hash = [](std::uint32_t number) {
        return std::uint64_t{number} * 2654435761U << 32;
    };
    for (std::uint32_t number = 0; number < count; ++number) {
        ASSERT_EQ(table.findOrAdd(hash(number), number, never), std::nullopt);
    }
    for (std::uint32_t number = 0; number < count; ++number) {
        const auto isNumber = [number](std::uint32_t other) { return other == number; };
        ASSERT_EQ(table.findOrAdd(hash(number), count, isNumber), number);
    }
}

}  // namespace plist::detail
