#pragma once

#include <cstddef>
#include <string_view>

#include "PlistCore/value/PlistCell.h"

/// Text as XML content: "&", "<" and ">" become entities, every other byte stays as it is.
namespace plist::detail::XMLEscaping {

/// The most bytes that one byte of text becomes ("&amp;").
inline constexpr std::size_t growth = 5;

/// How far past the escaped text the functions may write: they copy whole blocks.
inline constexpr std::size_t slack = 16;

/// Writes `text` escaped to `out` and returns the place after it. `out` must have room for
/// `growth * text.size() + slack` bytes.
char* write(std::string_view text, char* out) noexcept;

/// The same for a text that lies in place in `cell`.
char* writeInPlace(const PlistCell& cell, char* out) noexcept;

}  // namespace plist::detail::XMLEscaping
