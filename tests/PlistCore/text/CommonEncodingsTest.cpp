#include <gtest/gtest.h>
#include <iconv.h>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "PlistCore/text/CommonEncodings.h"

namespace plist::detail {

namespace {

using std::string_view_literals::operator""sv;

std::optional<std::string> decoded(std::string_view bytes, std::string_view encoding) {
    const CommonEncodings::Decoder decoder = CommonEncodings::decoderOf(encoding);
    EXPECT_NE(decoder, nullptr) << encoding;
    return decoder == nullptr ? std::nullopt : decoder(bytes);
}

TEST(CommonEncodingsTest, knowsNamesInUpperAndLowerCase) {
    for (const std::string_view name :
         {"UTF-16LE", "utf-16be", "Utf-16", "UTF32", "utf-32le", "UTF-32BE", "ISO-8859-1",
          "iso-8859-1", "Latin1", "ISO_8859-1"}) {
        EXPECT_NE(CommonEncodings::decoderOf(name), nullptr) << name;
    }
    for (const std::string_view name :
         {"", "UTF-8", "UTF-1", "UTF-16LE ", "UTF-166", "ISO-8859-15", "windows-1252"}) {
        EXPECT_EQ(CommonEncodings::decoderOf(name), nullptr) << name;
    }
}

TEST(CommonEncodingsTest, readsUtf16) {
    EXPECT_EQ(decoded("a\0\xE4\0\xAC\x20\x3D\xD8\0\xDE"sv, "UTF-16LE"), "aä€😀");
    EXPECT_EQ(decoded("\0a\0\xE4\x20\xAC\xD8\x3D\xDE\0"sv, "UTF-16BE"), "aä€😀");
    EXPECT_EQ(decoded("", "UTF-16LE"), "");
    EXPECT_EQ(decoded("\0\0"sv, "UTF-16LE"), "\0"sv);
    EXPECT_EQ(decoded("\xFF\xFE"sv, "UTF-16LE"), "\uFEFF");
}

TEST(CommonEncodingsTest, readsUtf32) {
    EXPECT_EQ(decoded("a\0\0\0\xAC\x20\0\0\0\xF6\1\0\xFF\xFF\x10\0"sv, "UTF-32LE"),
              "a€😀\U0010FFFF");
    EXPECT_EQ(decoded("\0\0\0a\0\0\x20\xAC\0\1\xF6\0\0\x10\xFF\xFF"sv, "UTF-32BE"),
              "a€😀\U0010FFFF");
}

TEST(CommonEncodingsTest, readsLatin1) {
    EXPECT_EQ(decoded("a\0\x7F\x80\xE4\xFF"sv, "ISO-8859-1"), "a\0\x7F\u0080äÿ"sv);
}

TEST(CommonEncodingsTest, followsTheMarkAndDropsIt) {
    EXPECT_EQ(decoded("\xFF\xFE\xE4\0"sv, "UTF-16"), "ä");
    EXPECT_EQ(decoded("\xFE\xFF\0\xE4"sv, "UTF-16"), "ä");
    EXPECT_EQ(decoded("\xFF\xFE\0\0\xE4\0\0\0"sv, "UTF-32"), "ä");
    EXPECT_EQ(decoded("\0\0\xFE\xFF\0\0\0\xE4"sv, "UTF-32"), "ä");
    EXPECT_EQ(decoded("", "UTF-16"), "");
}

TEST(CommonEncodingsTest, refusesWhatIsNoText) {
    // Half a unit.
    EXPECT_EQ(decoded("a"sv, "UTF-16LE"), std::nullopt);
    EXPECT_EQ(decoded("a\0\0"sv, "UTF-16BE"), std::nullopt);
    EXPECT_EQ(decoded("a\0\0"sv, "UTF-32LE"), std::nullopt);
    // A surrogate without its partner.
    EXPECT_EQ(decoded("\xD8\0"sv, "UTF-16BE"), std::nullopt);
    EXPECT_EQ(decoded("\xD8\0\0a"sv, "UTF-16BE"), std::nullopt);
    EXPECT_EQ(decoded("\xD8\0\xD8\0"sv, "UTF-16BE"), std::nullopt);
    EXPECT_EQ(decoded("\xDC\0\xDC\0"sv, "UTF-16BE"), std::nullopt);
    // Numbers that are no characters.
    EXPECT_EQ(decoded("\0\0\xD8\0"sv, "UTF-32BE"), std::nullopt);
    EXPECT_EQ(decoded("\0\0\xDF\xFF"sv, "UTF-32BE"), std::nullopt);
    EXPECT_EQ(decoded("\0\x11\0\0"sv, "UTF-32BE"), std::nullopt);
    EXPECT_EQ(decoded("\xFF\xFF\xFF\xFF"sv, "UTF-32BE"), std::nullopt);
}

/// What the C library makes of the text, which is short; `descriptor` converts to UTF-8.
std::optional<std::string> decodedByTheCLibrary(std::string bytes, iconv_t descriptor) {
    std::string text(100, '\0');
    char* input = bytes.data();
    char* output = text.data();
    std::size_t inputLeft = bytes.size();
    std::size_t outputLeft = text.size();
    iconv(descriptor, nullptr, nullptr, nullptr, nullptr);
    const std::size_t result = iconv(descriptor, &input, &inputLeft, &output, &outputLeft);
    if (result == static_cast<std::size_t>(-1) || inputLeft != 0) {
        return std::nullopt;
    }
    text.resize(text.size() - outputLeft);
    return text;
}

TEST(CommonEncodingsTest, agreesWithTheCLibrary) {
    std::mt19937 random(8859);
    for (const char* name : {"UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE", "ISO-8859-1"}) {
        iconv_t descriptor = iconv_open("UTF-8", name);
        if (descriptor == reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1))) {
            GTEST_SKIP() << "The C library has no module for " << name << ".";
        }
        for (int turn = 0; turn < 20'000; ++turn) {
            // Many bytes around those of surrogates and small numbers.
            constexpr std::string_view usual = "\0\0\0\1\x10\x11\xD7\xD8\xDB\xDC\xDF\xE0\xFE\xFF"sv;
            std::string bytes;
            for (auto count = random() % 13; count > 0; --count) {
                const auto chosen = random();
                bytes += chosen % 4 == 0 ? static_cast<char>(chosen >> 8)
                                         : usual[(chosen >> 8) % usual.size()];
            }
            ASSERT_EQ(decoded(bytes, name), decodedByTheCLibrary(bytes, descriptor))
                << name << ", turn " << turn;
        }
        iconv_close(descriptor);
    }
}

}  // namespace

}  // namespace plist::detail
