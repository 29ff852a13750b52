#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/text/ByteBlock.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

/// Finds one text in many others, byte by byte except that ASCII letters are equal to their other
/// case. Takes time with the length of a text at worst, whatever stands in it.
class TextFinder {
public:
    /// Looks for `pattern`, which is not empty.
    explicit TextFinder(std::string_view pattern);

    /// What is looked for, its ASCII letters in lower case.
    std::string_view pattern() const noexcept { return pattern_; }

    bool isIn(std::string_view text) const noexcept;

    /// The same for a text of which 16 bytes can be read even if it is shorter.
    bool isInPadded(std::string_view text) const noexcept {
        return text.size() < ByteBlock::size ? isInBlock(ByteBlock::load(text.data()), text)
                                             : isInLong(text);
    }

    /// The same for a text or data that lies in place.
    bool isInPlace(const PlistCell& cell) const noexcept {
        return isInBlock(ByteBlock::load(&cell).withoutFirstTwo(), cell.bytes());
    }

private:
    /// The text is no longer than the block that begins with it.
    bool isInBlock(ByteBlock block, std::string_view text) const noexcept {
        if (text.size() < pattern_.size()) {
            return false;
        }
        const std::size_t reach = pattern_.size() - 1;
        unsigned candidates = block.equals(firstByte_, firstMask_) &
                              block.equals(lastByte_, lastMask_) >> reach &
                              ((1U << (text.size() - reach)) - 1);
        return candidates != 0 && isAtOneOf(candidates, text.data());
    }

    bool isInLong(std::string_view text) const noexcept;
    bool isAtOneOf(unsigned candidates, const char* block) const noexcept;
    std::size_t matchingBytes(const char* place) const noexcept;
    bool isInByAutomaton(std::string_view text) const noexcept;

    std::string pattern_;
    std::string masks_;  ///< for each byte of the pattern the bits in which a text may differ
    /// For each prefix of the pattern the length of the longest shorter one that it ends with.
    std::vector<std::size_t> borders_;
    std::uint8_t firstByte_;
    std::uint8_t firstMask_;
    std::uint8_t lastByte_;
    std::uint8_t lastMask_;
};

}  // namespace plist::detail
