#include "PlistCore/PlistInteger.h"

#include <array>
#include <charconv>

namespace plist {

std::string decimalText(PlistInteger number) {
    std::array<char, longestDecimalText> buffer = {};
    return std::string(decimalText(number, buffer));
}

std::string_view decimalText(PlistInteger number,
                             std::span<char, longestDecimalText> buffer) noexcept {
    char* const end = buffer.data() + buffer.size();
    const auto result = number < 0
                            ? std::to_chars(buffer.data(), end, static_cast<std::int64_t>(number))
                            : std::to_chars(buffer.data(), end, static_cast<std::uint64_t>(number));
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

}  // namespace plist
