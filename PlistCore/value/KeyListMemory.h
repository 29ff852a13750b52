#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "PlistCore/PlistString.h"

namespace plist::detail {

/// Remembers where lists of keys were met that several dictionaries share, so that what was found
/// out about a list need not be found out again. Of fixed size: lists that are remembered later
/// take the places of others.
class KeyListMemory {
public:
    /// What was remembered for this very list, known by its address.
    std::optional<std::size_t> find(std::span<const PlistString> keys) const noexcept {
        const Place& place = places_[indexOf(keys)];
        if (place.keys != keys.data() || place.count != keys.size()) {
            return std::nullopt;
        }
        return place.note;
    }

    void remember(std::span<const PlistString> keys, std::size_t note) noexcept {
        places_[indexOf(keys)] = {keys.data(), keys.size(), note};
    }

private:
    struct Place {
        const PlistString* keys = nullptr;
        std::size_t count = 0;
        std::size_t note = 0;
    };
    static constexpr int indexBits = 9;

    /// By the golden ratio, which spreads addresses that differ by little.
    static std::size_t indexOf(std::span<const PlistString> keys) noexcept {
        const auto address = static_cast<std::uint64_t>(std::bit_cast<std::uintptr_t>(keys.data()));
        return static_cast<std::size_t>((address * 0x9E3779B97F4A7C15) >> (64 - indexBits));
    }

    std::array<Place, std::size_t{1} << indexBits> places_{};
};

}  // namespace plist::detail
