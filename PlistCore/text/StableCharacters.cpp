#include "PlistCore/text/StableCharacters.h"

#include <algorithm>
#include <array>

namespace plist::detail {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

/// From the Unicode character database: combining class 0, quick check for NFC "yes". Characters
/// that are assigned keep both for good, so gaps without characters are left out where a character
/// with a decomposition could still come.
constexpr std::array ranges = {
    Range{0x0000, 0x02FF},    // Latin
    Range{0x0375, 0x0377},    // Greek
    Range{0x0384, 0x0386},    //
    Range{0x0388, 0x038A},    //
    Range{0x038C, 0x038C},    //
    Range{0x038E, 0x03A1},    //
    Range{0x03A3, 0x0482},    // Greek, Cyrillic
    Range{0x048A, 0x052F},    // Cyrillic
    Range{0x0531, 0x0556},    // Armenian
    Range{0x0561, 0x0586},    //
    Range{0x05D0, 0x05EA},    // Hebrew
    Range{0x0620, 0x064A},    // Arabic
    Range{0x0660, 0x066F},    //
    Range{0x0671, 0x06D5},    //
    Range{0x0904, 0x0939},    // Devanagari letters
    Range{0x0E01, 0x0E37},    // Thai letters and vowels
    Range{0x0E40, 0x0E46},    //
    Range{0x10D0, 0x10FF},    // Georgian
    Range{0x1E00, 0x1EFF},    // Latin, with the letters of Vietnamese
    Range{0x2002, 0x2027},    // punctuation
    Range{0x2030, 0x205E},    //
    Range{0x20A0, 0x20BF},    // currencies
    Range{0x2100, 0x2125},    // letterlike symbols
    Range{0x212C, 0x218B},    // letterlike symbols, number forms
    Range{0x2190, 0x2328},    // arrows, operators, technical symbols
    Range{0x232B, 0x23FF},    //
    Range{0x2460, 0x27BF},    // enclosed numbers, shapes, symbols
    Range{0x3000, 0x3029},    // punctuation of East Asia
    Range{0x3030, 0x303F},    //
    Range{0x3041, 0x3096},    // hiragana
    Range{0x309B, 0x30FF},    // katakana
    Range{0x3105, 0x312F},    // bopomofo
    Range{0x3131, 0x318E},    // letters of Hangul
    Range{0x3400, 0x4DBF},    // ideographs
    Range{0x4E00, 0xA48C},    // ideographs, Yi
    Range{0xAC00, 0xD7A3},    // syllables of Hangul
    Range{0xFE00, 0xFE0F},    // variation selectors
    Range{0xFF01, 0xFFBE},    // wide and narrow forms
    Range{0x1F300, 0x1F64F},  // pictures
    Range{0x1F680, 0x1F6C5},  //
    Range{0x1F900, 0x1F9FF},  //
};

}  // namespace

bool StableCharacters::contains(char32_t codePoint) noexcept {
    const auto* const range = std::ranges::lower_bound(ranges, codePoint, {}, &Range::last);
    return range != ranges.end() && range->first <= codePoint;
}

}  // namespace plist::detail
