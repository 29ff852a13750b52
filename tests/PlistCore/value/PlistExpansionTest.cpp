#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistExpansion.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/value/PlistBuilder.h"
#include "tests/PlistCore/support/DeepValues.h"
#include "tests/PlistCore/support/SmallStack.h"
#include "tests/PlistCore/support/XmlReading.h"

namespace plist {

namespace {

constexpr std::uint64_t noLimit = INT64_MAX;

std::uint64_t count(const PlistValue& value) {
    return PlistExpansion::count(value, noLimit);
}

/// A file of `count` records, each of four values.
PlistValue readRecords(int count) {
    std::string xml = "<array>";
    for (int number = 0; number < count; ++number) {
        xml +=
            "<dict><key>a</key><string>some text</string><key>b</key><array><true/></array></dict>";
    }
    return xmlValue(xml + "</array>");
}

/// `depth` arrays in an arena, each of which holds the next one twice, around the array (1): as
/// many as 3 * 2^depth - 1 values.
PlistValue sharedInArena(int depth) {
    detail::PlistBuilder builder(1000);
    detail::PlistCell cell =
        builder.array(std::vector<detail::PlistCell>{detail::PlistCell::ofInteger(1)});
    for (int level = 0; level < depth; ++level) {
        cell = builder.array(std::vector<detail::PlistCell>{cell, cell});
    }
    builder.arena().noteSharedContainer();
    return builder.finish(cell);
}

TEST(PlistExpansionTest, countsEveryValue) {
    EXPECT_EQ(count(PlistValue()), 1U);
    EXPECT_EQ(count(PlistValue::array()), 1U);
    EXPECT_EQ(count(PlistValue::integer(5)), 1U);
    EXPECT_EQ(count(PlistValue::array({PlistValue(), PlistValue::string("a")})), 3U);
    EXPECT_EQ(count(PlistValue::dictionary({{"a", PlistValue::array({PlistValue()})}})), 3U);
    EXPECT_EQ(count(readRecords(10)), 41U);
}

TEST(PlistExpansionTest, agreesWithTheQuickCountOfValuesThatWereMade) {
    const PlistValue value = PlistValue::array(
        {chainOfArrays(10, PlistValue::integer(1)), doubledArrays(5, PlistValue::array())});
    EXPECT_EQ(value.expandedCount(), 1U + 11 + 63);
    EXPECT_EQ(count(value), value.expandedCount());
}

TEST(PlistExpansionTest, countsSharedValuesForEachPlace) {
    const PlistValue made = doubledArrays(40, PlistValue::integer(1));
    EXPECT_EQ(made.expandedCount(), (std::uint64_t{1} << 41) - 1);
    EXPECT_EQ(count(made), (std::uint64_t{1} << 41) - 1);

    const PlistValue read = sharedInArena(40);
    EXPECT_EQ(count(read), (std::uint64_t{3} << 40) - 1);
    EXPECT_EQ(read.expandedCount(), count(read));
}

TEST(PlistExpansionTest, neverSaysMoreThanTheLimit) {
    const std::uint64_t most = INT64_MAX;
    EXPECT_EQ(doubledArrays(100, PlistValue::integer(1)).expandedCount(), most);
    EXPECT_EQ(sharedInArena(100).expandedCount(), most);
    EXPECT_EQ(PlistValue::array({sharedInArena(100), sharedInArena(62)}).expandedCount(), most);
    EXPECT_EQ(PlistExpansion::count(doubledArrays(100, PlistValue::integer(1)), 1000), 1000U);
    EXPECT_EQ(PlistExpansion::count(sharedInArena(100), 1000), 1000U);
    EXPECT_EQ(PlistExpansion::count(readRecords(10), 40), 40U);
    EXPECT_EQ(PlistExpansion::count(readRecords(10), 41), 41U);
    EXPECT_EQ(PlistExpansion::count(readRecords(10), 1), 1U);
    EXPECT_EQ(PlistExpansion::count(PlistValue::array({PlistValue(), PlistValue()}), 2), 2U);
}

TEST(PlistExpansionTest, boundsWhatWasReadWithoutSharing) {
    const PlistValue value = readRecords(10);
    EXPECT_GE(value.expandedCount(), 41U);
    // An arena asks for blocks of 2 MiB, and a value takes 16 bytes.
    EXPECT_LE(value.expandedCount(), (2U << 20) / 16);
}

TEST(PlistExpansionTest, countsEditedDocumentsExactly) {
    // After an edit the records still lie in the arena, but the array around them does not. The
    // bound for the arena must not count once for each of them.
    const PlistValue read = readRecords(3000);
    std::vector<PlistValue> items(read.children().begin(), read.children().end());
    items[0] = PlistValue::integer(1);
    const PlistValue edited = PlistValue::array(items);
    EXPECT_EQ(edited.expandedCount(), 1U + 1 + 2999 * 4);
    EXPECT_EQ(PlistValue::dictionary({{"a", edited}, {"b", edited}}).expandedCount(),
              1U + 2 * (1 + 1 + 2999 * 4));

    // A record that was duplicated, and its list beside it.
    items = {read.children()[5], read.children()[5], read.children()[5].children()[1]};
    EXPECT_EQ(PlistValue::array(items).expandedCount(), 1U + 4 + 4 + 2);
}

TEST(PlistExpansionTest, countsSharedFilesInsideEditedValues) {
    const PlistValue read = sharedInArena(20);
    const std::uint64_t each = count(read);
    EXPECT_EQ(PlistValue::array({read, read, PlistValue::array({read})}).expandedCount(),
              2 + 3 * each);
}

TEST(PlistExpansionTest, countsAnyDepth) {
    runOnSmallStack([] {
        constexpr std::size_t depth = 500000;
        EXPECT_EQ(count(chainOfArrays(depth, readRecords(1))), depth + 5);
    });
}

TEST(PlistExpansionTest, saysWhatExceedsALimit) {
    EXPECT_FALSE(PlistExpansion::exceeds({}, 0));
    const std::vector<PlistValue> scalars(3);
    EXPECT_TRUE(PlistExpansion::exceeds(scalars, 2));
    EXPECT_FALSE(PlistExpansion::exceeds(scalars, 3));

    // The quick bounds are far above the limit, the values are not.
    const std::vector<PlistValue> documents = {readRecords(10), readRecords(10), PlistValue()};
    EXPECT_TRUE(PlistExpansion::exceeds(documents, 82));
    EXPECT_FALSE(PlistExpansion::exceeds(documents, 83));
    EXPECT_FALSE(PlistExpansion::exceeds(documents, std::uint64_t{1} << 40));

    const std::vector<PlistValue> huge(5, doubledArrays(100, PlistValue::integer(1)));
    EXPECT_TRUE(PlistExpansion::exceeds(huge, std::uint64_t{1} << 62));
}

}  // namespace

}  // namespace plist
