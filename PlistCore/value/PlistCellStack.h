#pragma once

#include <cstddef>
#include <new>
#include <span>

#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

/// The scratch stack on which a reader collects the children of open containers before it stores
/// them once, at their exact number. Cells on it own no shares.
///
/// Its greatest size is known before it is filled: a file of so many bytes holds no more values
/// than that. A large stack therefore is one range of addresses of which only what is used costs
/// memory, and never moves.
class PlistCellStack {
public:
    /// A stack of at most `capacity` cells. Throws `std::bad_alloc`.
    explicit PlistCellStack(std::size_t capacity);
    PlistCellStack(const PlistCellStack&) = delete;
    PlistCellStack& operator=(const PlistCellStack&) = delete;
    ~PlistCellStack();

    std::size_t size() const noexcept { return size_; }
    const PlistCell& back() const noexcept { return cells_[size_ - 1]; }

    /// Throws `std::bad_alloc` above the capacity.
    void push(const PlistCell& cell) {
        if (size_ == capacity_) [[unlikely]] {
            throw std::bad_alloc();
        }
        cells_[size_++] = cell;
    }

    /// The cells from `first` to the top. Valid until what is below the top changes.
    std::span<const PlistCell> from(std::size_t first) const noexcept {
        return {cells_ + first, size_ - first};
    }

    /// Drops what lies above the lowest `size` cells.
    void shrink(std::size_t size) noexcept { size_ = size; }

private:
    bool isMapped() const noexcept;

    PlistCell* cells_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_;
};

}  // namespace plist::detail
