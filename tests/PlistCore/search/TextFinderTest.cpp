#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/PlistType.h"
#include "PlistCore/search/TextFinder.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

namespace {

std::string lowerCased(std::string_view text) {
    std::string lower(text);
    for (char& byte : lower) {
        if (byte >= 'A' && byte <= 'Z') {
            byte = static_cast<char>(byte - 'A' + 'a');
        }
    }
    return lower;
}

/// By all ways that suit the text; they must agree.
bool isIn(const TextFinder& finder, const std::string& text) {
    const bool answer = finder.isIn(text);
    const std::string padded = text + std::string(ByteBlock::size, 'a');
    EXPECT_EQ(finder.isInPadded(std::string_view(padded).substr(0, text.size())), answer) << text;
    if (text.size() <= PlistCell::inPlaceCapacity) {
        const PlistCell cell = PlistCell::inPlace(PlistType::string, 0, text.data(), text.size());
        EXPECT_EQ(finder.isInPlace(cell), answer) << text;
    }
    return answer;
}

TEST(TextFinderTest, ignoresTheCaseOfAsciiLettersAlone) {
    const TextFinder finder("Key[1]");
    EXPECT_EQ(finder.pattern(), "key[1]");
    EXPECT_TRUE(isIn(finder, "the kEY[1] of"));
    EXPECT_FALSE(isIn(finder, "the key{1} of")) << "the bit of the case means nothing here";
    EXPECT_FALSE(isIn(TextFinder("@"), "`"));
    EXPECT_FALSE(isIn(TextFinder("`"), "@"));
    EXPECT_FALSE(isIn(TextFinder("[^]"), "{~}"));
    EXPECT_FALSE(isIn(TextFinder("\xC3\xA9"), "\xC3\x89")) << "bytes of other characters are exact";
    EXPECT_FALSE(isIn(TextFinder("a"), "\xC1")) << "a letter is no other character";
}

TEST(TextFinderTest, findsAtEveryPlaceOfTextsOfEveryLength) {
    for (std::size_t patternSize = 1; patternSize <= 40; ++patternSize) {
        std::string pattern(patternSize, 'y');
        pattern.front() = 'x';
        pattern.back() = 'Z';
        const TextFinder finder(pattern);
        for (std::size_t size = 0; size <= 70; ++size) {
            ASSERT_FALSE(isIn(finder, std::string(size, 'y')));
            for (std::size_t place = 0; place + patternSize <= size; ++place) {
                std::string text(size, 'y');
                text.replace(place, patternSize, pattern);
                ASSERT_TRUE(isIn(finder, text)) << patternSize << " at " << place << " of " << size;
            }
            // The pattern without its last byte at the very end: nothing behind it counts.
            if (size >= patternSize && patternSize > 1) {
                std::string text(size, 'y');
                text.replace(size - patternSize + 1, patternSize - 1, pattern, 0, patternSize - 1);
                ASSERT_FALSE(isIn(finder, text)) << patternSize << " cut off at " << size;
            }
        }
    }
}

TEST(TextFinderTest, agreesWithAPlainSearchInRandomTexts) {
    std::mt19937 random(2);
    std::uniform_int_distribution<std::size_t> textSize(0, 120);
    std::uniform_int_distribution<std::size_t> patternSize(1, 12);
    // Few letters, so that there are many beginnings of a match.
    std::uniform_int_distribution<std::size_t> letter(0, 3);
    const auto randomText = [&](std::size_t size) {
        std::string text(size, ' ');
        std::ranges::generate(text, [&] { return "abAB"[letter(random)]; });
        return text;
    };
    std::size_t foundCount = 0;
    for (int round = 0; round < 100000; ++round) {
        const std::string text = randomText(textSize(random));
        const std::string pattern = randomText(patternSize(random));
        const bool expected = lowerCased(text).find(lowerCased(pattern)) != std::string::npos;
        foundCount += expected ? 1 : 0;
        ASSERT_EQ(isIn(TextFinder(pattern), text), expected) << pattern << " in " << text;
    }
    EXPECT_GT(foundCount, 10000U);
    EXPECT_LT(foundCount, 90000U);
}

TEST(TextFinderTest, findsInTextsFullOfFalseBeginnings) {
    // Comparing in full at each place would take 10^11 steps.
    const std::size_t size = 1'000'000;
    std::string pattern(size / 4, 'a');
    pattern[size / 8] = 'b';
    const TextFinder finder(pattern);
    std::string text(size, 'A');
    EXPECT_FALSE(finder.isIn(text));
    text[size * 7 / 8 - 1] = 'B';
    EXPECT_TRUE(finder.isIn(text));
}

TEST(TextFinderTest, agreesWithAPlainSearchWhereItGivesUpComparing) {
    std::mt19937 random(3);
    std::uniform_int_distribution<std::size_t> place(0, 199);
    for (int round = 0; round < 20000; ++round) {
        std::string text(200, 'a');
        std::string pattern(60, 'a');
        text[place(random)] = 'b';
        text[place(random)] = 'b';
        pattern[1 + place(random) % 58] = 'b';
        const bool expected = text.find(pattern) != std::string::npos;
        ASSERT_EQ(TextFinder(pattern).isIn(text), expected) << pattern << " in " << text;
    }
}

}  // namespace

}  // namespace plist::detail
