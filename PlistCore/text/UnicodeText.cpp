#include "PlistCore/text/UnicodeText.h"

#include <utf8proc.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

#include "PlistCore/text/ByteBlock.h"
#include "PlistCore/text/StableCharacters.h"
#include "PlistCore/text/Utf8Validation.h"

namespace plist::detail {

namespace UnicodeText {
namespace {

constexpr std::uint64_t highBits = 0x8080808080808080;
constexpr std::size_t longestSequence = 4;

std::uint64_t load64(const char* bytes) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

std::uint8_t byteAt(const char* place) noexcept {
    return static_cast<std::uint8_t>(*place);
}

/// The first byte from 0x80 on, or `end`.
const char* skipAscii(const char* place, const char* end) noexcept {
    while (end - place >= 16) {
        if (((load64(place) | load64(place + 8)) & highBits) != 0) {
            break;
        }
        place += 16;
    }
    while (place != end && byteAt(place) < 0x80) {
        ++place;
    }
    return place;
}

bool isBetween(std::uint8_t byte, unsigned least, unsigned greatest) noexcept {
    return byte >= least && byte <= greatest;
}

bool isContinuation(std::uint8_t byte) noexcept {
    return (byte & 0xC0) == 0x80;
}

/// The length of the well-formed sequence of several bytes that starts a word of four bytes, the
/// first of them lowest, or 0: table 3-7 of the Unicode standard. Looks at the fixed bits of a
/// whole sequence at once, then at those that tell overlong forms, surrogates and code points above
/// U+10FFFF.
inline std::size_t sequenceLength(std::uint32_t word) noexcept {
    if ((word & 0xC0C0F0) == 0x8080E0) {
        const std::uint32_t distinctive = word & 0x200F;
        return distinctive != 0 && distinctive != 0x200D ? 3 : 0;
    }
    if ((word & 0xC0E0) == 0x80C0) {
        return (word & 0x1E) != 0 ? 2 : 0;
    }
    if ((word & 0xC0C0C0F8) == 0x808080F0) {
        const std::uint32_t plane = (word & 7) << 2 | ((word >> 12) & 3);
        return plane >= 1 && plane <= 16 ? 4 : 0;
    }
    return 0;
}

/// The four bytes at `place`, the first of them lowest; zeros stand for those after `end`.
inline std::uint32_t wordAt(const char* place, const char* end) noexcept {
    const std::size_t available = std::min<std::size_t>(static_cast<std::size_t>(end - place), 4);
    std::uint32_t word = 0;
    if (std::endian::native == std::endian::little && available == 4) {
        std::memcpy(&word, place, 4);
        return word;
    }
    for (std::size_t index = 0; index < available; ++index) {
        word |= std::uint32_t{byteAt(place + index)} << (8 * index);
    }
    return word;
}

/// Whether a byte stands only in code points that composition neither changes nor joins to what
/// is before them: everything below U+0300, U+0400 to U+047F (Cyrillic), U+4000 to U+9FFF
/// (ideographs) and U+B000 to U+CFFF (Hangul syllables). Their quick-check property for NFC is
/// "yes" and their combining class is 0.
bool staysInComposition(std::uint8_t byte) noexcept {
    return byte < 0xCC || isBetween(byte, 0xD0, 0xD1) || isBetween(byte, 0xE4, 0xE9) ||
           isBetween(byte, 0xEB, 0xEC);
}

/// The same for sixteen bytes.
unsigned stayingInComposition(const ByteBlock& block) noexcept {
    return block.between(0, 0xCB) | block.between(0xD0, 0xD1) | block.between(0xE4, 0xE9) |
           block.between(0xEB, 0xEC);
}

/// The first byte for which that is not known, or `end`.
const char* skipComposed(const char* place, const char* end) noexcept {
    while (end - place >= static_cast<std::ptrdiff_t>(ByteBlock::size)) {
        const int count = std::countr_one(stayingInComposition(ByteBlock::load(place)));
        place += count;
        if (count != static_cast<int>(ByteBlock::size)) {
            return place;
        }
    }
    while (place != end && staysInComposition(byteAt(place))) {
        ++place;
    }
    return place;
}

using CodePoints = std::vector<utf8proc_int32_t>;

constexpr auto composition = static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE);

/// Appends the full canonical decomposition of a code point, which has at most four.
void appendDecomposed(CodePoints& points, char32_t codePoint) {
    utf8proc_int32_t parts[8] = {};
    int boundary = 0;
    const utf8proc_ssize_t count = utf8proc_decompose_char(static_cast<utf8proc_int32_t>(codePoint),
                                                           parts, 8, composition, &boundary);
    points.insert(points.end(), parts, parts + std::clamp<utf8proc_ssize_t>(count, 0, 8));
}

auto combiningClass(utf8proc_int32_t codePoint) noexcept {
    return utf8proc_get_property(codePoint)->combining_class;
}

/// Puts each run of combining marks into canonical order. utf8proc's own way of doing this takes
/// time with the square of the run, so that a crafted text of a megabyte would not end.
void orderMarks(CodePoints& points) {
    const auto isMark = [](utf8proc_int32_t point) { return combiningClass(point) != 0; };
    const auto classesAscend = [](utf8proc_int32_t left, utf8proc_int32_t right) {
        return combiningClass(left) < combiningClass(right);
    };
    auto start = std::find_if(points.begin(), points.end(), isMark);
    while (start != points.end()) {
        const auto end = std::find_if_not(start, points.end(), isMark);
        if (!std::is_sorted(start, end, classesAscend)) {
            std::stable_sort(start, end, classesAscend);
        }
        start = std::find_if(end, points.end(), isMark);
    }
}

/// Joins decomposed code points in canonical order. The place before the first trailing consonant
/// of Hangul, U+11A7, joins with nothing, but utf8proc swallows it after a syllable; so it always
/// begins a part of its own.
void composeInPlace(CodePoints& points) {
    constexpr utf8proc_int32_t beforeTrailingConsonants = 0x11A7;
    auto output = points.begin();
    for (auto start = points.begin(); start != points.end();) {
        const auto end = std::find(start + 1, points.end(), beforeTrailingConsonants);
        const utf8proc_ssize_t length = utf8proc_normalize_utf32(&*start, end - start, composition);
        output = std::move(start, start + length, output);
        start = end;
    }
    points.erase(output, points.end());
}

std::string encoded(const CodePoints& points) {
    std::string text;
    text.reserve(points.size() * 2);
    for (const utf8proc_int32_t point : points) {
        appendUtf8(text, static_cast<char32_t>(point));
    }
    return text;
}

/// The code point of a sequence of valid UTF-8.
char32_t decoded(std::string_view sequence) noexcept {
    const std::uint8_t lead = byteAt(sequence.data());
    if (sequence.size() == 1) {
        return lead;
    }
    char32_t codePoint = lead & (0x7FU >> sequence.size());
    for (const char byte : sequence.substr(1)) {
        codePoint = codePoint << 6 | (static_cast<std::uint8_t>(byte) & 0x3F);
    }
    return codePoint;
}

template <typename Predicate>
std::string_view trimmedWhile(std::string_view text, Predicate isTrimmed) noexcept {
    for (std::string_view rest = text; !rest.empty() && isTrimmed(takeFirst(rest));) {
        text = rest;
    }
    for (std::string_view rest = text; !rest.empty() && isTrimmed(takeLast(rest));) {
        text = rest;
    }
    return text;
}

}  // namespace

bool isAscii(std::string_view bytes) noexcept {
    const char* const end = bytes.data() + bytes.size();
    return skipAscii(bytes.data(), end) == end;
}

bool isValidUtf8(std::string_view bytes) noexcept {
    // 13 against 3 GB/s on texts that are half ASCII, as measured on one core.
    if (bytes.size() >= 64 && Utf8Validation::isAvailable()) {
        return Utf8Validation::isValid(bytes);
    }
    const char* const end = bytes.data() + bytes.size();
    const char* place = skipAscii(bytes.data(), end);
    while (place != end) {
        // Texts that are not ASCII rarely leave it for one character only.
        while (place != end && byteAt(place) >= 0x80) {
            const std::size_t length = sequenceLength(wordAt(place, end));
            if (length == 0) {
                return false;
            }
            place += length;
        }
        place = skipAscii(place, end);
    }
    return true;
}

bool isPlainlyComposed(std::string_view text) noexcept {
    const char* place = text.data();
    const char* const end = place + text.size();
    while ((place = skipComposed(place, end)) != end) {
        std::string_view rest(place, static_cast<std::size_t>(end - place));
        if (!StableCharacters::contains(takeFirst(rest))) {
            return false;
        }
        place = rest.data();
    }
    return true;
}

std::string mended(std::string_view bytes) {
    if (isValidUtf8(bytes)) {
        return std::string(bytes);
    }
    std::string valid;
    for (const char byte : bytes) {
        const bool isPlain = static_cast<std::uint8_t>(byte) < 0x80;
        valid += isPlain ? std::string_view(&byte, 1) : std::string_view("\uFFFD");
    }
    return valid;
}

std::string composed(std::string_view text) {
    if (isPlainlyComposed(text)) {
        return std::string(text);
    }
    CodePoints points;
    points.reserve(text.size());
    for (std::string_view rest = text; !rest.empty();) {
        appendDecomposed(points, takeFirst(rest));
    }
    orderMarks(points);
    composeInPlace(points);
    return encoded(points);
}

bool equal(std::string_view left, std::string_view right) {
    if (left == right) {
        return true;
    }
    if (isPlainlyComposed(left) && isPlainlyComposed(right)) {
        return false;
    }
    return composed(left) == composed(right);
}

int compare(std::string_view left, std::string_view right) {
    // The byte order of UTF-8 is the order of the code points.
    if (isPlainlyComposed(left) && isPlainlyComposed(right)) {
        return left.compare(right);
    }
    return composed(left).compare(composed(right));
}

std::size_t hash(std::string_view text) {
    if (isPlainlyComposed(text)) {
        return std::hash<std::string_view>{}(text);
    }
    return std::hash<std::string>{}(composed(text));
}

char32_t takeFirst(std::string_view& text) noexcept {
    std::size_t length = 1;
    while (length < std::min(text.size(), longestSequence) &&
           isContinuation(byteAt(text.data() + length))) {
        ++length;
    }
    const char32_t codePoint = decoded(text.substr(0, length));
    text.remove_prefix(length);
    return codePoint;
}

char32_t takeLast(std::string_view& text) noexcept {
    std::size_t length = 1;
    while (length < std::min(text.size(), longestSequence) &&
           isContinuation(byteAt(text.data() + text.size() - length))) {
        ++length;
    }
    const char32_t codePoint = decoded(text.substr(text.size() - length));
    text.remove_suffix(length);
    return codePoint;
}

bool isWhitespace(char32_t codePoint) noexcept {
    switch (codePoint) {
        case U'\t':
        case U' ':
        case 0x00A0:
        case 0x1680:
        case 0x202F:
        case 0x205F:
        case 0x3000:
            return true;
        default:
            return codePoint >= 0x2000 && codePoint <= 0x200A;
    }
}

bool isLineBreak(char32_t codePoint) noexcept {
    return (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85 || codePoint == 0x2028 ||
           codePoint == 0x2029;
}

void appendUtf8(std::string& text, char32_t codePoint) {
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto appendContinuation = [&append, codePoint](int shift) {
        append(0x80 | (codePoint >> shift & 0x3F));
    };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6);
        appendContinuation(0);
    } else if (codePoint < 0x10000) {
        append(0xE0 | codePoint >> 12);
        appendContinuation(6);
        appendContinuation(0);
    } else {
        append(0xF0 | codePoint >> 18);
        appendContinuation(12);
        appendContinuation(6);
        appendContinuation(0);
    }
}

std::string_view trimmed(std::string_view text) noexcept {
    return trimmedWhile(text, [](char32_t point) { return isWhitespace(point); });
}

std::string_view trimmedWithLineBreaks(std::string_view text) noexcept {
    return trimmedWhile(text,
                        [](char32_t point) { return isWhitespace(point) || isLineBreak(point); });
}

}  // namespace UnicodeText

}  // namespace plist::detail
