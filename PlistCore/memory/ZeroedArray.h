#pragma once

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "PlistCore/memory/LargeMemory.h"

namespace plist::detail {

/// An array of fixed size whose items are all zero at first. Items that are never touched cost
/// nothing, so that it can be made for as many as there may be.
template <typename Item>
class ZeroedArray {
    static_assert(std::is_trivially_copyable_v<Item> && std::is_trivially_destructible_v<Item>);

public:
    ZeroedArray() noexcept = default;

    /// Throws `std::bad_alloc`.
    explicit ZeroedArray(std::size_t count) : size_(sizeOf(count)) {
        if (isMapped()) {
            items_ = static_cast<Item*>(LargeMemory::map(size_, LargeMemory::Pages::huge));
            return;
        }
        items_ = static_cast<Item*>(std::calloc(size_, 1));
        if (items_ == nullptr && size_ != 0) {
            throw std::bad_alloc();
        }
    }
    ZeroedArray(ZeroedArray&& other) noexcept
        : items_(std::exchange(other.items_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    ZeroedArray& operator=(ZeroedArray&& other) noexcept {
        std::swap(items_, other.items_);
        std::swap(size_, other.size_);
        return *this;
    }
    ZeroedArray(const ZeroedArray&) = delete;
    ZeroedArray& operator=(const ZeroedArray&) = delete;
    ~ZeroedArray() {
        if (isMapped()) {
            LargeMemory::unmap(items_, size_);
        } else {
            std::free(static_cast<void*>(items_));
        }
    }

    Item& operator[](std::size_t index) noexcept { return items_[index]; }
    const Item& operator[](std::size_t index) const noexcept { return items_[index]; }

private:
    /// Half of a huge page or more is mapped as whole ones.
    static constexpr std::size_t leastMapped = LargeMemory::unit / 2;

    static std::size_t sizeOf(std::size_t count) {
        if (count > std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Item)) {
            throw std::bad_alloc();
        }
        const std::size_t size = count * sizeof(Item);
        return size < leastMapped ? size : LargeMemory::rounded(size);
    }
    bool isMapped() const noexcept { return size_ >= leastMapped; }

    Item* items_ = nullptr;
    std::size_t size_ = 0;  ///< in bytes
};

}  // namespace plist::detail
