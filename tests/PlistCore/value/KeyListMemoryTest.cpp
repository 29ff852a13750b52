#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "PlistCore/value/KeyListMemory.h"

namespace plist::detail {

namespace {

TEST(KeyListMemoryTest, knowsAListByItsAddressAndLength) {
    const std::vector<PlistString> keys = {"a", "b", "c"};
    const std::vector<PlistString> equal = {"a", "b", "c"};
    KeyListMemory memory;
    EXPECT_EQ(memory.find(keys), std::nullopt);
    memory.remember(keys, 5);
    EXPECT_EQ(memory.find(keys), 5U);
    EXPECT_EQ(memory.find(equal), std::nullopt);
    EXPECT_EQ(memory.find({keys.data(), 2}), std::nullopt);
    memory.remember(keys, 6);
    EXPECT_EQ(memory.find(keys), 6U);
}

// It may forget lists, but never takes one for another.
TEST(KeyListMemoryTest, forgetsButNeverConfuses) {
    const std::vector<PlistString> keys(5000);
    KeyListMemory memory;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        memory.remember({&keys[i], 1}, i);
        ASSERT_EQ(memory.find({&keys[i], 1}), i);
    }
    std::size_t known = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (const std::optional<std::size_t> note = memory.find({&keys[i], 1})) {
            ASSERT_EQ(*note, i);
            ++known;
        }
    }
    EXPECT_GT(known, 0U);
    EXPECT_LT(known, keys.size());
}

}  // namespace

}  // namespace plist::detail
