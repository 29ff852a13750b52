#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistInteger.h"

namespace plist {

namespace {

TEST(PlistIntegerTest, hasDecimalText) {
    const std::vector<std::pair<PlistInteger, std::string_view>> cases = {
        {0, "0"},
        {1, "1"},
        {-1, "-1"},
        {1234567, "1234567"},
        {-1234567, "-1234567"},
        {std::numeric_limits<std::int64_t>::max(), "9223372036854775807"},
        {PlistInteger{std::numeric_limits<std::int64_t>::max()} + 1, "9223372036854775808"},
        {leastPlistInteger, "-9223372036854775808"},
        {leastPlistInteger + 1, "-9223372036854775807"},
        {greatestPlistInteger, "18446744073709551615"},
        {greatestPlistInteger - 5, "18446744073709551610"},
    };
    for (const auto& [number, expected] : cases) {
        EXPECT_EQ(decimalText(number), expected);
    }
}

TEST(PlistIntegerTest, knowsItsRange) {
    EXPECT_TRUE(isValidPlistInteger(0));
    EXPECT_TRUE(isValidPlistInteger(leastPlistInteger));
    EXPECT_TRUE(isValidPlistInteger(greatestPlistInteger));
    EXPECT_FALSE(isValidPlistInteger(leastPlistInteger - 1));
    EXPECT_FALSE(isValidPlistInteger(greatestPlistInteger + 1));
    EXPECT_FALSE(isValidPlistInteger(-greatestPlistInteger));
}

}  // namespace

}  // namespace plist
