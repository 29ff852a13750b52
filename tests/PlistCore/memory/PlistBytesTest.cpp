#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "PlistCore/PlistBytes.h"

namespace plist {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool hasSanitizedAllocator = true;
#else
constexpr bool hasSanitizedAllocator = false;
#endif

TEST(PlistBytesTest, startsEmpty) {
    const PlistBytes bytes;
    EXPECT_TRUE(bytes.isEmpty());
    EXPECT_EQ(bytes.size(), 0U);
    EXPECT_EQ(bytes.view(), "");
    EXPECT_TRUE(bytes.span().empty());
}

TEST(PlistBytesTest, appends) {
    PlistBytes bytes;
    bytes.append("");
    bytes.append(0, 'x');
    EXPECT_EQ(bytes.data(), nullptr);
    bytes.append("abc");
    bytes.append(3, '\t');
    bytes.append(std::string_view("\0\xFF", 2));
    EXPECT_EQ(bytes.view(), std::string_view("abc\t\t\t\0\xFF", 8));
    EXPECT_FALSE(bytes.isEmpty());
    EXPECT_EQ(bytes.span().size(), 8U);
    EXPECT_EQ(bytes.span()[7], 0xFF);
}

TEST(PlistBytesTest, keepsWhatItHoldsWhileGrowing) {
    PlistBytes bytes;
    std::string expected;
    for (int step = 0; step < 300'000; ++step) {
        const std::string piece = std::to_string(step) + ",";
        bytes.append(piece);
        expected += piece;
    }
    EXPECT_TRUE(bytes.view() == expected);
}

TEST(PlistBytesTest, keepsWhatItHoldsWhileALargeBufferGrows) {
    PlistBytes bytes;
    bytes.append(std::size_t{20} << 20, 'a');
    bytes.append(std::size_t{20} << 20, 'b');
    EXPECT_EQ(bytes.view().find('b'), std::size_t{20} << 20);
    EXPECT_EQ(bytes.view().rfind('a'), (std::size_t{20} << 20) - 1);
    PlistBytes moved(std::move(bytes));
    EXPECT_EQ(moved.size(), std::size_t{40} << 20);
}

TEST(PlistBytesTest, growsInFewSteps) {
    PlistBytes bytes;
    int moves = 0;
    const std::uint8_t* place = nullptr;
    for (int step = 0; step < 1'000'000; ++step) {
        const std::uint8_t* const before = bytes.data();
        bytes.append("x");
        place = bytes.data();
        moves += place == before ? 0 : 1;
    }
    EXPECT_LE(moves, 20);
    EXPECT_EQ(bytes.size(), 1'000'000U);
}

TEST(PlistBytesTest, takesInWhatWasWrittenAtTheReservedPlace) {
    PlistBytes bytes;
    bytes.append("a");
    std::uint8_t* const place = bytes.reserve(1000);
    place[0] = 'b';
    place[1] = 'c';
    EXPECT_EQ(bytes.view(), "a");
    bytes.advance(2);
    EXPECT_EQ(bytes.view(), "abc");
    EXPECT_EQ(bytes.reserve(998), place + 2);
}

TEST(PlistBytesTest, moves) {
    PlistBytes first;
    first.append("first");
    PlistBytes second(std::move(first));
    EXPECT_EQ(second.view(), "first");
    PlistBytes third;
    third.append("third");
    third = std::move(second);
    EXPECT_EQ(third.view(), "first");
}

TEST(PlistBytesTest, refusesImpossibleSizes) {
    constexpr std::size_t greatest = std::numeric_limits<std::size_t>::max();
    PlistBytes bytes;
    bytes.append("kept");
    EXPECT_THROW(bytes.reserve(greatest), std::bad_alloc);
    EXPECT_THROW(bytes.reserve(greatest - 3), std::bad_alloc);
    EXPECT_THROW(bytes.reserve(greatest / 2), std::bad_alloc);
    EXPECT_EQ(bytes.view(), "kept");
}

/// The sanitizers' own allocators end the program where this must throw.
TEST(PlistBytesTest, reportsLackOfMemory) {
    if (hasSanitizedAllocator) {
        GTEST_SKIP() << "The sanitizer ends the program where the system refuses memory.";
    }
    PlistBytes bytes;
    bytes.append("kept");
    EXPECT_THROW(bytes.reserve(std::size_t{1} << 60), std::bad_alloc);
    EXPECT_EQ(bytes.view(), "kept");
}

}  // namespace

}  // namespace plist
