#pragma once

#include <algorithm>
#include <string_view>

/// Letters and digits of ASCII. The C library's functions ask the locale, and are undefined for
/// bytes above 127.
namespace plist::detail::Ascii {

constexpr bool isDigit(char byte) noexcept {
    return byte >= '0' && byte <= '9';
}

constexpr bool isLetter(char byte) noexcept {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

/// Bytes that are no capital letter stay as they are.
constexpr char lowerCased(char byte) noexcept {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

/// Whether `text` is `word`, which is in lower case, in any case.
constexpr bool isInAnyCase(std::string_view text, std::string_view word) noexcept {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char byte, char wanted) { return lowerCased(byte) == wanted; });
}

}  // namespace plist::detail::Ascii
