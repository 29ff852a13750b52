#include <gtest/gtest.h>

#include <string>

#include "PlistCore/PlistCheck.h"
#include "tests/PlistCore/support/ThrowingChecks.h"

namespace plist {

namespace {

void returnFromCheck(const char* /*message*/) {}

TEST(PlistCheckTest, letsWhatHoldsPass) {
    const ThrowingChecks checks;
    EXPECT_NO_THROW(plistCheck(true, "not shown"));
}

TEST(PlistCheckTest, tellsItsHandlerWhatIsBroken) {
    const ThrowingChecks checks;
    try {
        plistCheck(false, "the rule");
        FAIL() << "the check passed";
    } catch (const BrokenRule& error) {
        EXPECT_STREQ(error.what(), "the rule");
    }
}

TEST(PlistCheckTest, givesBackTheHandlerBefore) {
    const PlistCheckHandler first = setPlistCheckHandler(returnFromCheck);
    EXPECT_EQ(setPlistCheckHandler(first), &returnFromCheck);
}

TEST(PlistCheckDeathTest, endsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(plistCheck(false, "the rule"), "Broken rule: the rule");
    EXPECT_DEATH(
        {
            setPlistCheckHandler(returnFromCheck);
            plistCheck(false, "another rule");
        },
        "Broken rule: another rule");
}

}  // namespace

}  // namespace plist
