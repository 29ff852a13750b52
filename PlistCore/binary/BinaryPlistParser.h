#pragma once

#include <cstdint>
#include <span>

#include "PlistCore/PlistValue.h"

/// Reads binary property lists ("bplist00"). Survives any input: every offset, count and reference
/// is checked before use, and objects that are referenced often are converted once.
namespace plist::detail::BinaryPlistParser {

/// The most non-empty containers that may be open inside each other.
inline constexpr int nestingLimit = 512;

/// The most object references that a file may hold, as a multiple of its size in bytes. Containers
/// whose bytes overlap could describe more; real files stay below one reference a byte.
inline constexpr std::uint64_t referencesPerByte = 16;

/// The root value. Throws `PlistError`, with a byte offset where there is one.
PlistValue parse(std::span<const std::uint8_t> bytes);

}  // namespace plist::detail::BinaryPlistParser
