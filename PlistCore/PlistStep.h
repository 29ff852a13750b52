#pragma once

#include <concepts>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

#include "PlistCore/PlistInteger.h"
#include "PlistCore/PlistString.h"

#pragma GCC visibility push(default)

namespace plist {

/// One step from a container to one of its children: by key or by position. Made on the spot from
/// either, as an argument (`value["name"]`, `value.find({"items", 3, "name"})`); it views its key.
class PlistStep {
public:
    /// To the first entry whose key is this Unicode text.
    PlistStep(std::string_view key) noexcept : key_(key), isKey_(true) {}
    PlistStep(const char* key) noexcept : PlistStep(std::string_view(key)) {}
    PlistStep(const std::string& key) noexcept : PlistStep(std::string_view(key)) {}
    PlistStep(const PlistString& key) noexcept : PlistStep(key.view()) {}

    /// To this item of an array, or the value of this entry of a dictionary, counted from 0. A
    /// negative position leads nowhere.
    template <PlistWholeNumber Number>
    PlistStep(Number position) noexcept
        : position_(position < 0 ? nowhere : static_cast<std::size_t>(position)) {}

    bool isKey() const noexcept { return isKey_; }
    std::string_view key() const noexcept { return key_; }
    std::size_t position() const noexcept { return position_; }

private:
    static constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();

    std::string_view key_;
    std::size_t position_ = nowhere;
    bool isKey_ = false;
};

}  // namespace plist

#pragma GCC visibility pop
