#pragma once

#include <cstddef>

#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>
#endif

/// Tells AddressSanitizer which parts of mapped memory hold nothing, so that it reports whoever
/// touches them: a view that was kept for too long, or a step past the end. Nothing in other
/// builds.
namespace plist::detail::MemoryPoison {

/// Nobody may touch these bytes. Those that share a word of eight with bytes in use stay as they
/// are.
inline void poison([[maybe_unused]] const void* memory,
                   [[maybe_unused]] std::size_t size) noexcept {
#if defined(ASAN_POISON_MEMORY_REGION)
    ASAN_POISON_MEMORY_REGION(memory, size);
#endif
}

/// These bytes are in use again.
inline void unpoison([[maybe_unused]] const void* memory,
                     [[maybe_unused]] std::size_t size) noexcept {
#if defined(ASAN_UNPOISON_MEMORY_REGION)
    ASAN_UNPOISON_MEMORY_REGION(memory, size);
#endif
}

}  // namespace plist::detail::MemoryPoison
