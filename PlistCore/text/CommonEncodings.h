#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The character sets beside UTF-8 that property lists are found in: UTF-16, UTF-32 and ISO-8859-1.
/// They are read here, because the C library keeps its converters in modules of their own, which
/// small containers and bundles lack.
namespace plist::detail::CommonEncodings {

/// Makes UTF-8 of a text, or nothing if it is not valid.
using Decoder = std::optional<std::string> (*)(std::string_view bytes);

/// The decoder of the character set with this name, in upper or lower case; null for any other.
Decoder decoderOf(std::string_view name) noexcept;

}  // namespace plist::detail::CommonEncodings
