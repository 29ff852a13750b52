#include "PlistCore/EqualObjectTable.h"

#include <sys/mman.h>

#include <algorithm>
#include <bit>
#include <new>
#include <utility>

namespace {

constexpr std::size_t leastSlots = 64;

/// More slots are not made in advance: what is expected may be far more than what is different.
constexpr std::size_t greatestFirstSlots = std::size_t{1} << 24;

constexpr std::size_t hugePage = std::size_t{1} << 21;

/// Maps `size` zero bytes, a multiple of the size of huge pages, and asks for such pages: a large
/// table is touched everywhere, and small pages would cost a page fault each, and a walk through
/// the page tables for nearly every look into it. Null if there is no memory.
void* mapHugePages(std::size_t size) {
    const std::size_t padded = size + hugePage;
    void* const mapping =
        mmap(nullptr, padded, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED) {
        return nullptr;
    }
    char* const start = static_cast<char*>(mapping);
    const std::size_t before = -reinterpret_cast<std::uintptr_t>(start) % hugePage;
    if (before != 0) {
        munmap(start, before);
    }
    munmap(start + before + size, hugePage - before);
    madvise(start + before, size, MADV_HUGEPAGE);
    return start + before;
}

}  // namespace

EqualObjectTable::EqualObjectTable(std::size_t expectedCount) {
    const std::size_t wanted = std::min(expectedCount, greatestFirstSlots / 2) / 3 * 4;
    const std::size_t count = std::bit_ceil(std::max(wanted + 1, leastSlots));
    slots_ = emptySlots(count);
    mask_ = count - 1;
}

EqualObjectTable::Slots EqualObjectTable::emptySlots(std::size_t count) {
    const std::size_t size = count * sizeof(Slot);
    void* const slots = size < hugePage ? std::calloc(count, sizeof(Slot)) : mapHugePages(size);
    if (slots == nullptr) {
        throw std::bad_alloc();
    }
    return Slots(static_cast<Slot*>(slots), Freeing{count});
}

void EqualObjectTable::Freeing::operator()(Slot* slots) const noexcept {
    const std::size_t size = count * sizeof(Slot);
    if (size < hugePage) {
        std::free(slots);
    } else {
        munmap(slots, size);
    }
}

void EqualObjectTable::grow() {
    const std::size_t oldCount = mask_ + 1;
    const Slots old = std::exchange(slots_, emptySlots(oldCount * 2));
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
