#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "PlistCore/PlistError.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/openstep/OpenStepPlistParser.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist::detail {

namespace {

std::string read(std::string_view text) {
    return valueText(OpenStepPlistParser::parse(text));
}

std::optional<PlistError> errorOf(std::string_view text) {
    try {
        OpenStepPlistParser::parse(text);
    } catch (const PlistError& error) {
        return error;
    }
    return std::nullopt;
}

std::string failureOf(std::string_view text) {
    const std::optional<PlistError> error = errorOf(text);
    return error ? error->errorDescription() : "";
}

std::string repeated(int count, std::string_view part) {
    std::string text;
    for (int index = 0; index < count; ++index) {
        text += part;
    }
    return text;
}

/// How many containers stand inside each other, followed along the first child of each.
int depthOf(PlistValue value) {
    int depth = 0;
    while (value.isContainer()) {
        ++depth;
        if (value.childCount() == 0) {
            break;
        }
        value = PlistValue(value.children().front());
    }
    return depth;
}

TEST(OpenStepPlistParserTest, readsEveryRoot) {
    EXPECT_EQ(read("{}"), "{}");
    EXPECT_EQ(read("()"), "()");
    EXPECT_EQ(read("hello"), "\"hello\"");
    EXPECT_EQ(read("'hello world' // greeting"), "\"hello world\"");
    EXPECT_EQ(read("<00ff>"), "<00ff>");
    EXPECT_EQ(read("<*I5>"), "5");
    EXPECT_EQ(read("<*BY>"), "true");
}

TEST(OpenStepPlistParserTest, readsArrays) {
    EXPECT_EQ(read("(a)"), "(\"a\")");
    EXPECT_EQ(read("( a , 'b',<00> ,<*R0.5>,(),{ } )"), "(\"a\", \"b\", <00>, 0.5, (), {})");
    EXPECT_EQ(read("(a,)"), "(\"a\")");
    EXPECT_EQ(read("(a,/* last */)"), "(\"a\")");
    EXPECT_EQ(read("((a,b),(),((c)))"), "((\"a\", \"b\"), (), ((\"c\")))");
}

TEST(OpenStepPlistParserTest, readsDictionaries) {
    EXPECT_EQ(read("{a=b;}"), "{\"a\" = \"b\"}");
    EXPECT_EQ(read("{ 'a b' = (c); \"d\" = { e = <01>; }; }"),
              "{\"a b\" = (\"c\"), \"d\" = {\"e\" = <01>}}");
    EXPECT_EQ(read("{/**/a/**/=/**/b/**/;/**/}// end"), "{\"a\" = \"b\"}");
    EXPECT_EQ(read("{\"\" = \"\";}"), "{\"\" = \"\"}");
}

TEST(OpenStepPlistParserTest, lastSemicolonMayBeMissing) {
    EXPECT_EQ(read("{a=b}"), "{\"a\" = \"b\"}");
    EXPECT_EQ(read("{a=b;c=(d)\n}"), "{\"a\" = \"b\", \"c\" = (\"d\")}");
    EXPECT_EQ(read("{a={b=c}}"), "{\"a\" = {\"b\" = \"c\"}}");
    EXPECT_EQ(read("a=b"), "{\"a\" = \"b\"}");
}

TEST(OpenStepPlistParserTest, keyAloneStandsForItsValue) {
    EXPECT_EQ(read("{a;}"), "{\"a\" = \"a\"}");
    EXPECT_EQ(read("{ setColors:; inspector:; }"),
              "{\"inspector:\" = \"inspector:\", \"setColors:\" = \"setColors:\"}");
    EXPECT_EQ(read("\"Open\";"), "{\"Open\" = \"Open\"}");
}

TEST(OpenStepPlistParserTest, readsFilesOfEntries) {
    EXPECT_EQ(read("\"a\" = \"b\";"), "{\"a\" = \"b\"}");
    EXPECT_EQ(read("/* Title */\n\"b\" = \"c\";\n\na = { x = (y); };\n"),
              "{\"a\" = {\"x\" = (\"y\")}, \"b\" = \"c\"}");
    EXPECT_EQ(read("\xEF\xBB\xBF"
                   "xml = 1.0;"),
              "{\"xml\" = \"1.0\"}");
    EXPECT_EQ(read("a /* key */ = b;"), "{\"a\" = \"b\"}");
}

TEST(OpenStepPlistParserTest, fileWithoutEntriesIsAnEmptyDictionary) {
    EXPECT_EQ(read(""), "{}");
    EXPECT_EQ(read("/* No Localized Strings */"), "{}");
    EXPECT_EQ(read("\xEF\xBB\xBF // nothing\n"), "{}");
}

TEST(OpenStepPlistParserTest, sortsKeysByCodePoints) {
    EXPECT_EQ(read("{b=1;a=2;B=3;aa=4;_=5;10=6;9=7;}"),
              "{\"10\" = \"6\", \"9\" = \"7\", \"B\" = \"3\", \"_\" = \"5\", \"a\" = \"2\", "
              "\"aa\" = \"4\", \"b\" = \"1\"}");
    EXPECT_EQ(read("{'\U0001F600'=1;'\uFFFD'=2;'é'=3;z=4;}"),
              "{\"z\" = \"4\", \"é\" = \"3\", \"\uFFFD\" = \"2\", \"\U0001F600\" = \"1\"}");
}

// "e" and a combining accent is composed before it is compared: it stands behind "z".
TEST(OpenStepPlistParserTest, sortsKeysByTheirComposition) {
    EXPECT_EQ(read("{'e\u0301'=1;z=2;'e\u0301a'=3;'\u00E8'=4;}"),
              "{\"z\" = \"2\", \"\u00E8\" = \"4\", \"e\u0301\" = \"1\", \"e\u0301a\" = \"3\"}");
}

TEST(OpenStepPlistParserTest, lastOfRepeatedKeysWins) {
    EXPECT_EQ(read("{a=1;b=2;a=3;a=4;}"), "{\"a\" = \"4\", \"b\" = \"2\"}");
    EXPECT_EQ(read("a=1;a=2;"), "{\"a\" = \"2\"}");
    EXPECT_EQ(read("{'\u00E9'=1;'e\u0301'=2;}"), "{\"e\u0301\" = \"2\"}");
    EXPECT_EQ(read("{'e\u0301'=1;'\u00E9'=2;}"), "{\"\u00E9\" = \"2\"}");
}

// Sorting keeps the order of equal keys, however many there are.
TEST(OpenStepPlistParserTest, lastOfManyRepeatedKeysWins) {
    std::string text = "{";
    for (int number = 0; number < 1000; ++number) {
        text += "key" + std::to_string(number % 10) + "=" + std::to_string(number) + ";";
    }
    const PlistValue value = OpenStepPlistParser::parse(text + "}");
    ASSERT_EQ(value.childCount(), 10U);
    for (std::size_t place = 0; place < 10; ++place) {
        EXPECT_EQ(value.keys()[place].view(), "key" + std::to_string(place));
        EXPECT_EQ(value.children()[place].text(), std::to_string(990 + place));
    }
}

TEST(OpenStepPlistParserTest, uidsAreOrdinaryDictionaries) {
    EXPECT_EQ(read("{'CF$UID'=<*I7>;}"), "{\"CF$UID\" = 7}");
}

TEST(OpenStepPlistParserTest, namesTheFirstThingWrong) {
    struct Case {
        std::string_view text;
        std::string_view failure;
    };
    constexpr Case cases[] = {
        {"{", "Expected a key or “}” at line 1, column 2."},
        {"{;}", "Expected a key or “}” at line 1, column 2."},
        {"{a=b;;}", "Expected a key or “}” at line 1, column 6."},
        {"{a=b;", "Expected a key or “}” at line 1, column 6."},
        {"{(a)=b;}", "Expected a key or “}” at line 1, column 2."},
        {"{<00>=b;}", "Expected a key or “}” at line 1, column 2."},
        {"{a=b;)", "Expected a key or “}” at line 1, column 6."},
        {"a=b;}", "Expected a key at line 1, column 5."},
        {"a=b; <<<<<<< HEAD", "Expected a key at line 1, column 6."},
        {"{a", "Expected “=” at line 1, column 3."},
        {"{a}", "Expected “=” at line 1, column 3."},
        {"{a b;}", "Expected “=” at line 1, column 4."},
        {R"({"a": "b"})", "Expected “=” at line 1, column 5."},
        {"a=b;\n\"c\" - d;", "Expected “=” at line 2, column 5."},
        {"{a=", "Expected a value at line 1, column 4."},
        {"{a=;}", "Expected a value at line 1, column 4."},
        {"{a=}", "Expected a value at line 1, column 4."},
        {"{a=b", "Expected “;” at line 1, column 5."},
        {"{a=b c=d;}", "Expected “;” at line 1, column 6."},
        {"{\n\ta = b;\n\tc = (d) e = f;\n}", "Expected “;” at line 3, column 10."},
        {"{a=b)", "Expected “;” at line 1, column 5."},
        {"a=b}", "Expected “;” at line 1, column 4."},
        {"a=b\nc=d\n", "Expected “;” at line 2, column 1."},
        {"(", "Expected a value at line 1, column 2."},
        {"(,)", "Expected a value at line 1, column 2."},
        {"(a,,b)", "Expected a value at line 1, column 4."},
        {"(a,", "Expected a value at line 1, column 4."},
        {"(a;)", "Expected “,” or “)” at line 1, column 3."},
        {"(a b)", "Expected “,” or “)” at line 1, column 4."},
        {"(a", "Expected “,” or “)” at line 1, column 3."},
        {"(a}", "Expected “,” or “)” at line 1, column 3."},
        {"*", "Expected a value at line 1, column 1."},
        {"=a;", "Expected a value at line 1, column 1."},
        {"}", "Expected a value at line 1, column 1."},
        {"ä", "Expected a value at line 1, column 1."},
        {"\xEF\xBB\xBF\xEF\xBB\xBF{}", "Expected a value at line 1, column 4."},
        {"{};", "Unexpected content after the root value at line 1, column 3."},
        {"{} {}", "Unexpected content after the root value at line 1, column 4."},
        {"()\n)", "Unexpected content after the root value at line 2, column 1."},
        {"hello world, this is text",
         "Unexpected content after the root value at line 1, column 7."},
        {"text.latex<?xml version=\"1.0\"?>",
         "Unexpected content after the root value at line 1, column 11."},
        {"{a=\"b;}", "Unterminated string at line 1, column 4."},
        {"{a=b; /* c }", "Unterminated comment at line 1, column 7."},
        {"{a=<0>;}", "Expected a hexadecimal digit at line 1, column 6."},
        {"{a=<0", "Expected a hexadecimal digit or “>” at line 1, column 6."},
        {"{a=<[QQ==;}", "Expected “]>” at line 1, column 12."},
        {"{a=<[Q]>;}", "Invalid Base64 at line 1, column 4."},
        {"{a=<*I5;}", "Expected “>” at line 1, column 10."},
        {"{a=<*Ix>;}", "Invalid integer at line 1, column 4."},
        {"{a=<*Rx>;}", "Invalid real number at line 1, column 4."},
        {"{a=<*Bx>;}", "Invalid boolean at line 1, column 4."},
        {"{a=<*Dx>;}", "Invalid date at line 1, column 4."},
        {"{a=<*Z1>;}", "Unknown type at line 1, column 4."},
    };
    for (const Case& broken : cases) {
        EXPECT_EQ(failureOf(broken.text), broken.failure) << broken.text;
    }
}

TEST(OpenStepPlistParserTest, failuresAreMalformedWithoutALocation) {
    const std::optional<PlistError> error = errorOf("{a=b");
    ASSERT_TRUE(error);
    EXPECT_EQ(*error, PlistError(PlistError::Malformed{"Expected “;” at line 1, column 5."}));
}

TEST(OpenStepPlistParserTest, opens512Containers) {
    const auto depth = [](const std::string& text) {
        return depthOf(OpenStepPlistParser::parse(text));
    };
    EXPECT_EQ(depth(repeated(512, "(") + repeated(512, ")")), 512);
    EXPECT_EQ(depth(repeated(512, "{a=") + "b" + repeated(512, "}")), 512);
    EXPECT_EQ(depth("a=" + repeated(511, "(") + repeated(511, ")") + ";"), 512);
}

TEST(OpenStepPlistParserTest, refuses513Containers) {
    const PlistError expected(PlistError::NestingTooDeep{512});
    EXPECT_EQ(errorOf(repeated(513, "(") + repeated(513, ")")), expected);
    EXPECT_EQ(errorOf(repeated(513, "{a=")), expected);
    // The dictionary of a file without braces counts.
    EXPECT_EQ(errorOf("a=" + repeated(512, "(") + repeated(512, ")") + ";"), expected);
    EXPECT_EQ(errorOf(repeated(100000, "(")), expected);
}

/// Every shape at once.
constexpr std::string_view sample =
    "// !$*UTF8*$!\n"
    "{ a = b; 'c' = \"d\\n\\U00e4\\101\"; e = (f, 'g', ); /* h */\n"
    "  i = <00 ff>; j = <*I5>; k = <*R1.5>; l = <*BY>; n = <[QQ==]>;\n"
    "  m = <*D2001-01-01 00:00:00 +0000>; o; p = {} }";

TEST(OpenStepPlistParserTest, everyPrefixFailsCleanly) {
    EXPECT_EQ(read(sample),
              "{\"a\" = \"b\", \"c\" = \"d\näA\", \"e\" = (\"f\", \"g\"), \"i\" = <00ff>, "
              "\"j\" = 5, \"k\" = 1.5, \"l\" = true, \"m\" = 2001-01-01T00:00:00Z, "
              "\"n\" = <41>, \"o\" = \"o\", \"p\" = {}}");
    const std::size_t brace = sample.find('{');
    for (std::size_t length = brace + 1; length < sample.size(); ++length) {
        const std::optional<PlistError> error = errorOf(sample.substr(0, length));
        ASSERT_TRUE(error) << length;
        EXPECT_TRUE(std::holds_alternative<PlistError::Malformed>(error->reason())) << length;
    }
}

TEST(OpenStepPlistParserTest, readsManyEntriesAndItems) {
    std::string text = "{";
    for (int index = 99999; index >= 0; --index) {
        text += "key" + std::to_string(100000 + index) + " = (1, 2);";
    }
    const PlistValue value = OpenStepPlistParser::parse(text + "}");
    ASSERT_EQ(value.childCount(), 100000U);
    EXPECT_EQ(value.keys().front().view(), "key100000");
    EXPECT_EQ(value.keys().back().view(), "key199999");
    EXPECT_EQ(valueText(value.children().back()), "(\"1\", \"2\")");
}

}  // namespace

}  // namespace plist::detail
