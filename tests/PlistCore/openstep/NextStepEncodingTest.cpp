#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "PlistCore/openstep/NextStepEncoding.h"

namespace plist::detail {

namespace {

TEST(NextStepEncodingTest, lowerHalfIsAscii) {
    for (int byte = 0; byte < 0x80; ++byte) {
        EXPECT_EQ(NextStepEncoding::character(static_cast<std::uint8_t>(byte)),
                  static_cast<char32_t>(byte));
    }
}

TEST(NextStepEncodingTest, upperHalfHasItsOwnOrder) {
    EXPECT_EQ(NextStepEncoding::character(0x80), U'\u00A0');
    EXPECT_EQ(NextStepEncoding::character(0x96), U'Ö');
    EXPECT_EQ(NextStepEncoding::character(0xA0), U'©');
    EXPECT_EQ(NextStepEncoding::character(0xA4), U'⁄');
    EXPECT_EQ(NextStepEncoding::character(0xAF), U'ﬂ');
    EXPECT_EQ(NextStepEncoding::character(0xBC), U'…');
    EXPECT_EQ(NextStepEncoding::character(0xD0), U'—');
    EXPECT_EQ(NextStepEncoding::character(0xE8), U'Ł');
    EXPECT_EQ(NextStepEncoding::character(0xFB), U'ß');
    EXPECT_EQ(NextStepEncoding::character(0xFD), U'ÿ');
}

TEST(NextStepEncodingTest, twoBytesHaveNoCharacter) {
    EXPECT_EQ(NextStepEncoding::character(0xFE), U'\uFFFD');
    EXPECT_EQ(NextStepEncoding::character(0xFF), U'\uFFFD');
}

TEST(NextStepEncodingTest, noCharacterStandsTwice) {
    const std::set<char16_t> characters(NextStepEncoding::upperHalf.begin(),
                                        NextStepEncoding::upperHalf.end());
    EXPECT_EQ(characters.size(), NextStepEncoding::upperHalf.size() - 1);
}

}  // namespace

}  // namespace plist::detail
