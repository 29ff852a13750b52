#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/value/PlistEquality.h"
#include "tests/PlistCore/support/DeepValues.h"
#include "tests/PlistCore/support/SmallStack.h"
#include "tests/PlistCore/support/XmlReading.h"

namespace plist::detail {

namespace {

using Bytes = std::vector<std::uint8_t>;

const double notANumber = std::nan("");

/// Both ways round, so that no side is special.
bool areEqual(const PlistValue& left, const PlistValue& right) {
    const bool isEqual = PlistEquality::equal(left, right);
    EXPECT_EQ(PlistEquality::equal(right, left), isEqual);
    EXPECT_EQ(left == right, isEqual);
    return isEqual;
}

TEST(PlistEqualityTest, tellsAlternativesApart) {
    std::vector<PlistValue> values;
    for (const PlistType type : allPlistTypes) {
        values.push_back(PlistValue::defaultValue(type));
    }
    for (std::size_t left = 0; left < values.size(); ++left) {
        for (std::size_t right = 0; right < values.size(); ++right) {
            EXPECT_EQ(areEqual(values[left], values[right]), left == right);
        }
    }
    EXPECT_FALSE(areEqual(PlistValue::integer(1), PlistValue::real(1)));
    EXPECT_FALSE(areEqual(PlistValue::integer(1), PlistValue::uid(1)));
    EXPECT_FALSE(areEqual(PlistValue::integer(1), PlistValue::boolean(true)));
    EXPECT_FALSE(areEqual(PlistValue::real(1), PlistValue::date(1)));
    EXPECT_FALSE(areEqual(PlistValue::string("a"), PlistValue::data(Bytes{'a'})));
}

TEST(PlistEqualityTest, comparesDictionariesInOrder) {
    const PlistEntry a = {"a", PlistValue::integer(1)};
    const PlistEntry b = {"b", PlistValue::integer(2)};
    EXPECT_TRUE(areEqual(PlistValue::dictionary({a, b}), PlistValue::dictionary({a, b})));
    EXPECT_FALSE(areEqual(PlistValue::dictionary({a, b}), PlistValue::dictionary({b, a})));
    EXPECT_FALSE(areEqual(PlistValue::dictionary({a, b}), PlistValue::dictionary({a})));
    EXPECT_FALSE(areEqual(PlistValue::dictionary({a, b}), PlistValue::dictionary()));
    EXPECT_FALSE(areEqual(PlistValue::dictionary({a}),
                          PlistValue::dictionary({{"a", PlistValue::integer(2)}})));
    EXPECT_FALSE(areEqual(PlistValue::dictionary({a}),
                          PlistValue::dictionary({{"A", PlistValue::integer(1)}})));
    EXPECT_TRUE(areEqual(PlistValue::dictionary({a, a}), PlistValue::dictionary({a, a})));
    EXPECT_TRUE(areEqual(PlistValue::dictionary({{"caf\u00E9", PlistValue()}}),
                         PlistValue::dictionary({{"cafe\u0301", PlistValue()}})));
    // The same list of keys, other values.
    const PlistValue first = PlistValue::dictionary({a, b});
    const PlistValue second =
        PlistValue::dictionaryWithKeysOf(first, {PlistValue::integer(1), PlistValue::integer(3)});
    EXPECT_FALSE(areEqual(first, second));
}

TEST(PlistEqualityTest, comparesArraysByPosition) {
    const PlistValue one = PlistValue::integer(1);
    const PlistValue two = PlistValue::integer(2);
    EXPECT_TRUE(areEqual(PlistValue::array({one, two}), PlistValue::array({one, two})));
    EXPECT_FALSE(areEqual(PlistValue::array({one, two}), PlistValue::array({two, one})));
    EXPECT_FALSE(areEqual(PlistValue::array({one, two}), PlistValue::array({one})));
    EXPECT_FALSE(areEqual(PlistValue::array({one}), PlistValue::array()));
    EXPECT_FALSE(areEqual(PlistValue::array({PlistValue::array()}),
                          PlistValue::array({PlistValue::dictionary()})));
}

TEST(PlistEqualityTest, comparesTextsCanonically) {
    EXPECT_TRUE(areEqual(PlistValue::string("caf\u00E9"), PlistValue::string("cafe\u0301")));
    EXPECT_FALSE(areEqual(PlistValue::string("caf\u00E9"), PlistValue::string("cafe")));
    EXPECT_TRUE(areEqual(PlistValue::string(std::string(30, 'x') + "\u00E9"),
                         PlistValue::string(std::string(30, 'x') + "e\u0301")));
    EXPECT_FALSE(areEqual(PlistValue::string(std::string(30, 'x')),
                          PlistValue::string(std::string(31, 'x'))));
    // Bytes are bytes.
    EXPECT_FALSE(
        areEqual(PlistValue::data(Bytes{0xC3, 0xA9}), PlistValue::data(Bytes{'e', 0xCC, 0x81})));
}

TEST(PlistEqualityTest, comparesNumbers) {
    EXPECT_FALSE(areEqual(PlistValue::integer(-1), PlistValue::integer(greatestPlistInteger)));
    EXPECT_TRUE(areEqual(PlistValue::real(0.0), PlistValue::real(-0.0)));
    EXPECT_TRUE(areEqual(PlistValue::date(0.0), PlistValue::date(-0.0)));
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(areEqual(PlistValue::real(infinity), PlistValue::real(infinity)));
    EXPECT_FALSE(areEqual(PlistValue::real(infinity), PlistValue::real(-infinity)));
    EXPECT_FALSE(areEqual(PlistValue::boolean(true), PlistValue::boolean(false)));
    EXPECT_FALSE(areEqual(PlistValue::uid(1), PlistValue::uid(2)));
}

TEST(PlistEqualityTest, comparesData) {
    for (const std::size_t size : {1U, 14U, 15U, 100U}) {
        Bytes bytes(size, 7);
        const PlistValue value = PlistValue::data(bytes);
        EXPECT_TRUE(areEqual(value, PlistValue::data(bytes)));
        bytes.back() = 8;
        EXPECT_FALSE(areEqual(value, PlistValue::data(bytes)));
        bytes.pop_back();
        EXPECT_FALSE(areEqual(value, PlistValue::data(bytes)));
    }
}

TEST(PlistEqualityTest, findsNaNUnequalEvenToItsOwnCopy) {
    for (const PlistValue& number : {PlistValue::real(notANumber), PlistValue::date(notANumber)}) {
        EXPECT_FALSE(areEqual(number, number));
        const PlistValue deep = PlistValue::array(
            {PlistValue::integer(1), PlistValue::dictionary({{"a", PlistValue::array({number})}})});
        const PlistValue copy = deep;
        EXPECT_FALSE(areEqual(deep, copy));
        EXPECT_FALSE(areEqual(deep, deep));
        const PlistValue inKeysOf = PlistValue::dictionaryWithKeysOf(deep.children()[1], {deep});
        EXPECT_FALSE(areEqual(inKeysOf, inKeysOf));
    }
}

TEST(PlistEqualityTest, findsNaNThatWasReadUnequalToo) {
    const PlistValue value = xmlValue(
        "<dict><key>plain</key><array><real>1</real></array>"
        "<key>deep</key><array><dict><key>a</key><real>nan</real></dict></array></dict>");
    EXPECT_FALSE(areEqual(value, value));
    EXPECT_TRUE(areEqual(value.children()[0], value.children()[0]));
    EXPECT_FALSE(areEqual(value.children()[1], value.children()[1]));
    const PlistValue around = PlistValue::array({PlistValue::array({value})});
    EXPECT_FALSE(areEqual(around, around));
}

TEST(PlistEqualityTest, comparesWhatWasReadWithWhatWasMade) {
    const PlistValue read = xmlValue(
        "<dict><key>a</key><string>a text longer than a cell</string>"
        "<key>b</key><array><integer>18446744073709551615</integer><true/></array></dict>");
    const PlistValue made =
        PlistValue::dictionary({{"a", PlistValue::string("a text longer than a cell")},
                                {"b", PlistValue::array({PlistValue::integer(greatestPlistInteger),
                                                         PlistValue::boolean(true)})}});
    EXPECT_TRUE(areEqual(read, made));
    EXPECT_FALSE(areEqual(read, PlistValue::array({made})));
}

TEST(PlistEqualityTest, comparesSharedStructuresOnce) {
    // Each stands for 2^41 - 1 arrays and more; both are built on their own.
    const PlistValue left = doubledArrays(40, PlistValue::array({PlistValue::integer(1)}));
    EXPECT_TRUE(areEqual(left, doubledArrays(40, PlistValue::array({PlistValue::integer(1)}))));
    EXPECT_FALSE(areEqual(left, doubledArrays(40, PlistValue::array({PlistValue::integer(2)}))));
    EXPECT_FALSE(areEqual(left, doubledArrays(39, PlistValue::array({PlistValue::integer(1)}))));
}

TEST(PlistEqualityTest, findsNaNInSharedStructures) {
    const PlistValue value = doubledArrays(40, PlistValue::array({PlistValue::real(notANumber)}));
    EXPECT_FALSE(areEqual(value, value));
    EXPECT_FALSE(areEqual(value, PlistValue(value)));
}

TEST(PlistEqualityTest, skipsWhatBothSidesShare) {
    // Nothing but the shortcut makes this end: no two containers stand in the same two places.
    const PlistValue shared = doubledArrays(62, PlistValue::string("a"));
    EXPECT_TRUE(areEqual(PlistValue::array({shared, PlistValue::integer(1)}),
                         PlistValue::array({shared, PlistValue::integer(1)})));
}

TEST(PlistEqualityTest, findsDifferencesBeyondManyContainers) {
    runOnSmallStack([] {
        std::vector<PlistValue> items;
        for (int number = 0; number < 250000; ++number) {
            items.push_back(PlistValue::array({PlistValue::integer(number)}));
        }
        const PlistValue left = PlistValue::array(items);
        for (PlistValue& item : items) {
            item = PlistValue::array({item.children()[0]});
        }
        EXPECT_TRUE(areEqual(left, PlistValue::array(items)));
        items[0] = PlistValue::array({PlistValue::integer(-1)});
        EXPECT_FALSE(areEqual(left, PlistValue::array(items)));
        items[0] = left.children()[0];
        items.back() = PlistValue::array({PlistValue::integer(-1)});
        EXPECT_FALSE(areEqual(left, PlistValue::array(items)));
    });
}

}  // namespace

}  // namespace plist::detail
