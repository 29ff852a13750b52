#include <gtest/gtest.h>
#include <utf8proc.h>

#include <array>
#include <set>
#include <vector>

#include "PlistCore/text/StableCharacters.h"

namespace plist::detail {

namespace {

constexpr char32_t endOfUnicode = 0x110000;

/// The full canonical decomposition.
std::vector<utf8proc_int32_t> decomposed(char32_t point) {
    std::array<utf8proc_int32_t, 8> parts = {};
    int boundary = 0;
    const utf8proc_ssize_t count = utf8proc_decompose_char(
        static_cast<utf8proc_int32_t>(point), parts.data(), parts.size(),
        static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_DECOMPOSE), &boundary);
    return {parts.begin(), parts.begin() + count};
}

bool isItsOwnComposition(char32_t point) {
    std::vector<utf8proc_int32_t> parts = decomposed(point);
    const utf8proc_ssize_t count = utf8proc_normalize_utf32(
        parts.data(), static_cast<utf8proc_ssize_t>(parts.size()),
        static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    return count == 1 && parts.front() == static_cast<utf8proc_int32_t>(point);
}

/// Every code point that stands behind another one in some decomposition.
std::set<utf8proc_int32_t> joiningCharacters() {
    std::set<utf8proc_int32_t> joining;
    for (char32_t point = 0; point < endOfUnicode; ++point) {
        const std::vector<utf8proc_int32_t> parts = decomposed(point);
        joining.insert(parts.begin() + 1, parts.end());
    }
    return joining;
}

}  // namespace

TEST(StableCharactersTest, areLeftAloneByComposition) {
    const std::set<utf8proc_int32_t> joining = joiningCharacters();
    ASSERT_TRUE(joining.contains(0x0301));
    for (char32_t point = 0; point < endOfUnicode; ++point) {
        if (StableCharacters::contains(point)) {
            const auto signedPoint = static_cast<utf8proc_int32_t>(point);
            ASSERT_EQ(utf8proc_get_property(signedPoint)->combining_class, 0) << signedPoint;
            ASSERT_TRUE(isItsOwnComposition(point)) << signedPoint;
            ASSERT_FALSE(joining.contains(signedPoint)) << signedPoint;
        }
    }
}

TEST(StableCharactersTest, areKnownInTheUsualScripts) {
    for (const char32_t point : {U'a', U'é', U'Ω', U'ж', U'ệ', U'か', U'ガ', U'文', U'한', U'…',
                                 U'“', U'א', U'ب', U'Ａ', U'😀'}) {
        EXPECT_TRUE(StableCharacters::contains(point)) << static_cast<unsigned>(point);
    }
}

TEST(StableCharactersTest, doNotHoldMarksAndWhatChanges) {
    for (const char32_t point :
         {U'\u0301', U'\u0374', U'\u037E', U'\u0387', U'\u093C', U'\u0958', U'\u1161', U'\u11A8',
          U'\u2000', U'\u2126', U'\u3099', U'\uF900', U'\U0001D15E', U'\U0010FFFF'}) {
        EXPECT_FALSE(StableCharacters::contains(point)) << static_cast<unsigned>(point);
    }
}

}  // namespace plist::detail
