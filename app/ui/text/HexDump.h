#pragma once

#include <QString>
#include <cstdint>
#include <span>

/// Bytes as lines of hexadecimal digits.
namespace HexDump {

/// The most bytes that are shown.
inline constexpr std::size_t limit = 0x10000;

/// A line for every 16 bytes: the offset in eight digits, two blanks, and the bytes in groups of
/// four. Stops at the limit.
QString text(std::span<const std::uint8_t> bytes);

/// "Showing the first 66 kB." if there are more bytes than the limit, else empty.
QString note(std::span<const std::uint8_t> bytes);

}  // namespace HexDump
