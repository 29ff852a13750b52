#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/binary/BinaryObjectOrder.h"

namespace plist::detail {

namespace {

PlistValue text(const std::string& utf8) {
    return PlistValue::string(utf8);
}

/// The texts that are met, containers as "{" and "[", others as ".".
std::string pictureOf(const PlistValue& root) {
    BinaryObjectOrder order(root);
    std::string picture;
    while (const PlistCell* cell = order.next()) {
        if (cell->type() == PlistType::string) {
            picture += cell->bytes();
        } else if (isContainer(cell->type())) {
            picture += cell->type() == PlistType::dictionary ? "{" : "[";
        } else {
            picture += ".";
        }
    }
    EXPECT_EQ(order.next(), nullptr);
    return picture;
}

TEST(BinaryObjectOrderTest, aScalarIsAlone) {
    EXPECT_EQ(pictureOf(text("x")), "x");
    EXPECT_EQ(pictureOf(PlistValue::uid(1)), ".");
}

TEST(BinaryObjectOrderTest, keysComeBeforeValuesAndParentsBeforeChildren) {
    const PlistValue value = PlistValue::dictionary({
        {"a",
         PlistValue::array({text("1"), PlistValue::dictionary({{"b", text("2")}}), text("3")})},
        {"c", PlistValue()},
        {"d", PlistValue::array()},
        {"e", PlistValue::boolean(true)},
    });
    EXPECT_EQ(pictureOf(value), "{acde[1{b23{[.");
}

TEST(BinaryObjectOrderTest, aSharedListOfKeysIsMetOnce) {
    const PlistValue first = PlistValue::dictionary({{"k", text("1")}, {"l", text("2")}});
    const PlistValue second = PlistValue::dictionaryWithKeysOf(first, {text("3"), text("4")});
    const PlistValue other = PlistValue::dictionary({{"k", text("5")}, {"l", text("6")}});
    EXPECT_EQ(pictureOf(PlistValue::array({first, second, other, first})), "[{kl12{34{kl56{12");
}

TEST(BinaryObjectOrderTest, countsWhatItMeets) {
    const PlistValue first = PlistValue::dictionary({{"k", text("1")}, {"l", PlistValue()}});
    const PlistValue second = PlistValue::dictionaryWithKeysOf(first, {text("3"), text("4")});
    const auto counts = BinaryObjectOrder::count(PlistValue::array({first, second}));
    EXPECT_EQ(counts.containers, 4U);
    EXPECT_EQ(counts.scalars, 5U);
    EXPECT_EQ(counts.objects(), 9U);
}

TEST(BinaryObjectOrderTest, anyDepthIsWalked) {
    PlistValue value = text("x");
    for (int i = 0; i < 1000000; ++i) {
        std::vector<PlistValue> items;
        items.push_back(std::move(value));
        value = PlistValue::array(std::move(items));
    }
    EXPECT_EQ(BinaryObjectOrder::count(value).containers, 1000000U);
}

}  // namespace

}  // namespace plist::detail
