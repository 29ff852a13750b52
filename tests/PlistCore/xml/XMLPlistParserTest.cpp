#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/PlistError.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "tests/PlistCore/support/XmlReading.h"

namespace plist::detail {

namespace {

using std::string_view_literals::operator""sv;

/// Reads `xml` by both paths, alone and inside containers, and gives what came of it alone: the
/// value on one line, or the description of the error.
std::string read(std::string_view xml) {
    const std::string text(xml);
    const std::string around[] = {
        text,
        "<array>" + text + "</array>",
        "<array>\n\t" + text + "\n</array>",
        "<dict><key>key</key>" + text + "</dict>",
        "<plist version=\"1.0\">" + text + "</plist>",
    };
    for (const std::string& document : around) {
        EXPECT_EQ(differenceOfPaths(document), "") << document;
    }
    return xmlOutcome(xml).text();
}

struct Case {
    std::string_view xml;
    std::string_view value;
};

void expectValues(const std::vector<Case>& cases) {
    for (const Case& sample : cases) {
        EXPECT_EQ(read(sample.xml), sample.value) << sample.xml;
    }
}

std::string repeated(std::size_t count, std::string_view part) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) {
        text += part;
    }
    return text;
}

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

bool accepts(std::string_view text) {
    return XMLPlistParser::acceptsEncoding(bytesOf(text));
}

TEST(XMLPlistParserTest, readsADocument) {
    EXPECT_EQ(read("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"http://example.org\">\n"
                   "<plist version=\"1.0\">\n<dict>\n\t<key>Name</key>\n\t<string>x</string>\n"
                   "\t<key>List</key>\n\t<array>\n\t\t<integer>1</integer>\n\t\t<true/>\n"
                   "\t\t<dict/>\n\t</array>\n</dict>\n</plist>\n"),
              "{\"Name\" = \"x\", \"List\" = (1, true, {})}");
}

TEST(XMLPlistParserTest, readsEveryRoot) {
    expectValues({
        {"<dict></dict>", "{}"},
        {"<dict/>", "{}"},
        {"<array></array>", "()"},
        {"<array/>", "()"},
        {"<string>a</string>", "\"a\""},
        {"<integer>5</integer>", "5"},
        {"<real>1.5</real>", "1.5"},
        {"<true/>", "true"},
        {"<false/>", "false"},
        {"<date>2001-01-01T00:00:00Z</date>", "2001-01-01T00:00:00Z"},
        {"<data>QUJD</data>", "<414243>"},
        {"<plist><string>a</string></plist>", "\"a\""},
        {"<plist version='1.0' x=\"/\"> \n <true/> \t </plist > ", "true"},
        {"  \r\n\t<string>a</string>\n", "\"a\""},
        {"<dict><key>CF$UID</key><integer>7</integer></dict>", "uid(7)"},
    });
}

TEST(XMLPlistParserTest, readsContainers) {
    expectValues({
        {"<array><array><array><true/></array></array><dict/></array>", "(((true)), {})"},
        {"<dict><key>b</key><true/><key>a</key><false/><key>b</key><dict/></dict>",
         "{\"b\" = true, \"a\" = false, \"b\" = {}}"},
        {"<dict> <key>a</key> <array> <dict> <key>b</key> <integer>1</integer> </dict> </array> "
         "</dict>",
         "{\"a\" = ({\"b\" = 1})}"},
        {"<array ><dict\n></dict\t></array\r\n>", "({})"},
        {"<array a=\"1\"><dict b='2'/><string c>x</string></array>", "({}, \"x\")"},
        {"<dict><key/><true/></dict>", "{\"\" = true}"},
        {"<dict><key></key><true/></dict>", "{\"\" = true}"},
        {"<dict><key x='y'/><true/></dict>", "{\"\" = true}"},
        {"<dict><key> a </key><true/></dict>", "{\" a \" = true}"},
        {"<dict><key>a&amp;b</key><true/><key>a&#38;b</key><true/></dict>",
         "{\"a&b\" = true, \"a&b\" = true}"},
    });
}

TEST(XMLPlistParserTest, skipsWhatSaysNothing) {
    expectValues({
        {"<!-- a --><string>a</string><!-- b -->", "\"a\""},
        {"<!----><true/>", "true"},
        {"<!-- - -- > --><true/>", "true"},
        {"<!--><!-- --><true/>", "true"},
        {"<!--><wrong/>--><true/>", "true"},
        {"<!---><wrong/>--><true/>", "true"},
        {"<?x y?><true/><?x?>", "true"},
        {"<\?\?><true/>", "true"},
        {"<?a > b?><true/>", "true"},
        {"<array><!-- a --><?b?><true/><!-- <false/> --></array>", "(true)"},
        {"<dict><!-- a --><key>a</key><!-- b --><true/><!-- c --></dict>", "{\"a\" = true}"},
        {"<dict><key>a</key><?b?><true/><?c?></dict>", "{\"a\" = true}"},
        {"<plist><!-- a --><true/><?b?></plist><!-- c -->", "true"},
        {"<plist><!DOCTYPE a><true/><!DOCTYPE b></plist><!DOCTYPE c>", "true"},
        {"<array><!DOCTYPE a><true/><!DOCTYPE b></array>", "(true)"},
        {"<!DOCTYPE plist><true/>", "true"},
        {"<!DOCTYPEplist><true/>", "true"},
        {"<!DOCTYPE plist [ <!ELEMENT a (b)> <!ENTITY c \"]>\"> ]><true/>", "true"},
        {"<!DOCTYPE plist [ [ > ] > ] ><true/>", "true"},
        {"<!DOCTYPE plist ]><true/>", "true"},
        {"<!DOCTYPE plist \">\" '\">'><true/>", "true"},
        // Quotes count even inside comments of the internal subset.
        {"<!DOCTYPE plist [ <!-- it's ]> --> ' ]><true/>", "true"},
    });
}

TEST(XMLPlistParserTest, skipsAByteOrderMarkOnce) {
    EXPECT_EQ(xmlOutcome("\uFEFF<true/>").text(), "true");
    EXPECT_EQ(xmlOutcome("\uFEFF <?xml version=\"1.0\"?><true/>").text(), "true");
    EXPECT_EQ(xmlOutcome("\uFEFF\uFEFF<true/>").text(), "Line 1, column 4: Expected a value.");
    EXPECT_EQ(xmlOutcome(" \uFEFF<true/>").text(), "Line 1, column 2: Expected a value.");
    // Inside a text it is a character like any other.
    EXPECT_EQ(read("<string>\uFEFFa</string>"), "\"\uFEFFa\"");
}

TEST(XMLPlistParserTest, readsTextAsItStands) {
    expectValues({
        {"<string></string>", "\"\""},
        {"<string/>", "\"\""},
        {"<string a='b'/>", "\"\""},
        {"<string/ ></string>", "\"\""},
        {"<string> a\tb\r\nc\rd </string>", "\" a\tb\r\nc\rd \""},
        {"<string>14 bytes long.</string>", "\"14 bytes long.\""},
        {"<string>15 bytes long..</string>", "\"15 bytes long..\""},
        {"<string>caf\u00E9 \u4E2D\u6587 \U0001F600</string>",
         "\"caf\u00E9 \u4E2D\u6587 \U0001F600\""},
        {"<string>a>b</string>", "\"a>b\""},
        {"<string>]]></string>", "\"]]>\""},
        {"<string>a</string \t\r\n>", "\"a\""},
        {"<string>a;&#59;\"'</string>", "\"a;;\"'\""},
        {"<string>a\0b</string>"sv, "\"a\0b\""sv},
        {"<string\n>a</string>", "\"a\""},
        // What ends a tag is the first ">", even in an attribute.
        {"<string a='>'>b</string>", "\"'>b\""},
    });
}

TEST(XMLPlistParserTest, keepsTextsOfEveryLength) {
    for (const std::size_t length : {1U, 13U, 14U, 15U, 16U, 17U, 31U, 32U, 33U, 63U, 64U, 65U,
                                     127U, 1000U, 16383U, 16384U, 16385U, 40000U}) {
        for (const std::string_view letter : {"x", "\u00E9", "\u4E2D", "\U0001F600", "&amp;"}) {
            const std::string text = repeated(length, letter);
            const std::string expected = letter == "&amp;" ? repeated(length, "&") : text;
            EXPECT_EQ(read("<string>" + text + "</string>"), "\"" + expected + "\"");
            EXPECT_EQ(differenceOfPaths("<dict><key>" + text + "</key><true/></dict>"), "");
        }
    }
}

TEST(XMLPlistParserTest, resolvesReferences) {
    expectValues({
        {"<string>&lt;&gt;&amp;&quot;&apos;</string>", "\"<>&\"'\""},
        {"<string>&#65;&#x42;&#X43;&#x1F600;&#x1f600;</string>", "\"ABC\U0001F600\U0001F600\""},
        {"<string>&#x1F600;&amp;&lt;</string>", "\"\U0001F600&<\""},
        {"<string>a&amp;amp;b</string>", "\"a&amp;b\""},
        {"<string>&#xD7FF;&#xE000;&#x10FFFF;&#1114111;</string>",
         "\"\uD7FF\uE000\U0010FFFF\U0010FFFF\""},
        {"<string>&#xFFFE;&#1;</string>", "\"\uFFFE\x01\""},
        {"<string>&#0;</string>", "\"\0\""sv},
        {"<string>&#0000000065;</string>", "\"A\""},
        {"<string>&#x000000041;</string>", "\"A\""},
        {"<integer>&#49;&#x32;</integer>", "12"},
        {"<real>1&#46;5</real>", "1.5"},
        {"<data>QU&#74;D</data>", "<414243>"},
        {"<date>2001-01-01T00:00:00&#90;</date>", "2001-01-01T00:00:00Z"},
    });
}

TEST(XMLPlistParserTest, copiesCdataAndLeavesCommentsOut) {
    expectValues({
        {"<string><![CDATA[<&>]]></string>", "\"<&>\""},
        {"<string>a<![CDATA[]]>b<![CDATA[ &amp; ]] ]]>c</string>", "\"ab &amp; ]] c\""},
        {"<string><![CDATA[</string>]]></string>", "\"</string>\""},
        {"<string><![CDATA[]]]></string>", "\"]\""},
        {"<string>a<!-- b -->c</string>", "\"ac\""},
        {"<string>a<!--</string>-->c</string>", "\"ac\""},
        {"<string>a<!-->b-->c</string>", "\"ac\""},
        {"<string>a<!--->b-->c</string>", "\"ac\""},
        {"<string><!-- &wrong; --></string>", "\"\""},
        {"<dict><key>a<!-- b -->c<![CDATA[<]]></key><true/></dict>", "{\"ac<\" = true}"},
        {"<integer>1<!-- 2 -->3<![CDATA[4]]></integer>", "134"},
        {"<data>QU<!-- Q -->JD</data>", "<414243>"},
        // The parts of a character may come together from both sides.
        {"<string>\xC3<!-- -->\xA9</string>", "\"\u00E9\""},
        {"<string>\xC3<![CDATA[\xA9]]></string>", "\"\u00E9\""},
    });
}

TEST(XMLPlistParserTest, readsIntegers) {
    expectValues({
        {"<integer>0</integer>", "0"},
        {"<integer>-0</integer>", "0"},
        {"<integer>--0</integer>", "0"},
        {"<integer>+5</integer>", "5"},
        {"<integer>++5</integer>", "5"},
        {"<integer>-+5</integer>", "-5"},
        {"<integer>007</integer>", "7"},
        {"<integer> 0x1F </integer>", "31"},
        {"<integer>-0X1f</integer>", "-31"},
        {"<integer>+0x10</integer>", "16"},
        {"<integer>\n\t42\r\n</integer>", "42"},
        {"<integer>\u00A042\u2028\u3000</integer>", "42"},
        {"<integer>99999999999999999</integer>", "99999999999999999"},
        {"<integer>999999999999999999</integer>", "999999999999999999"},
        {"<integer>-999999999999999999</integer>", "-999999999999999999"},
        {"<integer>9999999999999999999</integer>", "9999999999999999999"},
        {"<integer>9223372036854775807</integer>", "9223372036854775807"},
        {"<integer>9223372036854775808</integer>", "9223372036854775808"},
        {"<integer>-9223372036854775808</integer>", "-9223372036854775808"},
        {"<integer>18446744073709551615</integer>", "18446744073709551615"},
        {"<integer>00000000000000000000000000000018446744073709551615</integer>",
         "18446744073709551615"},
        {"<integer>0xFFFFFFFFFFFFFFFF</integer>", "18446744073709551615"},
        {"<integer>-0x8000000000000000</integer>", "-9223372036854775808"},
    });
}

TEST(XMLPlistParserTest, readsReals) {
    expectValues({
        {"<real>0</real>", "0.0"},
        {"<real>-0</real>", "-0.0"},
        {"<real>-0.0</real>", "-0.0"},
        {"<real>5</real>", "5.0"},
        {"<real>.5</real>", "0.5"},
        {"<real>-.5</real>", "-0.5"},
        {"<real>5.</real>", "5.0"},
        {"<real>+1.5</real>", "1.5"},
        {"<real> 1.5\n</real>", "1.5"},
        {"<real>1e3</real>", "1000.0"},
        {"<real>1E+3</real>", "1000.0"},
        {"<real>-1.25e-2</real>", "-0.0125"},
        {"<real>0.1</real>", "0.1"},
        {"<real>0.1000000000000000055511151231257827021181583404541015625</real>", "0.1"},
        {"<real>3.14159265358979323846264338327950288419</real>", "3.141592653589793"},
        {"<real>3.141592653589793238462643383279502884197</real>", "3.141592653589793"},
        {"<real>1.7976931348623157e308</real>", "1.7976931348623157e+308"},
        {"<real>5e-324</real>", "5e-324"},
        {"<real>1e400</real>", "inf"},
        {"<real>-1e400</real>", "-inf"},
        {"<real>1e-400</real>", "0.0"},
        {"<real>-1e-400</real>", "-0.0"},
        {"<real>nan</real>", "nan"},
        {"<real>-NaN</real>", "nan"},
        {"<real>+nan</real>", "nan"},
        {"<real>inf</real>", "inf"},
        {"<real>-Infinity</real>", "-inf"},
        {"<real>+infinity</real>", "inf"},
        {"<real>0x1.8p1</real>", "3.0"},
        {"<real>-0X10</real>", "-16.0"},
    });
}

TEST(XMLPlistParserTest, readsBooleans) {
    expectValues({
        {"<true></true>", "true"},
        {"<false> \t\r\n</false >", "false"},
        {"<true a='b'/>", "true"},
        {"<true />", "true"},
        {"<false a></false>", "false"},
        {"<true/ ></true>", "true"},
    });
}

TEST(XMLPlistParserTest, readsDates) {
    expectValues({
        {"<date>2024-02-29T10:11:12Z</date>", "2024-02-29T10:11:12Z"},
        {"<date>2024-02-30T10:00:00Z</date>", "2024-03-01T10:00:00Z"},
        {"<date>2024</date>", "2024-01-01T00:00:00Z"},
        {"<date>2024-5-7T8:3</date>", "2024-05-07T08:03:00Z"},
        {"<date> \n2024-01-01T00:00:00Z\u2029</date>", "2024-01-01T00:00:00Z"},
        {"<date>-0001-01-01T00:00:00Z</date>", "-001-01-01T00:00:00Z"},
        {"<date>123456789-12-31T23:59:59Z</date>", "123456789-12-31T23:59:59Z"},
        {"<date>02024-1-1T00:00:00Z</date>", "2024-01-01T00:00:00Z"},
    });
}

TEST(XMLPlistParserTest, readsData) {
    expectValues({
        {"<data></data>", "<>"},
        {"<data/>", "<>"},
        {"<data> \n </data>", "<>"},
        {"<data>QUJD</data>", "<414243>"},
        {"<data>\n\tQU\r\n JD\n</data>", "<414243>"},
        {"<data>QUI=</data>", "<4142>"},
        {"<data>QQ==</data>", "<41>"},
        {"<data>QUJ</data>", "<4142>"},
        {"<data>QQ=</data>", "<41>"},
        {"<data>QQ</data>", "<41>"},
        {"<data>QU-JD!</data>", "<414243>"},
        {"<data>QR==</data>", "<41>"},
        {"<data>\u00E9QUJD</data>", "<414243>"},
        {"<data>AAECAwQFBgcICQoLDA0O</data>", "<000102030405060708090a0b0c0d0e>"},
        {"<data>AAECAwQFBgcICQoLDA0=</data>", "<000102030405060708090a0b0c0d>"},
    });
}

TEST(XMLPlistParserTest, readsLargeTextsAndData) {
    for (const std::size_t size : {std::size_t{500000}, std::size_t{3} << 20}) {
        const std::string text = repeated(size / 4, "abcd");
        const PlistValue value =
            xmlValue("<array><string>" + text + "</string><data>" + text + "</data><string>" +
                     text + "&lt;</string><integer>1</integer></array>");
        EXPECT_EQ(value.children()[0].text(), text);
        EXPECT_EQ(value.children()[1].dataValue().size(), size / 4 * 3);
        EXPECT_EQ(value.children()[2].text(), text + "<");
        EXPECT_EQ(value.children()[3], PlistValue::integer(1));
    }
}

TEST(XMLPlistParserTest, readsUids) {
    expectValues({
        {"<dict><key>CF$UID</key><integer>0</integer></dict>", "uid(0)"},
        {"<dict><key>CF$UID</key><integer>0x10</integer></dict>", "uid(16)"},
        {"<dict><key>CF$UID</key><integer>18446744073709551615</integer></dict>",
         "uid(18446744073709551615)"},
        {"<dict><key>CF&#36;UID</key><integer>7</integer></dict>", "uid(7)"},
        {"<dict><key><![CDATA[CF$UID]]></key><integer>7</integer></dict>", "uid(7)"},
        {"<dict><key>CF$UID</key><integer>-1</integer></dict>", "{\"CF$UID\" = -1}"},
        {"<dict><key>CF$UID</key><real>7</real></dict>", "{\"CF$UID\" = 7.0}"},
        {"<dict><key>CF$UID</key><string>7</string></dict>", "{\"CF$UID\" = \"7\"}"},
        {"<dict><key>CF$UID</key><true/></dict>", "{\"CF$UID\" = true}"},
        {"<dict><key>cf$uid</key><integer>7</integer></dict>", "{\"cf$uid\" = 7}"},
        {"<dict><key>CF$UID </key><integer>7</integer></dict>", "{\"CF$UID \" = 7}"},
        {"<dict><key>CF$UID</key><integer>7</integer><key>a</key><true/></dict>",
         "{\"CF$UID\" = 7, \"a\" = true}"},
        {"<dict><key>CF$UID</key><integer>7</integer><key>CF$UID</key><integer>8</integer></dict>",
         "{\"CF$UID\" = 7, \"CF$UID\" = 8}"},
        // Only one level: what became a uid is no integer any more.
        {"<dict><key>CF$UID</key><dict><key>CF$UID</key><integer>7</integer></dict></dict>",
         "{\"CF$UID\" = uid(7)}"},
    });
}

TEST(XMLPlistParserTest, opensAsManyContainersAsTheLimit) {
    for (const auto& [open, close] :
         {std::pair("<array>", "</array>"), std::pair("<dict><key>a</key>", "</dict>")}) {
        const auto nested = [open = open, close = close](std::size_t depth, std::string_view core) {
            return repeated(depth, open) + std::string(core) + repeated(depth, close);
        };
        for (const std::string_view core : {"<true/>", "<array/>", "<dict />"}) {
            EXPECT_EQ(differenceOfPaths(nested(512, core)), "");
            EXPECT_TRUE(xmlOutcome(nested(512, core)).value.has_value());
        }
        const std::string before = repeated(512, open);
        for (const std::string_view core : {"<array></array>", "<dict ></dict>"}) {
            EXPECT_EQ(differenceOfPaths(nested(512, core)), "");
            // Located just behind the tag.
            const std::size_t column = before.size() + core.find('>') + 2;
            EXPECT_EQ(xmlOutcome(nested(512, core)).text(),
                      "Line 1, column " + std::to_string(column) +
                          ": The file nests more than 512 levels deep.");
        }
    }
    // Only what is open at the same time counts.
    const std::string deep = repeated(511, "<array>") + repeated(511, "</array>");
    EXPECT_TRUE(xmlOutcome("<array>" + deep + deep + "</array>").value.has_value());
    EXPECT_EQ(xmlOutcome(repeated(513, "<array>")).text(),
              "Line 1, column 3592: The file nests more than 512 levels deep.");
}

TEST(XMLPlistParserTest, followsKeysThatRepeat) {
    std::string xml = "<array>";
    std::string expected = "(";
    for (int number = 0; number < 200; ++number) {
        const std::string key = "key " + std::to_string(number % 7);
        const std::string other = number % 3 == 0 ? "caf\u00E9" : "a &amp; b";
        const std::string otherText = number % 3 == 0 ? "caf\u00E9" : "a & b";
        xml +=
            "<dict>\n<key>" + key + "</key><integer>1</integer>\n<key>" + other + "</key>\n<true/>";
        xml += number % 5 == 0 ? "<key/><false/></dict>" : "</dict>\n";
        expected += number == 0 ? "" : ", ";
        expected += "{\"" + key + "\" = 1, \"" + otherText + "\" = true";
        expected += number % 5 == 0 ? ", \"\" = false}" : "}";
    }
    EXPECT_EQ(read(xml + "</array>"), expected + ")");
}

TEST(XMLPlistParserTest, sharesTheKeysOfDictionariesThatAreAlike) {
    const PlistValue value = xmlValue(
        "<array><dict><key>a</key><true/><key>b</key><true/></dict>"
        "<dict><key>a</key><false/><key>&#98;</key><true/></dict>"
        "<dict><key>a</key><true/></dict></array>");
    const auto records = value.children();
    EXPECT_EQ(records[0].keys().data(), records[1].keys().data());
    EXPECT_NE(records[0].keys().data(), records[2].keys().data());
}

TEST(XMLPlistParserTest, readsDictionariesOfManyKeys) {
    for (const int count : {63, 64, 65, 66, 1000}) {
        std::string xml = "<array>";
        for (int copy = 0; copy < 3; ++copy) {
            xml += "<dict>";
            for (int number = 0; number < count; ++number) {
                xml += "<key>" + std::to_string(number) + "</key><dict><key>x</key><integer>" +
                       std::to_string(number) + "</integer></dict>";
            }
            xml += "</dict>";
        }
        xml += "</array>";
        EXPECT_EQ(differenceOfPaths(xml), "");
        const PlistValue value = xmlValue(xml);
        for (const PlistValue& dictionary : value.children()) {
            ASSERT_EQ(dictionary.childCount(), static_cast<std::size_t>(count));
            for (std::size_t number = 0; number < dictionary.childCount(); ++number) {
                ASSERT_EQ(dictionary.keys()[number].view(), std::to_string(number));
                ASSERT_EQ(dictionary.children()[number].children()[0],
                          PlistValue::integer(static_cast<int>(number)));
            }
        }
    }
}

TEST(XMLPlistParserTest, acceptsTheEncodingsItReads) {
    for (const std::string_view text :
         {"", "<plist/>", "<?xml version=\"1.0\"?>", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
          "<?xml encoding='utf-8'?>", "<?xml encoding=\"UTF8\"?>", "<?xml ENCODING=\"Utf-8\"?>",
          // Whitespace around the "=" are not understood.
          "<?xml encoding = \"UTF-16\"?>", "<?xml encoding =\"UTF-16\"?>",
          // Either quote closes, and the first character is skipped whatever it is.
          "<?xml encoding=\"utf-8'?>", "<?xml encoding=xutf-8\"?>", "<?xml encoding=\u00E9utf-8'?>",
          // Only in a declaration at the very start, or right behind a byte-order mark.
          " <?xml encoding=\"UTF-16\"?>", "<!-- --><?xml encoding=\"UTF-16\"?>",
          "<?XML encoding=\"UTF-16\"?>", "<?xml?><a encoding=\"UTF-16\"?>",
          "\uFEFF<?xml encoding=\"UTF-8\"?>", "\uFEFF\uFEFF<?xml encoding=\"UTF-16\"?>",
          // It need not end.
          "<?xml encoding=\"utf-8"}) {
        EXPECT_TRUE(accepts(text)) << text;
    }
    for (const std::string_view text :
         {"<?xml encoding=\"UTF-16\"?>", "<?xml encoding='ISO-8859-1'?>",
          "\uFEFF<?xml encoding=\"UTF-16\"?>", "<?xml encoding=utf-8?>", "<?xml encoding=\"\"?>",
          "<?xml encoding=\" utf-8\"?>", "<?xml encoding=\"UTF-16",
          "<?xml encoding=", "<?xmlencoding=\"x\"?>", "<?xml eNcOdInG=\"latin1\"?>",
          "<?xml encoding=\"utf-8\xFF\"?>", "<?xml myencoding=\"latin1\" encoding=\"utf-8\"?>"}) {
        EXPECT_FALSE(accepts(text)) << text;
    }
}

TEST(XMLPlistParserTest, looksForAnEncodingIn256Bytes) {
    const auto declaration = [](std::size_t spaces) {
        return "<?xml" + std::string(spaces, ' ') + "encoding=\"utf-8\"?>";
    };
    // The value ends with the 256th byte, then it is cut short, then it is not found at all.
    EXPECT_TRUE(accepts(declaration(256 - 20)));
    EXPECT_FALSE(accepts(declaration(256 - 19)));
    EXPECT_FALSE(accepts(declaration(256 - 14)));
    EXPECT_TRUE(accepts(declaration(256 - 13)));
}

TEST(XMLPlistParserTest, doesNotKeepItsInput) {
    std::string xml = "<array><string>a text longer than a cell</string><data>QUJD</data></array>";
    std::vector<std::uint8_t> bytes = bytesOf(xml);
    const PlistValue value = XMLPlistParser::parse(bytes);
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    EXPECT_EQ(value.children()[0].text(), "a text longer than a cell");
}

}  // namespace

}  // namespace plist::detail
