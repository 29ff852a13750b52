#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/PlistInteger.h"
#include "PlistCore/PlistValue.h"

#pragma GCC visibility push(default)

/// The rules between values and the text that people type and read: one grammar for the editor and
/// for the content of XML elements. Nothing here depends on the locale.
namespace plist::PlistText {

/// A whole number, decimal or "0x" hexadecimal, with a sign; whitespace and line breaks around it
/// are ignored. Nothing if the text is not such a number or lies outside the valid range.
std::optional<PlistInteger> parseInteger(std::string_view text);

/// A number, "nan", "inf" or "infinity" in any case, with a sign; whitespace and line breaks
/// around it are ignored. Too large numbers are infinite, too small ones zero.
std::optional<double> parseReal(std::string_view text);

/// "true", "yes", "1", "false", "no" or "0" in any case; whitespace but no line break around it.
std::optional<bool> parseBoolean(std::string_view text);

/// The bytes of a Base64 text: first ignoring everything outside the alphabet, then, if that fails,
/// without its whitespace and with the missing "=" supplied.
std::optional<std::vector<std::uint8_t>> parseBase64(std::string_view text);

/// The value of `type` that `text` stands for; nothing if it is not a valid text of that type
/// (containers never have one) or no valid UTF-8.
std::optional<PlistValue> value(std::string_view text, PlistType type);

/// The text of a value in the value column, and what editing it starts with; empty for containers.
std::string displayText(const PlistValue& value);

/// The shortest decimal text that reads back as `number`, always with a fraction or an exponent
/// ("1.0", "0.1", "1e-05", "1e+16"); "inf", "-inf", "nan".
std::string realText(double number);

/// Room for the longest text of a real, "-2.2250738585072014e-308" and its like.
inline constexpr std::size_t longestRealText = 32;

/// The same, written to `buffer`, which the result views: allocates nothing.
std::string_view realText(double number, std::span<char, longestRealText> buffer) noexcept;

/// What an item holds after its type is changed to `type`. Never fails: what cannot be converted
/// becomes the default value of the type.
PlistValue converted(const PlistValue& value, PlistType type);

}  // namespace plist::PlistText

#pragma GCC visibility pop
