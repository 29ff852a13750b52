#pragma once

#include <QString>
#include <cstdint>
#include <span>

/// Data for people: how much it is, and its bytes in hexadecimal digits.
namespace DataText {

/// "Zero kB", "1 byte", "12 bytes", then decimal units: whole kB, one decimal for MB, two from GB
/// on, without zeros at the end ("66 kB", "1.2 MB", "3 GB"). A figure that rounds up to 1000 moves
/// to the next unit. The decimal sign is the user's.
QString size(qint64 count);

/// What the table shows of a data item: the size, and the first eight bytes in groups of four:
/// "12 bytes · 00010203 04050607…". Empty data gives the size alone.
QString summary(std::span<const std::uint8_t> bytes);

/// The most bytes that a dump shows.
inline constexpr std::size_t dumpLimit = 0x10000;

/// A line for every 16 bytes: the offset in eight digits, two spaces, and the bytes in groups of
/// four. Stops at the limit.
QString dump(std::span<const std::uint8_t> bytes);

/// "Showing the first 66 kB." if there are more bytes than the limit, else empty.
QString dumpNote(std::span<const std::uint8_t> bytes);

}  // namespace DataText
