#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "PlistCore/binary/Utf16BigEndian.h"

namespace plist::detail {

namespace {

std::string encoded(const std::string& utf8) {
    std::string units(2 * Utf16BigEndian::unitCount(utf8), '?');
    const char* const end = Utf16BigEndian::encode(utf8, units.data());
    EXPECT_EQ(end, units.data() + units.size());
    return units;
}

std::string decoded(const std::string& units) {
    std::string utf8(units.size() / 2 * Utf16BigEndian::mostBytesPerUnit, '?');
    const char* const end = Utf16BigEndian::decode(units, utf8.data());
    return utf8.substr(0, static_cast<std::size_t>(end - utf8.data()));
}

std::string literal(const char* bytes, std::size_t length) {
    return {bytes, length};
}

}  // namespace

TEST(Utf16BigEndianTest, everyLengthOfCodePoint) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a", literal("\0a", 2)},
        {literal("\0", 1), literal("\0\0", 2)},
        {"\x7F", literal("\0\x7F", 2)},
        {"\xC2\x80", literal("\0\x80", 2)},
        {"\xC3\xA9", literal("\0\xE9", 2)},
        {"\xDF\xBF", "\x07\xFF"},
        {"\xE0\xA0\x80", literal("\x08\0", 2)},
        {"\xED\x9F\xBF", "\xD7\xFF"},
        {"\xEE\x80\x80", literal("\xE0\0", 2)},
        {"\xEF\xBB\xBF", "\xFE\xFF"},
        {"\xEF\xBF\xBF", "\xFF\xFF"},
        {"\xF0\x90\x80\x80", literal("\xD8\0\xDC\0", 4)},
        {"\xF0\x9F\x98\x80", literal("\xD8\x3D\xDE\0", 4)},
        {"\xF4\x8F\xBF\xBF", "\xDB\xFF\xDF\xFF"},
    };
    for (const auto& [utf8, units] : cases) {
        EXPECT_EQ(encoded(utf8), units);
        EXPECT_EQ(decoded(units), utf8);
    }
}

TEST(Utf16BigEndianTest, unpairedSurrogatesAreMended) {
    const std::string mended = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {literal("\xD8\0", 2), mended},
        {literal("\xDC\0", 2), mended},
        {"\xDB\xFF", mended},
        {"\xDF\xFF", mended},
        {literal("\xD8\0\0a", 4), mended + "a"},
        {literal("\xDC\0\0a", 4), mended + "a"},
        {literal("\xDC\0\xD8\0", 4), mended + mended},
        {literal("\xD8\0\xD8\0\xDC\0", 6), mended + "\xF0\x90\x80\x80"},
        {literal("\xD8\0\xDC\0\xDC\0", 6), "\xF0\x90\x80\x80" + mended},
        {literal("\0a\xD8\x3D", 4), "a" + mended},
    };
    for (const auto& [units, utf8] : cases) {
        EXPECT_EQ(decoded(units), utf8);
    }
}

// ASCII goes through in blocks; what is not ASCII must be seen at every place of them.
TEST(Utf16BigEndianTest, accentsAtEveryPlaceOfTexts) {
    for (std::size_t length = 0; length < 50; ++length) {
        std::string plainUnits;
        for (std::size_t i = 0; i < length; ++i) {
            plainUnits += literal("\0x", 2);
        }
        for (std::size_t place = 0; place <= length; ++place) {
            for (const auto& [utf8, unit] : {std::pair<std::string, std::string>{"", ""},
                                             {"\xC2\x80", literal("\0\x80", 2)},
                                             {"\xC4\x80", literal("\x01\0", 2)},
                                             {"\xF0\x9F\x98\x80", literal("\xD8\x3D\xDE\0", 4)}}) {
                std::string text(length, 'x');
                text.insert(place, utf8);
                std::string units = plainUnits;
                units.insert(2 * place, unit);
                ASSERT_EQ(encoded(text), units);
                ASSERT_EQ(decoded(units), text);
            }
        }
    }
}

}  // namespace plist::detail
