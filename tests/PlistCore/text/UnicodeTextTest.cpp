#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

using std::string_view_literals::operator""sv;

constexpr std::string_view precomposed = "caf\xC3\xA9";
constexpr std::string_view decomposed = "cafe\xCC\x81";
constexpr std::string_view kelvinSign = "\xE2\x84\xAA";

std::string utf8(char32_t codePoint) {
    std::string text;
    UnicodeText::appendUtf8(text, codePoint);
    return text;
}

std::string hexadecimal(char32_t codePoint) {
    std::array<char, 8> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<std::uint32_t>(codePoint), 16);
    return {digits.data(), end.ptr};
}

bool isSurrogate(char32_t codePoint) {
    return codePoint >= 0xD800 && codePoint <= 0xDFFF;
}

int sign(int number) {
    return (number > 0) - (number < 0);
}

TEST(UnicodeTextTest, knowsAscii) {
    EXPECT_TRUE(UnicodeText::isAscii(""));
    EXPECT_TRUE(UnicodeText::isAscii("\0\x7F"sv));
    for (std::size_t length = 1; length < 50; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::string text(length, 'a');
            EXPECT_TRUE(UnicodeText::isAscii(text));
            text[place] = '\x80';
            EXPECT_FALSE(UnicodeText::isAscii(text)) << length << " " << place;
        }
    }
}

TEST(UnicodeTextTest, acceptsEveryScalarValue) {
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        if (!isSurrogate(point)) {
            ASSERT_TRUE(UnicodeText::isValidUtf8(utf8(point))) << hexadecimal(point);
        }
    }
}

TEST(UnicodeTextTest, acceptsValidTextsAtEveryAlignment) {
    for (const std::string_view sequence :
         {"\0"sv, "\x7F"sv, "\xC2\x80"sv, "\xDF\xBF"sv, "\xE0\xA0\x80"sv, "\xED\x9F\xBF"sv,
          "\xEE\x80\x80"sv, "\xEF\xBF\xBF"sv, "\xF0\x90\x80\x80"sv, "\xF4\x8F\xBF\xBF"sv}) {
        for (std::size_t before = 0; before < 40; ++before) {
            const std::string text = std::string(before, 'a') + std::string(sequence);
            EXPECT_TRUE(UnicodeText::isValidUtf8(text));
            EXPECT_TRUE(UnicodeText::isValidUtf8(text + std::string(sequence)));
            EXPECT_TRUE(UnicodeText::isValidUtf8(text + std::string(37, 'b')));
        }
    }
    EXPECT_TRUE(UnicodeText::isValidUtf8(""));
}

TEST(UnicodeTextTest, rejectsMalformedBytesAtEveryAlignment) {
    for (const std::string_view sequence : {
             "\x80"sv,              // continuation without a lead
             "\xBF"sv,              //
             "\xC0\x80"sv,          // overlong
             "\xC1\xBF"sv,          //
             "\xE0\x80\x80"sv,      //
             "\xE0\x9F\xBF"sv,      //
             "\xF0\x80\x80\x80"sv,  //
             "\xF0\x8F\xBF\xBF"sv,  //
             "\xED\xA0\x80"sv,      // surrogates
             "\xED\xBF\xBF"sv,      //
             "\xF4\x90\x80\x80"sv,  // above U+10FFFF
             "\xF5\x80\x80\x80"sv,  //
             "\xFE"sv,              // never in UTF-8
             "\xFF"sv,              //
             "\xC2"sv,              // cut short
             "\xE1\x80"sv,          //
             "\xE1"sv,              //
             "\xF1\x80\x80"sv,      //
             "\xF1\x80"sv,          //
             "\xF1"sv,              //
             "\xC2\x41"sv,          // continuation missing
             "\xC2\xC2\x80"sv,      //
             "\xE1\x41\x80"sv,      //
             "\xE1\x80\x41"sv,      //
             "\xE1\x80\xC0"sv,      //
             "\xF1\x41\x80\x80"sv,  //
             "\xF1\x80\x41\x80"sv,  //
             "\xF1\x80\x80\x41"sv,  //
             "\xF1\x80\x80\xFF"sv,  //
         }) {
        for (std::size_t before = 0; before < 40; ++before) {
            const std::string text = std::string(before, 'a') + std::string(sequence);
            EXPECT_FALSE(UnicodeText::isValidUtf8(text));
            EXPECT_FALSE(UnicodeText::isValidUtf8(text + std::string(37, 'b')));
            EXPECT_FALSE(UnicodeText::isValidUtf8("\xC3\xA9" + text));
        }
    }
}

TEST(UnicodeTextTest, composes) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"", ""},
        {"plain", "plain"},
        {decomposed, precomposed},
        {precomposed, precomposed},
        {kelvinSign, "K"},
        {"\xCD\xBE", ";"},                                         // U+037E
        {"\xCE\x87", "\xC2\xB7"},                                  // U+0387
        {"\xE1\x84\x80\xE1\x85\xA1\xE1\x86\xA8", "\xEA\xB0\x81"},  // Hangul L V T
        {"\xEA\xB0\x80\xE1\x86\xA8", "\xEA\xB0\x81"},              // Hangul LV T
        {"\xEA\xB0\x80\xE1\x86\xA7", "\xEA\xB0\x80\xE1\x86\xA7"},  // U+11A7 joins nothing
        {"\xE1\x84\x80\xE1\x85\xA1\xE1\x86\xA7\xE1\x84\x80\xE1\x85\xA1",
         "\xEA\xB0\x80\xE1\x86\xA7\xEA\xB0\x80"},
        {"\xEF\xA4\x80", "\xE8\xB1\x88"},              // compatibility ideograph
        {"\xE0\xA5\x98", "\xE0\xA4\x95\xE0\xA4\xBC"},  // U+0958: excluded
        {"\xE2\x80\x80", "\xE2\x80\x82"},              // U+2000
        {"\xEF\xAC\x81", "\xEF\xAC\x81"},              // a ligature stays
        {"a\xCC\xA3\xCC\x82", "\xE1\xBA\xAD"},         // dot below, circumflex
        {"a\xCC\x82\xCC\xA3", "\xE1\xBA\xAD"},         // out of canonical order
        {"\xC3\xA2\xCC\xA3", "\xE1\xBA\xAD"},          // partly composed
        {"\xCE\xB9\xCC\x88\xCC\x81", "\xCE\x90"},      // U+0390
        {"\xE3\x81\x8B\xE3\x82\x99", "\xE3\x81\x8C"},  // kana with voicing mark
        {"\xCC\x81", "\xCC\x81"},                      // a mark alone
        {"\xEF\xBB\xBFx", "\xEF\xBB\xBFx"},            // U+FEFF survives
        {"\0e\xCC\x81\0"sv, "\0\xC3\xA9\0"sv},         // NUL is a character
        {"\xF0\x9D\x85\x97\xF0\x9D\x85\xA5", "\xF0\x9D\x85\x97\xF0\x9D\x85\xA5"},
        {"\xF0\x9D\x85\x9E", "\xF0\x9D\x85\x97\xF0\x9D\x85\xA5"},  // U+1D15E: excluded
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(UnicodeText::composed(text), expected) << text;
        EXPECT_EQ(UnicodeText::composed(expected), expected) << text;
        EXPECT_TRUE(UnicodeText::equal(text, expected)) << text;
        EXPECT_TRUE(UnicodeText::equal(expected, text)) << text;
        EXPECT_EQ(UnicodeText::compare(text, expected), 0) << text;
        EXPECT_EQ(UnicodeText::hash(text), UnicodeText::hash(expected)) << text;
    }
}

/// Nothing beyond the supplementary ideographs takes part in composition.
TEST(UnicodeTextTest, composesEveryCodePointStably) {
    for (char32_t point = 0; point <= 0x2FFFF; ++point) {
        if (!isSurrogate(point)) {
            const std::string once = UnicodeText::composed(utf8(point));
            ASSERT_EQ(UnicodeText::composed(once), once) << hexadecimal(point);
        }
    }
}

/// The shortcut for plainly composed texts must agree with the whole algorithm, which a mark at
/// the end forces.
TEST(UnicodeTextTest, shortcutAgreesWithWholeAlgorithm) {
    const std::string lastMark = "\xDD\x80";  // U+0740, composes with nothing
    std::string before;
    for (char32_t point = 0; point <= 0xFFFF; ++point) {
        if (!isSurrogate(point)) {
            const std::string pair = before + utf8(point);
            ASSERT_EQ(UnicodeText::composed(pair + " " + lastMark),
                      UnicodeText::composed(pair) + " " + lastMark)
                << hexadecimal(point);
            before = utf8(point);
        }
    }
}

TEST(UnicodeTextTest, ordersLongRunsOfMarks) {
    constexpr std::size_t pairs = 200'000;
    std::string text = "x";
    std::string expected = "x";
    for (std::size_t index = 0; index < pairs; ++index) {
        text += "\xCC\x81\xCC\xA3";  // class 230, then class 220
    }
    expected = "x\xCC\xA3";
    for (std::size_t index = 1; index < pairs; ++index) {
        expected += "\xCC\xA3";
    }
    for (std::size_t index = 0; index < pairs; ++index) {
        expected += "\xCC\x81";
    }
    // The first dot below joins with nothing, since "x" has no such letter.
    EXPECT_TRUE(UnicodeText::composed(text) == expected);
}

TEST(UnicodeTextTest, tellsDifferentTextsApart) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"a", "b"},
        {"a", "A"},
        {"a", "a\0"sv},
        {"", "\0"sv},
        {"e", precomposed},
        {"cafe", precomposed},
        {"\xEF\xAC\x81", "fi"},                      // compatibility equivalents differ
        {"\xE2\x91\xA0", "1"},                       //
        {"\xC3\xA9", "\xC3\xA8"},                    //
        {"\xEF\xBB\xBF", ""},                        // U+FEFF counts
        {"\xC3\x9F", "ss"},                          // no case folding
        {"a\xCC\x81\xCC\x80", "a\xCC\x80\xCC\x81"},  // same class: the order counts
    };
    for (const auto& [left, right] : cases) {
        EXPECT_FALSE(UnicodeText::equal(left, right)) << left << " " << right;
        EXPECT_FALSE(UnicodeText::equal(right, left)) << left << " " << right;
        EXPECT_NE(UnicodeText::compare(left, right), 0) << left << " " << right;
    }
}

TEST(UnicodeTextTest, ordersByCodePointsOfCompositions) {
    const std::vector<std::string_view> ascending = {
        "",
        "\0"sv,
        "A",
        "B",
        kelvinSign,  // K
        "Z",
        "a",
        "a\0"sv,
        "ab",
        "e",
        "ez",
        "e\xCC\x81",  // U+00E9, after every ASCII text
        "\xC3\xA9z",
        "\xC4\x80",
        "\xE3\x81\x82",
        "\xEF\xBF\xBD",      // U+FFFD
        "\xF0\x90\x80\x80",  // U+10000: above U+FFFD, other than in UTF-16
        "\xF4\x8F\xBF\xBF",
    };
    for (std::size_t left = 0; left < ascending.size(); ++left) {
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            EXPECT_EQ(sign(UnicodeText::compare(ascending[left], ascending[right])),
                      (left > right) - (left < right))
                << left << " " << right;
        }
    }
}

TEST(UnicodeTextTest, takesCodePointsFromBothEnds) {
    constexpr std::array<char32_t, 10> points = {0,     0x41,   0x7F,    0x80,   0x7FF,
                                                 0x800, 0xFFFF, 0x10000, 0xFEFF, 0x10FFFF};
    std::string text;
    for (const char32_t point : points) {
        text += utf8(point);
    }
    std::string_view rest = text;
    for (const char32_t point : points) {
        EXPECT_EQ(UnicodeText::takeFirst(rest), point);
    }
    EXPECT_TRUE(rest.empty());
    rest = text;
    for (std::size_t index = points.size(); index-- > 0;) {
        EXPECT_EQ(UnicodeText::takeLast(rest), points.at(index));
    }
    EXPECT_TRUE(rest.empty());
}

TEST(UnicodeTextTest, appendsUtf8) {
    const std::vector<std::pair<char32_t, std::string_view>> cases = {
        {0, "\0"sv},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0x7FF, "\xDF\xBF"},
        {0x800, "\xE0\xA0\x80"},
        {0xD7FF, "\xED\x9F\xBF"},
        {0xE000, "\xEE\x80\x80"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x1F600, "\xF0\x9F\x98\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
    };
    for (const auto& [point, expected] : cases) {
        EXPECT_EQ(utf8(point), expected);
    }
}

TEST(UnicodeTextTest, classifiesWhitespaceAndLineBreaks) {
    std::u32string whitespace;
    std::u32string lineBreaks;
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        if (UnicodeText::isWhitespace(point)) {
            whitespace.push_back(point);
        }
        if (UnicodeText::isLineBreak(point)) {
            lineBreaks.push_back(point);
        }
    }
    EXPECT_EQ(whitespace, (std::u32string{0x0009, 0x0020, 0x00A0, 0x1680, 0x2000, 0x2001, 0x2002,
                                          0x2003, 0x2004, 0x2005, 0x2006, 0x2007, 0x2008, 0x2009,
                                          0x200A, 0x202F, 0x205F, 0x3000}));
    EXPECT_EQ(lineBreaks, (std::u32string{0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029}));
}

TEST(UnicodeTextTest, trimsWhitespaceWithinLines) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"", ""},
        {" ", ""},
        {" \t\xC2\xA0\xE1\x9A\x80\xE2\x80\x80\xE2\x80\x8A\xE2\x80\xAF\xE2\x81\x9F\xE3\x80\x80", ""},
        {" a ", "a"},
        {"\t a b\xC2\xA0", "a b"},
        {"\xE3\x80\x80\xC3\xA9\xE3\x80\x80", "\xC3\xA9"},
        {"a\n", "a\n"},
        {" \n a \r ", "\n a \r"},
        {"\xE2\x80\xA8 a", "\xE2\x80\xA8 a"},
        {"\xE2\x80\x8B", "\xE2\x80\x8B"},  // U+200B is no space
        {"\xEF\xBB\xBF", "\xEF\xBB\xBF"},  // nor is U+FEFF
        {"\0 "sv, "\0"sv},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(UnicodeText::trimmed(text), expected) << text;
    }
}

TEST(UnicodeTextTest, trimsWhitespaceAndLineBreaks) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"", ""},
        {"\n\v\f\r\xC2\x85\xE2\x80\xA8\xE2\x80\xA9 \t\xC2\xA0", ""},
        {" \n42\r\n", "42"},
        {"\xE2\x80\xA9 a b \xC2\x85", "a b"},
        {"a\nb", "a\nb"},
        {"\x1C"
         "a\x1F",
         "\x1C"
         "a\x1F"},  // the separators of ASCII are no whitespace
        {"\xE2\x80\x8B\n", "\xE2\x80\x8B"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(UnicodeText::trimmedWithLineBreaks(text), expected) << text;
    }
}

}  // namespace

}  // namespace plist::detail
