#include "PlistCore/binary/Utf16BigEndian.h"

#include <cstdint>
#include <optional>

#include "PlistCore/binary/BigEndian.h"
#include "PlistCore/text/ByteBlock.h"

namespace plist::detail {

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

std::uint8_t byteAt(const char* place) noexcept {
    return static_cast<std::uint8_t>(*place);
}

char32_t unitAt(const char* place) noexcept {
    return BigEndian::load<std::uint16_t>(place);
}

char* putByte(char32_t byte, char* out) noexcept {
    *out = static_cast<char>(byte);
    return out + 1;
}

char* putUnit(char32_t unit, char* out) noexcept {
    BigEndian::store(static_cast<std::uint16_t>(unit), out);
    return out + 2;
}

char* putCodePointAsUnits(char32_t codePoint, char* out) noexcept {
    if (codePoint < 0x10000) {
        return putUnit(codePoint, out);
    }
    const char32_t offset = codePoint - 0x10000;
    return putUnit(0xDC00 + (offset & 0x3FF), putUnit(0xD800 + (offset >> 10), out));
}

char* putContinuation(char32_t bits, char* out) noexcept {
    return putByte(0x80 | (bits & 0x3F), out);
}

char* putCodePointAsUtf8(char32_t codePoint, char* out) noexcept {
    if (codePoint < 0x80) {
        return putByte(codePoint, out);
    }
    if (codePoint < 0x800) {
        return putContinuation(codePoint, putByte(0xC0 | codePoint >> 6, out));
    }
    if (codePoint < 0x10000) {
        out = putByte(0xE0 | codePoint >> 12, out);
    } else {
        out = putContinuation(codePoint >> 12, putByte(0xF0 | codePoint >> 18, out));
    }
    return putContinuation(codePoint, putContinuation(codePoint >> 6, out));
}

bool isLeadingSurrogate(char32_t unit) noexcept {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isTrailingSurrogate(char32_t unit) noexcept {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Takes one code point of valid UTF-8 from `place`.
char32_t takeUtf8(const char*& place) noexcept {
    const std::uint8_t lead = byteAt(place);
    if (lead < 0x80) {
        ++place;
        return lead;
    }
    const int length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t codePoint = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        codePoint = codePoint << 6 | (byteAt(place + i) & 0x3F);
    }
    place += length;
    return codePoint;
}

/// Takes one code point of UTF-16 from `place`, a mended one if its surrogate has no partner.
char32_t takeUtf16(const char*& place, const char* end) noexcept {
    const char32_t unit = unitAt(place);
    place += 2;
    if (!isLeadingSurrogate(unit)) {
        return isTrailingSurrogate(unit) ? replacementCharacter : unit;
    }
    if (place == end || !isTrailingSurrogate(unitAt(place))) {
        return replacementCharacter;
    }
    const char32_t trailing = unitAt(place);
    place += 2;
    return 0x10000 + ((unit - 0xD800) << 10) + (trailing - 0xDC00);
}

/// The next sixteen bytes, if there are so many.
std::optional<ByteBlock> blockAt(const char* place, const char* end) noexcept {
    if (end - place < static_cast<std::ptrdiff_t>(ByteBlock::size)) {
        return std::nullopt;
    }
    return ByteBlock::load(place);
}

}  // namespace

namespace Utf16BigEndian {

std::size_t unitCount(std::string_view utf8) noexcept {
    std::size_t count = 0;
    for (const char character : utf8) {
        // Every byte but a continuation begins a code point; one of four bytes takes two units.
        const auto byte = static_cast<std::uint8_t>(character);
        count += static_cast<std::size_t>((byte & 0xC0) != 0x80);
        count += static_cast<std::size_t>(byte >= 0xF0);
    }
    return count;
}

char* encode(std::string_view utf8, char* out) noexcept {
    const char* place = utf8.data();
    const char* const end = place + utf8.size();
    while (place != end) {
        if (byteAt(place) >= 0x80) {
            out = putCodePointAsUnits(takeUtf8(place), out);
        } else if (const std::optional<ByteBlock> block = blockAt(place, end);
                   block && block->highBits() == 0) {
            block->storeWidened(out);
            place += ByteBlock::size;
            out += 2 * ByteBlock::size;
        } else {
            out = putUnit(byteAt(place++), out);
        }
    }
    return out;
}

char* decode(std::string_view units, char* out) noexcept {
    const char* place = units.data();
    const char* const end = place + units.size();
    while (place != end) {
        if (unitAt(place) >= 0x80) {
            out = putCodePointAsUtf8(takeUtf16(place, end), out);
        } else if (const std::optional<ByteBlock> block = blockAt(place, end);
                   block && block->holdsAsciiUnits()) {
            block->storeNarrowed(out);
            place += ByteBlock::size;
            out += ByteBlock::size / 2;
        } else {
            *out++ = place[1];
            place += 2;
        }
    }
    return out;
}

}  // namespace Utf16BigEndian

}  // namespace plist::detail
