#pragma once

#include <cstddef>
#include <iterator>
#include <ranges>

#include "PlistCore/PlistString.h"
#include "PlistCore/PlistValue.h"

#pragma GCC visibility push(default)

namespace plist {

/// One entry of a dictionary: a key, which may be empty, and its value.
struct PlistEntry {
    PlistString key;
    PlistValue value;

    friend bool operator==(const PlistEntry&, const PlistEntry&) = default;
};

/// The entries of a dictionary in their order, to walk through:
///
///     for (const auto& [key, value] : dictionary.entries()) { ... }
///
/// A view: valid while the dictionary or a copy of it lives. Copies nothing.
class PlistEntries {
public:
    /// An entry where it stands.
    struct Entry {
        const PlistString& key;
        const PlistValue& value;
    };

    class Iterator {
    public:
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;

        Iterator() noexcept = default;
        Iterator(const PlistString* key, const PlistValue* value) noexcept
            : key_(key), value_(value) {}

        Entry operator*() const noexcept { return {*key_, *value_}; }
        Iterator& operator++() noexcept {
            ++key_;
            ++value_;
            return *this;
        }
        Iterator operator++(int) noexcept {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const Iterator& left, const Iterator& right) noexcept {
            return left.value_ == right.value_;
        }

    private:
        const PlistString* key_ = nullptr;
        const PlistValue* value_ = nullptr;
    };

    explicit PlistEntries(const PlistValue& dictionary) noexcept
        : first_(dictionary.keys().data()), values_(dictionary.children()) {}

    Iterator begin() const noexcept { return {first_, values_.data()}; }
    Iterator end() const noexcept { return {first_ + size(), values_.data() + size()}; }
    std::size_t size() const noexcept { return first_ == nullptr ? 0 : values_.size(); }
    bool isEmpty() const noexcept { return size() == 0; }

private:
    const PlistString* first_;
    std::span<const PlistValue> values_;
};

inline PlistEntries PlistValue::entries() const& noexcept {
    return PlistEntries(*this);
}

}  // namespace plist

/// @cond internals
// Iterators stay valid without the range they come from.
template <>
inline constexpr bool std::ranges::enable_borrowed_range<plist::PlistEntries> = true;
/// @endcond

#pragma GCC visibility pop
