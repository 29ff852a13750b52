#include "PlistCore/value/PlistCellStack.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "PlistCore/memory/LargeMemory.h"

namespace plist::detail {

namespace {

/// Up to this size the allocator is faster than the system.
constexpr std::size_t smallSize = std::size_t{1} << 16;

/// What is used beyond this comes in huge pages if the system has them: most stacks end before. A
/// document that is one long list reads 14 % faster than with 2 MiB of ordinary pages.
constexpr std::size_t ordinarySize = std::size_t{1} << 18;

/// A stack begins so that its ordinary part ends where a huge page can start.
constexpr std::size_t beginInMapping = LargeMemory::unit - ordinarySize;

constexpr std::size_t mappingSize(std::size_t size) {
    return LargeMemory::rounded(beginInMapping + size);
}

char* mapStack(std::size_t size) {
    const std::size_t mapped = mappingSize(size);
    auto* mapping = static_cast<char*>(LargeMemory::map(mapped, LargeMemory::Pages::usual));
    if (mapped > LargeMemory::unit) {
        LargeMemory::preferHugePages(mapping + LargeMemory::unit, mapped - LargeMemory::unit);
    }
    return mapping + beginInMapping;
}

void unmapStack(void* stack, std::size_t size) noexcept {
    LargeMemory::unmap(static_cast<char*>(stack) - beginInMapping, mappingSize(size));
}

}  // namespace

PlistCellStack::PlistCellStack(std::size_t capacity)
    : capacity_(std::max<std::size_t>(capacity, 1)) {
    if (capacity_ > SIZE_MAX / 4 / sizeof(PlistCell)) {
        throw std::bad_alloc();
    }
    const std::size_t size = capacity_ * sizeof(PlistCell);
    void* memory = isMapped() ? mapStack(size) : std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    cells_ = static_cast<PlistCell*>(memory);
}

PlistCellStack::~PlistCellStack() {
    if (isMapped()) {
        unmapStack(cells_, capacity_ * sizeof(PlistCell));
    } else {
        std::free(cells_);
    }
}

bool PlistCellStack::isMapped() const noexcept {
    return capacity_ * sizeof(PlistCell) > smallSize;
}

}  // namespace plist::detail
