#pragma once

#include <cstdint>
#include <span>

#include "PlistCore/PlistValue.h"

/// Reads XML property lists: a scanner for just this vocabulary over the bytes as they stand, not a
/// general XML parser.
namespace plist::detail::XMLPlistParser {

/// The most containers that may be open inside each other.
inline constexpr int nestingLimit = 512;

/// Whether text that begins with "<" is for this reader: false only if its XML declaration, looked
/// for in the first 256 bytes, names an encoding other than "utf-8" or "utf8".
bool acceptsEncoding(std::span<const std::uint8_t> bytes);

/// Which routines read.
enum class Paths : std::uint8_t {
    fastAndPlain,  ///< common forms by a fast path, the rest by the plain and complete one
    plain,         ///< everything by the plain one: same values and errors, for tests that compare
};

/// The root value. Throws `PlistError`, always with a line and a column.
PlistValue parse(std::span<const std::uint8_t> bytes, Paths paths = Paths::fastAndPlain);

}  // namespace plist::detail::XMLPlistParser
