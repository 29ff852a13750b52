#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistError.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

using std::string_literals::operator""s;
using std::string_view_literals::operator""sv;

struct Reading {
    std::string value;
    PlistFormat format = PlistFormat::xml;

    friend bool operator==(const Reading&, const Reading&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Reading& reading) {
    return stream << reading.value << " in format " << static_cast<int>(reading.format);
}

Reading read(std::string_view bytes) {
    const PlistFile file = PlistCodec::read(bytes);
    return {valueText(file.root), file.format};
}

std::optional<PlistError> errorOf(std::string_view bytes) {
    try {
        PlistCodec::read(bytes);
    } catch (const PlistError& error) {
        return error;
    }
    return std::nullopt;
}

std::string failureOf(std::string_view bytes) {
    const std::optional<PlistError> error = errorOf(bytes);
    return error ? error->errorDescription() : "";
}

std::optional<PlistError> writeErrorOf(const PlistValue& value, PlistFormat format) {
    try {
        PlistCodec::write(value, format);
    } catch (const PlistError& error) {
        return error;
    }
    return std::nullopt;
}

Reading xml(std::string value) {
    return {std::move(value), PlistFormat::xml};
}

Reading openStep(std::string value) {
    return {std::move(value), PlistFormat::openStep};
}

/// ASCII text as UTF-16 or UTF-32, the high or the low byte of each unit first.
std::string widened(std::string_view ascii, std::size_t unitSize, bool highFirst) {
    std::string text;
    for (const char byte : ascii) {
        std::string unit(unitSize, '\0');
        unit[highFirst ? unitSize - 1 : 0] = byte;
        text += unit;
    }
    return text;
}

constexpr std::string_view array = "<plist><array><string>a</string></array></plist>";

/// An array that holds itself twice on each of `levels` levels: tiny in memory, 2^levels items
/// when written out.
PlistValue doubled(int levels) {
    PlistValue value = PlistValue::array();
    for (int level = 0; level < levels; ++level) {
        value = PlistValue::array({value, value});
    }
    return value;
}

TEST(PlistCodecTest, readsEachForm) {
    const PlistBytes binary = PlistCodec::write(PlistValue::boolean(true), PlistFormat::binary);
    EXPECT_EQ(read(binary.view()), (Reading{"true", PlistFormat::binary}));
    EXPECT_EQ(read(array), xml("(\"a\")"));
    EXPECT_EQ(read("{b = (1); a = <00>;}"), openStep("{\"a\" = <00>, \"b\" = (\"1\")}"));
    EXPECT_EQ(read("\"b\" = \"c\";"), openStep("{\"b\" = \"c\"}"));
    EXPECT_EQ(read("/* none */"), openStep("{}"));
    EXPECT_EQ(read("hello"), openStep("\"hello\""));
}

TEST(PlistCodecTest, readsSpansToo) {
    const std::string text(array);
    const PlistFile file = PlistCodec::read(
        std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    EXPECT_EQ(valueText(file.root), "(\"a\")");
}

TEST(PlistCodecTest, nothingButWhitespaceIsNoPropertyList) {
    const PlistError expected(PlistError::UnrecognizedFormat{});
    for (const std::string_view text :
         {""sv, " \t\r\n"sv, "\xEF\xBB\xBF"sv, "\xBB"sv, "\xBF \xEF\n\xBB\xEF"sv, "\xFF\xFE"sv,
          "\xFE\xFF\0 "sv, "\0\0\xFE\xFF"sv, "\xFF\xFE\0\0\n\0\0\0"sv}) {
        EXPECT_EQ(errorOf(text), expected);
    }
}

// A broken binary file is never tried as text.
TEST(PlistCodecTest, eightBytesDecideForBinary) {
    EXPECT_EQ(errorOf("bplist00"), PlistError(PlistError::UnexpectedEnd{}));
    EXPECT_EQ(failureOf("bplist00 = \"a text that is longer than a trailer\";"),
              "The binary property list trailer is invalid.");
    // What is no binary file is text.
    EXPECT_EQ(read("bplist01"), openStep("\"bplist01\""));
    EXPECT_EQ(read(" bplist00"), openStep("\"bplist00\""));
}

TEST(PlistCodecTest, skipsSixBytesInAnyOrderToFindXml) {
    EXPECT_EQ(read("\xEF\xBB\xBF" + std::string(array)), xml("(\"a\")"));
    EXPECT_EQ(read(" \r\n\t" + std::string(array)), xml("(\"a\")"));
    // XML it is; but then the whole file goes to the XML reader, which knows no such whitespace.
    EXPECT_EQ(failureOf("\xBB<true/>"), "Line 1, column 1: Expected a value.");
    EXPECT_EQ(failureOf(" \xEF\n<true/>"), "Line 1, column 2: Expected a value.");
    EXPECT_EQ(failureOf("\xEF\xBB\xBF\xEF\xBB\xBF<true/>"), "Line 1, column 4: Expected a value.");
}

TEST(PlistCodecTest, whatBeginsWithALessThanSignIsXml) {
    EXPECT_EQ(failureOf("<00ff>"), "Line 1, column 1: Unknown element <00ff>.");
    EXPECT_EQ(failureOf("<?xml"), "Line 1, column 6: The file ends unexpectedly.");
    EXPECT_EQ(failureOf("<*I5>"), "Line 1, column 1: Unknown element <>.");
}

TEST(PlistCodecTest, readsXmlInDeclaredEncodings) {
    EXPECT_EQ(read("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><string>\xE4</string>"),
              xml("\"ä\""));
    EXPECT_EQ(read("<?xml encoding='windows-1252'?><string>\x80</string>"), xml("\"€\""));
    EXPECT_EQ(read("<?xml encoding=\"Shift_JIS\"?><string>\x93\xFA\x96\x7B</string>"),
              xml("\"日本\""));
    EXPECT_EQ(read("<?xml encoding=\"us-ascii\"?><string>a</string>"), xml("\"a\""));
}

TEST(PlistCodecTest, refusesDeclaredEncodings) {
    EXPECT_EQ(failureOf("<?xml encoding=\"x-martian\"?><true/>"),
              "The text encoding “x-martian” is not supported.");
    EXPECT_EQ(failureOf("<?xml encoding=\"\"?><true/>"), "The text encoding “” is not supported.");
    EXPECT_EQ(failureOf("<?xml encoding=\"us-ascii\"?><string>\xE4</string>"),
              "The text is not valid us-ascii.");
    EXPECT_EQ(failureOf("<?xml encoding=\"Shift_JIS\"?><string>\x93</string>"),
              "The text is not valid Shift_JIS.");
}

// A declaration in plain ASCII cannot be in UTF-16.
TEST(PlistCodecTest, readsAsciiDeclarationOfUtf16AsUtf8) {
    for (const std::string encoding : {"UTF-16", "utf-16", "UTF-16LE", "UTF-16BE", "UTF-32"}) {
        EXPECT_EQ(read("<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><string>ä</string>"),
                  xml("\"ä\""));
    }
    EXPECT_EQ(failureOf("<?xml encoding=\"UTF-16\"?><string>\xE4</string>"),
              "Line 1, column 34: The text is not valid UTF-8.");
}

TEST(PlistCodecTest, byteOrderMarkBeatsTheDeclaration) {
    EXPECT_EQ(read("\xEF\xBB\xBF<?xml encoding=\"ISO-8859-1\"?><string>ä</string>"), xml("\"ä\""));
    EXPECT_EQ(read("\xEF\xBB\xBF<?xml encoding=\"UTF-16\"?><string>ä</string>"), xml("\"ä\""));
    for (const std::string encoding : {"UTF-8", "ISO-8859-1", "UTF-16", "x-martian"}) {
        const std::string text = "<?xml encoding=\"" + encoding + "\"?><string>a</string>";
        EXPECT_EQ(read("\xFF\xFE" + widened(text, 2, false)), xml("\"a\"")) << encoding;
        EXPECT_EQ(read("\xFE\xFF" + widened(text, 2, true)), xml("\"a\"")) << encoding;
    }
}

TEST(PlistCodecTest, readsWideTextOfAnyForm) {
    for (const std::string_view text : {array,
                                        "<?xml version=\"1.0\"?>"
                                        "<array><string>a</string></array>"sv}) {
        EXPECT_EQ(read("\xFF\xFE" + widened(text, 2, false)), xml("(\"a\")"));
        EXPECT_EQ(read("\xFE\xFF" + widened(text, 2, true)), xml("(\"a\")"));
        EXPECT_EQ(read("\xFF\xFE\0\0"s + widened(text, 4, false)), xml("(\"a\")"));
        EXPECT_EQ(read("\0\0\xFE\xFF"s + widened(text, 4, true)), xml("(\"a\")"));
    }
    for (const std::string_view text : {"{a=b;}"sv, R"( "a" = b;)"sv, "/* c */ a = 'b'"sv}) {
        EXPECT_EQ(read("\xFF\xFE" + widened(text, 2, false)), openStep("{\"a\" = \"b\"}"));
        EXPECT_EQ(read("\xFE\xFF" + widened(text, 2, true)), openStep("{\"a\" = \"b\"}"));
        EXPECT_EQ(read("\xFF\xFE\0\0"s + widened(text, 4, false)), openStep("{\"a\" = \"b\"}"));
        EXPECT_EQ(read("\0\0\xFE\xFF"s + widened(text, 4, true)), openStep("{\"a\" = \"b\"}"));
    }
}

TEST(PlistCodecTest, readsWideXmlWithoutAMark) {
    const std::string text = R"(<?xml version="1.0" encoding="UTF-16"?><string>a</string>)";
    EXPECT_EQ(read(widened(text, 2, false)), xml("\"a\""));
    EXPECT_EQ(read(widened(text, 2, true)), xml("\"a\""));
}

TEST(PlistCodecTest, refusesBrokenWideText) {
    EXPECT_EQ(failureOf("\xFF\xFE{\0}"sv), "The text is not valid UTF-16.");
    EXPECT_EQ(failureOf("\xFE\xFF\xD8\0\0}"sv), "The text is not valid UTF-16.");
    EXPECT_EQ(failureOf("\0\0\xFE\xFF\0\0"sv), "The text is not valid UTF-32.");
    EXPECT_EQ(failureOf("\xFF\xFE" + widened("{a=b", 2, false)),
              "Expected “;” at line 1, column 8.");
    EXPECT_EQ(failureOf("\xFF\xFE" + widened("<a/>", 2, false)),
              "Line 1, column 4: Unknown element <a>.");
}

// Only the first U+FEFF is a byte-order mark; where text stands it is text.
TEST(PlistCodecTest, stripsOneByteOrderMark) {
    EXPECT_EQ(read("\xEF\xBB\xBF{a=b;}"), openStep("{\"a\" = \"b\"}"));
    EXPECT_EQ(read("\xEF\xBB\xBF\"\xEF\xBB\xBF\""), openStep("\"\uFEFF\""));
    EXPECT_EQ(failureOf("\xEF\xBB\xBF\xEF\xBB\xBF{a=b;}"), "Expected a value at line 1, column 4.");
    EXPECT_EQ(failureOf("\xFF\xFE\xFF\xFE{\0}\0"sv), "Expected a value at line 1, column 4.");
}

TEST(PlistCodecTest, refusesOtherBytes) {
    EXPECT_EQ(failureOf("\"Rose\" = \"Ros\xE9\";"), "The text is not valid UTF-8.");
    EXPECT_EQ(failureOf("\x89PNG\r\n\x1A\n"), "The text is not valid UTF-8.");
    EXPECT_EQ(failureOf("\xBB{}"), "The text is not valid UTF-8.");
    EXPECT_EQ(failureOf("hello world, this is text"),
              "Unexpected content after the root value at line 1, column 7.");
    EXPECT_EQ(failureOf("{\"a\": 1}"), "Expected “=” at line 1, column 5.");
    EXPECT_EQ(failureOf("\0"sv), "Expected a value at line 1, column 1.");
}

TEST(PlistCodecTest, writesTwoForms) {
    const PlistValue value = PlistValue::array({PlistValue::string("a")});
    EXPECT_EQ(PlistCodec::write(value, PlistFormat::binary).view().substr(0, 8), "bplist00");
    EXPECT_EQ(PlistCodec::write(value, PlistFormat::xml).view(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
              "<plist version=\"1.0\">\n<array>\n\t<string>a</string>\n</array>\n</plist>\n");
}

TEST(PlistCodecTest, openStepCanOnlyBeRead) {
    EXPECT_EQ(writeErrorOf(PlistValue(), PlistFormat::openStep),
              PlistError(PlistError::NotWritable{PlistFormat::openStep}));
    EXPECT_EQ(writeErrorOf(doubled(60), PlistFormat::openStep),
              PlistError(PlistError::NotWritable{PlistFormat::openStep}));
}

TEST(PlistCodecTest, keepsSpellingsWhereAsked) {
    const PlistValue value =
        PlistValue::array({PlistValue::string("\xC3\xA9"), PlistValue::string("e\xCC\x81")});
    const auto secondText = [&value](const PlistCodec::WriteOptions& options) {
        const PlistBytes bytes = PlistCodec::write(value, PlistFormat::binary, options);
        const PlistFile file = PlistCodec::read(bytes.span());
        return std::string(file.root[1].text());
    };
    EXPECT_EQ(secondText({}), "\xC3\xA9");
    EXPECT_EQ(secondText({.keepsSpellings = true}), "e\xCC\x81");
}

TEST(PlistCodecTest, refusesToWriteWithoutMeasure) {
    const PlistError expected(PlistError::InvalidValue{
        "The document describes more than 268435456 values when written out."});
    for (const PlistFormat format : {PlistFormat::xml, PlistFormat::binary}) {
        EXPECT_EQ(writeErrorOf(doubled(28), format), expected);
        EXPECT_EQ(writeErrorOf(doubled(100), format), expected);
        EXPECT_EQ(writeErrorOf(doubled(10), format), std::nullopt);
    }
}

TEST(PlistCodecTest, writesNoMoreValuesThanAskedFor) {
    const PlistValue value = PlistValue::array({1, 2, 3});
    for (const PlistFormat format : {PlistFormat::xml, PlistFormat::binary}) {
        EXPECT_TRUE(PlistCodec::tryWrite(value, format, {.maximumValues = 4}).hasValue());
        const auto refused = PlistCodec::tryWrite(value, format, {.maximumValues = 3});
        ASSERT_FALSE(refused.hasValue());
        EXPECT_EQ(refused.error(),
                  PlistError(PlistError::InvalidValue{
                      "The document describes more than 3 values when written out."}));
    }
}

TEST(PlistCodecTest, writesNoMoreBytesThanAskedFor) {
    const PlistValue little = PlistValue::array({"some text", 2, 0.5});
    const PlistValue much = PlistValue::array(std::vector<PlistValue>(
        1000, PlistValue::dictionary({{"key", std::string(5000, '<')}, {"n", 1}})));
    for (const PlistFormat format : {PlistFormat::xml, PlistFormat::binary}) {
        for (const PlistValue& value : {little, much}) {
            const PlistBytes whole = PlistCodec::write(value, format);
            const PlistCodec::WriteOptions enough{.maximumBytes = whole.size()};
            const auto exact = PlistCodec::tryWrite(value, format, enough);
            ASSERT_TRUE(exact.hasValue());
            EXPECT_EQ(exact->view(), whole.view());
            for (const std::size_t limit : {whole.size() - 1, whole.size() / 2, std::size_t{0}}) {
                const auto refused = PlistCodec::tryWrite(value, format, {.maximumBytes = limit});
                ASSERT_FALSE(refused.hasValue()) << limit;
                EXPECT_EQ(refused.error().errorDescription(), "The document takes more than " +
                                                                  std::to_string(limit) +
                                                                  " bytes when written out.");
            }
        }
    }
}

TEST(PlistCodecTest, triesWithoutThrowing) {
    const auto file = PlistCodec::tryRead("{ a = 1; }");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->format, PlistFormat::openStep);
    EXPECT_EQ((*file).root["a"], PlistValue("1"));
    EXPECT_EQ(PlistCodec::tryRead("{ a = 1; }").value().root.childCount(), 1U);

    const auto refused = PlistCodec::tryRead(" ");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind(), PlistError::Kind::unrecognizedFormat);
    const auto notWritten = PlistCodec::tryWrite(PlistValue(), PlistFormat::openStep);
    ASSERT_FALSE(notWritten);
    EXPECT_EQ(notWritten.error().kind(), PlistError::Kind::notWritable);
}

TEST(PlistCodecTest, writesWhatAnEditPutsTogetherFromPartsOfAFile) {
    const PlistValue record =
        PlistValue::array({PlistValue::integer(1), PlistValue::boolean(true)});
    const PlistValue written = PlistValue::array(std::vector<PlistValue>(20'000, record));
    const PlistBytes bytes = PlistCodec::write(written, PlistFormat::xml);
    const PlistValue read = PlistCodec::read(bytes.span()).root;
    std::vector<PlistValue> items(read.children().begin(), read.children().end());
    items.front() = PlistValue::integer(5);
    EXPECT_EQ(writeErrorOf(PlistValue::array(std::move(items)), PlistFormat::xml), std::nullopt);
}

#if defined(__SANITIZE_ADDRESS__)

TEST(PlistCodecDeathTest, reportsViewsThatOutliveTheirDocument) {
    PlistValue root =
        PlistCodec::read("<plist><string>longer than fits in place</string></plist>").root;
    const std::string_view text = root.text();
    root = PlistValue();
    EXPECT_DEATH(static_cast<void>(std::string(text)), "use-after-poison");
}

#endif

}  // namespace

}  // namespace plist
