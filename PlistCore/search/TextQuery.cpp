#include "PlistCore/search/TextQuery.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "PlistCore/text/UnicodeText.h"

namespace plist::detail {

namespace {

constexpr std::size_t leastWindow = std::size_t{1} << 16;

std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view spaces = " \t";
    const std::size_t start = text.find_first_not_of(spaces);
    if (start == std::string_view::npos) {
        return {};
    }
    return text.substr(start, text.find_last_not_of(spaces) + 1 - start);
}

std::size_t roomFor(std::size_t size) noexcept {
    return TextFolding::greatestGrowth * size + TextFolding::slack;
}

/// Takes up to `size` bytes off the front of a text, whole code points only and at least one.
std::string_view takePiece(std::string_view& text, std::size_t size) noexcept {
    if (size < text.size()) {
        while ((static_cast<std::uint8_t>(text[size]) & 0xC0) == 0x80) {
            --size;
        }
    }
    const std::string_view piece = text.substr(0, size);
    text.remove_prefix(piece.size());
    return piece;
}

}  // namespace

TextQuery::TextQuery(std::string_view query, std::stop_token stop) : stop_(std::move(stop)) {
    if (!UnicodeText::isValidUtf8(query)) {
        return;
    }
    query = trimmed(query);
    buffer_.resize(roomFor(query.size()));
    const char* const end = folding_.fold(query, buffer_.data());
    const std::string_view folded(buffer_.data(), static_cast<std::size_t>(end - buffer_.data()));
    if (!folded.empty()) {
        isAscii_ = UnicodeText::isAscii(folded);
        finder_.emplace(folded);
    }
}

std::size_t TextQuery::windowSize() const noexcept {
    return std::max(leastWindow, folded().size());
}

bool TextQuery::matchesInWindows(std::string_view text) const {
    const std::size_t window = windowSize();
    const std::size_t overlap = folded().size() - 1;
    while (text.size() > window + overlap) {
        if (finder_->isIn(text.substr(0, window + overlap))) {
            return true;
        }
        if (stop_.stop_requested()) {
            return false;
        }
        text.remove_prefix(window);
    }
    return finder_->isIn(text);
}

bool TextQuery::matchesFolded(std::string_view text) {
    const std::size_t window = windowSize();
    const std::size_t overlap = folded().size() - 1;
    std::size_t kept = 0;
    while (!text.empty() && !stop_.stop_requested()) {
        const std::string_view piece = takePiece(text, window);
        if (buffer_.size() < kept + roomFor(piece.size())) {
            buffer_.resize(kept + roomFor(piece.size()));
        }
        const char* const end = folding_.fold(piece, buffer_.data() + kept);
        const auto size = static_cast<std::size_t>(end - buffer_.data());
        if (finder_->isInPadded({buffer_.data(), size})) {
            return true;
        }
        kept = std::min(size, overlap);
        std::memmove(buffer_.data(), end - kept, kept);
    }
    return false;
}

}  // namespace plist::detail
