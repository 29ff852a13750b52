#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistError.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "tests/PlistCore/support/BinaryFile.h"
#include "tests/PlistCore/support/SampleValues.h"

namespace plist::detail {

namespace {

using Bytes = std::vector<std::uint8_t>;

PlistValue text(const std::string& utf8) {
    return PlistValue::string(utf8);
}

PlistValue integer(PlistInteger number) {
    return PlistValue::integer(number);
}

/// The description of the error that reading ends with, or "read".
std::string outcome(const Bytes& bytes) {
    try {
        BinaryPlistParser::parse(bytes);
    } catch (const PlistError& error) {
        return error.errorDescription();
    }
    return "read";
}

PlistValue read(const BinaryFile& file) {
    return BinaryPlistParser::parse(file.bytes());
}

std::string outcome(const BinaryFile& file) {
    return outcome(file.bytes());
}

/// A file of one object, which begins at byte 8.
BinaryFile fileOf(std::string_view picture) {
    return BinaryFile::of({picture});
}

/// `depth` arrays of one item inside each other, the innermost holding the object in the picture.
BinaryFile chain(std::size_t depth, std::string_view innermost) {
    BinaryFile file;
    file.referenceSize = 2;
    file.offsetSize = 2;
    for (std::size_t i = 1; i <= depth; ++i) {
        Bytes object = bytesOf("A1");
        append(object, bigEndian(i, 2));
        file.add(object);
    }
    file.add(bytesOf(innermost));
    return file;
}

std::size_t depthOf(PlistValue value) {
    std::size_t depth = 0;
    while (value.childCount() == 1) {
        value = PlistValue(value.children()[0]);
        ++depth;
    }
    return depth;
}

const std::string endAt8 = "Byte 8: The file ends unexpectedly.";
const std::string endAt9 = "Byte 9: The file ends unexpectedly.";
const std::string endAt10 = "Byte 10: The file ends unexpectedly.";
const std::string badTrailer = "The binary property list trailer is invalid.";
const std::string badReference = "Object reference out of range.";
const std::string badOffset = "Object offset out of range.";
const std::string tooDeep = "The file nests more than 512 levels deep.";
const std::string badLength = "Byte 9: Invalid length.";
const std::string overlap = "The objects of the file overlap.";

}  // namespace

TEST(BinaryPlistParserTest, readsEveryScalar) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<const char*, PlistValue> cases[] = {
        {"08", PlistValue::boolean(false)},
        {"09", PlistValue::boolean(true)},
        {"10 00", integer(0)},
        {"10 FF", integer(255)},
        {"11 FFFF", integer(65535)},
        {"12 FFFFFFFF", integer(4294967295)},
        {"13 0000000000000001", integer(1)},
        {"13 7FFFFFFFFFFFFFFF", integer(std::numeric_limits<std::int64_t>::max())},
        {"13 FFFFFFFFFFFFFFFF", integer(-1)},
        {"13 8000000000000000", integer(leastPlistInteger)},
        {"14 00000000000000000000000000000000", integer(0)},
        {"14 0000000000000000FFFFFFFFFFFFFFFF", integer(greatestPlistInteger)},
        {"14 00000000000000008000000000000000", integer(PlistInteger{1} << 63)},
        {"14 FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", integer(-1)},
        {"14 FFFFFFFFFFFFFFFF8000000000000000", integer(leastPlistInteger)},
        {"22 3FC00000", PlistValue::real(1.5)},
        {"22 7F800000", PlistValue::real(infinity)},
        {"23 3FB999999999999A", PlistValue::real(0.1)},
        {"23 FFF0000000000000", PlistValue::real(-infinity)},
        {"33 BFF8000000000000", PlistValue::date(-1.5)},
        {"40", PlistValue::data({})},
        {"43 010203", PlistValue::data(Bytes{1, 2, 3})},
        {"4F 10 0F 000102030405060708090A0B0C0D0E",
         PlistValue::data(Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14})},
        {"4F 10 02 FF00", PlistValue::data(Bytes{0xFF, 0})},
        {"50", text("")},
        {"53 'abc'", text("abc")},
        {"5E 'fourteen chars'", text("fourteen chars")},
        {"5F 10 0F 'fifteen letters'", text("fifteen letters")},
        {"5F 11 000F 'fifteen letters'", text("fifteen letters")},
        {"5F 13 000000000000000F 'fifteen letters'", text("fifteen letters")},
        {"5F 14 0000000000000000000000000000000F 'fifteen letters'", text("fifteen letters")},
        {"53 'a' 00 'b'", text(std::string("a\0b", 3))},
        {"52 C3A9", text("\xC3\xA9")},
        {"5F 10 10 'sixteen bytes.' C3A9", text("sixteen bytes.\xC3\xA9")},
        {"74 F09F9880", text("\xF0\x9F\x98\x80")},
        {"73 'abc'", text("abc")},
        {"60", text("")},
        {"62 0061 0062", text("ab")},
        {"61 00E9", text("\xC3\xA9")},
        {"62 FEFF 0061", text("\xEF\xBB\xBF"
                              "a")},
        {"62 D83D DE00", text("\xF0\x9F\x98\x80")},
        {"61 D800", text("\xEF\xBF\xBD")},
        {"63 DC00 0061 D800", text("\xEF\xBF\xBD"
                                   "a\xEF\xBF\xBD")},
        {"80 05", PlistValue::uid(5)},
        {"81 0100", PlistValue::uid(256)},
        {"82 010000", PlistValue::uid(65536)},
        {"84 0100000000", PlistValue::uid(4294967296)},
        {"87 FFFFFFFFFFFFFFFF", PlistValue::uid(std::numeric_limits<std::uint64_t>::max())},
        {"A0", PlistValue::array()},
        {"B0", PlistValue::array()},
        {"C0", PlistValue::array()},
        {"D0", PlistValue()},
        {"AF 10 00", PlistValue::array()},
    };
    for (const auto& [picture, expected] : cases) {
        const PlistValue value = read(fileOf(picture));
        EXPECT_EQ(value, expected) << picture;
        if (value.type() == PlistType::string) {
            EXPECT_EQ(value.stringValue().isAscii(), expected.stringValue().isAscii()) << picture;
        }
    }
}

TEST(BinaryPlistParserTest, keepsTheBitsOfUnequalNumbers) {
    const PlistValue nan = read(fileOf("23 7FF8000000000123"));
    EXPECT_EQ(std::bit_cast<std::uint64_t>(nan.realValue()), 0x7FF8000000000123U);
    EXPECT_NE(nan, nan);
    EXPECT_TRUE(std::isnan(read(fileOf("22 7FC00000")).realValue()));
    EXPECT_TRUE(std::isnan(read(fileOf("33 7FF8000000000000")).dateValue()));
    EXPECT_TRUE(std::signbit(read(fileOf("23 8000000000000000")).realValue()));
}

TEST(BinaryPlistParserTest, aContainerWithNaNIsUnequalToItself) {
    const PlistValue value =
        read(BinaryFile::of({"D1 01 02", "51 'k'", "A1 03", "A1 04", "23 7FF8000000000000"}));
    EXPECT_NE(value, value);
    const PlistValue sibling = read(BinaryFile::of({"A2 01 02", "A1 02", "23 7FF8000000000000"}));
    EXPECT_NE(sibling, sibling);
    const PlistValue plain = read(BinaryFile::of({"A1 01", "5E 'fourteen chars'"}));
    EXPECT_EQ(plain, plain);
}

TEST(BinaryPlistParserTest, readsContainers) {
    EXPECT_EQ(read(BinaryFile::of({"A3 01 02 01", "10 05", "51 'x'"})),
              PlistValue::array({integer(5), text("x"), integer(5)}));
    EXPECT_EQ(read(BinaryFile::of({"C2 01 02", "51 'a'", "51 'b'"})),
              PlistValue::array({text("a"), text("b")}));
    EXPECT_EQ(read(BinaryFile::of({"B2 01 02", "51 'a'", "51 'b'"})),
              PlistValue::array({text("a"), text("b")}));
    EXPECT_EQ(
        read(BinaryFile::of({"D3 02 01 02 03 04 01", "51 'a'", "51 'b'", "D0", "A1 05", "A0"})),
        PlistValue::dictionary({{"b", PlistValue()},
                                {"a", PlistValue::array({PlistValue::array()})},
                                {"b", text("a")}}));
}

TEST(BinaryPlistParserTest, readsObjectsInAnyOrder) {
    BinaryFile file = BinaryFile::of({"51 'k'", "A2 03 00", "10 09", "D1 00 02"});
    file.root = 1;
    EXPECT_EQ(read(file),
              PlistValue::array({PlistValue::dictionary({{"k", integer(9)}}), text("k")}));
}

TEST(BinaryPlistParserTest, readsEveryWidthOfOffsetsAndReferences) {
    for (const unsigned offsetSize : {1U, 2U, 4U, 8U}) {
        for (const unsigned referenceSize : {1U, 2U, 4U, 8U}) {
            BinaryFile file;
            file.offsetSize = offsetSize;
            file.referenceSize = referenceSize;
            Bytes dictionary = bytesOf("D2");
            for (const unsigned number : {1U, 2U, 3U, 1U}) {
                append(dictionary, bigEndian(number, referenceSize));
            }
            file.add(dictionary);
            file.add(bytesOf("51 'a'"));
            file.add(bytesOf("51 'b'"));
            file.add(bytesOf("09"));
            EXPECT_EQ(read(file),
                      PlistValue::dictionary({{"a", PlistValue::boolean(true)}, {"b", text("a")}}));
        }
    }
}

TEST(BinaryPlistParserTest, dictionariesWithTheSameKeysShareTheirList) {
    BinaryFile file =
        BinaryFile::of({"A4 01 02 03 04", "D2 05 06 07 08", "D2 05 06 08 07", "D2 06 05 07 08",
                        "D1 05 07", "51 'a'", "51 'b'", "10 01", "10 02"});
    const PlistValue value = read(file);
    EXPECT_EQ(value, PlistValue::array({
                         PlistValue::dictionary({{"a", integer(1)}, {"b", integer(2)}}),
                         PlistValue::dictionary({{"a", integer(2)}, {"b", integer(1)}}),
                         PlistValue::dictionary({{"b", integer(1)}, {"a", integer(2)}}),
                         PlistValue::dictionary({{"a", integer(1)}}),
                     }));
    const auto dictionaries = value.children();
    EXPECT_EQ(dictionaries[0].keys().data(), dictionaries[1].keys().data());
    EXPECT_NE(dictionaries[0].keys().data(), dictionaries[2].keys().data());
}

TEST(BinaryPlistParserTest, anObjectIsConvertedOnce) {
    BinaryFile file;
    Bytes array = bytesOf("AF 11 03E8");
    append(array, Bytes(1000, 1));
    file.offsetSize = 2;
    file.add(array);
    file.add(bytesOf("5F 10 14 'twenty letters long.'"));
    const PlistValue value = read(file);
    ASSERT_EQ(value.childCount(), 1000U);
    for (const PlistValue& item : value.children()) {
        ASSERT_EQ(item.text().data(), value.children()[0].text().data());
    }
    const PlistValue twice = read(BinaryFile::of({"A2 01 01", "A1 02", "10 05"}));
    EXPECT_EQ(twice.children()[0].children().data(), twice.children()[1].children().data());
}

// 40 arrays that hold the next one twice describe 2^40 texts.
TEST(BinaryPlistParserTest, manyPlacesOfSharedContainersCostNothing) {
    BinaryFile file;
    const std::uint64_t levels = 40;
    for (std::uint64_t i = 1; i <= levels; ++i) {
        Bytes object = bytesOf("A2");
        append(object, bigEndian(i, 1));
        append(object, bigEndian(i, 1));
        file.add(object);
    }
    file.add(bytesOf("51 'x'"));
    const PlistValue value = read(file);
    EXPECT_EQ(value.expandedCount(), (std::uint64_t{2} << levels) - 1);
    EXPECT_EQ(value, PlistValue(value));
}

TEST(BinaryPlistParserTest, theTrailerIsChecked) {
    EXPECT_EQ(outcome(Bytes()), "The file ends unexpectedly.");
    Bytes bytes = bytesOf("'bplist00'");
    bytes.resize(39);
    EXPECT_EQ(outcome(bytes), "The file ends unexpectedly.");
    bytes.resize(40);
    EXPECT_EQ(outcome(bytes), badTrailer);
    bytes = fileOf("09").bytes();
    bytes[7] = '1';
    EXPECT_EQ(outcome(bytes), "The file ends unexpectedly.");

    const auto broken = [](const auto& change) {
        BinaryFile file = BinaryFile::of({"A1 01", "09"});
        change(file);
        return outcome(file);
    };
    for (const unsigned size : {0U, 3U, 5U, 6U, 7U, 9U, 16U, 255U}) {
        EXPECT_EQ(broken([size](BinaryFile& file) { file.claimedOffsetSize = size; }), badTrailer);
        EXPECT_EQ(broken([size](BinaryFile& file) { file.claimedReferenceSize = size; }),
                  badTrailer);
    }
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    for (const std::uint64_t count : {std::uint64_t{0}, std::uint64_t{3}, std::uint64_t{1} << 61,
                                      std::uint64_t{1} << 63, most}) {
        EXPECT_EQ(broken([count](BinaryFile& file) { file.claimedObjectCount = count; }),
                  badTrailer);
    }
    for (const std::uint64_t root : {std::uint64_t{2}, std::uint64_t{1} << 63, most}) {
        EXPECT_EQ(broken([root](BinaryFile& file) { file.root = root; }), badTrailer);
    }
    for (const std::uint64_t start : {std::uint64_t{0}, std::uint64_t{7}, std::uint64_t{12},
                                      std::uint64_t{14}, std::uint64_t{1} << 63, most}) {
        EXPECT_EQ(broken([start](BinaryFile& file) { file.claimedOffsetTableStart = start; }),
                  badTrailer);
    }
    EXPECT_EQ(broken([](BinaryFile& file) { file.claimedOffsetTableStart = 10; }),
              "Byte 9: Unknown object type 0x1.");
}

TEST(BinaryPlistParserTest, unusedBytesOfTheTrailerAreIgnored) {
    Bytes bytes = fileOf("09").bytes();
    for (std::size_t i = 0; i < 6; ++i) {
        bytes[bytes.size() - 32 + i] = 0xFF;
    }
    EXPECT_EQ(BinaryPlistParser::parse(bytes), PlistValue::boolean(true));
}

TEST(BinaryPlistParserTest, referencesAndOffsetsAreChecked) {
    EXPECT_EQ(outcome(BinaryFile::of({"A1 02", "09"})), badReference);
    EXPECT_EQ(outcome(BinaryFile::of({"D1 FF 01", "09"})), badReference);
    for (const std::uint64_t offset : {0U, 7U, 11U, 12U, 255U}) {
        BinaryFile file = BinaryFile::of({"A1 01", "09"});
        file.wrongOffsets[1] = offset;
        EXPECT_EQ(outcome(file), badOffset) << offset;
    }
    for (const std::uint64_t offset :
         {std::uint64_t{1} << 63, std::numeric_limits<std::uint64_t>::max()}) {
        BinaryFile file = BinaryFile::of({"A1 01", "09"});
        file.offsetSize = 8;
        file.wrongOffsets[1] = offset;
        EXPECT_EQ(outcome(file), badOffset) << offset;
    }
    BinaryFile wide = BinaryFile::of({"A1 FFFFFFFFFFFFFFFF"});
    wide.referenceSize = 8;
    EXPECT_EQ(outcome(wide), badReference);
}

TEST(BinaryPlistParserTest, brokenObjectsAreNamed) {
    const std::pair<const char*, std::string> cases[] = {
        {"00", "Byte 8: Unknown object type 0x0."},
        {"01", "Byte 8: Unknown object type 0x1."},
        {"07", "Byte 8: Unknown object type 0x7."},
        {"0A", "Byte 8: Unknown object type 0xA."},
        {"0F", "Byte 8: Unknown object type 0xF."},
        {"30 0000000000000000", "Byte 8: Unknown object type 0x30."},
        {"32 0000000000000000", "Byte 8: Unknown object type 0x32."},
        {"34 0000000000000000", "Byte 8: Unknown object type 0x34."},
        {"90", "Byte 8: Unknown object type 0x90."},
        {"9F", "Byte 8: Unknown object type 0x9F."},
        {"E0", "Byte 8: Unknown object type 0xE0."},
        {"FF", "Byte 8: Unknown object type 0xFF."},
        // Integers: the range first, then the width, then the value.
        {"10", endAt9},
        {"11 00", endAt9},
        {"13 00000000000000", endAt9},
        {"14 000000000000000000000000000000", endAt9},
        {"15 00", endAt9},
        {"1F 00", endAt9},
        {"15 0000000000000000000000000000000000000000000000000000000000000000",
         "Byte 9: Unsupported integer size."},
        {"14 00000000000000010000000000000000", "Byte 9: Integer out of range."},
        {"14 FFFFFFFFFFFFFFFF7FFFFFFFFFFFFFFF", "Byte 9: Integer out of range."},
        {"14 80000000000000000000000000000000", "Byte 9: Integer out of range."},
        {"14 7FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", "Byte 9: Integer out of range."},
        // Reals and uids: the width first.
        {"20 00", "Byte 8: Unsupported real size."},
        {"21 0000", "Byte 8: Unsupported real size."},
        {"24", "Byte 8: Unsupported real size."},
        {"2F", "Byte 8: Unsupported real size."},
        {"22 000000", endAt9},
        {"23 00000000000000", endAt9},
        {"33 00000000000000", endAt9},
        {"88", "Byte 8: UID too large."},
        {"8F", "Byte 8: UID too large."},
        {"80", endAt9},
        {"87 00000000000000", endAt9},
        // Counts.
        {"41", endAt9},
        {"4F", endAt9},
        {"4F 10", endAt10},
        {"4F 10 01", "Byte 11: The file ends unexpectedly."},
        {"4F 09", badLength},
        {"4F 2A", badLength},
        {"4F 00", badLength},
        {"4F 13 FFFFFFFFFFFFFFFF", badLength},
        {"5F 14 FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", badLength},
        {"4F 15", endAt10},
        {"4F 15 0000000000000000000000000000000000000000000000000000000000000000",
         "Byte 10: Unsupported integer size."},
        {"4F 14 00000000000000010000000000000000", "Byte 10: Integer out of range."},
        {"4F 13 7FFFFFFFFFFFFFFF", "Byte 18: The file ends unexpectedly."},
        {"4F 14 0000000000000000 FFFFFFFFFFFFFFFF", "Byte 26: The file ends unexpectedly."},
        {"5F 13 4000000000000000", "Byte 18: The file ends unexpectedly."},
        {"6F 13 7FFFFFFFFFFFFFFF", "Byte 18: The file ends unexpectedly."},
        {"6F 14 0000000000000000 8000000000000000", "Byte 26: The file ends unexpectedly."},
        {"6F 14 0000000000000000 FFFFFFFFFFFFFFFF", "Byte 26: The file ends unexpectedly."},
        {"AF 14 0000000000000000 FFFFFFFFFFFFFFFF", "Byte 26: The file ends unexpectedly."},
        {"DF 14 0000000000000000 8000000000000000", "Byte 26: The file ends unexpectedly."},
        {"DF 13 4000000000000001", "Byte 18: The file ends unexpectedly."},
        // Payloads that reach into the table of offsets.
        {"42 00", endAt9},
        {"52 'a'", endAt9},
        {"61 00", endAt9},
        {"A1", endAt9},
        {"D1 00", endAt9},
        // Texts.
        {"51 FF", "Byte 9: The text is not valid UTF-8."},
        {"72 C3 'a'", "Byte 9: The text is not valid UTF-8."},
        {"53 EDA080", "Byte 9: The text is not valid UTF-8."},
        {"52 C080", "Byte 9: The text is not valid UTF-8."},
        {"54 F4908080", "Byte 9: The text is not valid UTF-8."},
        {"5F 10 10 'sixteen bytes..' C3", "Byte 11: The text is not valid UTF-8."},
        {"5F 10 10 80 'sixteen bytes..'", "Byte 11: The text is not valid UTF-8."},
    };
    for (const auto& [picture, expected] : cases) {
        EXPECT_EQ(outcome(fileOf(picture)), expected) << picture;
    }
}

TEST(BinaryPlistParserTest, reasonsAreOfTheRightKind) {
    const auto reason = [](const BinaryFile& file) {
        try {
            BinaryPlistParser::parse(file.bytes());
        } catch (const PlistError& error) {
            return std::optional(error);
        }
        return std::optional<PlistError>();
    };
    EXPECT_EQ(reason(fileOf("14 00000000000000010000000000000000")),
              PlistError(PlistError::InvalidValue{"Integer out of range."}, PlistError::Offset{9}));
    EXPECT_EQ(reason(fileOf("88")),
              PlistError(PlistError::Malformed{"UID too large."}, PlistError::Offset{8}));
    EXPECT_EQ(reason(fileOf("52")), PlistError(PlistError::UnexpectedEnd{}, PlistError::Offset{9}));
    EXPECT_EQ(reason(BinaryFile::of({"A1 00"})), PlistError(PlistError::NestingTooDeep{512}));
}

TEST(BinaryPlistParserTest, keysMustBeStrings) {
    const std::string notStrings = "Byte 8: Dictionary keys must be strings.";
    EXPECT_EQ(outcome(BinaryFile::of({"D1 01 01", "10 05"})), notStrings);
    EXPECT_EQ(outcome(BinaryFile::of({"D2 02 01 01 01", "10 05", "51 'a'"})), notStrings);
    EXPECT_EQ(outcome(BinaryFile::of({"D1 01 02", "A1 02", "51 'a'"})), notStrings);
    EXPECT_EQ(outcome(BinaryFile::of({"D1 01 02", "D0", "51 'a'"})), notStrings);
    EXPECT_EQ(outcome(BinaryFile::of({"A1 01", "D1 02 02", "09"})),
              "Byte 10: Dictionary keys must be strings.");
    // The dictionary is built, and found to be wrong, after all its members have been read.
    EXPECT_EQ(outcome(BinaryFile::of({"D1 01 02", "10 05", "00"})),
              "Byte 13: Unknown object type 0x0.");
    EXPECT_EQ(outcome(BinaryFile::of({"D1 01 02", "A1 02", "E1"})),
              "Byte 13: Unknown object type 0xE1.");
    EXPECT_EQ(outcome(BinaryFile::of({"D1 01 02", "D1 02 02", "09"})),
              "Byte 11: Dictionary keys must be strings.");
    EXPECT_EQ(outcome(BinaryFile::of({"D1 00 01", "09"})), tooDeep);
}

TEST(BinaryPlistParserTest, atMost512ContainersAreOpen) {
    PlistValue value = read(chain(512, "51 'x'"));
    EXPECT_EQ(depthOf(value), 512U);
    EXPECT_EQ(outcome(chain(513, "51 'x'")), tooDeep);
    // Empty containers are finished at once and do not count.
    value = read(chain(512, "A0"));
    EXPECT_EQ(depthOf(value), 512U);
    EXPECT_EQ(outcome(chain(512, "D0")), "read");
    EXPECT_EQ(outcome(chain(513, "A0")), tooDeep);
}

// What is shared is not open again: sharing can make values deeper than what a file may open.
TEST(BinaryPlistParserTest, sharingMakesDeeperValues) {
    const std::size_t depth = 1000;
    BinaryFile file = chain(depth, "51 'x'");
    Bytes root = bytesOf("AF 11");
    append(root, bigEndian(depth, 2));
    for (std::size_t i = depth; i > 0; --i) {
        append(root, bigEndian(i - 1, 2));
    }
    file.root = file.add(root);
    const PlistValue value = read(file);
    EXPECT_EQ(depthOf(value.children()[depth - 1]), depth);
    EXPECT_EQ(
        BinaryPlistParser::parse(BinaryPlistSerializer::serialize(value.children()[0]).span()),
        value.children()[0]);
}

TEST(BinaryPlistParserTest, cyclesEndWithTheNestingError) {
    EXPECT_EQ(outcome(BinaryFile::of({"A1 00"})), tooDeep);
    EXPECT_EQ(outcome(BinaryFile::of({"A2 01 00", "09"})), tooDeep);
    EXPECT_EQ(outcome(BinaryFile::of({"D1 01 00", "51 'a'"})), tooDeep);
    EXPECT_EQ(outcome(BinaryFile::of({"A1 01", "A1 02", "A1 01"})), tooDeep);
    // What comes first in the file's order decides.
    EXPECT_EQ(outcome(BinaryFile::of({"A2 01 00", "00"})), "Byte 11: Unknown object type 0x0.");
    EXPECT_EQ(outcome(BinaryFile::of({"A2 00 01", "00"})), tooDeep);
    // A cycle of large containers is no case of objects that overlap.
    BinaryFile file;
    Bytes array = bytesOf("AF 10 FF 00");
    append(array, Bytes(254, 1));
    file.offsetSize = 2;
    file.add(array);
    file.add(bytesOf("09"));
    EXPECT_EQ(outcome(file), tooDeep);
}

// Containers whose bytes overlap can name more members than the file has bytes; up to 16 for each
// byte they are read.
TEST(BinaryPlistParserTest, overlappingContainersAreLimited) {
    const auto overlapping = [](unsigned arrays, unsigned members) {
        BinaryFile file;
        file.offsetSize = 2;
        Bytes root = bytesOf("AF 10");
        append(root, bigEndian(arrays, 1));
        for (unsigned i = 0; i < arrays; ++i) {
            append(root, bigEndian(i + 2, 1));
        }
        file.add(root);
        file.add(bytesOf("09"));
        // Each head claims the heads behind it as its members, too.
        const std::uint64_t start = file.offsetOf(2);
        for (unsigned i = 0; i < arrays; ++i) {
            Bytes head = bytesOf("AF 10");
            append(head, bigEndian(members, 1));
            file.add(head);
        }
        file.add(Bytes(members, 1));
        for (unsigned i = 0; i < arrays; ++i) {
            file.wrongOffsets[2 + i] = start + 3 * std::uint64_t{arrays - 1};
        }
        return file;
    };
    // 200 arrays of 255 members in 1,700 bytes are 30 references a byte.
    EXPECT_EQ(outcome(overlapping(200, 255)), overlap);
    EXPECT_EQ(outcome(overlapping(200, 100)), "read");
}

TEST(BinaryPlistParserTest, overlappingTextsAreLimited) {
    BinaryFile file;
    file.offsetSize = 2;
    Bytes root = bytesOf("AF 10 FA");
    for (unsigned i = 1; i <= 250; ++i) {
        append(root, bigEndian(i, 1));
    }
    file.add(root);
    Bytes content = bytesOf("5F 10 FF");
    append(content, Bytes(255, 'x'));
    file.add(content);
    for (std::size_t i = 2; i <= 250; ++i) {
        file.add(Bytes());
        file.wrongOffsets[i] = file.offsetOf(1);
    }
    EXPECT_EQ(outcome(file), overlap);
}

TEST(BinaryPlistParserTest, everyPrefixOfAFileFailsCleanly) {
    for (const SampleValue& sample : sampleValues()) {
        const PlistBytes whole = BinaryPlistSerializer::serialize(sample.value);
        if (whole.size() > 5000) {
            continue;
        }
        for (std::size_t length = 0; length < whole.size(); ++length) {
            // Copied, so that the sanitizers see a read past the end.
            const Bytes prefix(whole.data(), whole.data() + length);
            ASSERT_NE(outcome(prefix), "read") << sample.name << ", " << length;
        }
    }
}

TEST(BinaryPlistParserTest, everyChangedByteIsSurvived) {
    const PlistValue value = PlistValue::dictionary({
        {"a", PlistValue::array({integer(1), text("caf\xC3\xA9"), PlistValue::uid(300)})},
        {"b", PlistValue::dictionary({{"a", PlistValue::data(Bytes(20, 1))}})},
        {"c", PlistValue::dictionary({{"a", PlistValue::real(0.5)}})},
    });
    const PlistBytes whole = BinaryPlistSerializer::serialize(value);
    Bytes bytes(whole.span().begin(), whole.span().end());
    for (std::uint8_t& byte : bytes) {
        const std::uint8_t original = byte;
        for (unsigned other = 0; other < 256; ++other) {
            byte = static_cast<std::uint8_t>(other);
            // Whatever it is, it is a value that comes back when it is written, or an error
            // that points into the file.
            try {
                const PlistValue read = BinaryPlistParser::parse(bytes);
                const PlistBytes written = BinaryPlistSerializer::serialize(read);
                ASSERT_EQ(BinaryPlistParser::parse(written.span()), read);
            } catch (const PlistError& error) {
                if (error.location()) {
                    const auto place = std::get<PlistError::Offset>(*error.location());
                    ASSERT_LE(place.offset, bytes.size()) << error.errorDescription();
                }
            }
        }
        byte = original;
    }
}

TEST(BinaryPlistParserTest, whatIsWrittenReadsBackEqual) {
    for (const SampleValue& sample : sampleValues()) {
        const PlistBytes bytes = BinaryPlistSerializer::serialize(sample.value);
        EXPECT_EQ(BinaryPlistParser::parse(bytes.span()), sample.value) << sample.name;
    }
}

TEST(BinaryPlistParserTest, whatWasReadIsWrittenWithTheSameBytes) {
    for (const SampleValue& sample : sampleValues()) {
        const PlistBytes bytes = BinaryPlistSerializer::serialize(sample.value);
        const PlistValue again = BinaryPlistParser::parse(bytes.span());
        EXPECT_EQ(BinaryPlistSerializer::serialize(again).view(), bytes.view()) << sample.name;
    }
}

// Writing joins equivalent spellings and keeps the first one.
TEST(BinaryPlistParserTest, equivalentSpellingsComeBackAsTheFirst) {
    const PlistValue value = PlistValue::array({text("e\xCC\x81"), text("\xC3\xA9")});
    const PlistValue again =
        BinaryPlistParser::parse(BinaryPlistSerializer::serialize(value).span());
    EXPECT_EQ(again, value);
    EXPECT_EQ(again.children()[1].text(), "e\xCC\x81");
}

TEST(BinaryPlistParserTest, theValueHoldsNothingOfTheBytes) {
    Bytes bytes = BinaryFile::of({"A2 01 02", "5F 10 14 'twenty letters long.'",
                                  "4F 10 10 000102030405060708090A0B0C0D0E0F"})
                      .bytes();
    const PlistValue value = BinaryPlistParser::parse(bytes);
    bytes.assign(bytes.size(), 0xEE);
    EXPECT_EQ(value.children()[0].text(), "twenty letters long.");
    EXPECT_EQ(value.children()[1].dataValue()[15], 15);
}

}  // namespace plist::detail
