#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "PlistCore/PlistVersion.h"

#pragma GCC visibility push(default)

namespace plist {

/// The payload of an integer value: wide enough for the signed and the unsigned 64-bit range at
/// once. Only values from `leastPlistInteger` to `greatestPlistInteger` ever stand in a value.
// Only a typedef can be marked as an extension.
// NOLINTNEXTLINE(modernize-use-using)
__extension__ typedef __int128 PlistInteger;

/// -9223372036854775808, the least signed 64-bit number.
inline constexpr PlistInteger leastPlistInteger = std::numeric_limits<std::int64_t>::min();

/// 18446744073709551615, the greatest unsigned 64-bit number.
inline constexpr PlistInteger greatestPlistInteger = std::numeric_limits<std::uint64_t>::max();

/// Types of whole numbers: neither truth values nor characters, which turn into numbers unasked.
template <typename Type>
concept PlistWholeNumber = (std::integral<Type> ||
                            std::same_as<Type, PlistInteger>)&&!std::same_as<Type, bool> &&
                           !std::same_as<Type, char> && !std::same_as<Type, wchar_t> &&
                           !std::same_as<Type, char8_t> && !std::same_as<Type, char16_t> &&
                           !std::same_as<Type, char32_t>;

/// Types of numbers, whole or not.
template <typename Type>
concept PlistNumber = PlistWholeNumber<Type> || std::floating_point<Type>;

/// Whether `number` lies in the valid range, both ends included.
constexpr bool isValidPlistInteger(PlistInteger number) {
    return number >= leastPlistInteger && number <= greatestPlistInteger;
}

/// The decimal form, with a leading "-" for negatives, without grouping. Independent of the locale.
/// `number` must lie in the valid range.
std::string decimalText(PlistInteger number);

/// The most characters that `decimalText` gives: "18446744073709551615" and
/// "-9223372036854775808" have as many.
inline constexpr std::size_t longestDecimalText = 20;

/// The same, written to `buffer`, which the result views: allocates nothing.
std::string_view decimalText(PlistInteger number,
                             std::span<char, longestDecimalText> buffer) noexcept;

}  // namespace plist

#pragma GCC visibility pop
