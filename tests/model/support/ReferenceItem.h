#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/runtime/Plist.h"

/// An item of the plain model that random tests compare the real one with: a record that holds all
/// its children by value. Copying a tree copies everything, and nothing is done lazily.
struct ReferenceItem {
    /// Which item it is, wherever it moves and however it changes; copies made for the undo history
    /// are the same item. The counterpart of a node's identity.
    using Name = std::uint64_t;

    Name name = 0;
    std::string key;
    PlistValue scalar;  ///< the empty value of its type for a container
    std::vector<ReferenceItem> children;

    PlistType type() const { return scalar.type(); }
    bool isContainer() const { return scalar.isContainer(); }

    /// A new item with all that is in the value. Takes new names from `lastName`.
    static ReferenceItem make(const std::string& key, const PlistValue& value, Name& lastName);

    PlistValue value() const;

    /// Whether `value` is exactly this, to the byte and the sign of zero. Keys in arrays and the
    /// key of the item itself do not count.
    bool is(const PlistValue& value) const;

    /// The item with this name at or below; null if there is none.
    ReferenceItem* find(Name wanted);
    const ReferenceItem* find(Name wanted) const;

    /// The item that has a child with this name; null if there is none.
    ReferenceItem* findParent(Name child);

    bool contains(Name wanted) const { return find(wanted) != nullptr; }

    /// How many items there are at and below.
    std::size_t count() const;

    /// One line for each item.
    QString text(int depth = 0) const;
};

/// What random tests know of Unicode: enough for the few letters that they use.
namespace ReferenceText {

/// A text of which canonically equivalent ones are the same bytes.
std::string canonical(std::string_view text);

bool areEqual(std::string_view left, std::string_view right);

/// Whether two scalars count as the same value; NaN differs from itself.
bool areEqualScalars(const PlistValue& left, const PlistValue& right);

/// Whether two scalars are the same to the byte.
bool areIdentical(const PlistValue& left, const PlistValue& right);

}  // namespace ReferenceText
