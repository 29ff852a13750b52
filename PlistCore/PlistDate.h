#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

/// The one text form of dates, "YYYY-MM-DDTHH:MM:SSZ". A date is a double count of seconds since
/// 2001-01-01T00:00:00Z; calendar days are proleptic Gregorian with a year 0.
namespace plist::PlistDate {

/// Seconds from 1970-01-01T00:00:00Z to the reference instant 2001-01-01T00:00:00Z.
inline constexpr double referenceSince1970 = 978307200.0;

/// The date as text. Fractions are dropped downwards; the year is padded to four characters, its
/// sign included ("0033", "-005", "12345"). Total: NaN counts as 0 seconds since 1970, and what
/// lies outside the signed 64-bit seconds is clamped.
std::string formatDate(double seconds);

/// Room for the longest text of a date, whose year has twelve digits and a sign.
inline constexpr std::size_t longestDateText = 32;

/// The same, written to `buffer`, which the result views: allocates nothing.
std::string_view formatDate(double seconds, std::span<char, longestDateText> buffer) noexcept;

/// The date that `text` names as a whole, in seconds since 2001, or nothing. From the month on
/// every part may be left out, parts may have one digit, the "Z" is optional, and a day past the
/// end of its month runs over into the next one. No spaces, fractions or offsets.
std::optional<double> parseDate(std::string_view text);

}  // namespace plist::PlistDate

#pragma GCC visibility pop
