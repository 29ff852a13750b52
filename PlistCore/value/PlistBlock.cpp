#include "PlistCore/value/PlistBlock.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace plist::detail {

namespace {

/// Blocks whose last share is gone, linked through their heads.
class Waiting {
public:
    void giveBack(const PlistCell& cell) noexcept {
        if (!cell.has(PlistCell::outOfLine)) {
            return;
        }
        if (cell.has(PlistCell::inArena)) {
            cell.release();
            return;
        }
        PlistBlock* block = PlistBlock::of(cell.pointer());
        if (block->shares.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            block->next = first_;
            first_ = block;
        }
    }

    PlistBlock* take() noexcept {
        PlistBlock* block = first_;
        if (block != nullptr) {
            first_ = block->next;
        }
        return block;
    }

private:
    PlistBlock* first_ = nullptr;
};

}  // namespace

PlistBlock* PlistBlock::make(std::size_t size) {
    void* memory =
        size > SIZE_MAX - sizeof(PlistBlock) ? nullptr : std::malloc(sizeof(PlistBlock) + size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return ::new (memory) PlistBlock;
}

PlistCell PlistBlock::cellOfBytes(PlistType type, std::uint8_t flags, std::string_view bytes) {
    if (bytes.size() <= PlistCell::inPlaceCapacity) {
        return PlistCell::inPlace(type, flags, bytes.data(), bytes.size());
    }
    PlistBlock* block = make(bytes.size());
    std::memcpy(block->payload(), bytes.data(), bytes.size());
    return PlistCell::elsewhere(type, flags, block->payload(), bytes.size());
}

void PlistBlock::release(const PlistCell& cell) noexcept {
    Waiting waiting;
    waiting.giveBack(cell);
    while (PlistBlock* block = waiting.take()) {
        const PlistCell* cells = block->ownedCells();
        for (std::size_t index = 0; index < block->ownedCellCount; ++index) {
            waiting.giveBack(cells[index]);
        }
        waiting.giveBack(block->keys);
        std::free(block);
    }
}

}  // namespace plist::detail
