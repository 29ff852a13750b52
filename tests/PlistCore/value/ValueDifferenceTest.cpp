#include <gtest/gtest.h>

#include "tests/PlistCore/support/ValueDifference.h"

namespace plist {

namespace {

PlistValue dictionaryOf(const char* key, const PlistValue& value) {
    return PlistValue::dictionary({PlistString(key)}, {value});
}

TEST(ValueDifferenceTest, namesTheFirstDifference) {
    const PlistValue five = PlistValue::integer(5);
    const PlistValue six = PlistValue::integer(6);
    EXPECT_EQ(firstDifference(five, five), "");
    EXPECT_EQ(firstDifference(five, six), "root: expected integer 5, found integer 6");
    EXPECT_EQ(firstDifference(five, PlistValue::real(5)),
              "root: expected integer 5, found real 5.0");
    EXPECT_EQ(firstDifference(dictionaryOf("a", PlistValue::array({five, five})),
                              dictionaryOf("a", PlistValue::array({five, six}))),
              "root/a/1: expected integer 5, found integer 6");
    EXPECT_EQ(firstDifference(PlistValue::array(), PlistValue::array({five})),
              "root: expected array of 0, found array of 1");
    EXPECT_EQ(firstDifference(dictionaryOf("a", five), dictionaryOf("b", five)),
              "root: key 0: expected \"a\", found \"b\"");
}

TEST(ValueDifferenceTest, isStricterThanEquality) {
    EXPECT_NE(firstDifference(PlistValue::string("\u00E9"), PlistValue::string("e\u0301")), "");
    EXPECT_NE(firstDifference(PlistValue::real(0.0), PlistValue::real(-0.0)), "");
    EXPECT_NE(firstDifference(PlistValue::date(1), PlistValue::date(1.0000001)), "");
    EXPECT_EQ(firstDifference(PlistValue::date(1), PlistValue::date(1.0000001), 1e-6), "");
}

}  // namespace

}  // namespace plist
