#include <gtest/gtest.h>

#include <string>

#include "PlistCore/PlistCore.h"
#include "tests/PlistCore/support/ThrowingChecks.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

PlistValue entries() {
    return PlistValue::dictionary({{"a", 1}, {"b", 2}, {"a", 3}});
}

PlistValue items() {
    return PlistValue::array({1, 2, 3});
}

TEST(PlistChangedCopyTest, replacesAChild) {
    EXPECT_EQ(valueText(entries().with("a", "x")), R"({"a" = "x", "b" = 2, "a" = 3})");
    EXPECT_EQ(valueText(entries().with(2, true)), R"({"a" = 1, "b" = 2, "a" = true})");
    EXPECT_EQ(valueText(items().with(0, 9)), "(9, 2, 3)");
}

TEST(PlistChangedCopyTest, addsAChild) {
    EXPECT_EQ(valueText(entries().with("c", 4)), R"({"a" = 1, "b" = 2, "a" = 3, "c" = 4})");
    EXPECT_EQ(valueText(PlistValue().with("c", 4)), R"({"c" = 4})");
    EXPECT_EQ(valueText(items().withAppended("end")), R"((1, 2, 3, "end"))");
    EXPECT_EQ(valueText(PlistValue::array().withAppended(1)), "(1)");
}

TEST(PlistChangedCopyTest, leavesAChildOut) {
    EXPECT_EQ(valueText(entries().without("a")), R"({"b" = 2})") << "every entry with the key";
    EXPECT_EQ(valueText(entries().without(0)), R"({"b" = 2, "a" = 3})");
    EXPECT_EQ(valueText(items().without(1)), "(1, 3)");
    EXPECT_EQ(PlistValue::array({1}).without(0), PlistValue::array());
    EXPECT_EQ(PlistValue::dictionary({{"a", 1}}).without("a"), PlistValue());
}

TEST(PlistChangedCopyTest, isTheSameWhereNothingIsLeftOut) {
    const PlistValue value = entries();
    EXPECT_TRUE(value.without("c").isIdenticalTo(value));
    EXPECT_TRUE(value.without(3).isIdenticalTo(value));
    EXPECT_TRUE(PlistValue(5).without("c").isIdenticalTo(5));
}

TEST(PlistChangedCopyTest, leavesTheOriginalAlone) {
    const PlistValue value = entries();
    value.with("a", 9);
    value.without("a");
    EXPECT_EQ(value, entries());
}

TEST(PlistChangedCopyTest, stopsWhereNoChildCanBe) {
    const ThrowingChecks checks;
    EXPECT_THROW(items().with(3, 1), BrokenRule);
    EXPECT_THROW(items().with("a", 1), BrokenRule);
    EXPECT_THROW(entries().with(3, 1), BrokenRule);
    EXPECT_THROW(PlistValue(1).with("a", 1), BrokenRule);
    EXPECT_THROW(entries().withAppended(1), BrokenRule);
    EXPECT_THROW(entries().with("caf\xC3", 1), BrokenRule);
}

}  // namespace

}  // namespace plist
