#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string_view>

#include "PlistCore/memory/ByteView.h"

namespace {

TEST(ByteViewTest, CharactersAndBytesAreTheSameMemory) {
    const std::array<std::uint8_t, 3> bytes = {'a', 0, 0xFF};
    const std::string_view characters = plist::detail::charactersOf(bytes);
    EXPECT_EQ(characters, std::string_view("a\0\xFF", 3));
    EXPECT_EQ(plist::detail::bytesOf(characters).data(), bytes.data());
    EXPECT_EQ(plist::detail::bytesOf(characters).size(), bytes.size());
}

}  // namespace
