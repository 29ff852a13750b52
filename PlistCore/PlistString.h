#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "PlistCore/value/PlistCell.h"

#pragma GCC visibility push(default)

namespace plist {

/// An immutable text in 16 bytes: the key of an entry, or what a string value holds.
///
/// The text is valid UTF-8 (no surrogates) and may hold NUL. Up to 14 bytes lie in place; longer
/// texts are shared between copies, so that copying costs at most one atomic increment.
class PlistString {
public:
    /// The empty text.
    PlistString() noexcept : cell_(PlistType::string, detail::PlistCell::ascii, 0) {}

    /// Copies `utf8`. That it is valid UTF-8 is a rule for the caller, who is stopped if it is
    /// broken: no value holds a text that cannot be written. Foreign bytes go through `fromUtf8`.
    /// Costs a look at each byte, and memory for more than 14 of them.
    PlistString(std::string_view utf8);
    PlistString(const std::string& utf8) : PlistString(std::string_view(utf8)) {}
    PlistString(const char* utf8) : PlistString(std::string_view(utf8)) {}
    PlistString(std::nullptr_t) = delete;

    /// The text of bytes from anywhere; nothing if they are not valid UTF-8.
    static std::optional<PlistString> fromUtf8(std::string_view bytes);

    PlistString(const PlistString& other) noexcept : cell_(other.cell_) { cell_.retain(); }
    PlistString(PlistString&& other) noexcept : cell_(std::exchange(other.cell_, empty())) {}
    PlistString& operator=(const PlistString& other) noexcept {
        PlistString copy(other);
        std::swap(cell_, copy.cell_);
        return *this;
    }
    PlistString& operator=(PlistString&& other) noexcept {
        std::swap(cell_, other.cell_);
        return *this;
    }
    ~PlistString() { cell_.release(); }

    /// The UTF-8 bytes. Short texts lie inside this very object: the view is valid while this
    /// object lives, stays where it is and is not assigned to.
    std::string_view view() const& noexcept { return cell_.bytes(); }
    std::string_view view() const&& = delete;

    std::size_t size() const noexcept { return view().size(); }
    bool isEmpty() const noexcept { return view().empty(); }

    /// Whether every byte is below 0x80.
    bool isAscii() const noexcept { return cell_.has(detail::PlistCell::ascii); }

    /// Equality as Unicode text: canonically equivalent spellings are equal. Costs a byte
    /// comparison unless one side is not ASCII.
    friend bool operator==(const PlistString& left, const PlistString& right) {
        return left.view() == right.view() || equalsCanonically(left, right);
    }

    /// The one order of keys everywhere, by the code points of the canonical compositions:
    /// negative, zero (for equal texts) or positive.
    int compare(const PlistString& other) const;

    /// A hash that agrees with `==`: canonically equivalent texts have the same.
    std::size_t hash() const;

    /// The representation, for the units that build and take apart values.
    const detail::PlistCell& cell() const noexcept { return cell_; }

    /// Takes over a cell of a string together with its share.
    static PlistString adopting(detail::PlistCell cell) noexcept {
        PlistString text;
        text.cell_ = cell;
        return text;
    }

private:
    static detail::PlistCell empty() noexcept {
        return {PlistType::string, detail::PlistCell::ascii, 0};
    }
    static bool equalsCanonically(const PlistString& left, const PlistString& right);

    detail::PlistCell cell_;
};

}  // namespace plist

#pragma GCC visibility pop

/// Equal texts, canonically equivalent ones included, have equal hashes.
template <>
struct std::hash<plist::PlistString> {
    std::size_t operator()(const plist::PlistString& text) const { return text.hash(); }
};
