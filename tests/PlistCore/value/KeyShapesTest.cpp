#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PlistCore/value/KeyShapes.h"

namespace plist::detail {

namespace {

class KeyShapesTest : public testing::Test {
protected:
    KeyShapes::Shape follow(KeyShapes::Shape shape, const std::string& key) {
        return shape == KeyShapes::none ? shape : shapes_.follow(shape, key, PlistCell::ascii);
    }

    KeyShapes::Shape followAll(const std::vector<std::string>& keys) {
        KeyShapes::Shape shape = KeyShapes::root;
        for (const std::string& key : keys) {
            shape = follow(shape, key);
        }
        return shape;
    }

    std::vector<std::string> keysOf(KeyShapes::Shape shape) {
        PlistCellStack stack(100);
        shapes_.pushKeys(shape, stack);
        std::vector<std::string> keys;
        for (const PlistCell& cell : stack.from(0)) {
            keys.emplace_back(cell.bytes());
        }
        return keys;
    }

    PlistBuilder builder_{0};
    KeyShapes shapes_{builder_};
};

TEST_F(KeyShapesTest, startsWithoutKeys) {
    EXPECT_EQ(shapes_.length(KeyShapes::root), 0U);
    EXPECT_EQ(shapes_.expected(KeyShapes::root), KeyShapes::none);
    EXPECT_TRUE(keysOf(KeyShapes::root).empty());
}

TEST_F(KeyShapesTest, recognisesTheSameKeys) {
    const std::vector<std::string> keys = {"a", "a key longer than a cell", "a", ""};
    const KeyShapes::Shape shape = followAll(keys);
    EXPECT_EQ(followAll(keys), shape);
    EXPECT_EQ(shapes_.length(shape), 4U);
    EXPECT_EQ(shapes_.lastKey(shape).bytes(), "");
    EXPECT_EQ(keysOf(shape), keys);
    EXPECT_NE(followAll({"a"}), shape);
    EXPECT_NE(followAll({"a", "a key longer than a cell", "a", "b"}), shape);
}

TEST_F(KeyShapesTest, makesOneListOfKeysForAShape) {
    const KeyShapes::Shape shape = followAll({"a", "b"});
    const PlistString* list = shapes_.keyList(shape);
    EXPECT_EQ(list[0].view(), "a");
    EXPECT_EQ(list[1].view(), "b");
    EXPECT_EQ(shapes_.keyList(followAll({"a", "b"})), list);
    EXPECT_NE(shapes_.keyList(followAll({"a"})), list);
}

TEST_F(KeyShapesTest, expectsWhatCameLast) {
    const KeyShapes::Shape first = followAll({"a", "b"});
    const KeyShapes::Shape parent = followAll({"a"});
    EXPECT_EQ(shapes_.expected(parent), first);
    const KeyShapes::Shape second = followAll({"a", "c"});
    EXPECT_EQ(shapes_.expected(parent), second);
    EXPECT_EQ(followAll({"a", "b"}), first);
    EXPECT_EQ(shapes_.expected(parent), first);
    EXPECT_EQ(followAll({"a", "c"}), second);
}

TEST_F(KeyShapesTest, tellsKeysApartByTheirBytes) {
    EXPECT_NE(followAll({"caf\u00E9"}), followAll({"cafe\u0301"}));
    EXPECT_NE(followAll({"a"}), followAll({"A"}));
}

TEST_F(KeyShapesTest, knowsWhichKeysStandAsTheyAre) {
    EXPECT_TRUE(shapes_.isPlain(followAll({"a > b; 'c'"})));
    EXPECT_FALSE(shapes_.isPlain(followAll({"a & b"})));
    EXPECT_FALSE(shapes_.isPlain(followAll({"a < b"})));
}

TEST_F(KeyShapesTest, givesUpBehindManyKeys) {
    std::vector<std::string> keys;
    for (int number = 0; number < 64; ++number) {
        keys.push_back(std::to_string(number));
    }
    const KeyShapes::Shape last = followAll(keys);
    ASSERT_NE(last, KeyShapes::none);
    EXPECT_EQ(shapes_.length(last), 64U);
    EXPECT_EQ(keysOf(last), keys);
    EXPECT_EQ(follow(last, "one more"), KeyShapes::none);
    EXPECT_EQ(shapes_.expected(last), KeyShapes::none);
}

TEST_F(KeyShapesTest, growsOnlyAsFarAsItIsUsed) {
    int made = 0;
    while (follow(KeyShapes::root, "key " + std::to_string(made)) != KeyShapes::none) {
        ++made;
        ASSERT_LT(made, 10000);
    }
    // Every list of keys that is used again earns room for one more shape.
    const KeyShapes::Shape known = follow(KeyShapes::root, "key " + std::to_string(made - 1));
    ASSERT_NE(known, KeyShapes::none);
    shapes_.keyList(known);
    EXPECT_EQ(follow(KeyShapes::root, "one"), KeyShapes::none);
    shapes_.keyList(known);
    EXPECT_NE(follow(KeyShapes::root, "one"), KeyShapes::none);
    EXPECT_EQ(follow(KeyShapes::root, "two"), KeyShapes::none);
}

TEST_F(KeyShapesTest, doesNotLookThroughManyKeys) {
    for (int number = 0; number < 100; ++number) {
        follow(KeyShapes::root, "key " + std::to_string(number));
    }
    // The oldest keys are out of reach; that costs a second shape, nothing else.
    const KeyShapes::Shape again = follow(KeyShapes::root, "key 0");
    ASSERT_NE(again, KeyShapes::none);
    EXPECT_EQ(shapes_.lastKey(again).bytes(), "key 0");
    EXPECT_EQ(shapes_.expected(KeyShapes::root), again);
    EXPECT_EQ(follow(KeyShapes::root, "key 0"), again);
}

}  // namespace

}  // namespace plist::detail
