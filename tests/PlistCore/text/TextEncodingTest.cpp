#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "PlistCore/PlistError.h"
#include "PlistCore/text/TextEncoding.h"
#include "tests/PlistCore/support/EncodingModules.h"

namespace plist::detail {

namespace {

using std::string_view_literals::operator""sv;

std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::optional<std::string_view> wideEncoding(std::string_view text) {
    return TextEncoding::wideEncoding(bytesOf(text));
}

std::optional<std::string> declaredEncoding(std::string_view text) {
    return TextEncoding::declaredEncoding(bytesOf(text));
}

bool contradicts(std::string_view text, std::string_view encoding) {
    return TextEncoding::contradictsDeclaration(bytesOf(text), encoding);
}

std::string toUtf8(std::string_view text, std::string_view encoding) {
    return TextEncoding::toUtf8(bytesOf(text), encoding);
}

/// What converting fails with, or "" if it does not.
std::string failureOf(std::string_view text, std::string_view encoding) {
    try {
        toUtf8(text, encoding);
    } catch (const PlistError& error) {
        EXPECT_TRUE(std::holds_alternative<PlistError::Malformed>(error.reason()));
        EXPECT_FALSE(error.location());
        return error.errorDescription();
    }
    return {};
}

TEST(TextEncodingTest, knowsWideByteOrderMarks) {
    EXPECT_EQ(wideEncoding("\xFF\xFE"sv), "UTF-16LE");
    EXPECT_EQ(wideEncoding("\xFF\xFE{\0}\0"sv), "UTF-16LE");
    EXPECT_EQ(wideEncoding("\xFE\xFF\0{\0}"sv), "UTF-16BE");
    EXPECT_EQ(wideEncoding("\xFF\xFE\0\0{\0\0\0"sv), "UTF-32LE");
    EXPECT_EQ(wideEncoding("\0\0\xFE\xFF\0\0\0{"sv), "UTF-32BE");
}

TEST(TextEncodingTest, knowsWideXmlWithoutAMark) {
    EXPECT_EQ(wideEncoding("<\0?\0x\0m\0l\0 \0"sv), "UTF-16LE");
    EXPECT_EQ(wideEncoding("\0<\0?\0x\0m\0l\0 "sv), "UTF-16BE");
    EXPECT_EQ(wideEncoding("<\0?\0x\0m\0"sv), std::nullopt);
    EXPECT_EQ(wideEncoding("{\0a\0"sv), std::nullopt);
}

TEST(TextEncodingTest, otherTextIsNotWide) {
    for (const std::string_view text : {""sv, "\xFF"sv, "\xFE"sv, "\xFE\xFE"sv, "\xEF\xBB\xBFx"sv,
                                        "<?xml?>"sv, " \xFF\xFE"sv, "\0\0\xFF\xFE"sv}) {
        EXPECT_EQ(wideEncoding(text), std::nullopt) << text;
    }
}

TEST(TextEncodingTest, findsTheDeclaredEncoding) {
    EXPECT_EQ(declaredEncoding(R"(<?xml version="1.0" encoding="ISO-8859-1"?>)"), "ISO-8859-1");
    EXPECT_EQ(declaredEncoding("<?xml encoding='utf-8'?>"), "utf-8");
    EXPECT_EQ(declaredEncoding("<?xml ENCODING=\"a\"?>"), "a");
    EXPECT_EQ(declaredEncoding("\xEF\xBB\xBF<?xml encoding=\"a\"?>"), "a");
    EXPECT_EQ(declaredEncoding("<?xml encoding=\"\"?>"), "");
    EXPECT_EQ(declaredEncoding("<?xmlencoding=\"a\""), "a");
}

TEST(TextEncodingTest, eitherQuoteClosesTheName) {
    EXPECT_EQ(declaredEncoding("<?xml encoding=\"a'?>"), "a");
    EXPECT_EQ(declaredEncoding("<?xml encoding='a\"?>"), "a");
    EXPECT_EQ(declaredEncoding("<?xml encoding=\"a"), "a");
    EXPECT_EQ(declaredEncoding("<?xml encoding=\"a ?>\""), "a ");
}

// One character stands before the name, whatever it is.
TEST(TextEncodingTest, skipsOneCharacterBeforeTheName) {
    EXPECT_EQ(declaredEncoding("<?xml encoding=utf-8?>"), "tf-8");
    EXPECT_EQ(declaredEncoding("<?xml encoding=“a\"?>"), "a");
    EXPECT_EQ(declaredEncoding("<?xml encoding="), "");
    EXPECT_EQ(declaredEncoding("<?xml encoding=?>"), "");
}

TEST(TextEncodingTest, looksNowhereElseForAnEncoding) {
    EXPECT_EQ(declaredEncoding(""), std::nullopt);
    EXPECT_EQ(declaredEncoding("<?xml version=\"1.0\"?>"), std::nullopt);
    EXPECT_EQ(declaredEncoding("<?xml encoding = \"a\"?>"), std::nullopt);
    EXPECT_EQ(declaredEncoding("<?xml?><a encoding=\"a\">"), std::nullopt);
    EXPECT_EQ(declaredEncoding(" <?xml encoding=\"a\"?>"), std::nullopt);
    EXPECT_EQ(declaredEncoding("<plist encoding=\"a\">"), std::nullopt);
    EXPECT_EQ(declaredEncoding("{ encoding=\"a\"; }"), std::nullopt);
}

TEST(TextEncodingTest, looksAt256Bytes) {
    const std::string start = "<?xml" + std::string(240, ' ');
    EXPECT_EQ(declaredEncoding(start + "encoding=\"abc\""), "a");
    EXPECT_EQ(declaredEncoding(start + "  encoding=\"abc\""), "");
    EXPECT_EQ(declaredEncoding(start + "   encoding=\"abc\""), std::nullopt);
}

TEST(TextEncodingTest, declaredNameIsValidText) {
    EXPECT_EQ(declaredEncoding("<?xml encoding=\"a\xFFz\"?>"), "a\uFFFDz");
    EXPECT_EQ(declaredEncoding("<?xml encoding=\"ä\"?>"), "ä");
}

TEST(TextEncodingTest, declarationOfAnotherUnitContradictsItself) {
    for (const std::string_view encoding :
         {"UTF-16", "utf-16", "UTF-16LE", "UTF-16BE", "UTF-32", "UCS-2", "UCS-4"}) {
        EXPECT_TRUE(contradicts("<?xml", encoding)) << encoding;
    }
    for (const std::string_view encoding :
         {"ISO-8859-1", "windows-1252", "SHIFT_JIS", "macintosh", "US-ASCII", "unknown", ""}) {
        EXPECT_FALSE(contradicts("<?xml", encoding)) << encoding;
        EXPECT_TRUE(contradicts("\xEF\xBB\xBF<?xml", encoding)) << encoding;
    }
}

TEST(TextEncodingTest, convertsWideText) {
    EXPECT_EQ(toUtf8("\xFF\xFE\xE4\0\x3D\xD8\0\xDE"sv, "UTF-16LE"), "\uFEFFä😀");
    EXPECT_EQ(toUtf8("\xFE\xFF\0\xE4\xD8\x3D\xDE\0"sv, "UTF-16BE"), "\uFEFFä😀");
    EXPECT_EQ(toUtf8("\xE4\0\0\0\0\xF6\1\0"sv, "UTF-32LE"), "ä😀");
    EXPECT_EQ(toUtf8("\0\0\0\xE4\0\1\xF6\0"sv, "UTF-32BE"), "ä😀");
    EXPECT_EQ(toUtf8("", "UTF-16LE"), "");
}

TEST(TextEncodingTest, convertsDeclaredEncodings) {
    EXPECT_EQ(toUtf8("\xE4\xA9", "ISO-8859-1"), "ä©");
    EXPECT_EQ(toUtf8("\x80", "windows-1252"), "€");
    EXPECT_EQ(toUtf8("\x8A\xA9", "macintosh"), "ä©");
    EXPECT_EQ(toUtf8("\x93\xFA\x96\x7B", "Shift_JIS"), "日本");
    EXPECT_EQ(toUtf8("\x1B$BF|K\\\x1B(B", "ISO-2022-JP"), "日本");
}

// Some encodings wait for a mark that may follow: the last letter comes out all the same.
TEST(TextEncodingTest, convertsTheLastLetter) {
    EXPECT_EQ(toUtf8("cafe", "windows-1258"), "cafe");
    EXPECT_EQ(toUtf8("\xE0", "windows-1255"), "\u05D0");
}

TEST(TextEncodingTest, convertsLongText) {
    std::string text;
    std::string expected;
    for (int index = 0; index < 100'000; ++index) {
        text += '\xE4';
        expected += "ä";
    }
    EXPECT_EQ(toUtf8(text, "ISO-8859-1"), expected);
}

TEST(TextEncodingTest, refusesUnknownEncodings) {
    EXPECT_EQ(failureOf("a", "x-unknown"), "The text encoding “x-unknown” is not supported.");
    EXPECT_EQ(failureOf("a", ""), "The text encoding “” is not supported.");
    EXPECT_EQ(failureOf("a", "tf-8"), "The text encoding “tf-8” is not supported.");
    // Names that mean something to the C library alone.
    EXPECT_EQ(failureOf("a", "ASCII//TRANSLIT"),
              "The text encoding “ASCII//TRANSLIT” is not supported.");
    EXPECT_EQ(failureOf("a", " ASCII"), "The text encoding “ ASCII” is not supported.");
}

TEST(TextEncodingTest, needsNoModulesForTheCommonEncodings) {
    const WithoutEncodingModules without;
    EXPECT_EQ(toUtf8("\xE4\0"sv, "UTF-16LE"), "ä");
    EXPECT_EQ(toUtf8("\0\xE4"sv, "UTF-16BE"), "ä");
    EXPECT_EQ(toUtf8("\xE4\0\0\0"sv, "UTF-32LE"), "ä");
    EXPECT_EQ(toUtf8("\0\0\0\xE4"sv, "UTF-32BE"), "ä");
    EXPECT_EQ(toUtf8("\xE4", "ISO-8859-1"), "ä");
    EXPECT_TRUE(contradicts("<?xml", "UTF-16"));
    EXPECT_FALSE(contradicts("<?xml", "ISO-8859-1"));
    EXPECT_EQ(failureOf("a", "UTF-16LE"), "The text is not valid UTF-16.");
    EXPECT_EQ(failureOf("a", "macintosh"), "The text encoding “macintosh” is not supported.");
}

TEST(TextEncodingTest, refusesBrokenText) {
    EXPECT_EQ(failureOf("{\0}"sv, "UTF-16LE"), "The text is not valid UTF-16.");
    EXPECT_EQ(failureOf("\xD8\0\0a"sv, "UTF-16BE"), "The text is not valid UTF-16.");
    EXPECT_EQ(failureOf("\0\xDC"sv, "UTF-16LE"), "The text is not valid UTF-16.");
    EXPECT_EQ(failureOf("a\0\0"sv, "UTF-32LE"), "The text is not valid UTF-32.");
    EXPECT_EQ(failureOf("\0\x11\0\0"sv, "UTF-32BE"), "The text is not valid UTF-32.");
    EXPECT_EQ(failureOf("\0\0\xD8\0"sv, "UTF-32BE"), "The text is not valid UTF-32.");
    EXPECT_EQ(failureOf("a\x80", "US-ASCII"), "The text is not valid US-ASCII.");
    EXPECT_EQ(failureOf("\x93", "Shift_JIS"), "The text is not valid Shift_JIS.");
    EXPECT_EQ(failureOf("\x81", "windows-1252"), "The text is not valid windows-1252.");
}

}  // namespace

}  // namespace plist::detail
