#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace plist::detail {

/// The same bytes as characters.
inline std::string_view charactersOf(std::span<const std::uint8_t> bytes) noexcept {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The same characters as bytes.
inline std::span<const std::uint8_t> bytesOf(std::string_view characters) noexcept {
    return {reinterpret_cast<const std::uint8_t*>(characters.data()), characters.size()};
}

}  // namespace plist::detail
