#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "PlistCore/PlistValue.h"
#include "PlistCore/search/TextQuery.h"
#include "tests/PlistCore/support/AllocationCount.h"

namespace plist::detail {

namespace {

PlistValue string(const std::string& text) {
    return PlistValue::string(text);
}

TEST(TextQueryTest, isEmptyWhereNothingIsLeftToSeek) {
    for (const char* text : {"", " ", "\t \t", "\u0301", " \u0301\u0308\t", "\xFF"}) {
        EXPECT_TRUE(TextQuery(text, {}).isEmpty()) << text;
    }
    EXPECT_FALSE(TextQuery(" a ", {}).isEmpty());
    EXPECT_FALSE(TextQuery("\n", {}).isEmpty());
}

TEST(TextQueryTest, isFoldedAndInLowerCase) {
    EXPECT_EQ(TextQuery(" \tCAF\u00C9 Stra\u00DFe\t", {}).folded(), "cafe strasse");
    EXPECT_EQ(TextQuery("\u00C6", {}).folded(), "\u00E6");
}

/// Texts of every length are tested where they lie, whether they match or not.
TEST(TextQueryTest, testsAsciiTextsWithoutMemory) {
    if (!AllocationCount::isPossible()) {
        GTEST_SKIP() << "The sanitizer has an allocator of its own, whose calls are not counted.";
    }
    TextQuery query("Needle", {});
    TextQuery other("n\u00F8", {});
    std::vector<PlistValue> values;
    for (const std::size_t length : {0U, 5U, 14U, 15U, 16U, 100U, 65'536U, 1'000'000U}) {
        values.push_back(string(std::string(length, 'n')));
        values.push_back(string(std::string(length, 'n') + "NEEDLE"));
    }
    const AllocationCount allocations;
    std::size_t matchCount = 0;
    for (const PlistValue& value : values) {
        matchCount += query.matches(value.cell()) ? 1 : 0;
        matchCount += other.matches(value.cell()) ? 1 : 0;
        matchCount += query.matchesAscii(value.text().substr(0, 20)) ? 1 : 0;
    }
    EXPECT_EQ(allocations.count(), 0U);
    // Of each length one, and of the shortest three also the beginning.
    EXPECT_EQ(matchCount, values.size() / 2 + 3);

    // Others are folded first, which takes memory.
    const PlistValue folded = string(std::string(1000, 'n') + "\u00E9");
    const AllocationCount later;
    EXPECT_FALSE(query.matches(folded.cell()));
    EXPECT_GT(later.count(), 0U);
}

}  // namespace

}  // namespace plist::detail
