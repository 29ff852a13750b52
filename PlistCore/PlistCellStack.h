#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <span>

#include "PlistCore/PlistCell.h"

/// The scratch stack on which a reader collects the children of open containers before it stores
/// them once, at their exact number. Cells on it own no shares.
///
/// It grows through `realloc`, which moves the pages of a large stack instead of copying them.
class PlistCellStack {
public:
    PlistCellStack() = default;
    PlistCellStack(const PlistCellStack&) = delete;
    PlistCellStack& operator=(const PlistCellStack&) = delete;
    ~PlistCellStack() { std::free(cells_); }

    std::size_t size() const noexcept { return size_; }
    const PlistCell& back() const noexcept { return cells_[size_ - 1]; }

    /// Throws `std::bad_alloc`.
    void push(const PlistCell& cell) {
        if (size_ == capacity_) {
            grow();
        }
        cells_[size_++] = cell;
    }

    /// The cells from `first` to the top. Valid until the next push.
    std::span<const PlistCell> from(std::size_t first) const noexcept {
        return {cells_ + first, size_ - first};
    }

    /// Drops what lies above the lowest `size` cells.
    void shrink(std::size_t size) noexcept { size_ = size; }

private:
    void grow() {
        const std::size_t capacity = capacity_ == 0 ? 256 : capacity_ * 2;
        void* moved = std::realloc(static_cast<void*>(cells_), capacity * sizeof(PlistCell));
        if (moved == nullptr) {
            throw std::bad_alloc();
        }
        cells_ = static_cast<PlistCell*>(moved);
        capacity_ = capacity;
    }

    PlistCell* cells_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};
