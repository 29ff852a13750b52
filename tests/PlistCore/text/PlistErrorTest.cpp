#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistError.h"

namespace plist {

namespace {

using Line = PlistError::Line;
using Offset = PlistError::Offset;

TEST(PlistErrorTest, describesItself) {
    const std::vector<std::pair<PlistError, std::string_view>> cases = {
        {PlistError(PlistError::Malformed{"Unknown element <strnig>."}, Line{3, 17}),
         "Line 3, column 17: Unknown element <strnig>."},
        {PlistError(PlistError::UnexpectedEnd{}, Offset{42}),
         "Byte 42: The file ends unexpectedly."},
        {PlistError(PlistError::NotWritable{}), "This format can only be read."},
        {PlistError(PlistError::NotWritable{PlistFormat::xml}, Offset{1}),
         "Byte 1: This format can only be read."},
        {PlistError(PlistError::NestingTooDeep{512}), "The file nests more than 512 levels deep."},
        {PlistError(PlistError::NestingTooDeep{1234567}, Line{1, 2}),
         "Line 1, column 2: The file nests more than 1234567 levels deep."},
        {PlistError(PlistError::UnexpectedEnd{}, Offset{0}), "Byte 0: The file ends unexpectedly."},
        {PlistError(PlistError::UnexpectedEnd{}), "The file ends unexpectedly."},
        {PlistError(PlistError::Malformed{""}, Line{1, 1}), "Line 1, column 1: "},
        {PlistError(PlistError::Malformed{""}), ""},
        {PlistError(PlistError::InvalidValue{"“x” is not a valid date."}, Line{1234, 5678901}),
         "Line 1234, column 5678901: “x” is not a valid date."},
        {PlistError(PlistError::UnrecognizedFormat{}), "The file is not a property list."},
        {PlistError(PlistError::UnexpectedEnd{}, Offset{std::numeric_limits<std::uint64_t>::max()}),
         "Byte 18446744073709551615: The file ends unexpectedly."},
    };
    for (const auto& [error, expected] : cases) {
        EXPECT_EQ(error.errorDescription(), expected);
        EXPECT_STREQ(error.what(), std::string(expected).c_str());
    }
}

TEST(PlistErrorTest, keepsReasonAndLocation) {
    const PlistError error(PlistError::NestingTooDeep{7}, Line{2, 3});
    EXPECT_EQ(error.reason(), PlistError::Reason(PlistError::NestingTooDeep{7}));
    EXPECT_EQ(error.location(), PlistError::Location(Line{2, 3}));
    EXPECT_EQ(PlistError(PlistError::UnexpectedEnd{}).location(), std::nullopt);
}

TEST(PlistErrorTest, isUnequalToEveryOtherError) {
    const std::vector<PlistError> different = {
        PlistError(PlistError::Malformed{"x"}),
        PlistError(PlistError::Malformed{"y"}),
        PlistError(PlistError::InvalidValue{"x"}),
        PlistError(PlistError::InvalidValue{"y"}),
        PlistError(PlistError::NestingTooDeep{5}),
        PlistError(PlistError::NestingTooDeep{6}),
        PlistError(PlistError::NotWritable{PlistFormat::openStep}),
        PlistError(PlistError::NotWritable{PlistFormat::xml}),
        PlistError(PlistError::UnrecognizedFormat{}),
        PlistError(PlistError::UnexpectedEnd{}),
        PlistError(PlistError::UnexpectedEnd{}, Offset{5}),
        PlistError(PlistError::UnexpectedEnd{}, Offset{6}),
        PlistError(PlistError::UnexpectedEnd{}, Line{1, 5}),
        PlistError(PlistError::UnexpectedEnd{}, Line{1, 6}),
        PlistError(PlistError::UnexpectedEnd{}, Line{2, 5}),
    };
    for (std::size_t left = 0; left < different.size(); ++left) {
        for (std::size_t right = 0; right < different.size(); ++right) {
            EXPECT_EQ(different[left] == different[right], left == right) << left << " " << right;
        }
    }
}

TEST(PlistErrorTest, comparesTextsAsUnicodeText) {
    EXPECT_EQ(PlistError(PlistError::Malformed{"caf\xC3\xA9"}),
              PlistError(PlistError::Malformed{"cafe\xCC\x81"}));
    EXPECT_EQ(PlistError(PlistError::InvalidValue{"caf\xC3\xA9"}),
              PlistError(PlistError::InvalidValue{"cafe\xCC\x81"}));
}

TEST(PlistErrorTest, isCaughtAsStandardException) {
    try {
        throw PlistError(PlistError::UnexpectedEnd{}, Offset{9});
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "Byte 9: The file ends unexpectedly.");
    }
}

TEST(PlistErrorTest, namesItsKind) {
    using Kind = PlistError::Kind;
    EXPECT_EQ(PlistError(PlistError::Malformed{"x"}).kind(), Kind::malformed);
    EXPECT_EQ(PlistError(PlistError::InvalidValue{"x"}).kind(), Kind::invalidValue);
    EXPECT_EQ(PlistError(PlistError::NestingTooDeep{512}).kind(), Kind::nestingTooDeep);
    EXPECT_EQ(PlistError(PlistError::NotWritable{}).kind(), Kind::notWritable);
    EXPECT_EQ(PlistError(PlistError::UnrecognizedFormat{}).kind(), Kind::unrecognizedFormat);
    EXPECT_EQ(PlistError(PlistError::UnexpectedEnd{}).kind(), Kind::unexpectedEnd);
}

}  // namespace

}  // namespace plist
