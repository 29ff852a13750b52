#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

/// The standard Base64 alphabet (RFC 4648, section 4), both ways.
namespace plist::Base64 {

/// The length of the encoding of `count` bytes, padding included.
constexpr std::size_t encodedLength(std::size_t count) {
    return count / 3 * 4 + (count % 3 == 0 ? 0 : 4);
}

/// Writes the encoding of `bytes` with padding and without line breaks to `output`, which has room
/// for `encodedLength`, and returns the end of what it wrote. Encodings of pieces whose lengths are
/// multiples of three can stand one after the other.
std::uint8_t* encode(std::span<const std::uint8_t> bytes, std::uint8_t* output) noexcept;

/// The encoding of `bytes` with padding and without line breaks.
std::string encoded(std::span<const std::uint8_t> bytes);

/// The room in bytes that `decode` needs for a text of `length` bytes; a little more than it can
/// give back, because whole words are written.
constexpr std::size_t decodedCapacity(std::size_t length) {
    return length / 4 * 3 + 8;
}

/// Decodes `text`, which must be valid UTF-8, into `output`, which has room for
/// `decodedCapacity(text.size())`, and returns the number of bytes; nothing if the text is no
/// Base64.
///
/// What is outside the alphabet is ignored. If padding is missing, the text is still taken, but
/// only if nothing beside whitespace and line breaks had to be ignored. Padding may stand at the
/// end only; the spare bits before it need not be zero.
std::optional<std::size_t> decode(std::string_view text, std::uint8_t* output) noexcept;

}  // namespace plist::Base64

#pragma GCC visibility pop
