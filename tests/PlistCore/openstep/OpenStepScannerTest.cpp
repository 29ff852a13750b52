#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "PlistCore/PlistError.h"
#include "PlistCore/openstep/OpenStepScanner.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist::detail {

namespace {

std::string stringIn(std::string_view text) {
    OpenStepScanner scanner(text);
    return std::string(scanner.readString());
}

std::string bracketsIn(std::string_view text) {
    OpenStepScanner scanner(text);
    return valueText(scanner.readBrackets());
}

/// What reading fails with, or "" if it does not.
template <typename Read>
std::string failureOf(Read read, std::string_view text) {
    try {
        read(text);
    } catch (const PlistError& error) {
        return error.errorDescription();
    }
    return {};
}

/// The part of `text` behind its leading whitespace.
std::string_view behindBlanks(std::string_view text) {
    OpenStepScanner scanner(text);
    scanner.skipBlanks();
    return text.substr(scanner.position());
}

TEST(OpenStepScannerTest, skipsWhitespaceAndComments) {
    EXPECT_EQ(behindBlanks(" \t\r\n\v\fx "), "x ");
    EXPECT_EQ(behindBlanks("// a\nx"), "x");
    EXPECT_EQ(behindBlanks("// a\rx"), "x");
    EXPECT_EQ(behindBlanks("// a"), "");
    EXPECT_EQ(behindBlanks("/* a\n// b */x"), "x");
    EXPECT_EQ(behindBlanks("/**/x"), "x");
    EXPECT_EQ(behindBlanks("/* a *\\ /* b */x"), "x");
    EXPECT_EQ(behindBlanks("/*/ a */x"), "x");
    EXPECT_EQ(behindBlanks("/ x"), "/ x");
    EXPECT_EQ(behindBlanks(""), "");
}

TEST(OpenStepScannerTest, skipsOneByteOrderMark) {
    EXPECT_EQ(behindBlanks("\xEF\xBB\xBFx"), "x");
    EXPECT_EQ(behindBlanks("\xEF\xBB\xBF\xEF\xBB\xBFx"), "\xEF\xBB\xBFx");
    EXPECT_EQ(behindBlanks("\xEF\xBBx"), "\xEF\xBBx");
}

TEST(OpenStepScannerTest, readsWords) {
    EXPECT_EQ(stringIn("azAZ09_$/:.-+ x"), "azAZ09_$/:.-+");
    EXPECT_EQ(stringIn("a;"), "a");
    EXPECT_EQ(stringIn("a\xC3\xA4"), "a");
    EXPECT_EQ(stringIn("http://example.org/a//b"), "http://example.org/a//b");
    EXPECT_EQ(stringIn("a/b/* c */"), "a/b");
    EXPECT_EQ(stringIn("/"), "/");
    EXPECT_EQ(stringIn("/*"), "/");
}

TEST(OpenStepScannerTest, knowsWhereAStringStarts) {
    for (const std::string_view text : {"\"", "'", "a", "0", "_", "$", "/", ":", ".", "-", "+"}) {
        EXPECT_TRUE(OpenStepScanner(text).isAtString()) << text;
    }
    for (const std::string_view text :
         {"", " ", "<", "{", "(", "=", ";", ",", "\\", "@", "#", "*", "\xC3\xA4"}) {
        EXPECT_FALSE(OpenStepScanner(text).isAtString()) << text;
    }
}

TEST(OpenStepScannerTest, readsQuotedStrings) {
    EXPECT_EQ(stringIn("\"\""), "");
    EXPECT_EQ(stringIn("''"), "");
    EXPECT_EQ(stringIn("\"it's // a /* b */ äöü\""), "it's // a /* b */ äöü");
    EXPECT_EQ(stringIn("'say \"hello\"'"), "say \"hello\"");
    EXPECT_EQ(stringIn("\"a\r\nb\n\""), "a\r\nb\n");
    EXPECT_EQ(stringIn("\"longer than fourteen bytes\" x"), "longer than fourteen bytes");
}

TEST(OpenStepScannerTest, stringEndsAtItsOwnQuote) {
    const std::string_view text = R"("a\"b'c"d)";
    OpenStepScanner scanner(text);
    EXPECT_EQ(scanner.readString(), "a\"b'c");
    EXPECT_TRUE(scanner.isAt('d'));
}

TEST(OpenStepScannerTest, decodesNamedEscapes) {
    EXPECT_EQ(stringIn(R"("\a\b\f\n\r\t\v")"), "\a\b\f\n\r\t\v");
    EXPECT_EQ(stringIn(R"("\"\'\\")"), "\"'\\");
    EXPECT_EQ(stringIn(R"('\"\'\\')"), "\"'\\");
    EXPECT_EQ(stringIn(R"("a\\n\nb")"), "a\\n\nb");
    // A backslash before a line break keeps the line break.
    EXPECT_EQ(stringIn("\"a\\\nb\""), "a\nb");
    EXPECT_EQ(stringIn("\"a\\\r\nb\""), "a\r\nb");
}

// What is no escape is the character itself.
TEST(OpenStepScannerTest, keepsUnknownEscapes) {
    EXPECT_EQ(stringIn(R"("\{\}\9\q\?\ä")"), "{}9q?ä");
    EXPECT_EQ(stringIn(R"("\x41")"), "x41");
    EXPECT_EQ(stringIn(R"("\Ug \U")"), "Ug U");
    EXPECT_EQ(stringIn(R"('\usepackage \u00a')"), "usepackage u00a");
}

TEST(OpenStepScannerTest, decodesOctalEscapes) {
    EXPECT_EQ(stringIn(R"("\101\102\60")"), "AB0");
    EXPECT_EQ(stringIn(R"("\0339")"), "\0339");
    EXPECT_EQ(stringIn(R"("\7\18")"), "\7\18");
    EXPECT_EQ(stringIn(R"("\1234")"), "S4");
    EXPECT_EQ(stringIn(R"("a\0b")"), std::string("a\0b", 3));
    EXPECT_EQ(stringIn(R"("\177")"), "\177");
    // No byte has a third digit after "40".
    EXPECT_EQ(stringIn(R"("\400\777")"), " 0?7");
}

// From 0200 on the escapes name characters of the old system's own set.
TEST(OpenStepScannerTest, octalEscapesAreNoUnicode) {
    EXPECT_EQ(stringIn(R"("\240 2005")"), "© 2005");
    EXPECT_EQ(stringIn(R"("\226\231\373")"), "ÖÛß");
    EXPECT_EQ(stringIn(R"("\200\377")"), "\u00A0\uFFFD");
}

TEST(OpenStepScannerTest, decodesCodeUnits) {
    EXPECT_EQ(stringIn(R"("\U00e4\U20AC")"), "ä€");
    EXPECT_EQ(stringIn(R"("\Ue4 \U41")"), "ä A");
    EXPECT_EQ(stringIn(R"("\U0001-D")"), "\1-D");
    EXPECT_EQ(stringIn(R"("\U00e41")"), "ä1");
    EXPECT_EQ(stringIn(R"("\u00a9 2005")"), "© 2005");
    EXPECT_EQ(stringIn(R"("\UFEFFa\UFFFF")"), "\uFEFFa\uFFFF");
    EXPECT_EQ(stringIn(R"("\U0")"), std::string(1, '\0'));
}

TEST(OpenStepScannerTest, joinsSurrogatePairs) {
    EXPECT_EQ(stringIn(R"("\Ud83d\Ude00!")"), "😀!");
    EXPECT_EQ(stringIn(R"("\UD83D\ude00")"), "😀");
    EXPECT_EQ(stringIn(R"("\UD800\UDC00\UDBFF\UDFFF")"), "\U00010000\U0010FFFF");
}

TEST(OpenStepScannerTest, mendsUnpairedSurrogates) {
    EXPECT_EQ(stringIn(R"("\Ud83d")"), "\uFFFD");
    EXPECT_EQ(stringIn(R"("\Ude00")"), "\uFFFD");
    EXPECT_EQ(stringIn(R"("\Ud83dx")"), "\uFFFDx");
    EXPECT_EQ(stringIn(R"("\Ud83d\n")"), "\uFFFD\n");
    EXPECT_EQ(stringIn(R"("\Ud83d\U41")"), "\uFFFDA");
    EXPECT_EQ(stringIn(R"("\Ud83d\Ux")"), "\uFFFDUx");
    EXPECT_EQ(stringIn(R"("\Ud83d\Ud83d\Ude00")"), "\uFFFD😀");
    EXPECT_EQ(stringIn(R"("\Ude00\Ud83d")"), "\uFFFD\uFFFD");
    EXPECT_EQ(stringIn(R"("\Ude00\Ude00")"), "\uFFFD\uFFFD");
    EXPECT_EQ(stringIn(R"("\U41\Ude00")"), "A\uFFFD");
}

TEST(OpenStepScannerTest, unterminatedStringIsNamedByItsStart) {
    for (const std::string_view text : {R"(")", R"("a)", R"("a')", R"("a\)", R"("a\")", R"("\\\")",
                                        R"("a\U)", R"("\7)", R"("\Ud83d)", R"("\Ud83d\)"}) {
        EXPECT_EQ(failureOf(stringIn, text), "Unterminated string at line 1, column 1.") << text;
    }
    EXPECT_EQ(failureOf(stringIn, "'a\""), "Unterminated string at line 1, column 1.");
}

TEST(OpenStepScannerTest, unterminatedCommentIsNamedByItsStart) {
    EXPECT_EQ(failureOf(behindBlanks, " /* a"), "Unterminated comment at line 1, column 2.");
    EXPECT_EQ(failureOf(behindBlanks, "//\n/*/"), "Unterminated comment at line 2, column 1.");
}

TEST(OpenStepScannerTest, readsData) {
    EXPECT_EQ(bracketsIn("<>"), "<>");
    EXPECT_EQ(bracketsIn("< \n>"), "<>");
    EXPECT_EQ(bracketsIn("<00ff>"), "<00ff>");
    EXPECT_EQ(bracketsIn("<0FBD77 1c\t2 735\r\nAE>x"), "<0fbd771c2735ae>");
}

TEST(OpenStepScannerTest, refusesBrokenData) {
    EXPECT_EQ(failureOf(bracketsIn, "<0>"), "Expected a hexadecimal digit at line 1, column 3.");
    EXPECT_EQ(failureOf(bracketsIn, "<00 1 >"),
              "Expected a hexadecimal digit at line 1, column 7.");
    EXPECT_EQ(failureOf(bracketsIn, "<00gg>"),
              "Expected a hexadecimal digit or “>” at line 1, column 4.");
    EXPECT_EQ(failureOf(bracketsIn, "<00"),
              "Expected a hexadecimal digit or “>” at line 1, column 4.");
    EXPECT_EQ(failureOf(bracketsIn, "<"),
              "Expected a hexadecimal digit or “>” at line 1, column 2.");
}

TEST(OpenStepScannerTest, readsBase64) {
    EXPECT_EQ(bracketsIn("<[]>"), "<>");
    EXPECT_EQ(bracketsIn("<[AAH/]>x"), "<0001ff>");
    EXPECT_EQ(bracketsIn("<[AA\n H/]>"), "<0001ff>");
    EXPECT_EQ(failureOf(bracketsIn, "<[A]>"), "Invalid Base64 at line 1, column 1.");
    EXPECT_EQ(failureOf(bracketsIn, "<[AAH/>"), "Expected “]>” at line 1, column 8.");
    EXPECT_EQ(failureOf(bracketsIn, "<["), "Expected “]>” at line 1, column 3.");
}

TEST(OpenStepScannerTest, readsTypedNumbers) {
    EXPECT_EQ(bracketsIn("<*I5>"), "5");
    EXPECT_EQ(bracketsIn("<*I-9223372036854775808>"), "-9223372036854775808");
    EXPECT_EQ(bracketsIn("<*I18446744073709551615>"), "18446744073709551615");
    EXPECT_EQ(bracketsIn("<*I\"5\">"), "5");
    EXPECT_EQ(bracketsIn("<*R1.5>"), "1.5");
    EXPECT_EQ(bracketsIn("<*R-1e300>x"), "-1e+300");
    EXPECT_EQ(bracketsIn("<*R2>"), "2.0");
    EXPECT_EQ(bracketsIn("<*Rinf>"), "inf");
    EXPECT_EQ(bracketsIn("<*BY>"), "true");
    EXPECT_EQ(bracketsIn("<*BN>"), "false");
    EXPECT_EQ(bracketsIn("<*B\"Y\">"), "true");
}

TEST(OpenStepScannerTest, refusesBrokenNumbers) {
    for (const std::string_view text : {"<*I>", "<*Ix>", "<*I18446744073709551616>", "<*I1.5>",
                                        "<*I\">", "<*I\"\">", "<*I\"5>"}) {
        EXPECT_EQ(failureOf(bracketsIn, text), "Invalid integer at line 1, column 1.") << text;
    }
    for (const std::string_view text : {"<*R>", "<*Rx>", "<*R1,5>"}) {
        EXPECT_EQ(failureOf(bracketsIn, text), "Invalid real number at line 1, column 1.") << text;
    }
    for (const std::string_view text : {"<*B>", "<*Btrue>", "<*By>", "<*BYN>"}) {
        EXPECT_EQ(failureOf(bracketsIn, text), "Invalid boolean at line 1, column 1.") << text;
    }
    for (const std::string_view text : {"<*>", "<*X5>", "<*i5>"}) {
        EXPECT_EQ(failureOf(bracketsIn, text), "Unknown type at line 1, column 1.") << text;
    }
    EXPECT_EQ(failureOf(bracketsIn, "<*I5"), "Expected “>” at line 1, column 5.");
    EXPECT_EQ(failureOf(bracketsIn, "<*"), "Expected “>” at line 1, column 3.");
}

TEST(OpenStepScannerTest, readsTypedDates) {
    EXPECT_EQ(bracketsIn("<*D2001-01-01 00:00:00 +0000>"), "2001-01-01T00:00:00Z");
    EXPECT_EQ(bracketsIn("<*D2024-02-29 12:30:15 +0000>"), "2024-02-29T12:30:15Z");
    EXPECT_EQ(bracketsIn("<*D2024-01-01 00:30:00 +0130>"), "2023-12-31T23:00:00Z");
    EXPECT_EQ(bracketsIn("<*D2023-12-31 23:00:00 -0530>"), "2024-01-01T04:30:00Z");
    EXPECT_EQ(bracketsIn("<*D\"2001-01-01 00:00:00 +0000\">"), "2001-01-01T00:00:00Z");
}

TEST(OpenStepScannerTest, refusesBrokenDates) {
    for (const std::string_view text :
         {"<*D>", "<*D2001-01-01>", "<*D2001-01-01T00:00:00Z>", "<*D2001-01-01 00:00:00>",
          "<*D2001-01-01 00:00:00 0000>", "<*D2001-01-01 00:00:00 +00>",
          "<*D2001-13-01 00:00:00 +0000>", "<*D2001-01-01 00:00:00 +0060>",
          "<*D2001-01-01 00:00:00 +0000 >", "<*D-001-01-01 00:00:00 +0000>"}) {
        EXPECT_EQ(failureOf(bracketsIn, text), "Invalid date at line 1, column 1.") << text;
    }
}

TEST(OpenStepScannerTest, placesCountLinesAndBytes) {
    const auto failAtEnd = [](std::string_view text) {
        OpenStepScanner scanner(text);
        scanner.rewind(text.size());
        scanner.fail("Failed");
    };
    EXPECT_EQ(failureOf(failAtEnd, ""), "Failed at line 1, column 1.");
    EXPECT_EQ(failureOf(failAtEnd, "ab"), "Failed at line 1, column 3.");
    EXPECT_EQ(failureOf(failAtEnd, "ab\n"), "Failed at line 2, column 1.");
    EXPECT_EQ(failureOf(failAtEnd, "\r\n\r\n\xC3\xA4"), "Failed at line 3, column 3.");
    EXPECT_EQ(failureOf(failAtEnd, "\r\r"), "Failed at line 1, column 3.");
    EXPECT_EQ(failureOf(failAtEnd, "\xEF\xBB\xBF"), "Failed at line 1, column 4.");
}

}  // namespace

}  // namespace plist::detail
