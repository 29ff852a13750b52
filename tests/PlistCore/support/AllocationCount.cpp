#include "tests/PlistCore/support/AllocationCount.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t allocationCount = 0;

void* allocated(std::size_t size) noexcept {
    ++allocationCount;
    return std::malloc(std::max<std::size_t>(size, 1));
}

}  // namespace

bool AllocationCount::isPossible() {
    const AllocationCount allocations;
    ::operator delete(::operator new(1));
    return allocations.count() == 1;
}

std::uint64_t AllocationCount::total() noexcept {
    return allocationCount;
}

// All forms come together, because sanitizers look at who gave what is given back; and weakly, for
// those sanitizers that bring forms of their own.

[[gnu::weak]] void* operator new(std::size_t size) {
    void* const place = allocated(size);
    if (place == nullptr) {
        throw std::bad_alloc();
    }
    return place;
}

[[gnu::weak]] void* operator new[](std::size_t size) {
    return operator new(size);
}

[[gnu::weak]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocated(size);
}

[[gnu::weak]] void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocated(size);
}

[[gnu::weak]] void operator delete(void* place) noexcept {
    std::free(place);
}

[[gnu::weak]] void operator delete(void* place, std::size_t) noexcept {
    std::free(place);
}

[[gnu::weak]] void operator delete[](void* place) noexcept {
    std::free(place);
}

[[gnu::weak]] void operator delete[](void* place, std::size_t) noexcept {
    std::free(place);
}

[[gnu::weak]] void operator delete(void* place, const std::nothrow_t&) noexcept {
    std::free(place);
}

[[gnu::weak]] void operator delete[](void* place, const std::nothrow_t&) noexcept {
    std::free(place);
}
