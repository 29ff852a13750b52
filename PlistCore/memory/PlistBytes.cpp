#include "PlistCore/PlistBytes.h"

#include <algorithm>
#include <limits>

#include "PlistCore/memory/LargeMemory.h"

namespace plist {

namespace {

constexpr std::size_t smallest = 256;
constexpr std::size_t greatest = std::numeric_limits<std::ptrdiff_t>::max();

/// From here on a buffer is a mapping of its own.
constexpr std::size_t leastMapped = detail::LargeMemory::unit / 2;

/// A mapping is made with room for more than is known to come, which costs nothing until it is
/// used, so that it seldom has to be left for a larger one.
constexpr std::size_t leastMapping = 8 * detail::LargeMemory::unit;

}  // namespace

// Near the limit there is room for no more than was asked for, so that what runs past it comes here
// again.
void PlistBytes::grow(std::size_t count) {
    if (size_ > limit_) {
        throw LimitReached();
    }
    if (count > greatest - size_) {
        throw std::bad_alloc();
    }
    const std::size_t needed = size_ + count;
    const std::size_t doubled = capacity_ > greatest / 2 ? greatest : capacity_ * 2;
    const std::size_t usual = std::max(smallest, doubled);
    const std::size_t capacity = std::max(std::min(usual, limit_), needed);
    if (capacity >= leastMapped) {
        moveToMapping(std::max(capacity, std::min(leastMapping, limit_)));
        return;
    }
    void* const memory = std::realloc(start_, capacity);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    start_ = static_cast<std::uint8_t*>(memory);
    capacity_ = capacity;
}

void PlistBytes::moveToMapping(std::size_t capacity) {
    if (capacity > greatest - detail::LargeMemory::unit) {
        throw std::bad_alloc();
    }
    const std::size_t rounded = detail::LargeMemory::rounded(capacity);
    auto* const memory = static_cast<std::uint8_t*>(
        detail::LargeMemory::map(rounded, detail::LargeMemory::Pages::huge));
    if (size_ != 0) {
        std::memcpy(memory, start_, size_);
    }
    release();
    start_ = memory;
    capacity_ = rounded;
}

void PlistBytes::release() noexcept {
    if (capacity_ >= leastMapped) {
        detail::LargeMemory::unmap(start_, capacity_);
    } else {
        std::free(start_);
    }
}

}  // namespace plist
