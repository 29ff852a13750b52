#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <string>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/value/PlistBlock.h"
#include "tests/PlistCore/support/XmlReading.h"

namespace plist::detail {

namespace {

std::uint64_t sharesOf(const PlistCell& cell) {
    return PlistBlock::of(cell.pointer())->shares.load();
}

TEST(PlistBlockTest, refusesImpossibleSizes) {
    EXPECT_THROW(PlistBlock::make(SIZE_MAX), std::bad_alloc);
    EXPECT_THROW(PlistBlock::make(SIZE_MAX - sizeof(PlistBlock)), std::bad_alloc);
}

TEST(PlistBlockTest, countsTheSharesOfAText) {
    const PlistString text(std::string(50, 'x'));
    EXPECT_EQ(sharesOf(text.cell()), 1U);
    {
        const PlistString copy = text;
        const PlistValue value = PlistValue::string(text);
        EXPECT_EQ(sharesOf(text.cell()), 3U);
        const PlistString again = value.stringValue();
        EXPECT_EQ(sharesOf(text.cell()), 4U);
    }
    EXPECT_EQ(sharesOf(text.cell()), 1U);
}

TEST(PlistBlockTest, givesBackWhatAContainerHeld) {
    const PlistString key(std::string(50, 'k'));
    const PlistString text(std::string(50, 't'));
    {
        const PlistValue inner = PlistValue::dictionary({{key, PlistValue::string(text)}});
        const PlistValue outer = PlistValue::array({inner, inner});
        const PlistValue sameKeys = PlistValue::dictionaryWithKeysOf(inner, {outer});
        EXPECT_EQ(sharesOf(key.cell()), 2U);
        EXPECT_EQ(sharesOf(text.cell()), 2U);
        EXPECT_EQ(sharesOf(inner.cell()), 3U);
        EXPECT_EQ(sharesOf(outer.cell()), 2U);
    }
    EXPECT_EQ(sharesOf(key.cell()), 1U);
    EXPECT_EQ(sharesOf(text.cell()), 1U);
}

TEST(PlistBlockTest, knowsTheCountOfWhatWasMade) {
    EXPECT_EQ(PlistBlock::knownCount(PlistValue::integer(1).cell()), 1U);
    EXPECT_EQ(PlistBlock::knownCount(PlistValue::array().cell()), 1U);
    const PlistValue made = PlistValue::array({PlistValue(), PlistValue()});
    EXPECT_EQ(PlistBlock::knownCount(made.cell()), 3U);

    const PlistValue read = xmlValue("<array><true/></array>");
    EXPECT_EQ(PlistBlock::knownCount(read.cell()), PlistBlock::notCounted);
    const PlistValue mixed = PlistValue::array({PlistValue(), read, PlistValue()});
    EXPECT_EQ(PlistBlock::knownCount(mixed.cell()), PlistBlock::notCounted);
    EXPECT_EQ(PlistBlock::knownCount(PlistValue::array({mixed}).cell()), PlistBlock::notCounted);
    // A text in the arena is one value.
    const PlistValue text = xmlValue("<string>a text longer than a cell</string>");
    EXPECT_EQ(PlistBlock::knownCount(PlistValue::array({text}).cell()), 2U);
}

}  // namespace

}  // namespace plist::detail
