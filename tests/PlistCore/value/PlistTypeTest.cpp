#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "PlistCore/PlistType.h"

namespace plist {

namespace {

struct TypeCase {
    PlistType type;
    std::string_view rawValue;
    std::string_view displayName;
    bool isContainer;
};

const std::vector<TypeCase> cases = {
    {PlistType::dictionary, "dictionary", "Dictionary", true},
    {PlistType::array, "array", "Array", true},
    {PlistType::string, "string", "String", false},
    {PlistType::integer, "integer", "Integer", false},
    {PlistType::real, "real", "Real", false},
    {PlistType::boolean, "boolean", "Boolean", false},
    {PlistType::date, "date", "Date", false},
    {PlistType::data, "data", "Data", false},
    {PlistType::uid, "uid", "UID", false},
};

TEST(PlistTypeTest, listsAllTypesInOrder) {
    ASSERT_EQ(allPlistTypes.size(), cases.size());
    for (std::size_t index = 0; index < cases.size(); ++index) {
        EXPECT_EQ(allPlistTypes.at(index), cases[index].type);
        EXPECT_EQ(static_cast<std::size_t>(cases[index].type), index);
    }
}

TEST(PlistTypeTest, hasNames) {
    for (const TypeCase& testCase : cases) {
        EXPECT_EQ(rawValue(testCase.type), testCase.rawValue);
        EXPECT_EQ(displayName(testCase.type), testCase.displayName);
    }
}

TEST(PlistTypeTest, isFoundByExactRawValue) {
    for (const TypeCase& testCase : cases) {
        EXPECT_EQ(plistTypeFromRawValue(testCase.rawValue), testCase.type);
        EXPECT_EQ(plistTypeFromRawValue(testCase.displayName), std::nullopt);
    }
    for (const std::string_view text : {"", "UID", "uid ", " uid", "ui", "Dictionary", "number"}) {
        EXPECT_EQ(plistTypeFromRawValue(text), std::nullopt) << text;
    }
}

TEST(PlistTypeTest, knowsContainers) {
    for (const TypeCase& testCase : cases) {
        EXPECT_EQ(isContainer(testCase.type), testCase.isContainer) << testCase.rawValue;
    }
}

TEST(PlistTypeTest, hashesItsRawValue) {
    for (const TypeCase& testCase : cases) {
        EXPECT_EQ(std::hash<PlistType>{}(testCase.type),
                  std::hash<std::string_view>{}(testCase.rawValue));
    }
}

}  // namespace

}  // namespace plist
