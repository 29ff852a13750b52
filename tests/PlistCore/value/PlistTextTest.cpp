#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistText.h"

namespace plist {

namespace {

using std::string_view_literals::operator""sv;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr PlistInteger least = leastPlistInteger;
constexpr PlistInteger greatest = greatestPlistInteger;

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string zeros(std::size_t count) {
    return std::string(count, '0');
}

TEST(PlistTextTest, parsesIntegers) {
    const std::vector<std::pair<std::string, PlistInteger>> cases = {
        {"0", 0},
        {"42", 42},
        {" 42\n", 42},
        {"\t\r\n 7 \xC2\xA0\xE2\x80\xA9", 7},
        {"-42", -42},
        {"+42", 42},
        {"007", 7},
        {"0x1f", 31},
        {"0X1f", 31},
        {"0xFFff", 65535},
        {"-0x10", -16},
        {"+0x10", 16},
        {"-0", 0},
        // A second sign, which must not make the number negative.
        {"-+5", -5},
        {"++5", 5},
        {"--0", 0},
        {"+-0", 0},
        {"0x+5", 5},
        {"-0x+5", -5},
        {"0x-0", 0},
        {"-0x-00", 0},
        // The ends of the range.
        {"9223372036854775807", 9223372036854775807},
        {"9223372036854775808", PlistInteger{1} << 63},
        {"18446744073709551615", greatest},
        {"+18446744073709551615", greatest},
        {"0xffffffffffffffff", greatest},
        {"-9223372036854775808", least},
        {"-0x8000000000000000", least},
        // Leading zeros of any length.
        {zeros(1000) + "18446744073709551615", greatest},
        {"-" + zeros(1000) + "9223372036854775808", least},
        {"0x" + zeros(1000) + "ffffffffffffffff", greatest},
        {zeros(1000), 0},
    };
    for (const auto& [text, expected] : cases) {
        const std::optional<PlistInteger> number = PlistText::parseInteger(text);
        ASSERT_TRUE(number) << text;
        EXPECT_TRUE(*number == expected) << text;
    }
}

TEST(PlistTextTest, rejectsWhatIsNoInteger) {
    const std::vector<std::string> cases = {
        "",
        " ",
        "\n",
        "-",
        "+",
        "--",
        "+-",
        "-+",
        "0x",
        "-0x",
        "0x+",
        "--5",
        "+-5",
        "---5",
        "+++5",
        "-+-5",
        "0x-5",
        "-0x-5",
        "--0x10",
        "+-0x10",
        "0x0x10",
        "x10",
        "0xg",
        "00x10",
        "1f",
        "1_000",
        "1,000",
        "1.000",
        "1.0",
        "1e3",
        "5.",
        "- 5",
        "5 5",
        "5a",
        "0b1",
        "0o7",
        "five",
        "\xD9\xA5",          // an Arabic digit
        "\xEF\xBC\x95",      // a full-width digit
        "\xE2\x88\x92\x35",  // U+2212, the minus sign
        "\xE2\x80\x8B\x35",  // U+200B is no whitespace
        std::string("5\0", 2),
        // Outside the range; nothing wraps around.
        "18446744073709551616",
        "0x10000000000000000",
        "-9223372036854775809",
        "-0x8000000000000001",
        "-18446744073709551615",
        "340282366920938463463374607431768211456",
        "340282366920938463463374607431768211457",
        "-340282366920938463463374607431768211457",
        "0x100000000000000000000000000000001",
        "115792089237316195423570985008687907853269984665640564039457",
        std::string(60, '9'),
        "-" + std::string(60, '9'),
        "1" + zeros(1000),
    };
    for (const std::string& text : cases) {
        EXPECT_FALSE(PlistText::parseInteger(text)) << text;
    }
}

TEST(PlistTextTest, parsesReals) {
    const std::vector<std::pair<std::string, double>> cases = {
        {"0", 0.0},
        {"1", 1.0},
        {"1e3", 1000.0},
        {"1E3", 1000.0},
        {"1e+3", 1000.0},
        {"1e-3", 0.001},
        {" -0.5 ", -0.5},
        {"\n\t2.5\xE2\x80\xA8", 2.5},
        {"+2.5", 2.5},
        {".5", 0.5},
        {"5.", 5.0},
        {"-.5e1", -5.0},
        {"5.e1", 50.0},
        {"007", 7.0},
        {"0.1", 0.1},
        {"18446744073709551616", 0x1p64},
        {"9007199254740993", 9007199254740992.0},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"4.9e-324", std::numeric_limits<double>::denorm_min()},
        {"2.2250738585072011e-308", 0x0.fffffffffffffp-1022},
        {zeros(800) + "1.5", 1.5},
        {"0." + zeros(400) + "1e402", 10.0},
        {"1" + zeros(400) + "e-400", 1.0},
        // Hexadecimal.
        {"0x10", 16.0},
        {"0x1p3", 8.0},
        {"0X1P3", 8.0},
        {"-0x1.8p+1", -3.0},
        {"+0x.8p1", 1.0},
        {"0x8.", 8.0},
        {"0xA.bP-1", 5.34375},
        {"0x1e3", 483.0},
        {"0x1.fffffffffffff8p0", 2.0},
        // Names.
        {"inf", infinity},
        {"+inf", infinity},
        {"-inf", -infinity},
        {"infinity", infinity},
        {"Infinity", infinity},
        {"+INFINITY", infinity},
        {"-Infinity", -infinity},
        {" iNf\n", infinity},
        // Too large and too small.
        {"1e400", infinity},
        {"-1e400", -infinity},
        {"1.7976931348623159e308", infinity},
        {std::string(400, '1'), infinity},
        {std::string(400, '1') + ".5e-5", infinity},
        {zeros(500) + "." + "1e309999999999999999999999", infinity},
        {"0x1p2000", infinity},
        {"-0x1p99999999999999999999", -infinity},
        {"0x0.0000001p1100", infinity},
        {"1e-400", 0.0},
        {"2e-324", 0.0},
        {"0." + zeros(400) + "1", 0.0},
        {"0." + zeros(400) + "1e50", 0.0},
        {"1e-99999999999999999999", 0.0},
        {"0x1p-2000", 0.0},
        {"0x1p-99999999999999999999", 0.0},
        {"0x1000000p-1200", 0.0},
        {"0e99999999999999999999", 0.0},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(PlistText::parseReal(text), expected) << text;
    }
}

TEST(PlistTextTest, parsesSignsOfZero) {
    for (const std::string_view text : {"0", "+0", "0.0", "0x0", "1e-400", "0x1p-2000"}) {
        const std::optional<double> number = PlistText::parseReal(text);
        ASSERT_TRUE(number) << text;
        EXPECT_FALSE(std::signbit(*number)) << text;
    }
    for (const std::string_view text : {"-0", "-0.0", "-0x0", "-1e-400", "-0x1p-2000"}) {
        const std::optional<double> number = PlistText::parseReal(text);
        ASSERT_TRUE(number) << text;
        EXPECT_EQ(*number, 0.0);
        EXPECT_TRUE(std::signbit(*number)) << text;
    }
}

TEST(PlistTextTest, parsesNaN) {
    for (const std::string_view text : {"nan", "NaN", "+nan", "-nan", " NAN\n"}) {
        const std::optional<double> number = PlistText::parseReal(text);
        ASSERT_TRUE(number) << text;
        EXPECT_TRUE(std::isnan(*number)) << text;
        EXPECT_FALSE(std::signbit(*number)) << text;
    }
}

TEST(PlistTextTest, rejectsWhatIsNoReal) {
    for (const std::string_view text : {
             ""sv,
             " "sv,
             "-"sv,
             "+"sv,
             "."sv,
             "-."sv,
             "e5"sv,
             ".e5"sv,
             "1e"sv,
             "1e+"sv,
             "1e-"sv,
             "1e5.0"sv,
             "1 e5"sv,
             "1,5"sv,
             "1.5,"sv,
             "1.2.3"sv,
             "1_000"sv,
             "1'000"sv,
             "+-5"sv,
             "-+5"sv,
             "--5"sv,
             "++5"sv,
             "- 5"sv,
             "5f"sv,
             "5 5"sv,
             "0x"sv,
             "0x."sv,
             "0xp1"sv,
             "0x1p"sv,
             "0x1p+"sv,
             "0x1pf"sv,
             "0x-5"sv,
             "0x+5"sv,
             "0x 5"sv,
             "0xinf"sv,
             "0xnan"sv,
             "0xg"sv,
             "0x0x1"sv,
             "1p3"sv,
             "1e400x"sv,
             "i"sv,
             "in"sv,
             "infi"sv,
             "infinit"sv,
             "infinityx"sv,
             "infinity."sv,
             "na"sv,
             "nan(1)"sv,
             "nan()"sv,
             "nanx"sv,
             "+-inf"sv,
             "--inf"sv,
             "+-nan"sv,
             "true"sv,
             "\xC4\xB1nf"sv,        // dotless i
             "\xC4\xB0nf"sv,        // dotted capital I
             "\xE2\x88\x9E"sv,      // the infinity sign
             "\xD9\xA5"sv,          // an Arabic digit
             "\xE2\x88\x92\x35"sv,  // U+2212, the minus sign
             "5\0"sv,
         }) {
        EXPECT_EQ(PlistText::parseReal(text), std::nullopt) << text;
    }
}

TEST(PlistTextTest, parsesBooleans) {
    for (const std::string_view text : {"true", "TRUE", "True", "yes", "YES", "1", " true ",
                                        "\ttrue\xC2\xA0", "\xE3\x80\x80\x31"}) {
        EXPECT_EQ(PlistText::parseBoolean(text), true) << text;
    }
    for (const std::string_view text : {"false", "FALSE", "no", "No", "0", " 0\t"}) {
        EXPECT_EQ(PlistText::parseBoolean(text), false) << text;
    }
    for (const std::string_view text : {""sv,          " "sv,
                                        "true\n"sv,    "\ntrue"sv,
                                        "true\r"sv,    "true\xE2\x80\xA8"sv,
                                        "y"sv,         "n"sv,
                                        "t"sv,         "on"sv,
                                        "off"sv,       "2"sv,
                                        "-1"sv,        "01"sv,
                                        "+1"sv,        "1.0"sv,
                                        "truee"sv,     "tru"sv,
                                        "true\0"sv,    "fal\xC5\xBF\x65"sv,
                                        "ye\xC5\xBF"sv}) {
        EXPECT_EQ(PlistText::parseBoolean(text), std::nullopt) << text;
    }
}

TEST(PlistTextTest, parsesBase64) {
    EXPECT_EQ(PlistText::parseBase64(""), bytesOf(""));
    EXPECT_EQ(PlistText::parseBase64("QUJD"), bytesOf("ABC"));
    EXPECT_EQ(PlistText::parseBase64("QUJ"), bytesOf("AB"));
    EXPECT_EQ(PlistText::parseBase64(" Q-UJD\n"), bytesOf("ABC"));
    EXPECT_EQ(PlistText::parseBase64("Q"), std::nullopt);
}

TEST(PlistTextTest, writesReals) {
    const std::vector<std::pair<double, std::string_view>> cases = {
        {0.0, "0.0"},
        {-0.0, "-0.0"},
        {1.0, "1.0"},
        {-1.0, "-1.0"},
        {0.1, "0.1"},
        {-2.5, "-2.5"},
        {12345.678, "12345.678"},
        {1.0 / 3.0, "0.3333333333333333"},
        {0.1 + 0.2, "0.30000000000000004"},
        {100.0, "100.0"},
        {1e15, "1000000000000000.0"},
        {1234567890123456.0, "1234567890123456.0"},
        {9007199254740991.0, "9007199254740991.0"},
        {9007199254740992.0, "9007199254740992.0"},
        {9007199254740994.0, "9007199254740994.0"},
        {9999999999999998.0, "9999999999999998.0"},
        {-9999999999999998.0, "-9999999999999998.0"},
        {1e16, "1e+16"},
        {-1e16, "-1e+16"},
        {12345678901234567890.0, "1.2345678901234567e+19"},
        {1.5e300, "1.5e+300"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {0.001, "0.001"},
        {0.0001, "0.0001"},
        {0.00012345, "0.00012345"},
        {0.00009999999999999999, "9.999999999999999e-05"},
        {0.00001, "1e-05"},
        {-0.000015, "-1.5e-05"},
        {1e-10, "1e-10"},
        {1e-100, "1e-100"},
        {std::numeric_limits<double>::min(), "2.2250738585072014e-308"},
        {std::numeric_limits<double>::denorm_min(), "5e-324"},
        {infinity, "inf"},
        {-infinity, "-inf"},
        {notANumber, "nan"},
        {-notANumber, "nan"},
    };
    for (const auto& [number, expected] : cases) {
        EXPECT_EQ(PlistText::realText(number), expected);
    }
}

TEST(PlistTextTest, readsBackTheRealsThatItWrites) {
    std::mt19937_64 random(3);
    for (int step = 0; step < 20'000; ++step) {
        const auto number = std::bit_cast<double>(random());
        if (!std::isnan(number)) {
            const std::string text = PlistText::realText(number);
            ASSERT_EQ(PlistText::parseReal(text), number) << text;
            ASSERT_NE(text.find_first_of(".ef"), std::string::npos) << text;
        }
    }
}

/// The nine types and a text, as a text becomes a value of each.
TEST(PlistTextTest, readsValuesOfEveryType) {
    struct ValueCase {
        std::string_view text;
        PlistType type;
        std::optional<PlistValue> expected;
    };
    const std::vector<ValueCase> cases = {
        {"", PlistType::dictionary, std::nullopt},
        {"{}", PlistType::dictionary, std::nullopt},
        {"", PlistType::array, std::nullopt},
        {"x", PlistType::array, std::nullopt},
        {"", PlistType::string, PlistValue::string("")},
        {" 7 ", PlistType::string, PlistValue::string(" 7 ")},
        {"a\0b"sv, PlistType::string, PlistValue::string("a\0b"sv)},
        {" 7 ", PlistType::integer, PlistValue::integer(7)},
        {"7\n", PlistType::integer, PlistValue::integer(7)},
        {"+0x10", PlistType::integer, PlistValue::integer(16)},
        {"0x", PlistType::integer, std::nullopt},
        {"7.0", PlistType::integer, std::nullopt},
        {"7\n", PlistType::real, PlistValue::real(7)},
        {"1e-05", PlistType::real, PlistValue::real(0.00001)},
        {"seven", PlistType::real, std::nullopt},
        {"TRUE", PlistType::boolean, PlistValue::boolean(true)},
        {"no", PlistType::boolean, PlistValue::boolean(false)},
        {"true\n", PlistType::boolean, std::nullopt},
        {" 2001-01-02 ", PlistType::date, PlistValue::date(86400)},
        {"2001-01-02\n", PlistType::date, std::nullopt},
        {"", PlistType::date, std::nullopt},
        {"QUJD", PlistType::data, PlistValue::data(bytesOf("ABC"))},
        {"QUJ", PlistType::data, PlistValue::data(bytesOf("AB"))},
        {"", PlistType::data, PlistValue::data({})},
        {"Q", PlistType::data, std::nullopt},
        {"0", PlistType::uid, PlistValue::uid(0)},
        {" +7\t", PlistType::uid, PlistValue::uid(7)},
        {"007", PlistType::uid, PlistValue::uid(7)},
        {"18446744073709551615", PlistType::uid,
         PlistValue::uid(std::numeric_limits<std::uint64_t>::max())},
        {"18446744073709551616", PlistType::uid, std::nullopt},
        {"184467440737095516160000000000000000000", PlistType::uid, std::nullopt},
        {"", PlistType::uid, std::nullopt},
        {"+", PlistType::uid, std::nullopt},
        {"++7", PlistType::uid, std::nullopt},
        {"-7", PlistType::uid, std::nullopt},
        {"-0", PlistType::uid, std::nullopt},
        {"7\n", PlistType::uid, std::nullopt},
        {"0x7", PlistType::uid, std::nullopt},
        {"7.0", PlistType::uid, std::nullopt},
        {"\xD9\xA5", PlistType::uid, std::nullopt},
    };
    for (const ValueCase& testCase : cases) {
        const std::optional<PlistValue> found = PlistText::value(testCase.text, testCase.type);
        EXPECT_TRUE(found == testCase.expected)
            << testCase.text << " as " << rawValue(testCase.type);
    }
}

TEST(PlistTextTest, displaysValues) {
    const std::vector<std::pair<PlistValue, std::string_view>> cases = {
        {PlistValue::dictionary(), ""},
        {PlistValue::array({PlistValue::string("x")}), ""},
        {PlistValue::string(""), ""},
        {PlistValue::string(" a\0\n"sv), " a\0\n"sv},
        {PlistValue::integer(0), "0"},
        {PlistValue::integer(least), "-9223372036854775808"},
        {PlistValue::integer(greatest), "18446744073709551615"},
        {PlistValue::real(1), "1.0"},
        {PlistValue::real(-infinity), "-inf"},
        {PlistValue::real(notANumber), "nan"},
        {PlistValue::boolean(true), "true"},
        {PlistValue::boolean(false), "false"},
        {PlistValue::date(0), "2001-01-01T00:00:00Z"},
        {PlistValue::date(notANumber), "1970-01-01T00:00:00Z"},
        {PlistValue::data({}), ""},
        {PlistValue::data(bytesOf("ABC")), "QUJD"},
        {PlistValue::data(bytesOf("A")), "QQ=="},
        {PlistValue::data(bytesOf(std::string(60, '\0'))),
         "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"},
        {PlistValue::uid(0), "0"},
        {PlistValue::uid(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615"},
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(PlistText::displayText(value), expected);
    }
}

}  // namespace

}  // namespace plist
