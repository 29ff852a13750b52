#pragma once

#include <bit>
#include <concepts>
#include <cstring>

/// Numbers in the byte order of binary property lists.
namespace plist::detail::BigEndian {

/// Puts the bytes of `number` in the opposite order if this processor is little-endian: from its
/// own order to big-endian and back. Compilers make one instruction of it.
template <std::unsigned_integral Number>
constexpr Number swapped(Number number) noexcept {
    if constexpr (std::endian::native == std::endian::big || sizeof number == 1) {
        return number;
    } else if constexpr (sizeof number == 2) {
        return __builtin_bswap16(number);
    } else if constexpr (sizeof number == 4) {
        return __builtin_bswap32(number);
    } else {
        return __builtin_bswap64(number);
    }
}

template <std::unsigned_integral Number>
Number load(const void* place) noexcept {
    Number number = 0;
    std::memcpy(&number, place, sizeof number);
    return swapped(number);
}

template <std::unsigned_integral Number>
void store(Number number, void* place) noexcept {
    number = swapped(number);
    std::memcpy(place, &number, sizeof number);
}

}  // namespace plist::detail::BigEndian
