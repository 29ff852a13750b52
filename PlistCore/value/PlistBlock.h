#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

/// The head of a counted block: memory of its own for the text, data or children of one value that
/// was not read from a file. What the cell points to follows the head directly.
struct PlistBlock {
    /// Shares held by cells; zero only while the block is being freed.
    std::atomic<std::uint64_t> shares{1};

    /// Stands for a count that would take a walk to find out.
    static constexpr std::uint64_t notCounted = 0;

    /// Of a container: how many values stand there and below, known from its making; `notCounted`
    /// if some of them lie in an arena, which counts nothing while it is filled.
    std::uint64_t expandedCount = 1;

    /// Of a container: how many cells at the end of the payload own shares themselves.
    std::size_t ownedCellCount = 0;

    /// The next block in a list of those waiting to be freed.
    PlistBlock* next = nullptr;

    /// Of a dictionary: an array cell that owns a share of the list of keys.
    PlistCell keys;

    /// A block with room for `size` bytes after its head. Throws `std::bad_alloc`.
    static PlistBlock* make(std::size_t size);

    /// The block whose payload starts at `pointer`.
    static PlistBlock* of(const void* pointer) noexcept {
        auto* payload = const_cast<char*>(static_cast<const char*>(pointer));
        return reinterpret_cast<PlistBlock*>(payload - sizeof(PlistBlock));
    }

    char* payload() noexcept { return reinterpret_cast<char*>(this) + sizeof(PlistBlock); }

    /// Where the owned cells start: after the pointer to the keys of a dictionary, else at once.
    const PlistCell* ownedCells() noexcept {
        const std::size_t skipped = keys.has(PlistCell::outOfLine) ? sizeof(void*) : 0;
        return reinterpret_cast<const PlistCell*>(payload() + skipped);
    }

    /// How many values `cell` stands for, itself included, or `notCounted`. Never walks.
    static std::uint64_t knownCount(const PlistCell& cell) noexcept {
        if (!isContainer(cell.type()) || cell.length() == 0) {
            return 1;
        }
        return cell.has(PlistCell::inArena) ? notCounted : of(cell.pointer())->expandedCount;
    }

    /// A cell of these bytes: in place if they are few, else in a new block, whose share it owns.
    /// Throws `std::bad_alloc`.
    static PlistCell cellOfBytes(PlistType type, std::uint8_t flags, std::string_view bytes);

    /// Gives back one share of the block behind `cell`; with the last one frees it and, through an
    /// explicit list, everything that nothing else holds. Allocates nothing.
    static void release(const PlistCell& cell) noexcept;
};

static_assert(sizeof(PlistBlock) % 16 == 0);

}  // namespace plist::detail
