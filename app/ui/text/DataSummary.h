#pragma once

#include <QString>
#include <cstdint>
#include <span>

/// What the table shows of a data item.
namespace DataSummary {

/// The size, and the first eight bytes in groups of four: "12 bytes · 00010203 04050607…". Empty
/// data gives the size alone.
QString text(std::span<const std::uint8_t> bytes);

/// Two upper-case hexadecimal digits for each byte, with a blank between groups of four bytes.
QString hexadecimal(std::span<const std::uint8_t> bytes);

}  // namespace DataSummary
