#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "PlistCore/PlistError.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "tests/PlistCore/support/XmlReading.h"

namespace plist::detail {

namespace {

using Malformed = PlistError::Malformed;
using InvalidValue = PlistError::InvalidValue;

struct Case {
    std::string_view xml;
    std::int64_t line;
    std::int64_t column;
    PlistError::Reason reason;
};

PlistError::Reason malformed(std::string_view text) {
    return Malformed{std::string(text)};
}

PlistError::Reason invalid(std::string_view text) {
    return InvalidValue{std::string(text)};
}

const PlistError::Reason unexpectedEnd = PlistError::UnexpectedEnd{};

/// Whether reading `xml` fails as the case says.
testing::AssertionResult fails(const std::string& xml, const Case& expected, std::int64_t line,
                               std::int64_t column) {
    const XmlOutcome outcome = xmlOutcome(xml);
    const PlistError error(expected.reason, PlistError::Line{line, column});
    if (outcome.error == error) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << xml << "\n  gives     " << outcome.text()
                                       << "\n  and not   " << error.errorDescription();
}

/// Reads each case as it stands and behind a line with many values, where the fast path is at work.
void expectErrors(const std::vector<Case>& cases) {
    for (const Case& sample : cases) {
        const std::string xml(sample.xml);
        EXPECT_TRUE(fails(xml, sample, sample.line, sample.column));
        EXPECT_EQ(differenceOfPaths(xml), "") << xml;
    }
}

/// The same for what stands inside an array, where the place is told from its start.
void expectErrorsOfValues(const std::vector<Case>& cases) {
    expectErrors(cases);
    for (const Case& sample : cases) {
        const std::string inArray = "<array><string>a</string>\n" + std::string(sample.xml);
        const std::string inDictionary = "<dict><key>a</key>\n" + std::string(sample.xml);
        for (const std::string& xml : {inArray, inArray + "\n</array>", inDictionary,
                                       "<plist>" + inDictionary + "</dict></plist>"}) {
            const bool isSame = sample.reason != unexpectedEnd;
            if (isSame) {
                EXPECT_TRUE(fails(xml, sample, sample.line + 1, sample.column));
            }
            EXPECT_EQ(differenceOfPaths(xml), "") << xml;
        }
    }
}

TEST(XMLPlistParserErrorsTest, needsAValue) {
    expectErrors({
        {"", 1, 1, unexpectedEnd},
        {"   ", 1, 4, unexpectedEnd},
        {" \n\n ", 3, 2, unexpectedEnd},
        {"\uFEFF", 1, 4, unexpectedEnd},
        {"<!-- a -->", 1, 11, unexpectedEnd},
        {"x", 1, 1, malformed("Expected a value.")},
        {"  x", 1, 3, malformed("Expected a value.")},
        {"</plist>", 1, 1, malformed("Expected a value.")},
        {"\f<true/>", 1, 1, malformed("Expected a value.")},
        {"\xC2\xA0<true/>", 1, 1, malformed("Expected a value.")},
        {"\uFEFFx", 1, 4, malformed("Expected a value.")},
        {"<plist/>", 1, 1, malformed("The <plist> element is empty.")},
        {"<plist a='b' />", 1, 1, malformed("The <plist> element is empty.")},
        {"<plist></plist>", 1, 8, malformed("Expected a value.")},
        {"<plist>\n <!-- --></plist>", 2, 10, malformed("Expected a value.")},
        {"<plist>x</plist>", 1, 8, malformed("Expected a value.")},
        {"<plist>", 1, 8, unexpectedEnd},
        {"<plist>  ", 1, 10, unexpectedEnd},
    });
}

TEST(XMLPlistParserErrorsTest, needsKnownElements) {
    expectErrorsOfValues({
        {"<strnig>a</strnig>", 1, 1, malformed("Unknown element <strnig>.")},
        {"\n\n\n <strnig/>", 4, 2, malformed("Unknown element <strnig>.")},
        {"<String>a</String>", 1, 1, malformed("Unknown element <String>.")},
        {"<a.b-c:d_9>", 1, 1, malformed("Unknown element <a.b-c:d_9>.")},
        {"<strings/>", 1, 1, malformed("Unknown element <strings>.")},
        {"<x:string/>", 1, 1, malformed("Unknown element <x:string>.")},
        {"<>", 1, 1, malformed("Unknown element <>.")},
        {"< string>", 1, 1, malformed("Unknown element <>.")},
        {"<!ELEMENT a>", 1, 1, malformed("Unknown element <>.")},
        {"<!doctype a>", 1, 1, malformed("Unknown element <>.")},
        {"<![CDATA[a]]>", 1, 1, malformed("Unknown element <>.")},
        {"<\xC3\xA9>", 1, 1, malformed("Unknown element <>.")},
        {"<key>a</key>", 1, 1, malformed("<key> is only allowed inside <dict>.")},
        {"<key/>", 1, 1, malformed("<key> is only allowed inside <dict>.")},
    });
    expectErrors({
        {"<plist><plist><true/></plist></plist>", 1, 8, malformed("<plist> cannot be nested.")},
        {"<plist><plist/></plist>", 1, 8, malformed("<plist> cannot be nested.")},
        {"<array><plist/></array>", 1, 8, malformed("<plist> cannot be nested.")},
        {"<dict><key>a</key><plist>", 1, 19, malformed("<plist> cannot be nested.")},
    });
}

TEST(XMLPlistParserErrorsTest, needsKeysAndValuesInTurn) {
    expectErrors({
        {"<dict><string>x</string></dict>", 1, 7, malformed("Expected <key>, found <string>.")},
        {"<dict> <dict/></dict>", 1, 8, malformed("Expected <key>, found <dict>.")},
        {"<dict><plist/></dict>", 1, 7, malformed("Expected <key>, found <plist>.")},
        {"<dict><key>a</key><true/><false/></dict>", 1, 26,
         malformed("Expected <key>, found <false>.")},
        {"<dict>x</dict>", 1, 7, malformed("Expected <key>.")},
        {"<dict><key>a</key><true/>\nx</dict>", 2, 1, malformed("Expected <key>.")},
        {"<dict><wrong/></dict>", 1, 7, malformed("Unknown element <wrong>.")},
        {"<dict><key>a</key>x</dict>", 1, 19, malformed("Expected a value.")},
        {"<dict><key>a</key></dict>", 1, 19, malformed("The key “a” has no value.")},
        {"<dict><key>a</key> </array>", 1, 20, malformed("The key “a” has no value.")},
        {"<dict><key>a</key></", 1, 19, malformed("The key “a” has no value.")},
        {"<dict><key/></dict>", 1, 13, malformed("The key “” has no value.")},
        {"<dict><key>&lt;\u00E9</key></dict>", 1, 24, malformed("The key “<\u00E9” has no value.")},
        {"<dict><key>a</key><true/><key>b</key>\n</dict>", 2, 1,
         malformed("The key “b” has no value.")},
        {"<dict><key>a</key><key>b</key></dict>", 1, 19,
         malformed("<key> is only allowed inside <dict>.")},
        {"<array><key>a</key></array>", 1, 8, malformed("<key> is only allowed inside <dict>.")},
        {"<array>x</array>", 1, 8, malformed("Expected a value.")},
        {"<array><true/>&amp;</array>", 1, 15, malformed("Expected a value.")},
    });
}

TEST(XMLPlistParserErrorsTest, needsTheRightEndTags) {
    expectErrorsOfValues({
        {"<string>a</strin>", 1, 10, malformed("Expected </string>.")},
        {"<string>a</strings>", 1, 10, malformed("Expected </string>.")},
        {"<string>a</String>", 1, 10, malformed("Expected </string>.")},
        {"<string>a</ string>", 1, 10, malformed("Expected </string>.")},
        {"<string>a</string/>", 1, 10, malformed("Expected </string>.")},
        {"<string>a</string b>", 1, 10, malformed("Expected </string>.")},
        {"<string>a<b</string>", 1, 10, malformed("Expected </string>.")},
        {"<string>a<string/>", 1, 10, malformed("Expected </string>.")},
        {"<string>a<![CDAT[</string>", 1, 10, malformed("Expected </string>.")},
        {"<string>&lt;<!ELEMENT></string>", 1, 13, malformed("Expected </string>.")},
        {"<string>a<?b?></string>", 1, 10, malformed("Expected </string>.")},
        {"<string>a\n</integer>", 2, 1, malformed("Expected </string>.")},
        {"<integer>1</string>", 1, 11, malformed("Expected </integer>.")},
        {"<integer>1<true/>", 1, 11, malformed("Expected </integer>.")},
        {"<real>1</>", 1, 8, malformed("Expected </real>.")},
        {"<date>2001-01-01T00:00:00Z</data>", 1, 27, malformed("Expected </date>.")},
        {"<data>QUJD</date>", 1, 11, malformed("Expected </data>.")},
        {"<true>x</true>", 1, 7, malformed("Expected </true>.")},
        {"<true> <!-- --></true>", 1, 8, malformed("Expected </true>.")},
        {"<true></false>", 1, 7, malformed("Expected </true>.")},
        {"<false>\n&amp;</false>", 2, 1, malformed("Expected </false>.")},
        {"<dict></array>", 1, 7, malformed("Expected </dict>.")},
        {"<array>\n\n</dict>", 3, 1, malformed("Expected </array>.")},
        {"<array><true/></plist>", 1, 15, malformed("Expected </array>.")},
        {"<dict><key>a</string>", 1, 13, malformed("Expected </key>.")},
        {"<dict><key>a</keys><true/>", 1, 13, malformed("Expected </key>.")},
    });
    expectErrors({
        {"<plist><true/></dict>", 1, 15, malformed("Expected </plist>.")},
        {"<plist><true/> x</plist>", 1, 16, malformed("Expected </plist>.")},
        {"<plist><true/><false/></plist>", 1, 15, malformed("Expected </plist>.")},
    });
}

TEST(XMLPlistParserErrorsTest, needsKnownReferences) {
    const auto unknown = [](std::string_view name) {
        return malformed("Unknown entity “&" + std::string(name) + ";”.");
    };
    const PlistError::Reason unterminated = malformed("Unterminated entity reference.");
    expectErrorsOfValues({
        {"<string>&nbsp;</string>", 1, 9, unknown("nbsp")},
        {"<string>&;</string>", 1, 9, unknown("")},
        {"<string>&LT;</string>", 1, 9, unknown("LT")},
        {"<string>& lt;</string>", 1, 9, unknown(" lt")},
        {"<string>&#;</string>", 1, 9, unknown("#")},
        {"<string>&#x;</string>", 1, 9, unknown("#x")},
        {"<string>&#-1;</string>", 1, 9, unknown("#-1")},
        {"<string>&#+65;</string>", 1, 9, unknown("#+65")},
        {"<string>&\xFF;</string>", 1, 9, unknown("\uFFFD")},
        {"<string>&# 65;</string>", 1, 9, unknown("# 65")},
        {"<string>&#6A;</string>", 1, 9, unknown("#6A")},
        {"<string>&#x0x41;</string>", 1, 9, unknown("#x0x41")},
        {"<string>&#xG;</string>", 1, 9, unknown("#xG")},
        {"<string>&#xD800;</string>", 1, 9, unknown("#xD800")},
        {"<string>&#xDFFF;</string>", 1, 9, unknown("#xDFFF")},
        {"<string>&#x110000;</string>", 1, 9, unknown("#x110000")},
        {"<string>&#1114112;</string>", 1, 9, unknown("#1114112")},
        {"<string>&#4294967361;</string>", 1, 9, unknown("#4294967361")},
        {"<string>&#x100000041;</string>", 1, 9, unknown("#x100000041")},
        {"<string>a\nb&twelve-bytes;</string>", 2, 2, unknown("twelve-bytes")},
        {"<string>a\nb&thirteen-byte;</string>", 2, 2, unterminated},
        {"<string>&averyveryverylongname;</string>", 1, 9, unterminated},
        {"<string>&amp</string>", 1, 9, unterminated},
        {"<string>a & b</string>", 1, 11, unterminated},
        {"<string>\u00E9&\u00E9;</string>", 1, 11, unknown("\u00E9")},
        // The ";" is looked for in 13 bytes, whatever they are.
        {"<string>&a</s;</string>", 1, 9, unknown("a</s")},
        {"<integer>&nbsp;5</integer>", 1, 10, unknown("nbsp")},
        {"<data>&</data>", 1, 7, unterminated},
        {"<string>&am", 1, 9, unterminated},
        {"<string>&", 1, 9, unterminated},
    });
    expectErrors({
        {"<dict><key>&copy;</key><true/></dict>", 1, 12, unknown("copy")},
    });
}

TEST(XMLPlistParserErrorsTest, needsValidNumbersDatesAndData) {
    const auto badInteger = [](std::string_view text) {
        return invalid("“" + std::string(text) + "” is not a valid integer.");
    };
    const auto badReal = [](std::string_view text) {
        return invalid("“" + std::string(text) + "” is not a valid real number.");
    };
    const auto badDate = [](std::string_view text) {
        return invalid("“" + std::string(text) + "” is not a valid date.");
    };
    const PlistError::Reason badData = invalid("The <data> element is not valid Base64.");
    const std::string sixtyDigits(60, '1');
    const std::string longInteger = "<integer>" + sixtyDigits + "</integer>";
    expectErrorsOfValues({
        {"<integer/>", 1, 1, badInteger("")},
        {"<integer></integer>", 1, 1, badInteger("")},
        {"<integer> </integer>", 1, 1, badInteger(" ")},
        {"<integer>-</integer>", 1, 1, badInteger("-")},
        {"<integer>--5</integer>", 1, 1, badInteger("--5")},
        {"<integer>+-5</integer>", 1, 1, badInteger("+-5")},
        {"<integer>0x</integer>", 1, 1, badInteger("0x")},
        {"<integer>0xG</integer>", 1, 1, badInteger("0xG")},
        {"<integer>1_000</integer>", 1, 1, badInteger("1_000")},
        {"<integer>1.0</integer>", 1, 1, badInteger("1.0")},
        {"<integer>1 2</integer>", 1, 1, badInteger("1 2")},
        {"<integer>\n a\t</integer>", 1, 1, badInteger("\n a\t")},
        {"<integer>&#97;</integer>", 1, 1, badInteger("a")},
        {"<integer>\u0661</integer>", 1, 1, badInteger("\u0661")},
        {"<integer>18446744073709551616</integer>", 1, 1, badInteger("18446744073709551616")},
        {"<integer>-9223372036854775809</integer>", 1, 1, badInteger("-9223372036854775809")},
        {longInteger, 1, 1, badInteger(sixtyDigits)},
        {"<real/>", 1, 1, badReal("")},
        {"<real></real>", 1, 1, badReal("")},
        {"<real>1,5</real>", 1, 1, badReal("1,5")},
        {"<real>1.5.2</real>", 1, 1, badReal("1.5.2")},
        {"<real>1e</real>", 1, 1, badReal("1e")},
        {"<real>.</real>", 1, 1, badReal(".")},
        {"<real>-</real>", 1, 1, badReal("-")},
        {"<real>--1</real>", 1, 1, badReal("--1")},
        {"<real>-+1</real>", 1, 1, badReal("-+1")},
        {"<real>nan(1)</real>", 1, 1, badReal("nan(1)")},
        {"<real>1f</real>", 1, 1, badReal("1f")},
        {"<real>infinit</real>", 1, 1, badReal("infinit")},
        {"<real>0x</real>", 1, 1, badReal("0x")},
        {"<date/>", 1, 1, badDate("")},
        {"<date></date>", 1, 1, badDate("")},
        {"<date>2024-01-01 00:00:00</date>", 1, 1, badDate("2024-01-01 00:00:00")},
        {"<date>2024-01-01 00:00:00Z</date>", 1, 1, badDate("2024-01-01 00:00:00Z")},
        {"<date>2024-01-01T00:00:00.5Z</date>", 1, 1, badDate("2024-01-01T00:00:00.5Z")},
        {"<date>2024-13-01T00:00:00Z</date>", 1, 1, badDate("2024-13-01T00:00:00Z")},
        {"<date>2024-01-01T24:00:00Z</date>", 1, 1, badDate("2024-01-01T24:00:00Z")},
        {"<date>1234567890-01-01</date>", 1, 1, badDate("1234567890-01-01")},
        {"<date>\ntoday </date>", 1, 1, badDate("\ntoday ")},
        {"<data>Q</data>", 1, 1, badData},
        {"<data>QUJDR</data>", 1, 1, badData},
        {"<data>QQ==QQ==</data>", 1, 1, badData},
        {"<data>=</data>", 1, 1, badData},
        {"<data>QU!</data>", 1, 1, badData},
    });
}

TEST(XMLPlistParserErrorsTest, needsValidUtf8InTexts) {
    const PlistError::Reason broken = malformed("The text is not valid UTF-8.");
    expectErrorsOfValues({
        {"<string>a\xFF</string>", 1, 9, broken},
        {"<string>\x80</string>", 1, 9, broken},
        {"<string>\xC0\x80</string>", 1, 9, broken},
        {"<string>\xC3</string>", 1, 9, broken},
        {"<string>\xE4\xB8</string>", 1, 9, broken},
        {"<string>\xED\xA0\x80</string>", 1, 9, broken},
        {"<string>\xF4\x90\x80\x80</string>", 1, 9, broken},
        {"<string>&lt;\xFF</string>", 1, 9, broken},
        {"<string><![CDATA[\xFF]]></string>", 1, 9, broken},
        {"<string>\xC3&#x41;\xA9</string>", 1, 9, broken},
        {"<integer>1\xFF</integer>", 1, 10, broken},
        {"<real>\xFF</real>", 1, 7, broken},
        {"<date>\xFF</date>", 1, 7, broken},
        {"<data>QUJD\xFF</data>", 1, 7, broken},
        // The wrong end tag is met first.
        {"<string>\xFF</strin>", 1, 10, malformed("Expected </string>.")},
    });
    expectErrors({
        {"<dict><key>\xFF</key><true/></dict>", 1, 12, broken},
        {"<dict><key>a</key><true/>\n<key>b\xC3</key><true/></dict>", 2, 6, broken},
    });
    // Elsewhere nobody reads them as text.
    EXPECT_EQ(xmlOutcome("<!-- \xFF --><array a='\xFF'><?\xFF?><true/></array>").text(), "(true)");
    EXPECT_EQ(xmlOutcome("<array><string>a<!-- \xFF -->b</string></array>").text(), "(\"ab\")");
}

// Texts are checked by windows of some kilobytes, which must not end within a character.
TEST(XMLPlistParserErrorsTest, needsValidUtf8BehindLongTexts) {
    std::string document = "<array><string>";
    for (int i = 0; i < 20'000; ++i) {
        document += "\u6F22";
    }
    document += "</string>\n";
    const PlistError::Reason broken = malformed("The text is not valid UTF-8.");
    expectErrors({
        {document + "<string>a\xFF</string></array>", 2, 9, broken},
        {document + "<string>caf\xC3</string></array>", 2, 9, broken},
        {document + "<dict><key>\xE6\xBC</key><true/></dict></array>", 2, 12, broken},
    });
    const std::string whole = xmlOutcome(document + "<string>caf\u00E9</string></array>").text();
    EXPECT_TRUE(whole.ends_with("\"caf\u00E9\")")) << whole.substr(whole.size() - 40);
}

TEST(XMLPlistParserErrorsTest, needsAnEnd) {
    expectErrors({
        {"<", 1, 2, unexpectedEnd},
        {"<string", 1, 8, unexpectedEnd},
        {"<string/", 1, 9, unexpectedEnd},
        {"<str", 1, 1, malformed("Unknown element <str>.")},
        {"<string>", 1, 9, unexpectedEnd},
        {"<string>a\n", 2, 1, unexpectedEnd},
        {"<string>a<", 1, 11, unexpectedEnd},
        {"<string>a</", 1, 12, unexpectedEnd},
        {"<string>a</str", 1, 10, malformed("Expected </string>.")},
        {"<string>a</string", 1, 18, unexpectedEnd},
        {"<string>a</string ", 1, 19, unexpectedEnd},
        {"<string>a&amp;", 1, 15, unexpectedEnd},
        {"<string>a<!-- b", 1, 16, unexpectedEnd},
        {"<string>a<!-- b --", 1, 19, unexpectedEnd},
        {"<string><![CDATA[a", 1, 19, unexpectedEnd},
        {"<string><![CDATA[a]]", 1, 21, unexpectedEnd},
        {"<string>a<!", 1, 10, malformed("Expected </string>.")},
        {"<true>", 1, 7, unexpectedEnd},
        {"<true> ", 1, 8, unexpectedEnd},
        {"<true><", 1, 8, unexpectedEnd},
        {"<array>", 1, 8, unexpectedEnd},
        {"<array><true/>\n ", 2, 2, unexpectedEnd},
        {"<array><", 1, 9, unexpectedEnd},
        {"<array></", 1, 10, unexpectedEnd},
        {"<dict>", 1, 7, unexpectedEnd},
        {"<dict><", 1, 8, unexpectedEnd},
        {"<dict><key>a</key>", 1, 19, unexpectedEnd},
        {"<dict><key>a</key><", 1, 20, unexpectedEnd},
        {"<dict></", 1, 9, unexpectedEnd},
        {"<plist><true/>", 1, 15, unexpectedEnd},
        {"<plist><true/><", 1, 16, unexpectedEnd},
        {"<plist><true/></plist", 1, 22, unexpectedEnd},
        {"<!-- a", 1, 7, unexpectedEnd},
        {"<!-->", 1, 6, unexpectedEnd},
        {"<!--->", 1, 7, unexpectedEnd},
        {"<?xml", 1, 6, unexpectedEnd},
        {"<?>", 1, 4, unexpectedEnd},
        {"<!DOCTYPE plist", 1, 16, unexpectedEnd},
        {"<!DOCTYPE plist [ > ", 1, 21, unexpectedEnd},
        {"<!DOCTYPE plist \"> <true/>", 1, 27, unexpectedEnd},
        {"<true/><!-- ", 1, 13, unexpectedEnd},
    });
}

TEST(XMLPlistParserErrorsTest, needsAnEndBehindTheRoot) {
    const PlistError::Reason more = malformed("Unexpected content after the root value.");
    expectErrors({
        {"<plist><string>a</string></plist>x", 1, 34, more},
        {"<true/><false/>", 1, 8, more},
        {"<true/>\n</plist>", 2, 1, more},
        {"<array/><!-- -->\n\n  x", 3, 3, more},
        {"<plist><true/></plist>\n<plist><true/></plist>", 2, 1, more},
        {std::string_view("<true/>\0", 8), 1, 8, more},
        {"<true/>\uFEFF", 1, 8, more},
        {"<true/><", 1, 8, more},
    });
}

TEST(XMLPlistParserErrorsTest, countsLinesAndColumnsInBytes) {
    expectErrors({
        {"<!-- \r\n --><!-- \r\n --><wrong/>", 3, 5, malformed("Unknown element <wrong>.")},
        {"\r\r\r<wrong/>", 1, 4, malformed("Unknown element <wrong>.")},
        {"<!-- \u00E9\u4E2D -->x", 1, 15, malformed("Expected a value.")},
        {"\uFEFF\n\n<wrong/>", 3, 1, malformed("Unknown element <wrong>.")},
        {"\uFEFF<wrong/>", 1, 4, malformed("Unknown element <wrong>.")},
        {"<array>\n<string>a\nb\n</string><integer>\n</integer></array>", 4, 10,
         invalid("“\n” is not a valid integer.")},
    });
}

TEST(XMLPlistParserErrorsTest, describesItselfInOneLine) {
    EXPECT_EQ(xmlOutcome("</plist>").text(), "Line 1, column 1: Expected a value.");
    EXPECT_EQ(xmlOutcome("\n\n\n <strnig/>").text(), "Line 4, column 2: Unknown element <strnig>.");
    EXPECT_EQ(xmlOutcome("").text(), "Line 1, column 1: The file ends unexpectedly.");
}

const std::string_view wholeFiles[] = {
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST "
    "1.0//EN\" "
    "\"http://example.org/1.0.dtd\">\n<plist version=\"1.0\">\n<dict>\n\t<key>a &amp; b</key>\n"
    "\t<string>caf\u00E9 &#x1F600;</string>\n\t<key>list</key>\n\t<array>\n\t\t<integer>-12"
    "</integer>\n\t\t<real>1.5</real>\n\t\t<true/>\n\t\t<false></"
    "false>\n\t\t<date>2024-02-29T10:11:12Z"
    "</date>\n\t\t<data>\n\t\tQUJDRA==\n\t\t</data>\n\t\t<dict/>\n\t</array>\n</dict>\n</plist>\n",
    "<!-- c --><array><string>a<![CDATA[<b>]]>c<!-- d --></string><?pi x?><dict><key/><string/>"
    "<key>CF$UID</key><integer>0x1F</integer></dict></array><!-- e -->",
    "\uFEFF<plist><!DOCTYPE x [ <!ENTITY y '>'> ]><dict><key>CF$UID</key><integer>7</integer>"
    "</dict></plist >",
    "<array><array><array><dict><key>k</key><array/></dict></array></array></array>",
};

TEST(XMLPlistParserErrorsTest, failsOnEveryPrefix) {
    for (const std::string_view file : wholeFiles) {
        const XmlOutcome whole = xmlOutcome(file);
        ASSERT_TRUE(whole.value.has_value()) << whole.text();
        for (std::size_t length = 0; length < file.size(); ++length) {
            const std::string prefix(file.substr(0, length));
            ASSERT_EQ(differenceOfPaths(prefix), "") << prefix;
            const XmlOutcome outcome = xmlOutcome(prefix);
            if (outcome.value) {
                // Complete but for what may follow the root.
                EXPECT_EQ(outcome.text(), whole.text()) << prefix;
                continue;
            }
            // A prefix breaks no rule of content but where a word is cut short.
            EXPECT_FALSE(std::holds_alternative<InvalidValue>(outcome.error->reason())) << prefix;
            EXPECT_FALSE(
                std::holds_alternative<PlistError::NestingTooDeep>(outcome.error->reason()))
                << prefix;
            EXPECT_TRUE(outcome.error->location().has_value());
        }
    }
}

/// Random documents from a small grammar, some of them damaged.
class Documents {
public:
    explicit Documents(std::uint32_t seed) : random_(seed) {}

    std::string next() {
        std::string text = chance(3) ? "<plist version=\"1.0\">" : "";
        const bool isWrapped = !text.empty();
        text += container(0);
        text += isWrapped ? "</plist>" : "";
        const int damages = chance(3) ? 0 : number(3) + 1;
        for (int damage = 0; damage < damages; ++damage) {
            damageOne(text);
        }
        return text;
    }

private:
    int number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    bool chance(int oneIn) { return number(oneIn) == 0; }

    template <std::size_t count>
    std::string oneOf(const std::string_view (&choices)[count]) {
        return std::string(choices[random_() % count]);
    }

    std::string whitespace() {
        return oneOf({"", "", "", "\n", "\n\t", " ", "\r\n", "<!-- - -->", "<?a b?>",
                      "                         "});
    }

    std::string value(int depth) {
        if (depth < 4 && chance(4)) {
            return container(depth + 1);
        }
        return oneOf({"<string>a</string>",
                      "<string>a longer text of many words</string>",
                      "<string>14 bytes long.</string>",
                      "<string>15 bytes long..</string>",
                      "<string>caf\u00E9</string>",
                      "<string>\u4E2D\u6587\u4E2D\u6587\u4E2D\u6587\u4E2D\u6587</string>",
                      "<string>a &amp; b</string>",
                      "<string>a > b</string>",
                      "<string/>",
                      "<string><![CDATA[<]]></string>",
                      "<integer>0</integer>",
                      "<integer>-123456789012345678</integer>",
                      "<integer>1234567890123456789</integer>",
                      "<integer> 0x1F</integer>",
                      "<real>1.5</real>",
                      "<real>-1e-7</real>",
                      "<real>0.30000000000000004440892098500626161694526672363281</real>",
                      "<real>nan</real>",
                      "<true/>",
                      "<false/>",
                      "<true></true>",
                      "<date>2024-02-29T10:11:12Z</date>",
                      "<date>2024-02</date>",
                      "<data>QUJD\nQQ==</data>",
                      "<data></data>",
                      "<dict/>",
                      "<array />",
                      "<dict><key>CF$UID</key><integer>3</integer></dict>"});
    }

    std::string container(int depth) {
        const bool isDictionary = chance(2);
        std::string text = isDictionary ? "<dict>" : "<array>";
        const int count = number(6);
        for (int index = 0; index < count; ++index) {
            text += whitespace();
            if (isDictionary) {
                text += oneOf({"<key>a</key>", "<key>b</key>", "<key>caf\u00E9</key>", "<key/>",
                               "<key>a key longer than a cell</key>", "<key>&lt;</key>",
                               "<key>a key that is so long that nobody expects it here</key>"});
                text += whitespace();
            }
            text += value(depth);
        }
        return text + whitespace() + (isDictionary ? "</dict>" : "</array>");
    }

    void damageOne(std::string& text) {
        constexpr std::string_view bytes = "<>/&;!-?[]\"' \n\tadgikrst019.\x80\xC3\xFF";
        if (text.empty()) {
            return;
        }
        const std::size_t place = random_() % text.size();
        switch (number(5)) {
            case 0:
                text.erase(place, static_cast<std::size_t>(number(8)) + 1);
                break;
            case 1:
                text.insert(place, 1, bytes[random_() % bytes.size()]);
                break;
            case 2:
                text[place] = bytes[random_() % bytes.size()];
                break;
            case 3:
                text.insert(place, text.substr(random_() % text.size(), random_() % 40));
                break;
            default:
                text.resize(place);
                break;
        }
    }

    std::mt19937 random_;
};

TEST(XMLPlistParserErrorsTest, readsAlikeByBothPaths) {
    Documents documents(20240229);
    int readCount = 0;
    int failureCount = 0;
    for (int turn = 0; turn < 20000; ++turn) {
        const std::string document = documents.next();
        ASSERT_EQ(differenceOfPaths(document), "") << document;
        (xmlOutcome(document).value ? readCount : failureCount) += 1;
    }
    // Both kinds were tried, often.
    EXPECT_GT(readCount, 2000);
    EXPECT_GT(failureCount, 2000);
}

}  // namespace

}  // namespace plist::detail
