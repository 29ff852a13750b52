#include "PlistCore/memory/PlistArena.h"

#include <algorithm>
#include <array>
#include <new>

#include "PlistCore/memory/LargeMemory.h"

namespace plist::detail {

namespace {

constexpr std::size_t blockSize = PlistArena::blockSize;

/// Objects above this size get blocks of their own, so that at most a quarter of a block is lost
/// when the next object does not fit.
constexpr std::size_t largeObject = blockSize / 4;

/// The most blocks that a further region asks for at once.
constexpr std::size_t greatestGrowth = 32;

static_assert(blockSize == LargeMemory::unit);

/// Maps `size` bytes, a multiple of the block size, at a multiple of the block size. Of a single
/// block a small document touches few pages, of which none should be huge.
void* mapBlocks(std::size_t size) {
    return LargeMemory::map(
        size, size > blockSize ? LargeMemory::Pages::huge : LargeMemory::Pages::usual);
}

/// Blocks of freed small documents, kept for the next ones.
class BlockPool {
public:
    void* take() noexcept {
        for (std::atomic<void*>& slot : slots_) {
            if (slot.load(std::memory_order_relaxed) == nullptr) {
                continue;
            }
            if (void* block = slot.exchange(nullptr, std::memory_order_acquire)) {
                return block;
            }
        }
        return nullptr;
    }

    bool keep(void* block) noexcept {
        MemoryPoison::poison(block, blockSize);
        for (std::atomic<void*>& slot : slots_) {
            void* expected = nullptr;
            if (slot.compare_exchange_strong(expected, block, std::memory_order_release,
                                             std::memory_order_relaxed)) {
                return true;
            }
        }
        return false;
    }

private:
    std::array<std::atomic<void*>, 4> slots_{};
};

constinit BlockPool pool;

}  // namespace

PlistArena* PlistArena::make(std::size_t expectedSize) {
    const std::size_t size = std::max(LargeMemory::rounded(expectedSize), blockSize);
    void* memory = size == blockSize ? pool.take() : nullptr;
    if (memory == nullptr) {
        memory = mapBlocks(size);
    }
    constexpr std::size_t used = sizeof(RegionHead) + sizeof(PlistArena);
    MemoryPoison::unpoison(memory, used);
    auto* arena = ::new (static_cast<char*>(memory) + sizeof(RegionHead)) PlistArena;
    arena->addRegion(memory, size);
    arena->startBlock(arena->takeBlocks(1), used);
    return arena;
}

void PlistArena::release() noexcept {
    if (shares_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        free();
    }
}

void PlistArena::free() noexcept {
    // The arena itself lies in its first region, which is the last one in the chain.
    RegionHead* region = regions_;
    while (region != nullptr) {
        RegionHead* next = region->next;
        const std::size_t size = region->size;
        if (size != blockSize || next != nullptr || !pool.keep(region)) {
            LargeMemory::unmap(region, size);
        }
        region = next;
    }
}

void* PlistArena::allocateElsewhere(std::size_t size, Side side) {
    if (size > SIZE_MAX / 2) {
        throw std::bad_alloc();
    }
    if (size > largeObject) {
        const std::size_t whole = LargeMemory::rounded(size + sizeof(RegionHead));
        char* place = takeBlocks(whole / blockSize) + sizeof(RegionHead);
        MemoryPoison::unpoison(place, size);
        MemoryPoison::poison(place + size, whole - sizeof(RegionHead) - size);
        return place;
    }
    startBlock(takeBlocks(1), sizeof(RegionHead));
    return side == Side::front ? allocate(size) : allocateText(size);
}

char* PlistArena::takeBlocks(std::size_t count) {
    if (static_cast<std::size_t>(regionEnd_ - nextBlock_) / blockSize < count) {
        const std::size_t growth = std::min(mappedSize_ / blockSize / 2 + 1, greatestGrowth);
        const std::size_t size = std::max(count, growth) * blockSize;
        addRegion(mapBlocks(size), size);
    }
    char* block = nextBlock_;
    nextBlock_ += count * blockSize;
    MemoryPoison::unpoison(block, sizeof(RegionHead));
    reinterpret_cast<BlockHead*>(block)->arena = this;
    return block;
}

void PlistArena::addRegion(void* memory, std::size_t size) noexcept {
    regions_ = ::new (memory) RegionHead{{this}, regions_, size};
    nextBlock_ = static_cast<char*>(memory);
    regionEnd_ = nextBlock_ + size;
    mappedSize_ += size;
    // The first block may hold the arena itself.
    MemoryPoison::poison(nextBlock_ + blockSize, size - blockSize);
}

void PlistArena::startBlock(char* block, std::size_t used) noexcept {
    front_ = block + used;
    back_ = block + blockSize;
    MemoryPoison::poison(front_, room());
}

}  // namespace plist::detail
