#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "PlistCore/text/Ascii.h"

namespace Ascii = plist::detail::Ascii;

namespace {

/// The bytes for which `holds`, in order.
std::string bytesWith(bool (*holds)(char) noexcept) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        if (holds(static_cast<char>(byte))) {
            bytes += static_cast<char>(byte);
        }
    }
    return bytes;
}

TEST(AsciiTest, DigitsAndLettersAreThoseOfAsciiAlone) {
    EXPECT_EQ(bytesWith(Ascii::isDigit), "0123456789");
    EXPECT_EQ(bytesWith(Ascii::isLetter), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
}

TEST(AsciiTest, CapitalLettersAloneAreLowerCased) {
    std::string lowered;
    for (const char byte : std::string_view("@AMZ[`amz{09\xC3\x84")) {
        lowered += Ascii::lowerCased(byte);
    }
    EXPECT_EQ(lowered, "@amz[`amz{09\xC3\x84");
}

TEST(AsciiTest, AWordIsFoundInAnyCase) {
    EXPECT_TRUE(Ascii::isInAnyCase("utf-8", "utf-8"));
    EXPECT_TRUE(Ascii::isInAnyCase("UtF-8", "utf-8"));
    EXPECT_FALSE(Ascii::isInAnyCase("UTF-", "utf-8"));
    EXPECT_FALSE(Ascii::isInAnyCase("UTF-88", "utf-8"));
    EXPECT_FALSE(Ascii::isInAnyCase("UTF\r8", "utf-8"));
    EXPECT_TRUE(Ascii::isInAnyCase("", ""));
}

}  // namespace
