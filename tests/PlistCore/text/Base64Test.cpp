#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/Base64.h"

namespace plist {

namespace {

using std::string_view_literals::operator""sv;

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string encoded(std::string_view bytes) {
    return Base64::encoded(bytesOf(bytes));
}

/// Decodes into memory of just the promised size, so that the address sanitizer sees a byte more.
std::optional<std::string> decoded(std::string_view text) {
    std::vector<std::uint8_t> memory(Base64::decodedCapacity(text.size()));
    const std::optional<std::size_t> count = Base64::decode(text, memory.data());
    if (!count) {
        return std::nullopt;
    }
    return std::string(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(*count));
}

std::string randomBytes(std::size_t count, std::mt19937& random) {
    std::string bytes;
    for (std::size_t index = 0; index < count; ++index) {
        bytes += static_cast<char>(random());
    }
    return bytes;
}

TEST(Base64Test, encodes) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\0"sv, "AA=="},
        {"\0\0"sv, "AAA="},
        {"\0\0\0"sv, "AAAA"},
        {"\xFF\xFE", "//4="},
        {"\xFF\xFF\xFF", "////"},
        {"\xFB\xEF\xBE", "++++"},
        {"\x00\x10\x83\x10\x51\x87\x20\x92\x8B\x30\xD3\x8F\x41\x14\x93\x51\x55\x97\x61\x96\x9B\x71"
         "\xD7\x9F\x82\x18\xA3\x92\x59\xA7\xA2\x9A\xAB\xB2\xDB\xAF\xC3\x1C\xB3\xD3\x5D\xB7\xE3\x9E"
         "\xBB\xF3\xDF\xBF"sv,
         "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"},
    };
    for (const auto& [bytes, expected] : cases) {
        EXPECT_EQ(encoded(bytes), expected);
        EXPECT_EQ(Base64::encodedLength(bytes.size()), expected.size());
        EXPECT_EQ(decoded(expected), bytes);
    }
}

TEST(Base64Test, encodesPiecesOneAfterTheOther) {
    const std::vector<std::uint8_t> bytes = bytesOf("foobar");
    std::string text = "--------..";
    auto* const start = reinterpret_cast<std::uint8_t*>(text.data());
    std::uint8_t* place = Base64::encode(std::span(bytes).first(3), start);
    EXPECT_EQ(place, start + 4);
    place = Base64::encode(std::span(bytes).subspan(3), place);
    EXPECT_EQ(place, start + 8);
    EXPECT_EQ(text, "Zm9vYmFy..");
}

TEST(Base64Test, decodesWhatItEncodesAtEveryLength) {
    std::mt19937 random(1);
    for (std::size_t count = 0; count < 300; ++count) {
        const std::string bytes = randomBytes(count, random);
        const std::string text = encoded(bytes);
        EXPECT_EQ(text.size(), Base64::encodedLength(count));
        EXPECT_EQ(decoded(text), bytes);
    }
}

TEST(Base64Test, decodesWithBreaksEverywhere) {
    std::mt19937 random(2);
    for (std::size_t count = 1; count < 80; ++count) {
        const std::string bytes = randomBytes(count, random);
        const std::string text = encoded(bytes);
        for (std::size_t width = 1; width < 12; ++width) {
            std::string broken;
            for (std::size_t start = 0; start < text.size(); start += width) {
                broken += "\n\t\t" + text.substr(start, width);
            }
            EXPECT_EQ(decoded(broken + "\n\t"), bytes) << broken;
        }
    }
}

TEST(Base64Test, decodes) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"QUJD", "ABC"},
        {"QUI=", "AB"},
        {"QQ==", "A"},
        {" \t\r\n", ""},
        {"  QUJD\n", "ABC"},
        {"Q\nU\tJ D", "ABC"},
        {"QQ = = ", "A"},
        {"QQ==\n", "A"},
        // Missing padding.
        {"QUJ", "AB"},
        {"QQ", "A"},
        {"QQ=", "A"},
        {"Q Q\n", "A"},
        {"Q\xC2\xA0\xE3\x80\x80Q\xC2\x85\xE2\x80\xA8", "A"},
        {"QUJDQQ", "ABCA"},
        {"QUJDQUI", "ABCAB"},
        // Spare bits that are not zero.
        {"QR==", "A"},
        {"Qf==", "A"},
        {"QUL=", "AB"},
        {"QR", "A"},
        // What is outside the alphabet is ignored as long as the padding is whole.
        {"Q-U_J.D", "ABC"},
        {"(QQ==)", "A"},
        {"QQ=!=", "A"},
        {"\xC3\xA9QUJD\xF0\x9F\x98\x80", "ABC"},
        {"\0QUJD\0"sv, "ABC"},
        {"!!!", ""},
        {"-_", ""},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(decoded(text), expected) << text;
    }
}

TEST(Base64Test, rejects) {
    for (const std::string_view text : {
             "Q"sv,
             "QUJDR"sv,
             "Q="sv,
             "Q=="sv,
             "Q==="sv,
             "="sv,
             "=="sv,
             "==="sv,
             "===="sv,
             "QUJD="sv,
             "QUJD==="sv,
             "QUJD===="sv,
             "QUI=="sv,
             "QUI==="sv,
             "QQ==="sv,
             "QQ==QQ=="sv,
             "QQ==QUJD"sv,
             "QQ=Q"sv,
             "Q=Q="sv,
             "=QUJ"sv,
             "Q U J D R"sv,
             "Q!Q"sv,              // padding missing and something ignored
             "QUJ!"sv,             //
             "QQ=!"sv,             //
             "QU\xC3\xA9J"sv,      //
             "QU\xE2\x80\x8BJ"sv,  // U+200B is no whitespace
             "QUJ\0"sv,            //
             "QU-J"sv,             //
         }) {
        EXPECT_EQ(decoded(text), std::nullopt) << text;
    }
}

/// Each byte below 0x80 in the place of a digit: 64 of them are digits with their own value.
TEST(Base64Test, knowsItsAlphabet) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (char byte = 0; byte != '\x7F'; ++byte) {
        const std::string text = std::string("AAA") + byte;
        const std::size_t value = alphabet.find(byte);
        if (value != std::string_view::npos) {
            EXPECT_EQ(decoded(text), (std::string{'\0', '\0', static_cast<char>(value)})) << text;
        } else if (byte == '=' || byte == ' ' || (byte >= '\t' && byte <= '\r')) {
            EXPECT_EQ(decoded(text), std::string(2, '\0')) << text;
        } else {
            EXPECT_EQ(decoded(text), std::nullopt) << text;
        }
    }
}

}  // namespace

}  // namespace plist
