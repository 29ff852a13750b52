#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "PlistCore/PlistValue.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

namespace {

constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz";

TEST(PlistCellTest, isAnEmptyDictionaryAtFirst) {
    const PlistCell cell;
    EXPECT_EQ(cell.type(), PlistType::dictionary);
    EXPECT_EQ(cell.flags(), 0);
    EXPECT_EQ(cell.length(), 0U);
    EXPECT_TRUE(cell.values().empty());
    EXPECT_TRUE(cell.keys().empty());
}

TEST(PlistCellTest, keepsUpTo14BytesInPlace) {
    for (std::size_t length = 0; length <= PlistCell::inPlaceCapacity; ++length) {
        const PlistCell cell =
            PlistCell::inPlace(PlistType::string, PlistCell::ascii, letters.data(), length);
        EXPECT_EQ(cell.bytes(), letters.substr(0, length));
        EXPECT_EQ(cell.type(), PlistType::string);
        EXPECT_TRUE(cell.has(PlistCell::ascii));
        EXPECT_FALSE(cell.has(PlistCell::outOfLine));
        EXPECT_FALSE(cell.has(PlistCell::inArena));
        EXPECT_FALSE(cell.has(PlistCell::holdsNaN));
    }
}

TEST(PlistCellTest, isTheSameWhicheverWayItIsMade) {
    // The rest of a block that is read as a whole leaves no trace, or equal texts would differ.
    for (std::size_t length = 0; length <= PlistCell::inPlaceCapacity; ++length) {
        for (const std::uint8_t flags : {std::uint8_t{0}, std::uint8_t{PlistCell::ascii}}) {
            const PlistCell slow =
                PlistCell::inPlace(PlistType::string, flags, letters.data(), length);
            const PlistCell fast =
                PlistCell::inPlaceFromBlock(PlistType::string, flags, letters.data(), length);
            EXPECT_EQ(std::memcmp(&slow, &fast, sizeof slow), 0) << length;
        }
    }
}

TEST(PlistCellTest, pointsToWhatLiesElsewhere) {
    const std::uint64_t length = (std::uint64_t{1} << 48) - 1;
    const PlistCell cell = PlistCell::elsewhere(PlistType::data, PlistCell::inArena, &letters,
                                                static_cast<std::size_t>(length));
    EXPECT_EQ(cell.type(), PlistType::data);
    EXPECT_EQ(cell.length(), length);
    EXPECT_EQ(cell.pointer(), &letters);
    EXPECT_TRUE(cell.has(PlistCell::outOfLine));
    EXPECT_TRUE(cell.has(PlistCell::inArena));
    EXPECT_FALSE(cell.has(PlistCell::ascii));
}

TEST(PlistCellTest, noticesNaN) {
    EXPECT_TRUE(PlistCell::ofReal(std::nan("")).has(PlistCell::holdsNaN));
    EXPECT_TRUE(PlistCell::ofDate(-std::nan("")).has(PlistCell::holdsNaN));
    EXPECT_FALSE(PlistCell::ofReal(0).has(PlistCell::holdsNaN));
    EXPECT_FALSE(PlistCell::ofDate(1e300 * 1e300).has(PlistCell::holdsNaN));
}

TEST(PlistCellTest, marksIntegersAboveTheSignedRange) {
    EXPECT_FALSE(PlistCell::ofInteger(INT64_MAX).has(PlistCell::unsignedNumber));
    EXPECT_TRUE(PlistCell::ofInteger(PlistInteger{INT64_MAX} + 1).has(PlistCell::unsignedNumber));
    EXPECT_FALSE(PlistCell::ofInteger(-1).has(PlistCell::unsignedNumber));
    EXPECT_EQ(PlistCell::ofInteger(-1).word(), UINT64_MAX);
}

}  // namespace

}  // namespace plist::detail
