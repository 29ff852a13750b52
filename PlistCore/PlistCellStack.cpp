#include "PlistCore/PlistCellStack.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

/// Up to this size the allocator is faster than the system.
constexpr std::size_t smallSize = std::size_t{1} << 16;

/// What is used beyond this comes in huge pages if the system has them: most stacks end before.
constexpr std::size_t ordinaryPages = std::size_t{1} << 21;

void* mapRange(std::size_t size) {
    void* range = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                       MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (range == MAP_FAILED) {
        throw std::bad_alloc();
    }
    if (size > 2 * ordinaryPages) {
        madvise(static_cast<char*>(range) + ordinaryPages, size - ordinaryPages, MADV_HUGEPAGE);
    }
    return range;
}

}  // namespace

PlistCellStack::PlistCellStack(std::size_t capacity)
    : capacity_(std::max<std::size_t>(capacity, 1)) {
    if (capacity_ > SIZE_MAX / 2 / sizeof(PlistCell)) {
        throw std::bad_alloc();
    }
    const std::size_t size = capacity_ * sizeof(PlistCell);
    void* memory = isMapped() ? mapRange(size) : std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    cells_ = static_cast<PlistCell*>(memory);
}

PlistCellStack::~PlistCellStack() {
    if (isMapped()) {
        munmap(cells_, capacity_ * sizeof(PlistCell));
    } else {
        std::free(cells_);
    }
}

bool PlistCellStack::isMapped() const noexcept {
    return capacity_ * sizeof(PlistCell) > smallSize;
}
