#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "PlistCore/PlistMatches.h"

namespace plist {

namespace {

using Path = std::vector<std::int64_t>;

TEST(PlistMatchesTest, startsWithTheRootAlone) {
    const PlistMatches matches;
    EXPECT_TRUE(matches.isEmpty());
    EXPECT_EQ(matches.places().size(), 1U);
    EXPECT_EQ(matches.outcome(), PlistMatches::Outcome::complete);
}

TEST(PlistMatchesTest, sharesTheBeginningsOfPaths) {
    PlistMatches matches;
    const std::uint32_t container = matches.addPlace(0, 3);
    matches.addMatch(matches.addPlace(container, 1));
    matches.addMatch(matches.addPlace(container, 4));
    matches.addMatch(matches.addPlace(0, 7));
    ASSERT_EQ(matches.size(), 3U);
    EXPECT_FALSE(matches.isEmpty());
    EXPECT_EQ(matches.path(0), (Path{3, 1}));
    EXPECT_EQ(matches.path(1), (Path{3, 4}));
    EXPECT_EQ(matches.path(2), (Path{7}));
    EXPECT_EQ(matches.places().size(), 5U);
    EXPECT_EQ(std::vector<std::uint32_t>(matches.matches().begin(), matches.matches().end()),
              (std::vector<std::uint32_t>{2, 3, 4}));
}

TEST(PlistMatchesTest, knowsTheRootAsAMatch) {
    PlistMatches matches;
    matches.addMatch(0);
    ASSERT_EQ(matches.size(), 1U);
    EXPECT_EQ(matches.path(0), Path{});
    EXPECT_EQ(matches.places().size(), 1U);
}

}  // namespace

}  // namespace plist
