#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistError.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "PlistCore/xml/XMLPlistSerializer.h"
#include "tests/PlistCore/support/SampleValues.h"

namespace plist::detail {

namespace {

const std::string prologue =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

std::string xml(const PlistValue& value) {
    return std::string(XMLPlistSerializer::serialize(value).view());
}

/// What stands between the prologue and the end tag of the document.
std::string body(const PlistValue& value) {
    const std::string whole = xml(value);
    const std::string epilogue = "</plist>\n";
    if (!whole.starts_with(prologue) || !whole.ends_with(epilogue)) {
        return "not framed: " + whole;
    }
    return whole.substr(prologue.size(), whole.size() - prologue.size() - epilogue.size());
}

PlistValue text(const std::string& utf8) {
    return PlistValue::string(utf8);
}

PlistValue bytes(std::size_t count, std::uint8_t byte) {
    return PlistValue::data(std::vector<std::uint8_t>(count, byte));
}

/// `value` inside `depth` arrays of one item.
PlistValue wrapped(PlistValue value, std::size_t depth) {
    for (std::size_t i = 0; i < depth; ++i) {
        std::vector<PlistValue> items;
        items.push_back(std::move(value));
        value = PlistValue::array(std::move(items));
    }
    return value;
}

std::string realText(double number) {
    const std::string line = body(PlistValue::real(number));
    const std::string_view open = "<real>";
    const std::string_view close = "</real>\n";
    if (!line.starts_with(open) || !line.ends_with(close)) {
        return "not a real: " + line;
    }
    return line.substr(open.size(), line.size() - open.size() - close.size());
}

/// C's own text, where the locale writes "," with a "." again.
std::string printed(double number) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.17g", number);
    std::string result = buffer;
    std::replace(result.begin(), result.end(), ',', '.');
    return result;
}

std::string replaced(std::string whole, const std::string& part, const std::string& by) {
    for (std::size_t at = whole.find(part); at != std::string::npos;
         at = whole.find(part, at + by.size())) {
        whole.replace(at, part.size(), by);
    }
    return whole;
}

std::string escaped(const std::string& utf8) {
    return replaced(replaced(replaced(utf8, "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
}

}  // namespace

TEST(XMLPlistSerializerTest, emptyDictionaryIsThePrologueAndThreeLines) {
    EXPECT_EQ(prologue.size(), 164U);
    EXPECT_EQ(xml(PlistValue()), prologue + "<dict/>\n</plist>\n");
}

TEST(XMLPlistSerializerTest, everyScalarHasItsLine) {
    const std::pair<PlistValue, const char*> cases[] = {
        {PlistValue::array(), "<array/>\n"},
        {text(""), "<string></string>\n"},
        {text("a\"b'c"), "<string>a\"b'c</string>\n"},
        {PlistValue::integer(0), "<integer>0</integer>\n"},
        {PlistValue::integer(-1), "<integer>-1</integer>\n"},
        {PlistValue::integer(leastPlistInteger), "<integer>-9223372036854775808</integer>\n"},
        {PlistValue::integer(std::numeric_limits<std::int64_t>::max()),
         "<integer>9223372036854775807</integer>\n"},
        {PlistValue::integer(PlistInteger{1} << 63), "<integer>9223372036854775808</integer>\n"},
        {PlistValue::integer(greatestPlistInteger), "<integer>18446744073709551615</integer>\n"},
        {PlistValue::boolean(true), "<true/>\n"},
        {PlistValue::boolean(false), "<false/>\n"},
        {PlistValue::date(0), "<date>2001-01-01T00:00:00Z</date>\n"},
        {PlistValue::date(-978307200.5), "<date>1969-12-31T23:59:59Z</date>\n"},
        {PlistValue::date(-31589136000.0), "<date>0999-12-25T00:00:00Z</date>\n"},
        {PlistValue::date(-63177025200.0), "<date>-001-01-01T10:20:00Z</date>\n"},
        {PlistValue::date(std::numeric_limits<double>::quiet_NaN()),
         "<date>1970-01-01T00:00:00Z</date>\n"},
        {PlistValue::data({}), "<data>\n</data>\n"},
        {bytes(3, 'a'), "<data>\nYWFh\n</data>\n"},
    };
    for (const auto& [value, expected] : cases) {
        EXPECT_EQ(body(value), expected);
    }
}

TEST(XMLPlistSerializerTest, containersAreIndentedByTabs) {
    const std::string abc = "abc";
    const PlistValue value = PlistValue::dictionary({
        {"a", PlistValue::integer(1)},
        {"b", PlistValue::array({text("x&y")})},
        {"c", PlistValue::data(std::vector<std::uint8_t>(abc.begin(), abc.end()))},
    });
    EXPECT_EQ(body(value),
              "<dict>\n"
              "\t<key>a</key>\n"
              "\t<integer>1</integer>\n"
              "\t<key>b</key>\n"
              "\t<array>\n"
              "\t\t<string>x&amp;y</string>\n"
              "\t</array>\n"
              "\t<key>c</key>\n"
              "\t<data>\n"
              "\tYWJj\n"
              "\t</data>\n"
              "</dict>\n");
}

TEST(XMLPlistSerializerTest, entriesKeepTheirOrderAndRepeatedKeys) {
    const PlistValue value = PlistValue::dictionary({
        {"b", PlistValue::dictionary()},
        {"", PlistValue::array()},
        {"b", PlistValue::boolean(true)},
    });
    EXPECT_EQ(body(value),
              "<dict>\n"
              "\t<key>b</key>\n"
              "\t<dict/>\n"
              "\t<key></key>\n"
              "\t<array/>\n"
              "\t<key>b</key>\n"
              "\t<true/>\n"
              "</dict>\n");
}

TEST(XMLPlistSerializerTest, uidIsADictionaryOfOneEntry) {
    EXPECT_EQ(body(PlistValue::uid(5)),
              "<dict>\n\t<key>CF$UID</key>\n\t<integer>5</integer>\n</dict>\n");
    EXPECT_EQ(body(PlistValue::array({PlistValue::uid(std::numeric_limits<std::uint64_t>::max())})),
              "<array>\n"
              "\t<dict>\n"
              "\t\t<key>CF$UID</key>\n"
              "\t\t<integer>18446744073709551615</integer>\n"
              "\t</dict>\n"
              "</array>\n");
}

TEST(XMLPlistSerializerTest, escapesMarkupAndNothingElse) {
    EXPECT_EQ(body(text("]]>")), "<string>]]&gt;</string>\n");
    EXPECT_EQ(body(text("<&>")), "<string>&lt;&amp;&gt;</string>\n");
    EXPECT_EQ(body(text("&amp;")), "<string>&amp;amp;</string>\n");
    EXPECT_EQ(body(text("caf\xC3\xA9 \xF0\x9F\x98\x80\xEF\xBB\xBF")),
              "<string>caf\xC3\xA9 \xF0\x9F\x98\x80\xEF\xBB\xBF</string>\n");
    EXPECT_EQ(body(text(std::string("a\0\r\n\t\x01z", 7))),
              std::string("<string>a\0\r\n\t\x01z</string>\n", 25));
    EXPECT_EQ(body(PlistValue::dictionary({{"<k&>", PlistValue::boolean(false)}})),
              "<dict>\n\t<key>&lt;k&amp;&gt;</key>\n\t<false/>\n</dict>\n");
}

// Texts are copied in blocks; markup must be found at every place of every length.
TEST(XMLPlistSerializerTest, escapesAtEveryPlaceOfTexts) {
    for (std::size_t length = 1; length <= 70; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            for (const char markup : {'&', '<', '>'}) {
                std::string content(length, '=');
                content[place] = markup;
                content[length - 1 - place] = markup;
                ASSERT_EQ(body(text(content)), "<string>" + escaped(content) + "</string>\n");
            }
        }
    }
}

TEST(XMLPlistSerializerTest, writesLongTextsInPieces) {
    for (const std::size_t length : {1023U, 1024U, 1025U, 2047U, 2048U, 2049U, 100000U}) {
        for (const char letter : {'&', 'a'}) {
            std::string content(length, letter);
            content[length / 2] = '<';
            ASSERT_EQ(body(PlistValue::dictionary({{content, text(content)}})),
                      "<dict>\n\t<key>" + escaped(content) + "</key>\n\t<string>" +
                          escaped(content) + "</string>\n</dict>\n");
        }
    }
}

TEST(XMLPlistSerializerTest, realsHaveSeventeenDigits) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, const char*> cases[] = {
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
        {-std::numeric_limits<double>::quiet_NaN(), "nan"},
        {infinity, "+infinity"},
        {-infinity, "-infinity"},
        {0.0, "0.0"},
        {-0.0, "0.0"},
        {1.0, "1"},
        {-1.0, "-1"},
        {0.1, "0.10000000000000001"},
        {0.5, "0.5"},
        {-2.5, "-2.5"},
        {1e300, "1.0000000000000001e+300"},
        {1e16, "10000000000000000"},
        {99999999999999984.0, "99999999999999984"},
        {1e17, "1e+17"},
        {1e20, "1e+20"},
        {123456789012345678.0, "1.2345678901234568e+17"},
        {0.0001, "0.0001"},
        {0.00001, "1.0000000000000001e-05"},
        {5e-324, "4.9406564584124654e-324"},
        {1.7976931348623157e308, "1.7976931348623157e+308"},
    };
    for (const auto& [number, expected] : cases) {
        EXPECT_EQ(realText(number), expected);
    }
}

TEST(XMLPlistSerializerTest, realsAgreeWithPrintf) {
    std::mt19937_64 random(20010101);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        const auto any = std::bit_cast<double>(bits);
        if (std::isfinite(any) && any != 0) {
            ASSERT_EQ(realText(any), printed(any)) << bits;
        }
        // Numbers as people write them: few digits, moderate exponents.
        const double decimal = static_cast<double>(static_cast<std::int64_t>(bits >> 40)) /
                               std::pow(10, static_cast<double>(bits % 12));
        if (decimal != 0) {
            ASSERT_EQ(realText(decimal), printed(decimal)) << bits;
            ASSERT_EQ(realText(-decimal), printed(-decimal)) << bits;
        }
    }
    for (int exponent = -324; exponent <= 308; ++exponent) {
        const double power = std::pow(10, exponent);
        for (const double number :
             {power, std::nextafter(power, 0), std::nextafter(power, 1e308)}) {
            if (number != 0) {
                ASSERT_EQ(realText(number), printed(number));
            }
        }
    }
    for (int exponent = 0; exponent <= 70; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        for (const double number : {power, power - 1, power + 1, power - 0.5, power + 0.5}) {
            if (number != 0) {
                ASSERT_EQ(realText(number), printed(number));
            }
        }
    }
}

TEST(XMLPlistSerializerTest, dataLinesStayWithinTheirColumns) {
    const PlistValue value = bytes(57, 0xFF);
    const std::string encoded(76, '/');
    EXPECT_EQ(body(value), "<data>\n" + encoded + "\n</data>\n");
    EXPECT_EQ(body(bytes(58, 0xFF)), "<data>\n" + encoded + "\n/w==\n</data>\n");
    EXPECT_EQ(body(wrapped(value, 1)), "<array>\n\t<data>\n\t" + encoded.substr(0, 68) + "\n\t" +
                                           encoded.substr(0, 8) + "\n\t</data>\n</array>\n");
}

TEST(XMLPlistSerializerTest, dataLinesBelowEightTabsKeepTwelveCharacters) {
    for (std::size_t depth = 0; depth <= 20; ++depth) {
        const std::size_t tabs = std::min<std::size_t>(depth, 8);
        const std::size_t width = 76 - 8 * tabs;
        std::string expected;
        std::string rest(400, '/');
        while (!rest.empty()) {
            expected += std::string(tabs, '\t') + rest.substr(0, width) + "\n";
            rest.erase(0, width);
        }
        const std::string indent(depth, '\t');
        expected = indent + "<data>\n" + expected + indent + "</data>\n";
        EXPECT_NE(body(wrapped(bytes(300, 0xFF), depth)).find(expected), std::string::npos)
            << depth;
    }
}

TEST(XMLPlistSerializerTest, indentationHasNoLimit) {
    const std::size_t depth = 2000;
    const std::string written = body(wrapped(PlistValue::uid(7), depth));
    std::string expected;
    for (std::size_t i = 0; i < depth; ++i) {
        expected += std::string(i, '\t') + "<array>\n";
    }
    const std::string indent(depth, '\t');
    expected += indent + "<dict>\n" + indent + "\t<key>CF$UID</key>\n" + indent +
                "\t<integer>7</integer>\n" + indent + "</dict>\n";
    for (std::size_t i = depth; i > 0; --i) {
        expected += std::string(i - 1, '\t') + "</array>\n";
    }
    EXPECT_EQ(written, expected);
}

TEST(XMLPlistSerializerTest, sharedContainersAreWrittenAtEveryPlace) {
    const PlistValue shared = PlistValue::array({PlistValue::integer(1)});
    EXPECT_EQ(body(PlistValue::dictionary({{"a", shared}, {"b", shared}})),
              "<dict>\n"
              "\t<key>a</key>\n"
              "\t<array>\n"
              "\t\t<integer>1</integer>\n"
              "\t</array>\n"
              "\t<key>b</key>\n"
              "\t<array>\n"
              "\t\t<integer>1</integer>\n"
              "\t</array>\n"
              "</dict>\n");
}

TEST(XMLPlistSerializerTest, whatIsWrittenReadsBackEqual) {
    for (const SampleValue& sample : sampleValues()) {
        const PlistBytes bytes = XMLPlistSerializer::serialize(sample.value);
        if (sample.xmlTrip == XmlTrip::error) {
            EXPECT_THROW(XMLPlistParser::parse(bytes.span()), PlistError) << sample.name;
            continue;
        }
        const PlistValue again = XMLPlistParser::parse(bytes.span());
        EXPECT_EQ(again == sample.value, sample.xmlTrip == XmlTrip::equal) << sample.name;
    }
}

TEST(XMLPlistSerializerTest, whatXmlCannotHoldReadsBackAsTheNearestValue) {
    const auto again = [](const PlistValue& value) {
        return XMLPlistParser::parse(XMLPlistSerializer::serialize(value).span());
    };
    EXPECT_EQ(again(PlistValue::date(0.5)), PlistValue::date(0));
    EXPECT_EQ(again(PlistValue::date(-0.5)), PlistValue::date(-1));
    EXPECT_FALSE(std::signbit(again(PlistValue::real(-0.0)).realValue()));
    EXPECT_TRUE(std::isnan(again(PlistValue::real(std::nan(""))).realValue()));
    EXPECT_EQ(again(PlistValue::dictionary({{"CF$UID", PlistValue::integer(7)}})),
              PlistValue::uid(7));
    EXPECT_THROW(again(PlistValue::date(1e18)), PlistError);
    EXPECT_THROW(again(wrapped(text("too deep"), 513)), PlistError);
}

}  // namespace plist::detail
