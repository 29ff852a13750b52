#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistText.h"

namespace plist {

namespace {

using std::string_view_literals::operator""sv;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint64_t greatestUid = std::numeric_limits<std::uint64_t>::max();

PlistValue text(std::string_view utf8) {
    return PlistValue::string(utf8);
}

PlistValue data(std::string_view bytes) {
    return PlistValue::data({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

PlistValue integer(PlistInteger number) {
    return PlistValue::integer(number);
}

PlistValue real(double number) {
    return PlistValue::real(number);
}

PlistValue date(double seconds) {
    return PlistValue::date(seconds);
}

PlistValue uid(std::uint64_t number) {
    return PlistValue::uid(number);
}

const PlistValue yes = PlistValue::boolean(true);
const PlistValue no = PlistValue::boolean(false);
const PlistValue emptyDictionary = PlistValue::dictionary();
const PlistValue emptyArray = PlistValue::array();

/// A value and what it becomes as each of the nine types.
struct Row {
    PlistValue value;
    std::array<PlistValue, 9> results;
};

void expectRow(const Row& row) {
    for (std::size_t index = 0; index < allPlistTypes.size(); ++index) {
        const PlistType type = allPlistTypes.at(index);
        const PlistValue found = PlistText::converted(row.value, type);
        EXPECT_EQ(found.type(), type);
        EXPECT_TRUE(found == row.results.at(index))
            << rawValue(row.value.type()) << " \"" << PlistText::displayText(row.value) << "\" to "
            << rawValue(type) << ": \"" << PlistText::displayText(found) << "\"";
    }
}

TEST(PlistTextConvertedTest, convertsContainers) {
    const std::vector<PlistValue> items = {integer(7), PlistValue::array({text("x")}), text("b")};
    const PlistValue array = PlistValue::array(items);
    const PlistValue dictionary =
        PlistValue::dictionary({{"b", items[0]}, {"a", items[1]}, {"b", items[2]}});
    const PlistValue itemDictionary =
        PlistValue::dictionary({{"Item 0", items[0]}, {"Item 1", items[1]}, {"Item 2", items[2]}});
    expectRow({dictionary,
               {dictionary, array, text(""), integer(0), real(0), no, date(0), data(""), uid(0)}});
    expectRow(
        {array,
         {itemDictionary, array, text(""), integer(0), real(0), no, date(0), data(""), uid(0)}});
    expectRow({emptyDictionary,
               {emptyDictionary, emptyArray, text(""), integer(0), real(0), no, date(0), data(""),
                uid(0)}});
    expectRow({emptyArray,
               {emptyDictionary, emptyArray, text(""), integer(0), real(0), no, date(0), data(""),
                uid(0)}});
}

TEST(PlistTextConvertedTest, namesManyItems) {
    const PlistValue array = PlistValue::array(std::vector<PlistValue>(1234, yes));
    const PlistValue dictionary = PlistText::converted(array, PlistType::dictionary);
    ASSERT_EQ(dictionary.childCount(), 1234U);
    EXPECT_EQ(dictionary.keys()[9].view(), "Item 9");
    EXPECT_EQ(dictionary.keys()[10].view(), "Item 10");
    EXPECT_EQ(dictionary.keys()[1233].view(), "Item 1233");
    EXPECT_TRUE(PlistText::converted(dictionary, PlistType::array) == array);
}

TEST(PlistTextConvertedTest, convertsStrings) {
    const std::vector<Row> rows = {
        {text(""),
         {emptyDictionary, emptyArray, text(""), integer(0), real(0), no, date(0), data(""),
          uid(0)}},
        {text("12"),
         {emptyDictionary, emptyArray, text("12"), integer(12), real(12), yes,
          date(-62135596800.0 - 978307200.0 + 11 * 365.0 * 86400 + 2 * 86400.0), data("12"),
          uid(12)}},
        {text("2.9"),
         {emptyDictionary, emptyArray, text("2.9"), integer(2), real(2.9), yes, date(2.9),
          data("2.9"), uid(0)}},
        {text("-2.9"),
         {emptyDictionary, emptyArray, text("-2.9"), integer(-2), real(-2.9), yes, date(-2.9),
          data("-2.9"), uid(0)}},
        {text("yes"),
         {emptyDictionary, emptyArray, text("yes"), integer(0), real(0), yes, date(0), data("yes"),
          uid(0)}},
        {text("NO"),
         {emptyDictionary, emptyArray, text("NO"), integer(0), real(0), no, date(0), data("NO"),
          uid(0)}},
        {text(" 0x10\n"),
         {emptyDictionary, emptyArray, text(" 0x10\n"), integer(16), real(16), yes, date(16),
          data(" 0x10\n"), uid(16)}},
        {text("1\n"),
         {emptyDictionary, emptyArray, text("1\n"), integer(1), real(1), yes, date(1), data("1\n"),
          uid(1)}},
        {text("0\n"),
         {emptyDictionary, emptyArray, text("0\n"), integer(0), real(0), no, date(0), data("0\n"),
          uid(0)}},
        {text("+-0"),
         {emptyDictionary, emptyArray, text("+-0"), integer(0), real(0), no, date(0), data("+-0"),
          uid(0)}},
        {text("-0x5"),
         {emptyDictionary, emptyArray, text("-0x5"), integer(-5), real(-5), yes, date(-5),
          data("-0x5"), uid(0)}},
        {text("18446744073709551615"),
         {emptyDictionary, emptyArray, text("18446744073709551615"), integer(greatestPlistInteger),
          real(0x1p64), yes, date(0x1p64), data("18446744073709551615"), uid(greatestUid)}},
        {text("18446744073709551616"),
         {emptyDictionary, emptyArray, text("18446744073709551616"), integer(0), real(0x1p64), yes,
          date(0x1p64), data("18446744073709551616"), uid(0)}},
        {text("1e3"),
         {emptyDictionary, emptyArray, text("1e3"), integer(1000), real(1000), yes, date(1000),
          data("1e3"), uid(0)}},
        {text("1e30"),
         {emptyDictionary, emptyArray, text("1e30"), integer(0), real(1e30), yes, date(1e30),
          data("1e30"), uid(0)}},
        {text("-inf"),
         {emptyDictionary, emptyArray, text("-inf"), integer(0), real(-infinity), yes, date(0),
          data("-inf"), uid(0)}},
        {text("2001-01-02"),
         {emptyDictionary, emptyArray, text("2001-01-02"), integer(0), real(0), no, date(86400),
          data("2001-01-02"), uid(0)}},
        {text("caf\xC3\xA9\0"sv),
         {emptyDictionary, emptyArray, text("caf\xC3\xA9\0"sv), integer(0), real(0), no, date(0),
          data("caf\xC3\xA9\0"sv), uid(0)}},
    };
    for (const Row& row : rows) {
        expectRow(row);
    }
}

TEST(PlistTextConvertedTest, convertsNaNText) {
    EXPECT_TRUE(std::isnan(PlistText::converted(text("nan"), PlistType::real).realValue()));
    EXPECT_TRUE(PlistText::converted(text("nan"), PlistType::boolean) == yes);
    EXPECT_TRUE(PlistText::converted(text("nan"), PlistType::integer) == integer(0));
    EXPECT_TRUE(PlistText::converted(text("nan"), PlistType::date) == date(0));
    EXPECT_TRUE(PlistText::converted(text("nan"), PlistType::uid) == uid(0));
}

TEST(PlistTextConvertedTest, convertsIntegers) {
    const std::vector<Row> rows = {
        {integer(0),
         {emptyDictionary, emptyArray, text("0"), integer(0), real(0), no, date(0), data(""),
          uid(0)}},
        {integer(7),
         {emptyDictionary, emptyArray, text("7"), integer(7), real(7), yes, date(7), data(""),
          uid(7)}},
        {integer(-1),
         {emptyDictionary, emptyArray, text("-1"), integer(-1), real(-1), yes, date(-1), data(""),
          uid(0)}},
        {integer(leastPlistInteger),
         {emptyDictionary, emptyArray, text("-9223372036854775808"), integer(leastPlistInteger),
          real(-0x1p63), yes, date(-0x1p63), data(""), uid(0)}},
        {integer(greatestPlistInteger),
         {emptyDictionary, emptyArray, text("18446744073709551615"), integer(greatestPlistInteger),
          real(0x1p64), yes, date(0x1p64), data(""), uid(greatestUid)}},
        {integer(9007199254740993),
         {emptyDictionary, emptyArray, text("9007199254740993"), integer(9007199254740993),
          real(9007199254740992.0), yes, date(9007199254740992.0), data(""),
          uid(9007199254740993)}},
    };
    for (const Row& row : rows) {
        expectRow(row);
    }
}

TEST(PlistTextConvertedTest, convertsReals) {
    const std::vector<Row> rows = {
        {real(0),
         {emptyDictionary, emptyArray, text("0.0"), integer(0), real(0), no, date(0), data(""),
          uid(0)}},
        {real(-0.0),
         {emptyDictionary, emptyArray, text("-0.0"), integer(0), real(0), no, date(0), data(""),
          uid(0)}},
        {real(2.5),
         {emptyDictionary, emptyArray, text("2.5"), integer(2), real(2.5), yes, date(2.5), data(""),
          uid(0)}},
        {real(-2.7),
         {emptyDictionary, emptyArray, text("-2.7"), integer(-2), real(-2.7), yes, date(-2.7),
          data(""), uid(0)}},
        {real(0.1),
         {emptyDictionary, emptyArray, text("0.1"), integer(0), real(0.1), yes, date(0.1), data(""),
          uid(0)}},
        {real(1e30),
         {emptyDictionary, emptyArray, text("1e+30"), integer(0), real(1e30), yes, date(1e30),
          data(""), uid(0)}},
        {real(infinity),
         {emptyDictionary, emptyArray, text("inf"), integer(0), real(infinity), yes, date(0),
          data(""), uid(0)}},
        {real(-infinity),
         {emptyDictionary, emptyArray, text("-inf"), integer(0), real(-infinity), yes, date(0),
          data(""), uid(0)}},
    };
    for (const Row& row : rows) {
        expectRow(row);
    }
}

TEST(PlistTextConvertedTest, convertsNaN) {
    for (const PlistValue& value : {real(notANumber), date(notANumber)}) {
        EXPECT_TRUE(PlistText::converted(value, PlistType::dictionary) == emptyDictionary);
        EXPECT_TRUE(PlistText::converted(value, PlistType::array) == emptyArray);
        EXPECT_TRUE(PlistText::converted(value, PlistType::integer) == integer(0));
        EXPECT_TRUE(std::isnan(PlistText::converted(value, PlistType::real).realValue()));
        EXPECT_TRUE(PlistText::converted(value, PlistType::boolean) == yes);
        EXPECT_TRUE(PlistText::converted(value, PlistType::data) == data(""));
        EXPECT_TRUE(PlistText::converted(value, PlistType::uid) == uid(0));
    }
    EXPECT_TRUE(PlistText::converted(real(notANumber), PlistType::string) == text("nan"));
    EXPECT_TRUE(PlistText::converted(real(notANumber), PlistType::date) == date(0));
    EXPECT_TRUE(PlistText::converted(date(notANumber), PlistType::string) ==
                text("1970-01-01T00:00:00Z"));
    EXPECT_TRUE(std::isnan(PlistText::converted(date(notANumber), PlistType::date).dateValue()));
}

/// The ends of the integer range are checked before the cast, which is undefined beyond them.
TEST(PlistTextConvertedTest, truncatesAtTheEndsOfTheRange) {
    const std::vector<std::pair<double, PlistInteger>> cases = {
        {-0x1p63, leastPlistInteger},
        {-0x1.0000000000001p63, 0},
        {0x1p63, PlistInteger{1} << 63},
        {0x1.fffffffffffffp63, greatestPlistInteger - 2047},
        {0x1p64, 0},
        {-0x1p64, 0},
        {std::numeric_limits<double>::max(), 0},
        {std::numeric_limits<double>::lowest(), 0},
        {std::numeric_limits<double>::denorm_min(), 0},
        {-0.999, 0},
        {0.999, 0},
    };
    for (const auto& [number, expected] : cases) {
        EXPECT_TRUE(PlistText::converted(real(number), PlistType::integer) == integer(expected))
            << number;
        EXPECT_TRUE(PlistText::converted(date(number), PlistType::integer) == integer(expected))
            << number;
    }
}

TEST(PlistTextConvertedTest, convertsBooleans) {
    expectRow({yes,
               {emptyDictionary, emptyArray, text("true"), integer(1), real(1), yes, date(1),
                data(""), uid(0)}});
    expectRow({no,
               {emptyDictionary, emptyArray, text("false"), integer(0), real(0), no, date(0),
                data(""), uid(0)}});
}

TEST(PlistTextConvertedTest, convertsDates) {
    const std::vector<Row> rows = {
        {date(0),
         {emptyDictionary, emptyArray, text("2001-01-01T00:00:00Z"), integer(0), real(0), no,
          date(0), data(""), uid(0)}},
        {date(86400.75),
         {emptyDictionary, emptyArray, text("2001-01-02T00:00:00Z"), integer(86400), real(86400.75),
          yes, date(86400.75), data(""), uid(0)}},
        {date(-1.5),
         {emptyDictionary, emptyArray, text("2000-12-31T23:59:58Z"), integer(-1), real(-1.5), yes,
          date(-1.5), data(""), uid(0)}},
        {date(infinity),
         {emptyDictionary, emptyArray, text("292277026596-12-04T15:30:07Z"), integer(0),
          real(infinity), yes, date(infinity), data(""), uid(0)}},
    };
    for (const Row& row : rows) {
        expectRow(row);
    }
}

TEST(PlistTextConvertedTest, convertsData) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"", ""},
        {"12", "12"},
        {"caf\xC3\xA9", "caf\xC3\xA9"},
        {"a\0b"sv, "a\0b"sv},
        {"\xEF\xBB\xBFx", "\xEF\xBB\xBFx"},
        {"\xFF\xFE", "//4="},
        {"\xC3", "ww=="},
        {"\xED\xA0\x80", "7aCA"},
    };
    for (const auto& [bytes, expected] : cases) {
        expectRow({data(bytes),
                   {emptyDictionary, emptyArray, text(expected), integer(0), real(0), no, date(0),
                    data(bytes), uid(0)}});
    }
}

TEST(PlistTextConvertedTest, convertsUids) {
    const std::vector<Row> rows = {
        {uid(0),
         {emptyDictionary, emptyArray, text("0"), integer(0), real(0), no, date(0), data(""),
          uid(0)}},
        {uid(7),
         {emptyDictionary, emptyArray, text("7"), integer(7), real(7), yes, date(7), data(""),
          uid(7)}},
        {uid(greatestUid),
         {emptyDictionary, emptyArray, text("18446744073709551615"), integer(greatestPlistInteger),
          real(0x1p64), yes, date(0x1p64), data(""), uid(greatestUid)}},
    };
    for (const Row& row : rows) {
        expectRow(row);
    }
}

}  // namespace

}  // namespace plist
