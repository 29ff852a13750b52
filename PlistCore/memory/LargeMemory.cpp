#include "PlistCore/memory/LargeMemory.h"

#include <sys/mman.h>

#include <cstdint>
#include <new>

#include "PlistCore/memory/MemoryPoison.h"

namespace plist::detail {

void* LargeMemory::map(std::size_t size, Pages pages) {
    if (size == 0 || size > SIZE_MAX / 2) {
        throw std::bad_alloc();
    }
    const std::size_t padded = size + unit;
    void* mapping = mmap(nullptr, padded, PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapping == MAP_FAILED) {
        throw std::bad_alloc();
    }
    char* start = static_cast<char*>(mapping);
    const std::size_t before =
        rounded(reinterpret_cast<std::uintptr_t>(start)) - reinterpret_cast<std::uintptr_t>(start);
    if (before != 0) {
        munmap(start, before);
    }
    if (before != unit) {
        munmap(start + before + size, unit - before);
    }
    if (pages == Pages::huge) {
        preferHugePages(start + before, size);
    }
    return start + before;
}

void LargeMemory::preferHugePages(void* memory, std::size_t size) noexcept {
    madvise(memory, size, MADV_HUGEPAGE);
}

void LargeMemory::unmap(void* memory, std::size_t size) noexcept {
    // Whoever gets these addresses next knows nothing of what was forbidden here.
    MemoryPoison::unpoison(memory, size);
    munmap(memory, size);
}

}  // namespace plist::detail
