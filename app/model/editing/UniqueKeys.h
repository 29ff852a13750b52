#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>
#include <unordered_set>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNodePtr.h"

/// Gives out keys that no sibling has: "New Item", "New Item 2", "New Item 3", ... Keys are equal
/// as Unicode text.
class UniqueKeys {
public:
    /// What an item is called that nobody has named.
    static constexpr const char* newItem = "New Item";

    UniqueKeys() = default;

    /// The keys of these nodes are taken.
    explicit UniqueKeys(std::span<const PlistNodePtr> siblings);

    bool isTaken(const PlistString& key) const { return taken_.contains(key); }

    /// `wanted` if it is free, else followed by a space and the first number from 2 on that makes
    /// it so. The result is taken from then on.
    PlistString take(const PlistString& wanted);

private:
    std::unordered_set<PlistString> taken_;
    /// The next number to try for a wanted key: those before are taken for good.
    std::unordered_map<PlistString, std::uint64_t> nextNumbers_;
};
