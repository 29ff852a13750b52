#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "PlistCore/value/PlistBuilder.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist::detail {

namespace {

using Cells = std::vector<PlistCell>;

std::string repeated(std::size_t size) {
    std::string text(size, ' ');
    for (std::size_t index = 0; index < size; ++index) {
        text[index] = static_cast<char>('a' + index % 26);
    }
    return text;
}

TEST(PlistBuilderTest, finishesScalarsWithoutTheArena) {
    PlistBuilder builder(0);
    const PlistValue value = builder.finish(builder.string("14 bytes long.", PlistCell::ascii));
    EXPECT_EQ(value.text(), "14 bytes long.");
    EXPECT_FALSE(value.cell().has(PlistCell::outOfLine));
}

TEST(PlistBuilderTest, makesTextsOfEverySize) {
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{13}, std::size_t{14}, std::size_t{15}, std::size_t{1000},
          PlistArena::blockSize / 4 + 1, PlistArena::blockSize, 3 * PlistArena::blockSize}) {
        const std::string text = repeated(size);
        std::optional<PlistValue> value;
        {
            PlistBuilder builder(0);
            const Cells items = {builder.string(text, PlistCell::ascii), builder.data(text),
                                 builder.string("end", PlistCell::ascii)};
            value = builder.finish(builder.array(items));
        }
        const auto items = value->children();
        EXPECT_EQ(items[0].text(), text);
        EXPECT_TRUE(items[0].stringValue().isAscii());
        EXPECT_EQ(items[1].dataValue().size(), size);
        EXPECT_TRUE(std::equal(text.begin(), text.end(), items[1].dataValue().begin()));
        EXPECT_EQ(items[2].text(), "end");
    }
}

TEST(PlistBuilderTest, makesTextsFromWholeBlocks) {
    const std::string text = repeated(64);
    for (std::size_t size = 0; size <= 48; ++size) {
        PlistBuilder builder(0);
        const PlistValue value =
            builder.finish(builder.stringFromBlock({text.data(), size}, PlistCell::ascii));
        EXPECT_EQ(value.text(), text.substr(0, size));
    }
}

TEST(PlistBuilderTest, letsDataBeWrittenInPlace) {
    for (const std::size_t size : {0U, 1U, 14U, 15U, 16U, 17U, 1000U, 600000U, 5000000U}) {
        const std::string bytes = repeated(size);
        PlistBuilder builder(0);
        const auto cell = builder.data(size + 5, [&bytes](std::uint8_t* place) {
            std::memcpy(place, bytes.data(), bytes.size());
            return std::optional(bytes.size());
        });
        ASSERT_TRUE(cell.has_value());
        const Cells items = {*cell, builder.string(repeated(40), PlistCell::ascii),
                             builder.data(repeated(20))};
        const PlistValue value = builder.finish(builder.array(items));
        const auto found = value.children()[0].dataValue();
        EXPECT_EQ(found.size(), size);
        EXPECT_TRUE(std::equal(found.begin(), found.end(), bytes.begin()));
        EXPECT_EQ(value.children()[1].text(), repeated(40));
        EXPECT_EQ(value.children()[2].dataValue().size(), 20U);
    }
}

TEST(PlistBuilderTest, makesNoDataWhereThereIsNone) {
    PlistBuilder builder(0);
    const auto nothing = [](std::uint8_t*) { return std::optional<std::size_t>(); };
    const void* const before = builder.arena().allocate(8);
    EXPECT_EQ(builder.data(100, nothing).has_value(), false);
    EXPECT_EQ(builder.arena().allocate(8), static_cast<const char*>(before) + 8);
}

TEST(PlistBuilderTest, makesEmptyContainers) {
    PlistBuilder builder(0);
    EXPECT_EQ(valueText(builder.finish(builder.array({}))), "()");
    PlistBuilder other(0);
    EXPECT_EQ(valueText(other.finish(other.dictionary(nullptr, {}))), "{}");
}

TEST(PlistBuilderTest, letsDictionariesShareTheirKeys) {
    PlistBuilder builder(0);
    const Cells keys = {builder.string("a", PlistCell::ascii),
                        builder.string("a key longer than a cell", PlistCell::ascii)};
    const PlistString* list = builder.keyList(keys);
    const PlistCell first =
        builder.dictionary(list, Cells{PlistCell::ofInteger(1), PlistCell::ofInteger(2)});
    const PlistCell second = builder.dictionary(list, Cells{PlistCell::ofInteger(3), first});
    const PlistValue value = builder.finish(builder.array(Cells{first, second}));
    EXPECT_EQ(valueText(value),
              "({\"a\" = 1, \"a key longer than a cell\" = 2}, "
              "{\"a\" = 3, \"a key longer than a cell\" = "
              "{\"a\" = 1, \"a key longer than a cell\" = 2}})");
    EXPECT_EQ(value.children()[0].keys().data(), value.children()[1].keys().data());
}

TEST(PlistBuilderTest, passesOnWhetherThereIsNaN) {
    PlistBuilder builder(0);
    const PlistCell number = PlistCell::ofReal(std::nan(""));
    // The length of a text in place stands beside the flags and must not look like one.
    const PlistCell text = builder.string("8 bytes.", PlistCell::ascii);
    const PlistCell plain = builder.array(Cells{text, text, PlistCell::ofReal(1)});
    const PlistCell withNaN = builder.array(Cells{text, number});
    const PlistString* keys = builder.keyList(Cells{text});
    const PlistCell dictionary = builder.dictionary(keys, Cells{withNaN});
    EXPECT_FALSE(plain.has(PlistCell::holdsNaN));
    EXPECT_TRUE(withNaN.has(PlistCell::holdsNaN));
    EXPECT_TRUE(dictionary.has(PlistCell::holdsNaN));
    EXPECT_FALSE(builder.dictionary(keys, Cells{plain}).has(PlistCell::holdsNaN));
    EXPECT_TRUE(builder.array(Cells{plain, dictionary}).has(PlistCell::holdsNaN));
}

TEST(PlistBuilderTest, holdsContainersOfManyBlocks) {
    constexpr std::size_t count = 1000000;
    PlistBuilder builder(0);
    Cells cells;
    Cells keys;
    for (std::size_t number = 0; number < count; ++number) {
        cells.push_back(PlistCell::ofUid(number));
        keys.push_back(builder.string("key " + std::to_string(number), PlistCell::ascii));
    }
    const PlistCell array = builder.array(cells);
    const PlistCell dictionary = builder.dictionary(builder.keyList(keys), cells);
    const PlistValue value = builder.finish(builder.array(Cells{array, dictionary}));
    const PlistValue copyOfArray = value.children()[0];
    EXPECT_EQ(copyOfArray.children()[count - 1].uidValue(), count - 1);
    EXPECT_EQ(value.children()[1].keys()[count - 1].view(), "key 999999");
    EXPECT_EQ(value.children()[1].children()[777777].uidValue(), 777777U);
}

}  // namespace

}  // namespace plist::detail
