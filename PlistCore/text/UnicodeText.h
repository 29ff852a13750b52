#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What the library needs to know about Unicode. All texts are UTF-8.
namespace plist::detail::UnicodeText {

/// Whether every byte is below 0x80.
bool isAscii(std::string_view bytes) noexcept;

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above
/// U+10FFFF.
bool isValidUtf8(std::string_view bytes) noexcept;

/// `bytes` as valid UTF-8, to be quoted in a message: if they are broken, U+FFFD stands for each
/// one above ASCII.
std::string mended(std::string_view bytes);

/// Canonical composition (NFC). `text` must be valid UTF-8. ASCII is returned as it stands. Costs
/// n log n for any text, long runs of combining marks included.
std::string composed(std::string_view text);

/// Whether a quick look at the characters of a valid text shows that it is its own composition;
/// false says nothing.
bool isPlainlyComposed(std::string_view text) noexcept;

/// Whether two valid texts are canonically equivalent.
bool equal(std::string_view left, std::string_view right);

/// Orders two valid texts by the code points of their canonical compositions: the one order of
/// keys everywhere. Negative, zero or positive.
int compare(std::string_view left, std::string_view right);

/// A hash that agrees with `equal`.
std::size_t hash(std::string_view text);

/// Takes the first code point off the front, or the last one off the back, of a valid text that is
/// not empty.
char32_t takeFirst(std::string_view& text) noexcept;
char32_t takeLast(std::string_view& text) noexcept;

/// Whether a code point is whitespace within a line: a space separator (general category Zs) or
/// the tab.
bool isWhitespace(char32_t codePoint) noexcept;

/// Whether a code point breaks lines: U+000A to U+000D, U+0085, U+2028 and U+2029.
bool isLineBreak(char32_t codePoint) noexcept;

/// Appends one code point, which must be a Unicode scalar value.
void appendUtf8(std::string& text, char32_t codePoint);

/// `text` without leading and trailing whitespace: every Unicode space separator and the tab.
std::string_view trimmed(std::string_view text) noexcept;

/// `text` without leading and trailing whitespace and line breaks (line feed, vertical tab, form
/// feed, carriage return, U+0085, U+2028, U+2029).
std::string_view trimmedWithLineBreaks(std::string_view text) noexcept;

}  // namespace plist::detail::UnicodeText
