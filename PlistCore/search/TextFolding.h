#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace plist::detail {

/// Folds texts for a search that ignores case and diacritics, by the same rules everywhere: each
/// code point is decomposed canonically, its case is folded fully (Unicode's CaseFolding, status C
/// and F), and marks are taken out. Letters that only look as if they had a mark, such as "ø" and
/// "æ", stay.
///
/// ASCII characters stay as they are, letters of both cases included: whoever compares folded texts
/// ignores the case of ASCII letters (`TextFinder`), so that ASCII texts need no folding at all.
///
/// The marks that go are the nonspacing ones and the dozen spacing ones that canonical ordering
/// moves. What is left has no order to be put in, so a code point folds the same way wherever it
/// stands, and equivalent texts fold alike.
///
/// What a code point becomes is worked out when it is first met and then kept in this object.
class TextFolding {
public:
    /// The most bytes that one byte of a text becomes: a syllable of Hangul has three bytes and
    /// three letters.
    static constexpr std::size_t greatestGrowth = 3;

    /// How many bytes after the folded text may be overwritten.
    static constexpr std::size_t slack = 16;

    /// Writes the folded form of `text`, valid UTF-8, to `place` and returns where it ends. There
    /// is room for `greatestGrowth` * `text.size()` + `slack` bytes. May throw `std::bad_alloc`.
    char* fold(std::string_view text, char* place);

private:
    static constexpr std::size_t pageSize = 256;
    static constexpr std::uint8_t unknown = 0xFF;

    /// The UTF-8 of what a code point becomes.
    struct Folded {
        std::uint8_t size = unknown;
        std::array<char, 15> bytes = {};
    };
    using Page = std::array<Folded, pageSize>;

    const Folded& folded(char32_t codePoint);

    std::vector<std::unique_ptr<Page>> pages_;
};

}  // namespace plist::detail
