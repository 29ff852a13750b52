#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PlistCore/value/PlistWalk.h"

namespace plist::detail {

namespace {

PlistValue number(int value) {
    return PlistValue::integer(value);
}

/// The numbers of a value in the order of the walk, in brackets that tell what is inside what. The
/// notes are the positions at which containers were entered.
std::string walked(const PlistValue& root) {
    std::string text = "[";
    PlistWalk<std::size_t> walk;
    walk.enter(root, 0);
    while (!walk.isAtEnd()) {
        if (const PlistValue* const member = walk.next()) {
            if (member->isContainer()) {
                walk.enter(*member, text.size());
                text += "[";
            } else {
                text += std::to_string(member->asInt64().value());
            }
        } else {
            const std::size_t start = walk.leave();
            text += "]@" + std::to_string(start);
        }
    }
    return text;
}

TEST(PlistWalkTest, MembersComeInOrderAndContainersCloseBehindTheirMembers) {
    const PlistValue inner = PlistValue::array({number(2), number(3)});
    const PlistValue root = PlistValue::array({number(1), inner, PlistValue::array({}), number(4)});
    EXPECT_EQ(walked(root), "[1[23]@2[]@84]@0");
}

TEST(PlistWalkTest, TheInnermostContainerAndTheDepthAreKnown) {
    const PlistValue root = PlistValue::array({PlistValue::array({number(1)})});
    PlistWalk<int> walk;
    EXPECT_TRUE(walk.isAtEnd());
    walk.enter(root, 10);
    const PlistValue* const inner = walk.next();
    ASSERT_EQ(inner, &root.children()[0]);
    walk.enter(*inner, 20);
    EXPECT_EQ(walk.depth(), 2U);
    EXPECT_EQ(&walk.container(), inner);
    walk.note() += 1;
    EXPECT_EQ(walk.leave(), 21);
    EXPECT_EQ(&walk.container(), &root);
    EXPECT_EQ(walk.note(), 10);
    EXPECT_EQ(walk.next(), nullptr);
}

TEST(PlistWalkTest, AMemberThatIsNotEnteredIsPassedOver) {
    const PlistValue root = PlistValue::array({PlistValue::array({number(1)}), number(2)});
    PlistWalk<int> walk;
    walk.enter(root, 0);
    walk.next();
    EXPECT_EQ(walk.next(), &root.children()[1]);
}

}  // namespace

}  // namespace plist::detail
