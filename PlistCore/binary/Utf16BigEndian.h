#pragma once

#include <cstddef>
#include <string_view>

/// Text between UTF-8, as values hold it, and big-endian UTF-16, as binary files hold it.
namespace plist::detail::Utf16BigEndian {

/// How many UTF-16 code units the valid UTF-8 text `utf8` takes.
std::size_t unitCount(std::string_view utf8) noexcept;

/// Writes the valid UTF-8 text `utf8` as code units to `out`, which has room for twice
/// `unitCount(utf8)` bytes, and returns the place after them.
char* encode(std::string_view utf8, char* out) noexcept;

/// The most bytes of UTF-8 that one code unit becomes.
inline constexpr std::size_t mostBytesPerUnit = 3;

/// Writes code units (`units` has an even length) as UTF-8 to `out` and returns the place after
/// them. Unpaired surrogates become U+FFFD. `out` must have room for `mostBytesPerUnit` bytes for
/// each unit.
char* decode(std::string_view units, char* out) noexcept;

}  // namespace plist::detail::Utf16BigEndian
