#include "PlistCore/PlistInteger.h"

#include <array>
#include <charconv>

std::string decimalText(PlistInteger number) {
    // The longest is "18446744073709551615"; "-9223372036854775808" has as many characters.
    std::array<char, 20> text = {};
    char* const end = text.data() + text.size();
    const auto result = number < 0
                            ? std::to_chars(text.data(), end, static_cast<std::int64_t>(number))
                            : std::to_chars(text.data(), end, static_cast<std::uint64_t>(number));
    return {text.data(), result.ptr};
}
