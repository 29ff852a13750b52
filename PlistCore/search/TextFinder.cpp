#include "PlistCore/search/TextFinder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "PlistCore/PlistCheck.h"
#include "PlistCore/text/Ascii.h"

namespace plist::detail {

namespace {

/// The bit in which the two cases of an ASCII letter differ; lower case has it.
constexpr char caseBit = 0x20;

char maskOf(char byte) noexcept {
    return Ascii::isLetter(byte) ? caseBit : '\0';
}

std::string masksOf(std::string_view text) {
    std::string masks(text);
    std::ranges::transform(masks, masks.begin(), maskOf);
    return masks;
}

std::string lowerCased(std::string_view text) {
    plistCheck(!text.empty(), "there is something to look for");
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), Ascii::lowerCased);
    return lower;
}

bool isByte(char byte, char mask, char wanted) noexcept {
    return static_cast<char>(byte | mask) == wanted;
}

std::vector<std::size_t> bordersOf(std::string_view pattern) {
    std::vector<std::size_t> borders(pattern.size() + 1, 0);
    std::size_t length = 0;
    for (std::size_t i = 1; i < pattern.size(); ++i) {
        while (length != 0 && pattern[i] != pattern[length]) {
            length = borders[length];
        }
        length += pattern[i] == pattern[length] ? 1 : 0;
        borders[i + 1] = length;
    }
    return borders;
}

}  // namespace

TextFinder::TextFinder(std::string_view pattern)
    : pattern_(lowerCased(pattern)),
      masks_(masksOf(pattern_)),
      borders_(bordersOf(pattern_)),
      firstByte_(static_cast<std::uint8_t>(pattern_.front())),
      firstMask_(static_cast<std::uint8_t>(masks_.front())),
      lastByte_(static_cast<std::uint8_t>(pattern_.back())),
      lastMask_(static_cast<std::uint8_t>(masks_.back())) {}

bool TextFinder::isIn(std::string_view text) const noexcept {
    if (text.size() >= ByteBlock::size) {
        return isInLong(text);
    }
    if (text.size() < pattern_.size()) {
        return false;
    }
    std::array<char, ByteBlock::size> padded = {};
    std::memcpy(padded.data(), text.data(), text.size());
    return isInPadded({padded.data(), text.size()});
}

/// Sixteen places at a time: those where the first and the last byte of the pattern stand are
/// compared in full. Should that take too long, the rest goes byte by byte.
bool TextFinder::isInLong(std::string_view text) const noexcept {
    constexpr std::size_t step = ByteBlock::size;
    if (text.size() < pattern_.size()) {
        return false;
    }
    const std::size_t reach = pattern_.size() - 1;
    const std::size_t placeCount = text.size() - reach;
    if (placeCount < step) {
        const unsigned first = ByteBlock::load(text.data()).equals(firstByte_, firstMask_);
        const unsigned last =
            ByteBlock::load(text.data() + text.size() - step).equals(lastByte_, lastMask_);
        const unsigned candidates = first & last >> (step - placeCount) & ((1U << placeCount) - 1);
        return candidates != 0 && isAtOneOf(candidates, text.data());
    }
    // Comparing may cost as much as a few looks at every byte.
    std::size_t effort = 4 * text.size();
    for (std::size_t start = 0;; start = std::min(start + step, placeCount - step)) {
        const char* place = text.data() + start;
        unsigned candidates = ByteBlock::load(place).equals(firstByte_, firstMask_) &
                              ByteBlock::load(place + reach).equals(lastByte_, lastMask_);
        for (; candidates != 0; candidates &= candidates - 1) {
            const std::size_t count = matchingBytes(place + std::countr_zero(candidates));
            if (count == pattern_.size()) {
                return true;
            }
            if (count >= effort) {
                return isInByAutomaton(text.substr(start));
            }
            effort -= count;
        }
        if (start + step == placeCount) {
            return false;
        }
    }
}

bool TextFinder::isAtOneOf(unsigned candidates, const char* block) const noexcept {
    for (; candidates != 0; candidates &= candidates - 1) {
        if (matchingBytes(block + std::countr_zero(candidates)) == pattern_.size()) {
            return true;
        }
    }
    return false;
}

/// How many bytes of the pattern stand at `place`, where there is room for all of it.
std::size_t TextFinder::matchingBytes(const char* place) const noexcept {
    std::size_t count = 0;
    while (count < pattern_.size() && isByte(place[count], masks_[count], pattern_[count])) {
        ++count;
    }
    return count;
}

/// Looks at each byte once: Knuth, Morris and Pratt, "Fast Pattern Matching in Strings".
bool TextFinder::isInByAutomaton(std::string_view text) const noexcept {
    std::size_t length = 0;
    for (const char byte : text) {
        while (length != 0 && !isByte(byte, masks_[length], pattern_[length])) {
            length = borders_[length];
        }
        length += isByte(byte, masks_[length], pattern_[length]) ? 1 : 0;
        if (length == pattern_.size()) {
            return true;
        }
    }
    return false;
}

}  // namespace plist::detail
