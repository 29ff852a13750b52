#pragma once

#include <optional>
#include <stop_token>
#include <string_view>
#include <vector>

#include "PlistCore/search/TextFinder.h"
#include "PlistCore/search/TextFolding.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

/// A query of a search, folded once, against which many texts are tested: whether they contain it
/// when case and diacritics are ignored (`TextFolding`).
///
/// ASCII texts are searched where they lie. For others one buffer is kept, so an object of this
/// class serves one thread.
class TextQuery {
public:
    /// `query` without the spaces and tabs around it, and without anything if it is not valid
    /// UTF-8. Once `stop` says so, tests of long texts end early, with any answer.
    TextQuery(std::string_view query, std::stop_token stop);

    /// Whether nothing is left of the query once it is trimmed and folded. It matches nothing then.
    bool isEmpty() const noexcept { return !finder_; }

    /// The folded query, its ASCII letters in lower case; not for an empty query.
    std::string_view folded() const noexcept { return finder_->pattern(); }

    /// Whether the text of a string's cell contains the query; not for an empty query.
    bool matches(const PlistCell& string) {
        if (!string.has(PlistCell::ascii)) {
            return matchesFolded(string.bytes());
        }
        if (!isAscii_) {
            return false;
        }
        return string.has(PlistCell::outOfLine) ? matchesInWindows(string.bytes())
                                                : finder_->isInPlace(string);
    }

    /// Whether a short ASCII text contains the query; not for an empty query.
    bool matchesAscii(std::string_view text) const noexcept { return finder_->isIn(text); }

private:
    bool matchesInWindows(std::string_view text) const;
    bool matchesFolded(std::string_view text);

    /// How much of a text is searched before the next look at the stop token: enough to make the
    /// looks and the overlap, which is as long as the query, cheap.
    std::size_t windowSize() const noexcept;

    std::stop_token stop_;
    TextFolding folding_;
    std::optional<TextFinder> finder_;
    bool isAscii_ = false;
    std::vector<char> buffer_;
};

}  // namespace plist::detail
