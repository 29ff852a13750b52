#pragma once

#include <cstddef>

/// Large pieces of memory straight from the system: zero, and without cost where they are never
/// touched. They are in huge pages where the system has them to give: touching fresh memory page by
/// page costs more than most of what is done with it.
namespace plist::detail::LargeMemory {

/// The size of a huge page, to whose multiples sizes and addresses are rounded.
inline constexpr std::size_t unit = std::size_t{1} << 21;

constexpr std::size_t rounded(std::size_t size) {
    return (size + unit - 1) & ~(unit - 1);
}

/// Which pages are asked for. Huge ones are a hint; they are touched as a whole.
enum class Pages { usual, huge };

/// Maps `size` bytes, a multiple of `unit`, at a multiple of `unit`. Throws `std::bad_alloc`.
void* map(std::size_t size, Pages pages);

/// Asks for huge pages in a part of what `map` gave, which starts at a multiple of `unit`.
void preferHugePages(void* memory, std::size_t size) noexcept;

/// Gives back what `map` gave.
void unmap(void* memory, std::size_t size) noexcept;

}  // namespace plist::detail::LargeMemory
