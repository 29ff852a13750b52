#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/PlistValue.h"

/// Writes binary property lists ("bplist00"). Equal scalars share one object; equal trees give
/// identical bytes; any depth is written.
namespace plist::detail::BinaryPlistSerializer {

/// Which texts are equal enough to become one object.
enum class EqualTexts : std::uint8_t {
    equivalent,  ///< the same Unicode text, whichever of its spellings comes first
    identical,   ///< the same characters: nothing of any value is lost
};

/// The binary form of `value`. Fails only for lack of memory, or by `PlistBytes::LimitReached` when
/// it is known to take more than `maximumBytes`.
PlistBytes serialize(const PlistValue& value, EqualTexts equalTexts = EqualTexts::equivalent,
                     std::size_t maximumBytes = std::numeric_limits<std::size_t>::max());

}  // namespace plist::detail::BinaryPlistSerializer
