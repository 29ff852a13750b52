#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/search/TextFolding.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

class Folder {
public:
    std::string operator()(std::string_view text) {
        constexpr char untouched = '\x7F';
        const std::size_t room = TextFolding::greatestGrowth * text.size();
        std::string buffer(room + TextFolding::slack + 1, untouched);
        const char* const end = folding_.fold(text, buffer.data());
        const auto size = static_cast<std::size_t>(end - buffer.data());
        EXPECT_LE(size, room);
        EXPECT_EQ(buffer.back(), untouched) << "written past the room";
        return buffer.substr(0, size);
    }

private:
    TextFolding folding_;
};

std::string encoded(char32_t codePoint) {
    std::string text;
    UnicodeText::appendUtf8(text, codePoint);
    return text;
}

bool isSurrogate(char32_t codePoint) {
    return codePoint >= 0xD800 && codePoint <= 0xDFFF;
}

TEST(TextFoldingTest, leavesAsciiAlone) {
    Folder fold;
    EXPECT_EQ(fold(""), "");
    EXPECT_EQ(fold("Hello, World 123"), "Hello, World 123");
    EXPECT_EQ(fold("a text that is longer than two whole blocks of bytes"),
              "a text that is longer than two whole blocks of bytes");
}

TEST(TextFoldingTest, foldsCaseAndTakesOutMarks) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"é", "e"},       {"É", "e"},
        {"e\u0301", "e"}, {"ố", "o"},
        {"ß", "ss"},      {"ẞ", "ss"},
        {"ﬃ", "ffi"},     {"Æ", "æ"},
        {"Ø", "ø"},       {"ı", "ı"},
        {"İ", "i"},       {"\u212A", "k"},  // the Kelvin sign decomposes to a letter
        {"Å", "a"},       {"Σ", "σ"},
        {"ς", "σ"},       {"ΐ", "ι"},
        {"ᾳ", "αι"},      {"Й", "и"},
        {"й", "и"},       {"Ꭰ", "Ꭰ"},
        {"ꭰ", "Ꭰ"},     {"한", "\u1112\u1161\u11AB"},
        {"\u0301", ""},   {"\u302E", ""},
        {"が", "か"},     {"字", "字"},
        {"𐐀", "𐐨"},       {"\U0001D160", "\U0001D158"},
        {"😀", "😀"},       {"ﬁ", "fi"},
        {"１", "１"},     {"²", "²"},
    };
    Folder fold;
    for (const auto& [text, folded] : cases) {
        EXPECT_EQ(fold(text), folded) << text;
    }
}

TEST(TextFoldingTest, findsEachCodePointAnywhereInAText) {
    Folder fold;
    const std::string ascii(40, 'x');
    for (std::size_t before = 0; before <= ascii.size(); ++before) {
        const std::string_view left = std::string_view(ascii).substr(0, before);
        for (std::size_t after = 0; after <= ascii.size(); ++after) {
            const std::string_view right = std::string_view(ascii).substr(0, after);
            const std::string text = std::string(left) + "éü" + std::string(right);
            const std::string expected = std::string(left) + "eu" + std::string(right);
            ASSERT_EQ(fold(text), expected);
        }
    }
}

TEST(TextFoldingTest, foldsEveryCodePointWithinTheRoomAndOnce) {
    Folder fold;
    for (char32_t point = 0x80; point < 0x110000; ++point) {
        if (isSurrogate(point)) {
            continue;
        }
        const std::string folded = fold(encoded(point));
        ASSERT_TRUE(UnicodeText::isValidUtf8(folded)) << std::hex << static_cast<unsigned>(point);
        ASSERT_EQ(fold(folded), folded) << std::hex << static_cast<unsigned>(point);
    }
}

TEST(TextFoldingTest, foldsEquivalentTextsAlike) {
    std::mt19937 random(1);
    // Letters, marks of several combining classes, ligatures, syllables and their parts.
    const std::vector<char32_t> points = {U'a',   U'é',   0x0301, 0x0323,  0x0307,  0x0345,
                                          0x1EA5, 0x1FB7, 0x03B1, 0xAC01,  0x1100,  0x1161,
                                          0x11A8, 0x302E, 0x093C, 0x1D160, 0x1D165, 0x1D16D,
                                          0x212B, 0x0130, 0x0F73, 0x0F71,  0x0F72};
    std::uniform_int_distribution<std::size_t> pick(0, points.size() - 1);
    Folder fold;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int i = 0; i < 8; ++i) {
            UnicodeText::appendUtf8(text, points[pick(random)]);
        }
        ASSERT_EQ(fold(text), fold(UnicodeText::composed(text))) << text;
    }
}

}  // namespace

}  // namespace plist::detail
