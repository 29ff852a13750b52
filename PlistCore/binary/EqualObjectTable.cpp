#include "PlistCore/binary/EqualObjectTable.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace plist::detail {

namespace {

constexpr std::size_t leastSlots = 64;

/// More slots are not made in advance: what is expected may be far more than what is different.
constexpr std::size_t greatestFirstSlots = std::size_t{1} << 24;

}  // namespace

EqualObjectTable::EqualObjectTable(std::size_t expectedCount) {
    const std::size_t wanted = std::min(expectedCount, greatestFirstSlots / 2) / 3 * 4;
    const std::size_t count = std::bit_ceil(std::max(wanted + 1, leastSlots));
    slots_ = ZeroedArray<Slot>(count);
    mask_ = count - 1;
}

void EqualObjectTable::grow() {
    const std::size_t oldCount = mask_ + 1;
    const ZeroedArray<Slot> old = std::exchange(slots_, ZeroedArray<Slot>(oldCount * 2));
    mask_ = oldCount * 2 - 1;
    for (std::size_t i = 0; i < oldCount; ++i) {
        if (old[i].successor == 0) {
            continue;
        }
        std::size_t index = old[i].tag & mask_;
        while (slots_[index].successor != 0) {
            index = (index + 1) & mask_;
        }
        slots_[index] = old[i];
    }
}

}  // namespace plist::detail
