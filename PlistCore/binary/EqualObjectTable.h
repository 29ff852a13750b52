#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "PlistCore/memory/ZeroedArray.h"

namespace plist::detail {

/// Finds out which scalars a binary file already holds: a flat table from hashes to object numbers
/// with open addressing. It knows nothing of the objects; who asks compares them.
class EqualObjectTable {
public:
    /// Made for `expectedCount` objects; holds more, but then moves its slots now and then. Throws
    /// `std::bad_alloc`.
    explicit EqualObjectTable(std::size_t expectedCount);

    /// The number of an object added before for which `isEqual(number)` holds; only objects with
    /// the same upper half of the hash are asked for. If there is none, adds `number`.
    template <typename IsEqual>
    std::optional<std::uint32_t> findOrAdd(std::uint64_t hash, std::uint32_t number,
                                           const IsEqual& isEqual) {
        const std::uint32_t tag = tagOf(hash);
        std::size_t index = tag & mask_;
        while (slots_[index].successor != 0) {
            if (slots_[index].tag == tag && isEqual(slots_[index].successor - 1)) {
                return slots_[index].successor - 1;
            }
            index = (index + 1) & mask_;
        }
        slots_[index] = {tag, number + 1};
        if (++count_ > mask_ - mask_ / 4) {
            grow();
        }
        return std::nullopt;
    }

    /// Begins to fetch the place where an object with this hash is looked for.
    void prefetch(std::uint64_t hash) const noexcept { __builtin_prefetch(&firstSlot(hash)); }

    /// The number of the object that `findOrAdd` would ask for first, if it would at its first
    /// look.
    std::optional<std::uint32_t> likely(std::uint64_t hash) const noexcept {
        const Slot& slot = firstSlot(hash);
        const bool isLikely = slot.successor != 0 && slot.tag == tagOf(hash);
        return isLikely ? std::optional(slot.successor - 1) : std::nullopt;
    }

private:
    struct Slot;

    static std::uint32_t tagOf(std::uint64_t hash) noexcept {
        return static_cast<std::uint32_t>(hash >> 32);
    }
    const Slot& firstSlot(std::uint64_t hash) const noexcept { return slots_[tagOf(hash) & mask_]; }

    /// An empty slot is all zero, so that fresh memory is an empty table.
    struct Slot {
        std::uint32_t tag;
        std::uint32_t successor;  ///< the object number plus one
    };
    void grow();

    ZeroedArray<Slot> slots_;
    std::size_t mask_ = 0;
    std::size_t count_ = 0;
};

}  // namespace plist::detail
