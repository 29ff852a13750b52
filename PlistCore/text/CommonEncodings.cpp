#include "PlistCore/text/CommonEncodings.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "PlistCore/text/Ascii.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

/// The sizes of code units, in bytes.
constexpr std::size_t utf16 = 2;
constexpr std::size_t utf32 = 4;

template <std::size_t size, std::endian order>
char32_t unitAt(const char* place) noexcept {
    char32_t unit = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t index = order == std::endian::big ? i : size - 1 - i;
        unit = unit << 8 | static_cast<std::uint8_t>(place[index]);
    }
    return unit;
}

constexpr bool isSurrogate(char32_t unit) noexcept {
    return unit >= 0xD800 && unit < 0xE000;
}

constexpr bool isTrailingSurrogate(char32_t unit) noexcept {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Takes the first unit off whole units.
template <std::size_t size, std::endian order>
char32_t takeUnit(std::string_view& bytes) noexcept {
    const char32_t unit = unitAt<size, order>(bytes.data());
    bytes.remove_prefix(size);
    return unit;
}

/// Takes the first code point, of one unit or of two, off whole units; nothing if it is none.
template <std::size_t size, std::endian order>
std::optional<char32_t> takeCodePoint(std::string_view& bytes) noexcept {
    const char32_t unit = takeUnit<size, order>(bytes);
    if (!isSurrogate(unit)) {
        return unit <= 0x10FFFF ? std::optional(unit) : std::nullopt;
    }
    if (size != utf16 || isTrailingSurrogate(unit) || bytes.empty()) {
        return std::nullopt;
    }
    const char32_t partner = takeUnit<size, order>(bytes);
    if (!isTrailingSurrogate(partner)) {
        return std::nullopt;
    }
    return 0x10000 + ((unit - 0xD800) << 10) + (partner - 0xDC00);
}

template <std::size_t size, std::endian order>
std::optional<std::string> fromUnits(std::string_view bytes) {
    if (bytes.size() % size != 0) {
        return std::nullopt;
    }
    std::string text;
    text.reserve(bytes.size() / size);
    while (!bytes.empty()) {
        const std::optional<char32_t> codePoint = takeCodePoint<size, order>(bytes);
        if (!codePoint) {
            return std::nullopt;
        }
        UnicodeText::appendUtf8(text, *codePoint);
    }
    return text;
}

/// A mark tells the byte order and is not part of the text; without one the order is the machine's.
template <std::size_t size>
std::optional<std::string> fromMarkedUnits(std::string_view bytes) {
    constexpr char32_t mark = 0xFEFF;
    if (bytes.size() >= size && unitAt<size, std::endian::little>(bytes.data()) == mark) {
        return fromUnits<size, std::endian::little>(bytes.substr(size));
    }
    if (bytes.size() >= size && unitAt<size, std::endian::big>(bytes.data()) == mark) {
        return fromUnits<size, std::endian::big>(bytes.substr(size));
    }
    return fromUnits<size, std::endian::native>(bytes);
}

/// Its bytes are the first 256 code points.
std::optional<std::string> fromLatin1(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        UnicodeText::appendUtf8(text, static_cast<std::uint8_t>(byte));
    }
    return text;
}

struct Name {
    std::string_view name;  ///< in lower case
    CommonEncodings::Decoder decoder;
};

constexpr std::array<Name, 16> names = {{
    {"utf-16le", fromUnits<utf16, std::endian::little>},
    {"utf16le", fromUnits<utf16, std::endian::little>},
    {"utf-16be", fromUnits<utf16, std::endian::big>},
    {"utf16be", fromUnits<utf16, std::endian::big>},
    {"utf-16", fromMarkedUnits<utf16>},
    {"utf16", fromMarkedUnits<utf16>},
    {"utf-32le", fromUnits<utf32, std::endian::little>},
    {"utf32le", fromUnits<utf32, std::endian::little>},
    {"utf-32be", fromUnits<utf32, std::endian::big>},
    {"utf32be", fromUnits<utf32, std::endian::big>},
    {"utf-32", fromMarkedUnits<utf32>},
    {"utf32", fromMarkedUnits<utf32>},
    {"iso-8859-1", fromLatin1},
    {"iso8859-1", fromLatin1},
    {"iso_8859-1", fromLatin1},
    {"latin1", fromLatin1},
}};

}  // namespace

CommonEncodings::Decoder CommonEncodings::decoderOf(std::string_view name) noexcept {
    const auto* const found = std::find_if(names.begin(), names.end(), [name](const Name& known) {
        return Ascii::isInAnyCase(name, known.name);
    });
    return found == names.end() ? nullptr : found->decoder;
}

}  // namespace plist::detail
