#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Which character set the bytes of a text file are in, and the way to UTF-8.
namespace plist::detail::TextEncoding {

/// The byte-order mark of UTF-8, which says nothing but that the text is UTF-8.
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// "UTF-16" or "UTF-32" in one of its two byte orders, if the bytes begin with that byte-order mark
/// or with "<?xml" in UTF-16; nothing otherwise.
///
/// The mark beats whatever an XML declaration says.
std::optional<std::string_view> wideEncoding(std::span<const std::uint8_t> bytes);

/// What an XML declaration at the very start (after a UTF-8 byte-order mark at most) names as its
/// encoding, spelt as it stands there; nothing if there is no declaration or it names none. Only
/// the first 256 bytes are looked at, and whitespace around the "=" are not understood.
std::optional<std::string> declaredEncoding(std::span<const std::uint8_t> bytes);

/// Whether XML text that declares `encoding` in ASCII is UTF-8 all the same: after a UTF-8
/// byte-order mark, or if its declaration would be gibberish in that encoding (as with "UTF-16").
bool contradictsDeclaration(std::span<const std::uint8_t> bytes, std::string_view encoding);

/// The text in UTF-8; a byte-order mark stays and becomes U+FEFF.
///
/// Throws `PlistError` (`Malformed`, without a location): "The text encoding “x” is not supported."
/// and "The text is not valid x.".
std::string toUtf8(std::span<const std::uint8_t> bytes, std::string_view encoding);

}  // namespace plist::detail::TextEncoding
