#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistString.h"
#include "tests/PlistCore/support/ThrowingChecks.h"

namespace plist {

namespace {

const std::string precomposed = "caf\u00E9";
const std::string decomposed = "cafe\u0301";

std::size_t hashOf(const PlistString& text) {
    return std::hash<PlistString>()(text);
}

/// A stray continuation, an overlong form, a surrogate, a text cut short; in place and behind a
/// long text.
std::vector<std::string> brokenTexts() {
    std::vector<std::string> texts;
    for (const char* bytes : {"\x80", "\xC0\x80", "\xED\xA0\x80", "caf\xC3", "\xFF"}) {
        texts.emplace_back(bytes);
        texts.push_back(std::string(100, 'x') + bytes);
    }
    return texts;
}

TEST(PlistStringTest, isEmptyAtFirst) {
    const PlistString text;
    EXPECT_TRUE(text.isEmpty());
    EXPECT_EQ(text.size(), 0U);
    EXPECT_EQ(text.view(), "");
    EXPECT_TRUE(text.isAscii());
    EXPECT_EQ(text, PlistString(""));
}

// A broken text in a value could be written in a form that nobody reads back.
TEST(PlistStringTest, stopsTextsThatAreNotUtf8) {
    const ThrowingChecks checks;
    for (const std::string& broken : brokenTexts()) {
        EXPECT_THROW(PlistString{broken}, BrokenRule) << broken;
        EXPECT_THROW(PlistValue::string(broken), BrokenRule) << broken;
    }
}

TEST(PlistStringTest, takesForeignBytesIfTheyAreUtf8) {
    for (const std::string& broken : brokenTexts()) {
        EXPECT_EQ(PlistString::fromUtf8(broken), std::nullopt) << broken;
    }
    for (const std::string& text : {std::string(), std::string("a\0b", 3), precomposed,
                                    std::string(50, 'x'), std::string(50, 'x') + precomposed}) {
        ASSERT_TRUE(PlistString::fromUtf8(text).has_value()) << text;
        const PlistString taken = *PlistString::fromUtf8(text);
        EXPECT_EQ(taken.view(), text);
    }
}

TEST(PlistStringTest, keepsShortTextsInPlaceAndSharesLongOnes) {
    for (std::size_t size = 0; size <= 40; ++size) {
        const std::string expected = std::string("0123456789abcdefghijklmnopqrstuvwxyzABCD", size);
        const PlistString text(expected);
        const PlistString copy = text;
        EXPECT_EQ(text.view(), expected);
        EXPECT_EQ(copy.view(), expected);
        EXPECT_EQ(text.size(), size);
        EXPECT_EQ(copy.view().data() == text.view().data(), size > 14) << size;
    }
}

TEST(PlistStringTest, knowsWhetherItIsAscii) {
    for (const std::size_t size : {0U, 1U, 12U, 13U, 14U, 15U, 40U, 4000U}) {
        const std::string plain(size, '\x7F');
        EXPECT_TRUE(PlistString(plain).isAscii()) << size;
        EXPECT_FALSE(PlistString(plain + "\u00E9").isAscii()) << size;
        EXPECT_FALSE(PlistString("\u00E9" + plain).isAscii()) << size;
        const PlistString mixed(plain + "\u00E9");
        EXPECT_EQ(mixed.view(), plain + "\u00E9") << size;
    }
}

TEST(PlistStringTest, holdsNul) {
    const std::string withNul("a\0b", 3);
    const PlistString text(withNul);
    EXPECT_EQ(text.size(), 3U);
    EXPECT_EQ(text.view(), withNul);
    EXPECT_NE(PlistString(withNul), PlistString("a"));
    EXPECT_NE(PlistString(std::string(1, '\0')), PlistString());
}

TEST(PlistStringTest, isEqualAsUnicodeText) {
    EXPECT_EQ(PlistString(precomposed), PlistString(decomposed));
    EXPECT_EQ(PlistString(decomposed), PlistString(precomposed));
    EXPECT_NE(PlistString(precomposed), PlistString("cafe"));
    EXPECT_NE(PlistString("cafe"), PlistString(precomposed));
    EXPECT_NE(PlistString("a"), PlistString("A"));
    EXPECT_NE(PlistString("a"), PlistString("a "));
    // Two signs for the same letter, one of them from another block; and Hangul.
    EXPECT_EQ(PlistString("\u212B"), PlistString("A\u030A"));
    EXPECT_EQ(PlistString("\uAC01"), PlistString("\u1100\u1161\u11A8"));
    // Compatibility is not canonical equivalence.
    EXPECT_NE(PlistString("\uFB01"), PlistString("fi"));
    // A sign that is not ASCII and yet equals one that is.
    EXPECT_EQ(PlistString("\u212A"), PlistString("K"));
    EXPECT_EQ(PlistString("K"), PlistString("\u212A"));
    EXPECT_EQ(PlistString(std::string(20, 'x') + precomposed),
              PlistString(std::string(20, 'x') + decomposed));
}

TEST(PlistStringTest, hashesEqualTextsAlike) {
    EXPECT_EQ(hashOf(PlistString(precomposed)), hashOf(PlistString(decomposed)));
    EXPECT_EQ(hashOf(PlistString("\u212A")), hashOf(PlistString("K")));
    EXPECT_EQ(hashOf(PlistString()), hashOf(PlistString("")));
    EXPECT_NE(hashOf(PlistString("a")), hashOf(PlistString("b")));
}

TEST(PlistStringTest, ordersByComposedCodePoints) {
    EXPECT_LT(PlistString("a").compare("b"), 0);
    EXPECT_GT(PlistString("a").compare("B"), 0);
    EXPECT_LT(PlistString("a").compare("ab"), 0);
    EXPECT_EQ(PlistString(precomposed).compare(decomposed), 0);
    // UTF-16 would put the second one first.
    EXPECT_LT(PlistString("\uFB01").compare("\U0001F600"), 0);
}

TEST(PlistStringTest, leavesAnEmptyTextWhenMoved) {
    for (const std::size_t size : {5U, 50U}) {
        PlistString source(std::string(size, 'x'));
        const PlistString target = std::move(source);
        EXPECT_EQ(target.size(), size);
        EXPECT_TRUE(source.isEmpty());  // NOLINT(bugprone-use-after-move): promised
        EXPECT_TRUE(source.isAscii());
    }
}

TEST(PlistStringTest, canBeAssigned) {
    for (const std::size_t size : {5U, 50U}) {
        const std::string expected(size, 'x');
        PlistString text(expected);
        PlistString& alias = text;
        text = alias;
        EXPECT_EQ(text.view(), expected);
        text = std::move(alias);
        EXPECT_EQ(text.view(), expected);
        PlistString other("something else that is long");
        other = text;
        EXPECT_EQ(other.view(), expected);
        text = PlistString("replaced");
        EXPECT_EQ(other.view(), expected);
        EXPECT_EQ(text.view(), "replaced");
    }
}

TEST(PlistStringTest, staysAliveInAValue) {
    PlistString text("a text longer than a cell");
    const PlistValue value = PlistValue::string(text);
    text = PlistString();
    EXPECT_EQ(value.text(), "a text longer than a cell");
    EXPECT_EQ(value.stringValue(), PlistString("a text longer than a cell"));
}

TEST(PlistStringTest, isTheKeyOfAnEntry) {
    const PlistEntry entry = {precomposed, PlistValue::integer(1)};
    EXPECT_EQ(entry, (PlistEntry{decomposed, PlistValue::integer(1)}));
    EXPECT_FALSE(entry == (PlistEntry{precomposed, PlistValue::integer(2)}));
    EXPECT_FALSE(entry == (PlistEntry{"cafe", PlistValue::integer(1)}));
}

}  // namespace

}  // namespace plist
