#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "tests/PlistCore/support/BinaryFile.h"
#include "tests/PlistCore/support/ValueDifference.h"

namespace plist::detail {

namespace {

using BinaryPlistSerializer::EqualTexts;
using Bytes = std::vector<std::uint8_t>;

Bytes written(const PlistValue& value) {
    const PlistBytes bytes = BinaryPlistSerializer::serialize(value);
    return {bytes.span().begin(), bytes.span().end()};
}

PlistValue text(const std::string& utf8) {
    return PlistValue::string(utf8);
}

PlistValue integer(PlistInteger number) {
    return PlistValue::integer(number);
}

/// The file of one scalar: its object alone.
Bytes fileOf(std::string_view picture) {
    return BinaryFile::of({picture}).bytes();
}

/// The parts of a file as its own trailer describes them.
struct Trailer {
    unsigned offsetSize = 0;
    unsigned referenceSize = 0;
    std::uint64_t objectCount = 0;
    std::uint64_t root = 0;
    std::uint64_t offsetTableStart = 0;
};

std::uint64_t numberAt(const Bytes& bytes, std::size_t place, unsigned width) {
    std::uint64_t number = 0;
    for (unsigned i = 0; i < width; ++i) {
        number = number << 8 | bytes.at(place + i);
    }
    return number;
}

Trailer trailerOf(const Bytes& bytes) {
    const std::size_t start = bytes.size() - 32;
    return {bytes.at(start + 6), bytes.at(start + 7), numberAt(bytes, start + 8, 8),
            numberAt(bytes, start + 16, 8), numberAt(bytes, start + 24, 8)};
}

std::uint64_t objectCountOf(const PlistBytes& bytes) {
    return trailerOf({bytes.span().begin(), bytes.span().end()}).objectCount;
}

std::uint64_t objectCount(const PlistValue& value) {
    return trailerOf(written(value)).objectCount;
}

/// `count` different strings in an array: `count + 1` objects.
PlistValue differentStrings(std::size_t count) {
    std::vector<PlistValue> items;
    for (std::size_t i = 0; i < count; ++i) {
        items.push_back(text(std::to_string(i)));
    }
    return PlistValue::array(std::move(items));
}

}  // namespace

TEST(BinaryPlistSerializerTest, emptyDictionaryByteForByte) {
    EXPECT_EQ(written(PlistValue()),
              bytesOf("'bplist00' D0 08 000000000000 01 01 0000000000000001 0000000000000000 "
                      "0000000000000009"));
}

TEST(BinaryPlistSerializerTest, everyScalarHasItsBytes) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<PlistValue, const char*> cases[] = {
        {PlistValue::array(), "A0"},
        {PlistValue::boolean(false), "08"},
        {PlistValue::boolean(true), "09"},
        {integer(0), "10 00"},
        {integer(255), "10 FF"},
        {integer(256), "11 01 00"},
        {integer(65535), "11 FF FF"},
        {integer(65536), "12 00 01 00 00"},
        {integer(4294967295), "12 FF FF FF FF"},
        {integer(4294967296), "13 00 00 00 01 00 00 00 00"},
        {integer(std::numeric_limits<std::int64_t>::max()), "13 7F FF FF FF FF FF FF FF"},
        {integer(PlistInteger{1} << 63), "14 0000000000000000 80 00 00 00 00 00 00 00"},
        {integer(greatestPlistInteger), "14 0000000000000000 FF FF FF FF FF FF FF FF"},
        {integer(-1), "13 FF FF FF FF FF FF FF FF"},
        {integer(leastPlistInteger), "13 80 00 00 00 00 00 00 00"},
        {PlistValue::real(0.0), "23 00 00 00 00 00 00 00 00"},
        {PlistValue::real(-0.0), "23 80 00 00 00 00 00 00 00"},
        {PlistValue::real(1.5), "23 3F F8 00 00 00 00 00 00"},
        {PlistValue::real(-infinity), "23 FF F0 00 00 00 00 00 00"},
        {PlistValue::real(std::bit_cast<double>(0x7FF8000000000123)), "23 7F F8 00 00 00 00 01 23"},
        {PlistValue::date(0.0), "33 00 00 00 00 00 00 00 00"},
        {PlistValue::date(-1.5), "33 BF F8 00 00 00 00 00 00"},
        {PlistValue::data({}), "40"},
        {PlistValue::data(Bytes{1, 2, 3}), "43 01 02 03"},
        {PlistValue::data(Bytes(14, 7)), "4E 0707070707070707070707070707"},
        {PlistValue::data(Bytes(15, 7)), "4F 10 0F 070707070707070707070707070707"},
        {text(""), "50"},
        {text("a"), "51 'a'"},
        {text("fourteen chars"), "5E 'fourteen chars'"},
        {text("fifteen letters"), "5F 10 0F 'fifteen letters'"},
        {text(std::string("\0", 1)), "51 00"},
        {text("\x7F"), "51 7F"},
        {text("\xC3\xA9"), "61 00 E9"},
        {text("e\xCC\x81"), "62 00 65 03 01"},
        {text("\xEF\xBF\xBF"), "61 FF FF"},
        {text("\xF0\x90\x80\x80"), "62 D8 00 DC 00"},
        {text("\xF4\x8F\xBF\xBF"), "62 DB FF DF FF"},
        {text("a\xC3\xA9\xF0\x9F\x98\x80"), "64 00 61 00 E9 D8 3D DE 00"},
        {text("fourteen chars\xC3\xA9"),
         "6F 10 0F 00'f'00'o'00'u'00'r'00't'00'e'00'e'00'n'00' '00'c'00'h'00'a'00'r'00's'00E9"},
        {PlistValue::uid(0), "80 00"},
        {PlistValue::uid(255), "80 FF"},
        {PlistValue::uid(256), "81 01 00"},
        {PlistValue::uid(65535), "81 FF FF"},
        {PlistValue::uid(65536), "83 00 01 00 00"},
        {PlistValue::uid(4294967295), "83 FF FF FF FF"},
        {PlistValue::uid(4294967296), "87 00 00 00 01 00 00 00 00"},
        {PlistValue::uid(std::numeric_limits<std::uint64_t>::max()), "87 FF FF FF FF FF FF FF FF"},
    };
    for (const auto& [value, picture] : cases) {
        EXPECT_EQ(written(value), fileOf(picture)) << picture;
    }
}

TEST(BinaryPlistSerializerTest, longCountsAreIntegers) {
    for (const std::size_t length : {15U, 255U, 256U, 65535U, 65536U}) {
        const Bytes content(length, 'x');
        Bytes count = bytesOf(length < 256 ? "10" : length < 65536 ? "11" : "12");
        append(count, bigEndian(length, length < 256 ? 1 : length < 65536 ? 2 : 4));

        Bytes expected = bytesOf("4F");
        append(expected, count);
        append(expected, content);
        Bytes file = written(PlistValue::data(content));
        EXPECT_EQ(Bytes(file.begin() + 8, file.begin() + 8 + std::ssize(expected)), expected);

        expected[0] = 0x5F;
        file = written(text(std::string(length, 'x')));
        EXPECT_EQ(Bytes(file.begin() + 8, file.begin() + 8 + std::ssize(expected)), expected);
    }
}

TEST(BinaryPlistSerializerTest, parentsStandBeforeChildrenAndKeysBeforeValues) {
    const PlistValue value = PlistValue::dictionary({
        {"k1",
         PlistValue::array({integer(1), PlistValue::dictionary({{"in", integer(2)}}), integer(3)})},
        {"k2", text("v")},
        {"k3", PlistValue::array()},
    });
    EXPECT_EQ(written(value), BinaryFile::of({
                                                 "D3 01 02 03 04 0A 0B",  // 0: the root
                                                 "52 'k1'",               // 1
                                                 "52 'k2'",               // 2
                                                 "52 'k3'",               // 3
                                                 "A3 05 06 09",           // 4
                                                 "10 01",                 // 5
                                                 "D1 07 08",              // 6
                                                 "52 'in'",               // 7
                                                 "10 02",                 // 8
                                                 "10 03",                 // 9
                                                 "51 'v'",                // 10
                                                 "A0",                    // 11
                                             })
                                  .bytes());
}

TEST(BinaryPlistSerializerTest, entriesKeepTheirOrderAndRepeatedKeys) {
    const PlistValue value = PlistValue::dictionary({
        {"b", integer(1)},
        {"a", integer(2)},
        {"b", integer(1)},
    });
    EXPECT_EQ(
        written(value),
        BinaryFile::of({"D3 01 02 01 03 04 03", "51 'b'", "51 'a'", "10 01", "10 02"}).bytes());
}

TEST(BinaryPlistSerializerTest, equalStringsAreOneObject) {
    const PlistValue value = PlistValue::dictionary({{"a", text("a")}, {"b", text("a")}});
    EXPECT_EQ(written(value), BinaryFile::of({"D2 01 02 01 01", "51 'a'", "51 'b'"}).bytes());
}

TEST(BinaryPlistSerializerTest, sharesScalarsByKindAndContent) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto otherNaN = std::bit_cast<double>(0x7FF8000000000001);
    const std::string longText = "a text that is too long to lie in place";
    const std::pair<std::vector<PlistValue>, std::size_t> cases[] = {
        {{text("x"), text("x"), text("X")}, 2},
        {{text(longText), text(longText), text(longText + ".")}, 2},
        {{text(""), text("")}, 1},
        {{text("caf\xC3\xA9"), text("cafe\xCC\x81"), text("caf\xC3\xA9")}, 1},
        {{text("cafe\xCC\x81"), text("caf\xC3\xA9"), text("cafe")}, 2},
        {{text(longText + "\xC3\xA9"), text(longText + "e\xCC\x81"), text(longText + "e")}, 2},
        // Some letters outside of ASCII are equivalent to one inside.
        {{text("K"), text("\xE2\x84\xAA"), text("k")}, 2},
        {{text("\xE2\x84\xAA"), text("K")}, 1},
        {{integer(5), integer(5), integer(6), integer(-5)}, 3},
        {{integer(-1), integer(greatestPlistInteger)}, 2},
        {{integer(5), PlistValue::uid(5), PlistValue::real(5), PlistValue::date(5)}, 4},
        {{PlistValue::uid(5), PlistValue::uid(5), PlistValue::uid(6)}, 2},
        {{PlistValue::real(0.0), PlistValue::real(-0.0), PlistValue::real(0.0)}, 2},
        {{PlistValue::real(nan), PlistValue::real(nan), PlistValue::real(otherNaN)}, 2},
        {{PlistValue::date(nan), PlistValue::date(nan), PlistValue::date(1), PlistValue::date(1)},
         2},
        {{PlistValue::boolean(true), PlistValue::boolean(false), PlistValue::boolean(true)}, 2},
        {{PlistValue::boolean(true), integer(1), text("1")}, 3},
        {{text("1"), PlistValue::data(Bytes{'1'})}, 2},
    };
    for (const auto& [items, different] : cases) {
        EXPECT_EQ(objectCount(PlistValue::array(items)), different + 1) << items.size();
    }
}

TEST(BinaryPlistSerializerTest, theFirstOfEquivalentSpellingsIsWritten) {
    EXPECT_EQ(written(PlistValue::array({text("\xE2\x84\xAA"), text("K")})),
              BinaryFile::of({"A2 01 01", "61 21 2A"}).bytes());
    EXPECT_EQ(written(PlistValue::array({text("K"), text("\xE2\x84\xAA")})),
              BinaryFile::of({"A2 01 01", "51 'K'"}).bytes());
}

TEST(BinaryPlistSerializerTest, keepsEverySpellingWhereOnlyIdenticalTextsAreShared) {
    const std::string longText = "a text that is too long to lie in place";
    const std::pair<std::vector<PlistValue>, std::size_t> cases[] = {
        {{text("caf\xC3\xA9"), text("cafe\xCC\x81"), text("caf\xC3\xA9")}, 2},
        {{text(longText + "\xC3\xA9"), text(longText + "e\xCC\x81"), text(longText + "e\xCC\x81")},
         2},
        {{text("\xE2\x84\xAA"), text("K"), text("K")}, 2},
        {{text(longText), text(longText), integer(5), integer(5)}, 2},
        {{PlistValue::real(0.0), PlistValue::real(-0.0), PlistValue::date(0.5)}, 3},
    };
    for (const auto& [items, different] : cases) {
        const PlistValue value = PlistValue::array(items);
        const PlistBytes bytes = BinaryPlistSerializer::serialize(value, EqualTexts::identical);
        EXPECT_EQ(objectCountOf(bytes), different + 1);
        EXPECT_EQ(firstDifference(value, BinaryPlistParser::parse(bytes.span())), "");
    }
}

TEST(BinaryPlistSerializerTest, losesNothingWhereOnlyIdenticalTextsAreShared) {
    const double quietNaN = std::numeric_limits<double>::quiet_NaN();
    const PlistValue value =
        PlistValue::dictionary({{"\xC3\xA9", PlistValue::real(-0.0)},
                                {"e\xCC\x81", PlistValue::date(0.123456789)},
                                {"\xC3\xA9", PlistValue::real(quietNaN)},
                                {"uid", PlistValue::uid(7)},
                                {"no uid", PlistValue::dictionary({{"CF$UID", integer(7)}})},
                                {"far", PlistValue::date(-1e300)},
                                {"large", integer(greatestPlistInteger)}});
    const PlistBytes bytes = BinaryPlistSerializer::serialize(value, EqualTexts::identical);
    EXPECT_EQ(firstDifference(value, BinaryPlistParser::parse(bytes.span())), "");
}

TEST(BinaryPlistSerializerTest, dataAndContainersAreNeverShared) {
    const PlistValue data = PlistValue::data(Bytes{1});
    const PlistValue array = PlistValue::array({data});
    EXPECT_EQ(written(PlistValue::array({data, data})),
              BinaryFile::of({"A2 01 02", "41 01", "41 01"}).bytes());
    EXPECT_EQ(written(PlistValue::array({array, array})),
              BinaryFile::of({"A2 01 03", "A1 02", "41 01", "A1 04", "41 01"}).bytes());
    EXPECT_EQ(written(PlistValue::array({PlistValue(), PlistValue(), PlistValue::array()})),
              BinaryFile::of({"A3 01 02 03", "D0", "D0", "A0"}).bytes());
}

// Dictionaries that share their list of keys take a shorter way; the bytes must be the same.
TEST(BinaryPlistSerializerTest, sharedKeyListsAreWrittenLikeEqualOnes) {
    std::vector<PlistValue> shared;
    std::vector<PlistValue> equal;
    for (std::size_t i = 0; i < 300; ++i) {
        const PlistString keys[] = {"first", "caf\xC3\xA9", "first", std::to_string(i % 3)};
        const std::vector<PlistValue> values(4, integer(static_cast<PlistInteger>(i)));
        const std::vector<PlistString> list(keys, keys + 4);
        equal.push_back(PlistValue::dictionary(list, values));
        shared.push_back(i < 3 ? PlistValue::dictionary(list, values)
                               : PlistValue::dictionaryWithKeysOf(shared[i % 3], values));
    }
    EXPECT_EQ(written(PlistValue::array(shared)), written(PlistValue::array(equal)));
}

TEST(BinaryPlistSerializerTest, referencesAreAsNarrowAsTheObjectsAllow) {
    const std::pair<std::size_t, unsigned> cases[] = {
        {1, 1}, {254, 1}, {255, 2}, {256, 2}, {65534, 2}, {65535, 4}, {65536, 4}, {70000, 4},
    };
    for (const auto& [strings, width] : cases) {
        const Bytes bytes = written(differentStrings(strings));
        const Trailer trailer = trailerOf(bytes);
        EXPECT_EQ(trailer.objectCount, strings + 1);
        EXPECT_EQ(trailer.referenceSize, width) << strings;
        EXPECT_EQ(trailer.root, 0U);
        const auto first =
            static_cast<std::size_t>(numberAt(bytes, trailer.offsetTableStart, trailer.offsetSize));
        const std::size_t countSize = strings < 15      ? 0
                                      : strings < 256   ? 2
                                      : strings < 65536 ? 3
                                                        : 5;
        for (const std::size_t i : {std::size_t{0}, strings / 2, strings - 1}) {
            EXPECT_EQ(numberAt(bytes, first + 1 + countSize + i * width, width), i + 1);
        }
    }
}

// The width is chosen before it is known how many scalars are equal, and must then be corrected.
TEST(BinaryPlistSerializerTest, referencesStayNarrowWhereManyScalarsAreEqual) {
    std::vector<PlistValue> items(70000);
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i] = integer(static_cast<PlistInteger>(i % 254));
    }
    Bytes bytes = written(PlistValue::array(items));
    EXPECT_EQ(trailerOf(bytes).objectCount, 255U);
    EXPECT_EQ(trailerOf(bytes).referenceSize, 1U);
    EXPECT_EQ(numberAt(bytes, 8, 6), 0xAF1200011170U);
    EXPECT_EQ(numberAt(bytes, 14, 4), 0x01020304U);
    EXPECT_EQ(numberAt(bytes, 14 + 254, 1), 1U);

    items.push_back(integer(254));
    bytes = written(PlistValue::array(items));
    EXPECT_EQ(trailerOf(bytes).objectCount, 256U);
    EXPECT_EQ(trailerOf(bytes).referenceSize, 2U);
}

TEST(BinaryPlistSerializerTest, offsetsAreAsNarrowAsTheFileAllows) {
    for (const auto& [tableStart, width] :
         {std::pair<std::size_t, unsigned>{255, 1}, {256, 2}, {65535, 2}, {65536, 4}}) {
        const std::size_t head = 8 + 1 + (tableStart < 300 ? 2 : 3);
        const Bytes bytes = written(PlistValue::data(Bytes(tableStart - head, 0)));
        EXPECT_EQ(trailerOf(bytes).offsetTableStart, tableStart);
        EXPECT_EQ(trailerOf(bytes).offsetSize, width);
        EXPECT_EQ(bytes.size(), tableStart + width + 32);
        EXPECT_EQ(numberAt(bytes, tableStart, width), 8U);
    }
}

TEST(BinaryPlistSerializerTest, aLongChainIsWritten) {
    PlistValue value;
    const std::size_t depth = 1000000;
    for (std::size_t i = 0; i < depth; ++i) {
        std::vector<PlistValue> items;
        items.push_back(std::move(value));
        value = PlistValue::array(std::move(items));
    }
    const Bytes bytes = written(value);
    EXPECT_EQ(trailerOf(bytes).objectCount, depth + 1);
    EXPECT_EQ(Bytes(bytes.begin() + 8, bytes.begin() + 18), bytesOf("A1 00000001 A1 00000002"));
    EXPECT_EQ(numberAt(bytes, 8 + 5 * depth, 1), 0xD0U);
}

}  // namespace plist::detail
