#pragma once

#include <cstddef>
#include <cstdint>

/// Numbers that look random and are the same on every machine and in every run: the standard
/// library's distributions are not, and a document must not change with its version.
/// The generator is splitmix64.
class Random {
public:
    explicit Random(std::uint64_t seed) noexcept : state_(seed) {}

    std::uint64_t next() noexcept {
        state_ += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return mixed ^ (mixed >> 31);
    }

    /// A number from 0 up to and without `limit`, which is not 0. The slight preference for small
    /// numbers does not matter here.
    std::size_t below(std::size_t limit) noexcept { return next() % limit; }

    /// A number from `least` to `greatest`, both included.
    std::size_t between(std::size_t least, std::size_t greatest) noexcept {
        return least + below(greatest - least + 1);
    }

    /// True in `percent` of a hundred cases.
    bool happens(std::size_t percent) noexcept { return below(100) < percent; }

private:
    std::uint64_t state_;
};
