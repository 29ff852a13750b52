#include "PlistCore/xml/XMLEscaping.h"

#include <bit>
#include <cstring>

#include "PlistCore/text/ByteBlock.h"

namespace plist::detail {

namespace {

template <std::size_t size>
char* put(const char (&literal)[size], char* out) noexcept {
    std::memcpy(out, literal, size - 1);
    return out + size - 1;
}

char* writeByte(char byte, char* out) noexcept {
    switch (byte) {
        case '&':
            return put("&amp;", out);
        case '<':
            return put("&lt;", out);
        case '>':
            return put("&gt;", out);
        default:
            *out = byte;
            return out + 1;
    }
}

char* writeBytes(const char* from, const char* end, char* out) noexcept {
    for (; from != end; ++from) {
        out = writeByte(*from, out);
    }
    return out;
}

}  // namespace

namespace XMLEscaping {

char* write(std::string_view text, char* out) noexcept {
    const char* from = text.data();
    const char* const end = from + text.size();
    const char* const start = out;
    while (end - from >= static_cast<std::ptrdiff_t>(ByteBlock::size)) {
        const ByteBlock block = ByteBlock::load(from);
        block.store(out);
        const unsigned markup = block.markup();
        const int clean =
            markup == 0 ? static_cast<int>(ByteBlock::size) : std::countr_zero(markup);
        from += clean;
        out += clean;
        if (markup != 0) {
            out = writeByte(*from++, out);
        }
    }
    // Texts without markup are the rule: there the last block can overlap the one before it.
    const bool isUnchanged = out - start == from - text.data();
    if (from != end && isUnchanged && text.size() >= ByteBlock::size) {
        const ByteBlock last = ByteBlock::load(end - ByteBlock::size);
        if (last.markup() == 0) {
            last.store(out + (end - from) - ByteBlock::size);
            return out + (end - from);
        }
    }
    return writeBytes(from, end, out);
}

char* writeInPlace(const PlistCell& cell, char* out) noexcept {
    const std::string_view text = cell.bytes();
    const ByteBlock block = ByteBlock::load(&cell).withoutFirstTwo();
    const unsigned wanted = (1U << text.size()) - 1;
    if ((block.markup() & wanted) == 0) {
        block.store(out);
        return out + text.size();
    }
    return writeBytes(text.data(), text.data() + text.size(), out);
}

}  // namespace XMLEscaping

}  // namespace plist::detail
