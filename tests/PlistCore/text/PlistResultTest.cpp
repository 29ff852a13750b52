#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "PlistCore/PlistResult.h"
#include "tests/PlistCore/support/ThrowingChecks.h"

namespace plist {

namespace {

using Result = PlistResult<std::string>;

TEST(PlistResultTest, holdsAValueOrAnError) {
    const Result value(std::string("text"));
    EXPECT_TRUE(value);
    EXPECT_EQ(*value, "text");
    EXPECT_EQ(value->size(), 4U);

    const Result error(PlistError(PlistError::UnexpectedEnd{}));
    EXPECT_FALSE(error);
    EXPECT_EQ(error.error(), PlistError(PlistError::UnexpectedEnd{}));
}

TEST(PlistResultTest, givesItsValueAway) {
    Result value(std::string("text"));
    EXPECT_EQ(std::move(value).value(), "text");
}

TEST(PlistResultTest, stopsWhoAsksForTheOtherOne) {
    const ThrowingChecks checks;
    const Result value(std::string("text"));
    const Result error(PlistError(PlistError::UnexpectedEnd{}));
    EXPECT_THROW(value.error(), BrokenRule);
    EXPECT_THROW(error.value(), BrokenRule);
}

}  // namespace

}  // namespace plist
