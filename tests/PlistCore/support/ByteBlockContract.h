#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What every implementation of `ByteBlock` must answer.
namespace ByteBlockContract {

using Bytes = std::array<std::uint8_t, 16>;

/// The mask of the bytes for which `holds` is true.
template <typename Predicate>
unsigned maskOf(const Bytes& bytes, const Predicate& holds) {
    unsigned mask = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        mask |= static_cast<unsigned>(holds(bytes[i])) << i;
    }
    return mask;
}

template <typename Block>
void checkMasks(const Bytes& bytes) {
    const Block block = Block::load(bytes.data());
    EXPECT_EQ(block.markup(), maskOf(bytes, [](std::uint8_t byte) {
                  return byte == '&' || byte == '<' || byte == '>';
              }));
    EXPECT_EQ(block.markupStarts(),
              maskOf(bytes, [](std::uint8_t byte) { return byte == '&' || byte == '<'; }));
    EXPECT_EQ(block.whitespace(), maskOf(bytes, [](std::uint8_t byte) {
                  return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
              }));
    EXPECT_EQ(block.highBits(), maskOf(bytes, [](std::uint8_t byte) { return byte >= 0x80; }));
    EXPECT_EQ(block.between(0x7F, 0xC0),
              maskOf(bytes, [](std::uint8_t byte) { return byte >= 0x7F && byte <= 0xC0; }));
    EXPECT_EQ(block.between(0, 0xFF), 0xFFFFU);
    EXPECT_EQ(block.between(0xFF, 0xFF),
              maskOf(bytes, [](std::uint8_t byte) { return byte == 0xFF; }));
}

/// Every byte at every place, beside bytes that differ from it.
template <typename Block>
void checkEveryByte() {
    for (unsigned byte = 0; byte < 256; ++byte) {
        for (std::size_t place = 0; place < 16; ++place) {
            Bytes bytes;
            bytes.fill(static_cast<std::uint8_t>(byte ^ 0x55U));
            bytes[place] = static_cast<std::uint8_t>(byte);
            checkMasks<Block>(bytes);
        }
    }
}

template <typename Block>
void checkCopies() {
    const std::string_view text = "0123456789abcdef";
    std::string copy(32, '?');
    Block::load(text.data()).store(copy.data());
    EXPECT_EQ(copy, "0123456789abcdef????????????????");
    Block::load(text.data()).withoutFirstTwo().store(copy.data());
    EXPECT_EQ(copy.substr(0, 16), std::string("23456789abcdef\0\0", 16));
}

template <typename Block>
void checkUnits() {
    const std::string_view text = "0123456789abcdef";
    std::string units(32, '?');
    Block::load(text.data()).storeWidened(units.data());
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(units[2 * i], '\0');
        EXPECT_EQ(units[2 * i + 1], text[i]);
    }
    const Block first = Block::load(units.data());
    EXPECT_TRUE(first.holdsAsciiUnits());
    std::string narrow(16, '?');
    first.storeNarrowed(narrow.data());
    EXPECT_EQ(narrow.substr(0, 8), "01234567");
    for (std::size_t place = 0; place < 16; ++place) {
        std::string changed = units.substr(0, 16);
        changed[place] = place % 2 == 0 ? '\x01' : '\x80';
        EXPECT_FALSE(Block::load(changed.data()).holdsAsciiUnits()) << place;
        changed[place] = place % 2 == 0 ? '\0' : '\x7F';
        EXPECT_TRUE(Block::load(changed.data()).holdsAsciiUnits()) << place;
    }
}

}  // namespace ByteBlockContract
