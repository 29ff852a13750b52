#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistInteger.h"
#include "PlistCore/PlistStep.h"
#include "PlistCore/PlistString.h"
#include "PlistCore/PlistType.h"
#include "PlistCore/value/PlistCell.h"

#pragma GCC visibility push(default)

namespace plist {

struct PlistEntry;
class PlistEntries;

/// A property-list value: one of nine alternatives, see `PlistType`.
///
/// Values are immutable and 16 bytes small. Copying any value, however large, costs at most one
/// atomic increment; the copies share what they hold, from any thread. Nothing here recurses over
/// the depth of a value: a chain of a million arrays is built, compared and freed on a small stack.
///
/// Reading an alternative that the value does not hold is a programming error and stops the
/// process; ask `type()` first, or use the accessors that return an optional (`asInteger`).
///
/// Views into a value (`text`, `children`, `find` ...) are not to be had of a temporary: they would
/// dangle at once.
class PlistValue {
public:
    /// An empty dictionary.
    PlistValue() noexcept = default;

    /// Values straight from literals, so that a document can be written down:
    ///
    ///     PlistValue::dictionary({{"Name", "North Mole"}, {"Height", 27}, {"Lit", true}})
    ///
    /// Only exact types: characters become no numbers, and pointers no truth values.
    PlistValue(const char* text) : PlistValue(string(text)) {}
    PlistValue(std::string_view text) : PlistValue(string(text)) {}
    PlistValue(const std::string& text) : PlistValue(string(text)) {}
    PlistValue(const PlistString& text) noexcept : PlistValue(string(text)) {}
    template <std::same_as<bool> Truth>
    PlistValue(Truth truth) noexcept : PlistValue(boolean(truth)) {}
    template <PlistWholeNumber Number>
    PlistValue(Number number) : PlistValue(integer(number)) {}
    template <std::floating_point Number>
    PlistValue(Number number) noexcept : PlistValue(real(number)) {}
    PlistValue(std::nullptr_t) = delete;

    static PlistValue dictionary() noexcept { return {}; }

    /// A dictionary of these entries, in this order; repeated keys are kept.
    static PlistValue dictionary(std::vector<PlistEntry> entries);

    /// A dictionary of `keys[i]` and `values[i]`; both have the same length.
    static PlistValue dictionary(std::vector<PlistString> keys, std::vector<PlistValue> values);

    /// A dictionary with the keys of another one, whose list of keys it shares; `values` has as
    /// many items as `other` has entries.
    static PlistValue dictionaryWithKeysOf(const PlistValue& other, std::vector<PlistValue> values);

    static PlistValue array(std::vector<PlistValue> items = {});
    static PlistValue string(const PlistString& text) noexcept;

    /// `number` must lie in the valid integer range (`isValidPlistInteger`).
    static PlistValue integer(PlistInteger number);
    static PlistValue real(double number) noexcept;
    static PlistValue boolean(bool truth) noexcept;

    /// A point in time, in seconds since 2001-01-01T00:00:00Z. Any double, NaN included.
    static PlistValue date(double seconds) noexcept;
    static PlistValue data(std::span<const std::uint8_t> bytes);
    static PlistValue uid(std::uint64_t number) noexcept;

    /// What would be converted unasked does not compile: `integer(3.7)`, `boolean("no")`,
    /// `real('x')`.
    template <typename Other>
    requires(!PlistWholeNumber<Other>) static PlistValue integer(Other) = delete;
    template <typename Other>
    requires(!PlistNumber<Other>) static PlistValue real(Other) = delete;
    template <typename Other>
    requires(!std::same_as<Other, bool>) static PlistValue boolean(Other) = delete;
    template <typename Other>
    requires(!PlistNumber<Other>) static PlistValue date(Other) = delete;
    template <typename Other>
    requires(!PlistWholeNumber<Other>) static PlistValue uid(Other) = delete;

    /// What a new item of the type starts with: empty, 0, false or the reference instant.
    static PlistValue defaultValue(PlistType type) noexcept;

    PlistValue(const PlistValue& other) noexcept : cell_(other.cell_) { cell_.retain(); }
    PlistValue(PlistValue&& other) noexcept
        : cell_(std::exchange(other.cell_, detail::PlistCell())) {}
    PlistValue& operator=(const PlistValue& other) noexcept {
        PlistValue copy(other);
        std::swap(cell_, copy.cell_);
        return *this;
    }
    PlistValue& operator=(PlistValue&& other) noexcept {
        std::swap(cell_, other.cell_);
        return *this;
    }
    ~PlistValue() { cell_.release(); }

    PlistType type() const noexcept { return cell_.type(); }
    bool isContainer() const noexcept { return plist::isContainer(type()); }

    /// The number of entries of a dictionary or items of an array; 0 for every scalar.
    std::size_t childCount() const noexcept { return isContainer() ? cell_.length() : 0; }

    /// The items of an array, or the values of a dictionary in the order of its entries; empty for
    /// a scalar. Valid while this value or a copy of it lives.
    std::span<const PlistValue> children() const& noexcept {
        return isContainer() ? cell_.values() : std::span<const PlistValue>();
    }
    std::span<const PlistValue> children() const&& = delete;

    /// The keys of a dictionary, in the order of its entries; empty for anything else. Valid while
    /// this value or a copy of it lives.
    std::span<const PlistString> keys() const& noexcept {
        return type() == PlistType::dictionary ? cell_.keys() : std::span<const PlistString>();
    }
    std::span<const PlistString> keys() const&& = delete;

    /// Keys and values of a dictionary together, for range-for; empty for anything else. Valid as
    /// long as `keys`.
    PlistEntries entries() const& noexcept;
    PlistEntries entries() const&& = delete;

    /// The child that `step` leads to; null if there is none, also if this is not a container. A
    /// key costs a look at each entry up to the one found, a position costs nothing. Valid while
    /// this value or a copy of it lives.
    const PlistValue* find(const PlistStep& step) const& noexcept;
    const PlistValue* find(const PlistStep& step) const&& = delete;

    /// The descendant that the steps lead to, one after the other: `find({"items", 3, "name"})`.
    const PlistValue* find(std::initializer_list<PlistStep> path) const& noexcept;
    const PlistValue* find(std::initializer_list<PlistStep> path) const&& = delete;

    /// The child that `step` leads to; that there is one is a rule for the caller, who is stopped
    /// otherwise. Costs what `find` costs.
    const PlistValue& operator[](const PlistStep& step) const&;
    const PlistValue& operator[](const PlistStep& step) const&& = delete;

    /// A copy in which `child` stands where `step` leads: in the place of what is there, or, with a
    /// new key, after the last entry of a dictionary. A position must exist. Costs in proportion
    /// to the number of children; what they hold is shared.
    PlistValue with(const PlistStep& step, PlistValue child) const;

    /// A copy of an array with one item more at its end. Costs as `with`.
    PlistValue withAppended(PlistValue item) const;

    /// A copy of a container without what stands where `step` leads; a key takes every entry that
    /// bears it. If there is nothing, it is equal to this value. Costs as `with`.
    PlistValue without(const PlistStep& step) const;

    /// The alternatives, or nothing if the value holds another one. Cost nothing.
    std::optional<PlistString> asString() const;
    std::optional<PlistInteger> asInteger() const noexcept;
    std::optional<double> asReal() const noexcept;
    std::optional<bool> asBoolean() const noexcept;
    std::optional<double> asDate() const noexcept;
    std::optional<std::uint64_t> asUid() const noexcept;
    std::optional<std::span<const std::uint8_t>> asData() const& noexcept;
    std::optional<std::span<const std::uint8_t>> asData() const&& = delete;

    /// An integer that fits into 64 bits with a sign; nothing for larger ones and other types.
    std::optional<std::int64_t> asInt64() const noexcept;

    /// The alternatives; that the value holds this one is a rule for the caller. `text` and
    /// `dataValue` of up to 14 bytes lie inside this very object: they are valid while it lives,
    /// stays where it is and is not assigned to.
    PlistString stringValue() const;
    std::string_view text() const&;
    std::string_view text() const&& = delete;
    PlistInteger integerValue() const;
    double realValue() const;
    bool booleanValue() const;
    double dateValue() const;
    std::span<const std::uint8_t> dataValue() const&;
    std::span<const std::uint8_t> dataValue() const&& = delete;
    std::uint64_t uidValue() const;

    /// The descendant at `path`, a list of positions from here down; nothing if a position is out
    /// of range or leads through a scalar. The empty path gives the value itself.
    std::optional<PlistValue> value(std::span<const std::int64_t> path) const;

    /// How many values stand here and below, this one included, counting a shared value once for
    /// each place where it stands; at most 2^63 - 1. A file of a few hundred bytes can describe
    /// 2^40 values by sharing: whoever walks a value as a whole asks here first. For a value that
    /// shares no containers the result may be a quick upper bound; else the cost follows the
    /// number of different containers.
    std::uint64_t expandedCount() const;

    /// Whether both are the very same object in memory or the same scalar bits. Never walks.
    bool isIdenticalTo(const PlistValue& other) const noexcept;

    /// Structural equality, sensitive to order: same alternative, texts equal as Unicode text,
    /// reals and dates by IEEE comparison (a value that holds NaN is unequal to its own copy, and
    /// 0.0 equals -0.0).
    bool operator==(const PlistValue& other) const;

    /// The representation, for the units that build and take apart values.
    const detail::PlistCell& cell() const noexcept { return cell_; }

    /// Takes over a cell together with its share.
    static PlistValue adopting(detail::PlistCell cell) noexcept {
        PlistValue value;
        value.cell_ = cell;
        return value;
    }

private:
    detail::PlistCell cell_;
};

static_assert(sizeof(PlistValue) == 16);

/// @cond internals
inline std::span<const PlistValue> detail::PlistCell::values() const noexcept {
    if (length() == 0) {
        return {};
    }
    const char* start = static_cast<const char*>(pointer());
    const std::size_t skipped = type() == PlistType::dictionary ? sizeof(const PlistString*) : 0;
    return {reinterpret_cast<const PlistValue*>(start + skipped), length()};
}

inline std::span<const PlistString> detail::PlistCell::keys() const noexcept {
    if (length() == 0) {
        return {};
    }
    return {*static_cast<const PlistString* const*>(pointer()), length()};
}
/// @endcond

}  // namespace plist

#pragma GCC visibility pop
