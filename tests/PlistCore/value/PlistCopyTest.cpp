#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistCopy.h"
#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistValue.h"
#include "tests/PlistCore/support/BinaryFile.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

/// Whether anything within the value lies in the memory of a document that was read.
bool keepsDocument(const PlistValue& root) {
    std::vector<const PlistValue*> pending = {&root};
    while (!pending.empty()) {
        const PlistValue& value = *pending.back();
        pending.pop_back();
        if (value.cell().has(detail::PlistCell::inArena)) {
            return true;
        }
        for (const PlistString& key : value.keys()) {
            if (key.cell().has(detail::PlistCell::inArena)) {
                return true;
            }
        }
        for (const PlistValue& child : value.children()) {
            pending.push_back(&child);
        }
    }
    return false;
}

PlistValue read(const PlistValue& value) {
    return PlistCodec::read(PlistCodec::write(value, PlistFormat::binary).span()).root;
}

const std::string longText = "a text that is too long to lie in place";

/// A document of an entry "part" and so much more that any part is small against it.
PlistValue readWithMuchMore(const PlistValue& part) {
    const PlistValue data = PlistValue::data(std::vector<std::uint8_t>(20'000'000, 'x'));
    return read(PlistValue::dictionary({{"part", part}, {"more", data}}));
}

/// Every type, in place and out of line.
PlistValue everything() {
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    return PlistValue::dictionary(
        {{"", PlistValue::dictionary()},
         {longText + " as a key", PlistValue::array()},
         {"texts", PlistValue::array({PlistValue::string("short"), PlistValue::string(longText),
                                      PlistValue::string("größer als das, was ins Haus passt")})},
         {"numbers", PlistValue::array({PlistValue::integer(-5), PlistValue::real(notANumber),
                                        PlistValue::integer(greatestPlistInteger)})},
         {"others", PlistValue::array(
                        {PlistValue::boolean(true), PlistValue::date(1.5), PlistValue::uid(7)})},
         {"data", PlistValue::array({PlistValue::data(std::vector<std::uint8_t>{1, 2}),
                                     PlistValue::data(std::vector<std::uint8_t>(100, 3))})},
         {"data", PlistValue::dictionary({{"again", PlistValue::string(longText)}})}});
}

PlistValue firstOf(const PlistValue& container) {
    return container.children().front();
}

TEST(PlistCopyTest, makesSmallPartsAnew) {
    const PlistValue part = firstOf(readWithMuchMore(everything()));
    ASSERT_TRUE(keepsDocument(part));
    const PlistValue copy = PlistCopy::detached(part);
    EXPECT_FALSE(keepsDocument(copy));
    EXPECT_EQ(valueText(copy), valueText(part));
    EXPECT_FALSE(copy == part) << "NaN is unequal to its own copy";
}

TEST(PlistCopyTest, makesScalarsAnew) {
    for (const PlistValue& scalar : {PlistValue::string(longText), PlistValue::integer(1),
                                     PlistValue::data(std::vector<std::uint8_t>(15, 1))}) {
        const PlistValue part = firstOf(readWithMuchMore(scalar));
        const PlistValue copy = PlistCopy::detached(part);
        EXPECT_FALSE(keepsDocument(copy));
        EXPECT_TRUE(copy == scalar);
    }
}

TEST(PlistCopyTest, leavesWholeDocumentsAlone) {
    const PlistValue root = readWithMuchMore(PlistValue::string(longText));
    EXPECT_TRUE(PlistCopy::detached(root).isIdenticalTo(root));
    const PlistValue data = root.children().back();
    EXPECT_TRUE(PlistCopy::detached(data).isIdenticalTo(data)) << "most of the document";
}

TEST(PlistCopyTest, leavesValuesWithoutADocumentAlone) {
    const PlistValue made =
        PlistValue::array({PlistValue::string(longText), PlistValue::dictionary({{longText, {}}})});
    EXPECT_TRUE(PlistCopy::detached(made).isIdenticalTo(made));
    EXPECT_TRUE(PlistCopy::detached(PlistValue::integer(1)).isIdenticalTo(PlistValue::integer(1)));
}

TEST(PlistCopyTest, findsPartsOfDocumentsWithinNewValues) {
    const PlistValue part =
        firstOf(readWithMuchMore(PlistValue::array({PlistValue::string(longText)})));
    const PlistValue other = firstOf(readWithMuchMore(PlistValue::string(longText)));
    const PlistValue mixed = PlistValue::dictionary({{"one", part}, {"two", other}, {"one", part}});
    const PlistValue copy = PlistCopy::detached(mixed);
    EXPECT_FALSE(keepsDocument(copy));
    EXPECT_TRUE(copy == mixed);
}

TEST(PlistCopyTest, judgesEditedDocumentsAsAWhole) {
    // Every record is small against the document, but all of them together are most of it.
    std::vector<PlistValue> records(100'000, PlistValue::string(longText));
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i] = PlistValue::string(longText + std::to_string(i));
    }
    const PlistValue root = read(PlistValue::array(records));
    std::vector<PlistValue> edited(root.children().begin(), root.children().end());
    edited.front() = PlistValue::integer(1);
    const PlistValue changed = PlistValue::array(edited);
    EXPECT_TRUE(PlistCopy::detached(changed).isIdenticalTo(changed));
}

/// 40 arrays, each of which holds the next one twice.
TEST(PlistCopyTest, keepsSharedContainersShared) {
    BinaryFile file;
    for (std::uint8_t i = 1; i <= 40; ++i) {
        file.add({0xA2, i, i});
    }
    std::vector<std::uint8_t> text = {0x5F, 0x10, static_cast<std::uint8_t>(longText.size())};
    text.insert(text.end(), longText.begin(), longText.end());
    file.add(text);
    const PlistValue part = PlistCodec::read(file.bytes()).root;
    const PlistValue copy = PlistCopy::detached(part);
    EXPECT_TRUE(copy.children()[0].isIdenticalTo(copy.children()[1]));
    EXPECT_EQ(copy.expandedCount(), (std::uint64_t{1} << 41) - 1);
    EXPECT_FALSE(copy.cell().has(detail::PlistCell::inArena));
}

TEST(PlistCopyTest, keepsListsOfKeysShared) {
    const std::vector<PlistEntry> record = {{"first key of a record", PlistValue::integer(1)},
                                            {"b", PlistValue::integer(2)}};
    const PlistValue records =
        PlistValue::array({PlistValue::dictionary(record), PlistValue::dictionary(record)});
    const PlistValue part = firstOf(readWithMuchMore(records));
    ASSERT_EQ(part.children()[0].keys().data(), part.children()[1].keys().data());
    const PlistValue copy = PlistCopy::detached(part);
    EXPECT_EQ(copy.children()[0].keys().data(), copy.children()[1].keys().data());
    EXPECT_FALSE(keepsDocument(copy));
}

TEST(PlistCopyTest, copiesDeepValues) {
    const PlistValue text = firstOf(readWithMuchMore(PlistValue::string(longText)));
    PlistValue chain = text;
    for (int i = 0; i < 100'000; ++i) {
        chain = PlistValue::array({chain});
    }
    const PlistValue copy = PlistCopy::detached(chain);
    EXPECT_FALSE(keepsDocument(copy));
    EXPECT_TRUE(copy == chain);
}

TEST(PlistCopyTest, detachesTexts) {
    const PlistValue root = readWithMuchMore(PlistValue::string(longText));
    const PlistString text = root.children().front().stringValue();
    ASSERT_TRUE(text.cell().has(detail::PlistCell::inArena));
    const PlistString copy = PlistCopy::detached(text);
    EXPECT_FALSE(copy.cell().has(detail::PlistCell::inArena));
    EXPECT_EQ(copy.view(), longText);
    EXPECT_EQ(PlistCopy::detached(PlistString("short")), PlistString("short"));
}

}  // namespace

}  // namespace plist
