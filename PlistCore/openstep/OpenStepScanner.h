#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "PlistCore/PlistValue.h"

namespace plist::detail {

/// Walks over a text in the OpenStep form and reads its tokens: whitespace, punctuation, strings
/// and what stands in angle brackets. `OpenStepPlistParser` puts them together.
///
/// The text must be valid UTF-8 and outlive the scanner. Every failure is a `PlistError::Malformed`
/// that names the place; only a failure pays for finding line and column.
class OpenStepScanner {
public:
    /// Starts after a byte-order mark, if there is one; it counts in the columns of line 1.
    explicit OpenStepScanner(std::string_view text);

    bool isAtEnd() const noexcept { return position_ == text_.size(); }

    /// The offset of the next byte, and the way back to one of these.
    std::size_t position() const noexcept { return position_; }
    void rewind(std::size_t position) noexcept { position_ = position; }

    /// Skips whitespace and comments.
    void skipBlanks();

    /// Whether `mark` is next.
    bool isAt(char mark) const noexcept { return !isAtEnd() && text_[position_] == mark; }

    /// Steps over `mark` if it is next.
    bool accept(char mark) noexcept;

    /// Whether a quoted string or a bare word is next.
    bool isAtString() const noexcept;

    /// The string that is next; valid until the next one is read.
    std::string_view readString();

    /// The data, number, boolean or date in the angle brackets that are next.
    PlistValue readBrackets();

    /// Fails with `what` and the place of the next byte: "Expected “;” at line 3, column 9.".
    [[noreturn]] void fail(std::string_view what) const { fail(what, position_); }

private:
    [[noreturn]] void fail(std::string_view what, std::size_t place) const;

    bool startsWith(std::string_view start) const noexcept {
        return text_.substr(position_, start.size()) == start;
    }
    void skipComment();

    std::string_view readQuoted();
    std::string_view readWord();
    void decodeEscape();
    void decodeOctal();
    void decodeCodeUnit();
    std::optional<std::uint32_t> readCodeUnit();

    PlistValue readData();
    PlistValue readBase64();
    PlistValue readTyped();

    std::string_view text_;
    std::size_t position_ = 0;
    std::string decoded_;  ///< the quoted string being read, once it holds an escape
};

}  // namespace plist::detail
