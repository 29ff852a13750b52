#include "PlistCore/PlistBytes.h"

#include <algorithm>
#include <limits>

void PlistBytes::grow(std::size_t count) {
    constexpr std::size_t smallest = 256;
    constexpr std::size_t greatest = std::numeric_limits<std::ptrdiff_t>::max();
    if (count > greatest - size_) {
        throw std::bad_alloc();
    }
    const std::size_t doubled = capacity_ > greatest / 2 ? greatest : capacity_ * 2;
    const std::size_t capacity = std::max({smallest, doubled, size_ + count});
    void* const memory = std::realloc(start_, capacity);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    start_ = static_cast<std::uint8_t*>(memory);
    capacity_ = capacity;
}
