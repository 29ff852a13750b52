#pragma once

#include <cstdint>

/// Counts how often this thread asks for memory with `new`, as everything does that grows.
class AllocationCount {
public:
    AllocationCount() noexcept : before_(total()) {}

    /// How often since this object was made.
    std::uint64_t count() const noexcept { return total() - before_; }

    /// Whether it counts at all: some sanitizers keep `new` to themselves.
    static bool isPossible();

private:
    static std::uint64_t total() noexcept;

    std::uint64_t before_;
};
