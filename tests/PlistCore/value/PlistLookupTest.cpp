#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "PlistCore/PlistCore.h"
#include "tests/PlistCore/support/ThrowingChecks.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

PlistValue lighthouses() {
    return PlistValue::dictionary({
        {"name", "North Mole"},
        {"caf\u00E9", true},
        {"lights", PlistValue::array({PlistValue::dictionary({{"height", 27}}), 1.5})},
        {"name", "the second one"},
    });
}

TEST(PlistLookupTest, findsByKeyAndByPosition) {
    const PlistValue value = lighthouses();
    EXPECT_EQ(value.find("name"), &value.children()[0]) << "the first of equal keys";
    EXPECT_EQ(value.find(std::string("lights")), &value.children()[2]);
    EXPECT_EQ(value.find(PlistString("lights")), &value.children()[2]);
    EXPECT_EQ(value.find(3), &value.children()[3]);
    EXPECT_EQ(value.find("cafe\u0301"), &value.children()[1]) << "the same Unicode text";
    EXPECT_EQ(value["lights"][0]["height"], PlistValue(27));
}

TEST(PlistLookupTest, findsNothingWhereNothingIs) {
    const PlistValue value = lighthouses();
    for (const PlistStep& step : {PlistStep("Name"), PlistStep(""), PlistStep("caf\xC3"),
                                  PlistStep(4), PlistStep(-1), PlistStep(1ULL << 63)}) {
        EXPECT_EQ(value.find(step), nullptr);
        EXPECT_EQ(value[0].find(step), nullptr) << "a scalar has no children";
    }
    EXPECT_EQ(value["lights"].find("0"), nullptr) << "an array has no keys";
}

TEST(PlistLookupTest, followsAPath) {
    const PlistValue value = lighthouses();
    EXPECT_EQ(value.find({"lights", 0, "height"}), &value["lights"][0]["height"]);
    EXPECT_EQ(value.find({}), &value);
    EXPECT_EQ(value.find({"lights", 2, "height"}), nullptr);
    EXPECT_EQ(value.find({"name", 0}), nullptr);
}

TEST(PlistLookupTest, stopsWhereAChildIsTakenForGranted) {
    const ThrowingChecks checks;
    const PlistValue value = lighthouses();
    EXPECT_THROW(value["height"], BrokenRule);
    EXPECT_THROW(value[4], BrokenRule);
    EXPECT_THROW(value[0][0], BrokenRule);
}

TEST(PlistLookupTest, walksThroughEntries) {
    const PlistValue value = PlistValue::dictionary({{"b", 1}, {"a", "x"}, {"b", 2.5}});
    std::string heard;
    for (const auto& [key, child] : value.entries()) {
        heard += std::string(key.view()) + "=" + valueText(child) + " ";
    }
    EXPECT_EQ(heard, "b=1 a=\"x\" b=2.5 ");
    EXPECT_EQ(value.entries().size(), 3U);
    for (const PlistValue& none : {PlistValue(), PlistValue::array({1, 2}), PlistValue("text")}) {
        EXPECT_TRUE(none.entries().isEmpty());
        EXPECT_EQ(none.entries().begin(), none.entries().end());
    }
}

TEST(PlistLookupTest, looksIntoAValueWithoutStopping) {
    EXPECT_EQ(PlistValue("text").asString(), PlistString("text"));
    EXPECT_EQ(PlistValue(7).asInteger(), PlistInteger{7});
    EXPECT_EQ(PlistValue(7).asInt64(), 7);
    EXPECT_EQ(PlistValue(0.5).asReal(), 0.5);
    EXPECT_EQ(PlistValue(true).asBoolean(), true);
    EXPECT_EQ(PlistValue::date(3).asDate(), 3.0);
    EXPECT_EQ(PlistValue::uid(9).asUid(), 9U);
    const std::uint8_t bytes[] = {1, 2};
    const PlistValue data = PlistValue::data(bytes);
    ASSERT_TRUE(data.asData().has_value());
    EXPECT_EQ(data.asData()->size(), 2U);

    const PlistValue other = PlistValue::array();
    EXPECT_EQ(other.asString(), std::nullopt);
    EXPECT_EQ(other.asInteger(), std::nullopt);
    EXPECT_EQ(other.asInt64(), std::nullopt);
    EXPECT_EQ(other.asReal(), std::nullopt);
    EXPECT_EQ(other.asBoolean(), std::nullopt);
    EXPECT_EQ(other.asDate(), std::nullopt);
    EXPECT_EQ(other.asUid(), std::nullopt);
    EXPECT_FALSE(other.asData().has_value());
    EXPECT_EQ(PlistValue(1).asReal(), std::nullopt) << "an integer is no real";
}

TEST(PlistLookupTest, givesOnlyIntegersThatFit) {
    EXPECT_EQ(PlistValue(std::numeric_limits<std::int64_t>::min()).asInt64(),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(PlistValue(std::numeric_limits<std::int64_t>::max()).asInt64(),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(PlistValue(std::uint64_t{1} << 63).asInt64(), std::nullopt);
    EXPECT_EQ(PlistValue(greatestPlistInteger).asInteger(), greatestPlistInteger);
}

TEST(PlistLookupTest, takesLiteralsByTheirExactTypes) {
    EXPECT_EQ(PlistValue("a").type(), PlistType::string);
    EXPECT_EQ(PlistValue(std::string("a")).type(), PlistType::string);
    EXPECT_EQ(PlistValue(std::string_view("a")).type(), PlistType::string);
    EXPECT_EQ(PlistValue(1).type(), PlistType::integer);
    EXPECT_EQ(PlistValue(std::uint8_t{1}).type(), PlistType::integer);
    EXPECT_EQ(PlistValue(1.0).type(), PlistType::real);
    EXPECT_EQ(PlistValue(1.0F).type(), PlistType::real);
    EXPECT_EQ(PlistValue(false).type(), PlistType::boolean);
    EXPECT_EQ(PlistValue::array({5}), PlistValue::array({PlistValue::integer(5)}));
}

}  // namespace

}  // namespace plist
