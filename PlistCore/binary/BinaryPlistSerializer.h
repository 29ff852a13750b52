#pragma once

#include <cstdint>

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

/// The binary form of `value`. Never fails but for lack of memory.
PlistBytes serialize(const PlistValue& value, EqualTexts equalTexts = EqualTexts::equivalent);

}  // namespace plist::detail::BinaryPlistSerializer
