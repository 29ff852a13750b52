#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNodePtr.h"

/// The keys of a list of nodes, for finding equal ones. Keys are equal as Unicode text.
///
/// One flat table with open addressing: for a million keys about ten times as fast as the standard
/// set, whose entries are allocated one by one. The library has such a table for writing binary
/// files, and keeps it to itself: that one grows, and its numbers are not those of nodes. What the
/// two have in common is the loop that looks for a slot.
class KeyTable {
public:
    /// An empty table with room for all of `nodes`, which must stay as they are.
    explicit KeyTable(std::span<const PlistNodePtr> nodes);

    /// Adds up to `count` more keys in order, and calls `repeated(earlier, later)` for each that
    /// equals one before it, with the indexes of the first of its kind and its own. True when all
    /// have been added.
    template <typename Repeated>
    bool insertSome(std::size_t count, const Repeated& repeated) {
        std::array<std::uint64_t, batchSize> hashes;
        const std::size_t end = added_ + std::min(count, nodes_.size() - added_);
        while (added_ < end) {
            const std::size_t batch = std::min(batchSize, end - added_);
            prepare(added_, std::span(hashes).first(batch));
            for (std::size_t i = 0; i < batch; ++i, ++added_) {
                const std::size_t first = insert(added_, hashes[i]);
                if (first != added_) {
                    repeated(first, added_);
                }
            }
        }
        return added_ == nodes_.size();
    }

    /// Adds all keys.
    template <typename Repeated>
    void insertAll(const Repeated& repeated) {
        insertSome(nodes_.size(), repeated);
    }

    /// The first index with an equal key, or nothing.
    std::optional<std::size_t> find(const PlistString& key) const;

private:
    struct Slot {
        std::uint32_t tag = 0;     ///< bits of the hash that do not choose the slot
        std::uint32_t number = 0;  ///< index + 1; 0 for a free slot
    };

    /// The slots of a large table are far apart: those of a whole batch are fetched together.
    static constexpr std::size_t batchSize = 32;

    /// Works out the hashes of the keys from `start` on, and has their slots fetched.
    void prepare(std::size_t start, std::span<std::uint64_t> hashes) const;

    /// Adds one key unless an equal one is there. Returns the index whose key is in the table.
    std::size_t insert(std::size_t index, std::uint64_t hash);

    /// The slot that holds an equal key, or the free one where it would go.
    std::size_t slotFor(const PlistString& key, std::uint64_t hash) const;

    std::span<const PlistNodePtr> nodes_;
    std::vector<Slot> slots_;
    std::size_t mask_;
    std::size_t added_ = 0;  ///< how many keys are in the table
};
