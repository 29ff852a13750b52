#include "PlistCore/search/TextFolding.h"

#include <utf8proc.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>
#include <string>

#include "PlistCore/PlistCheck.h"
#include "PlistCore/text/ByteBlock.h"
#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

constexpr std::size_t codePointCount = 0x110000;

/// More than any code point decomposes or folds into.
constexpr std::size_t mostParts = 16;
using Parts = std::array<utf8proc_int32_t, mostParts>;

std::span<const utf8proc_int32_t> parts(utf8proc_int32_t codePoint, int options, Parts& buffer) {
    int boundary = 0;
    const utf8proc_ssize_t count = utf8proc_decompose_char(
        codePoint, buffer.data(), static_cast<utf8proc_ssize_t>(buffer.size()),
        static_cast<utf8proc_option_t>(options), &boundary);
    plistCheck(count >= 0 && static_cast<std::size_t>(count) <= buffer.size(),
               "a code point has fewer parts");
    return {buffer.data(), static_cast<std::size_t>(count)};
}

bool isMark(utf8proc_int32_t codePoint) {
    const utf8proc_property_t* property = utf8proc_get_property(codePoint);
    return property->category == UTF8PROC_CATEGORY_MN || property->combining_class != 0;
}

std::string foldedText(char32_t codePoint) {
    Parts decomposed = {};
    Parts folded = {};
    std::string text;
    for (const utf8proc_int32_t part :
         parts(static_cast<utf8proc_int32_t>(codePoint), UTF8PROC_DECOMPOSE, decomposed)) {
        for (const utf8proc_int32_t point :
             parts(part, UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD, folded)) {
            if (!isMark(point)) {
                UnicodeText::appendUtf8(text, static_cast<char32_t>(point));
            }
        }
    }
    return text;
}

/// Copies ASCII up to the first other byte; takes it off `text` and returns where the copy ends.
char* copyAscii(std::string_view& text, char* place) noexcept {
    while (text.size() >= ByteBlock::size) {
        const ByteBlock block = ByteBlock::load(text.data());
        block.store(place);
        const auto count = std::min<std::size_t>(
            ByteBlock::size, static_cast<std::size_t>(std::countr_zero(block.highBits())));
        place += count;
        text.remove_prefix(count);
        if (count < ByteBlock::size) {
            return place;
        }
    }
    while (!text.empty() && static_cast<std::uint8_t>(text.front()) < 0x80) {
        *place++ = text.front();
        text.remove_prefix(1);
    }
    return place;
}

}  // namespace

char* TextFolding::fold(std::string_view text, char* place) {
    for (;;) {
        place = copyAscii(text, place);
        // Texts that are not ASCII rarely leave it for one character only.
        while (!text.empty() && static_cast<std::uint8_t>(text.front()) >= 0x80) {
            const Folded& point = folded(UnicodeText::takeFirst(text));
            std::memcpy(place, point.bytes.data(), point.bytes.size());
            place += point.size;
        }
        if (text.empty()) {
            return place;
        }
    }
}

const TextFolding::Folded& TextFolding::folded(char32_t codePoint) {
    if (pages_.empty()) {
        pages_.resize(codePointCount / pageSize);
    }
    std::unique_ptr<Page>& page = pages_[codePoint / pageSize];
    if (!page) {
        page = std::make_unique<Page>();
    }
    Folded& entry = (*page)[codePoint % pageSize];
    if (entry.size == unknown) {
        const std::string text = foldedText(codePoint);
        plistCheck(text.size() <= entry.bytes.size(), "a code point folds to fewer bytes");
        std::copy(text.begin(), text.end(), entry.bytes.begin());
        entry.size = static_cast<std::uint8_t>(text.size());
    }
    return entry;
}

}  // namespace plist::detail
