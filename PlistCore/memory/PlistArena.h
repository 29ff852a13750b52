#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "PlistCore/memory/MemoryPoison.h"

namespace plist::detail {

/// The memory of one document that was read: large regions in which values and texts lie one after
/// the other, freed all at once without a walk.
///
/// Memory is handed out from blocks of `blockSize` bytes at addresses that are multiples of it: a
/// pointer tells its block, and the head of the block its arena. Values grow from the front of the
/// current block, texts from its back, so that neither wastes room on alignment. An object that is
/// large for a block gets blocks of its own and starts in the first of them.
///
/// One thread fills an arena. Afterwards it never changes, and values in it are shared between
/// threads through one counter for all of it. Small documents take their only block from a small
/// pool, so that reading them makes no system call. AddressSanitizer sees what was not handed out,
/// or belongs to no document any more, as poisoned.
class PlistArena {
public:
    static constexpr std::size_t blockSize = std::size_t{1} << 21;

    /// A new arena with one share. `expectedSize`, in bytes, says how much to ask of the system at
    /// first; memory that is not touched costs nothing. Throws `std::bad_alloc`.
    static PlistArena* make(std::size_t expectedSize);

    /// The arena of the object that starts at `pointer`.
    static PlistArena* of(const void* pointer) noexcept {
        const auto block = reinterpret_cast<std::uintptr_t>(pointer) & ~(blockSize - 1);
        return reinterpret_cast<const BlockHead*>(block)->arena;
    }

    PlistArena(const PlistArena&) = delete;
    PlistArena& operator=(const PlistArena&) = delete;

    void retain() noexcept { shares_.fetch_add(1, std::memory_order_relaxed); }

    /// Gives back one share; the last one frees the arena with everything in it.
    void release() noexcept;

    /// `size` bytes, a multiple of 8, aligned to 8. Throws `std::bad_alloc`.
    void* allocate(std::size_t size) {
        if (room() < size) {
            return allocateElsewhere(size, Side::front);
        }
        char* place = front_;
        front_ += size;
        MemoryPoison::unpoison(place, size);
        return place;
    }

    /// Gives back what lies after the first `kept` bytes of the `size` bytes at `place`, the last
    /// ones that `allocate` handed out. Both are multiples of 8. Pages of its own that were not
    /// touched cost nothing anyway.
    void shrinkLast(void* place, std::size_t size, std::size_t kept) noexcept {
        if (static_cast<char*>(place) + size == front_) {
            front_ -= size - kept;
            MemoryPoison::poison(front_, size - kept);
        }
    }

    /// `size` bytes, not aligned. Throws `std::bad_alloc`.
    char* allocateText(std::size_t size) {
        if (room() < size) {
            return static_cast<char*>(allocateElsewhere(size, Side::back));
        }
        back_ -= size;
        MemoryPoison::unpoison(back_, size);
        return back_;
    }

    /// Whether some container in here stands in more than one place.
    bool sharesContainers() const noexcept { return sharesContainers_; }
    void noteSharedContainer() noexcept { sharesContainers_ = true; }

    /// An upper bound for the number of values in here.
    std::uint64_t valueBound() const noexcept { return mappedSize_ / 16; }

private:
    struct BlockHead {
        PlistArena* arena;
    };
    /// The head of the first block of a region, with which regions are chained and freed.
    struct RegionHead {
        BlockHead block;
        RegionHead* next;
        std::size_t size;
    };
    enum class Side { front, back };

    PlistArena() = default;
    ~PlistArena() = default;

    std::size_t room() const noexcept { return static_cast<std::size_t>(back_ - front_); }
    void* allocateElsewhere(std::size_t size, Side side);
    char* takeBlocks(std::size_t count);
    void addRegion(void* memory, std::size_t size) noexcept;
    void startBlock(char* block, std::size_t used) noexcept;
    void free() noexcept;

    char* front_ = nullptr;
    char* back_ = nullptr;
    char* nextBlock_ = nullptr;  ///< the first unused block of the newest region
    char* regionEnd_ = nullptr;
    RegionHead* regions_ = nullptr;
    std::size_t mappedSize_ = 0;
    std::atomic<std::uint64_t> shares_{1};
    bool sharesContainers_ = false;
};

}  // namespace plist::detail
