#include "PlistCore/PlistBuilder.h"

#include <cstring>

namespace {

/// Copies `children` to `place` and returns the flags of a container in an arena that holds them.
std::uint8_t copyChildren(std::span<const PlistCell> children, char* place) {
    unsigned flags = 0;
    for (const PlistCell& child : children) {
        std::memcpy(place, &child, sizeof child);
        place += sizeof child;
        // The length of a text in place shares the byte with the flags, but not the low bits.
        flags |= child.flags();
    }
    return static_cast<std::uint8_t>((flags & PlistCell::holdsNaN) | PlistCell::inArena);
}

}  // namespace

const PlistString* PlistBuilder::keyList(std::span<const PlistCell> keys) {
    void* place = arena_->allocate(keys.size_bytes());
    std::memcpy(place, keys.data(), keys.size_bytes());
    return static_cast<const PlistString*>(place);
}

PlistCell PlistBuilder::dictionary(const PlistString* keys, std::span<const PlistCell> values) {
    if (values.empty()) {
        return {};
    }
    auto* place = static_cast<char*>(arena_->allocate(sizeof keys + values.size_bytes()));
    std::memcpy(place, &keys, sizeof keys);
    const std::uint8_t flags = copyChildren(values, place + sizeof keys);
    return PlistCell::elsewhere(PlistType::dictionary, flags, place, values.size());
}

PlistCell PlistBuilder::array(std::span<const PlistCell> items) {
    if (items.empty()) {
        return {PlistType::array, 0, 0};
    }
    auto* place = static_cast<char*>(arena_->allocate(items.size_bytes()));
    const std::uint8_t flags = copyChildren(items, place);
    return PlistCell::elsewhere(PlistType::array, flags, place, items.size());
}

PlistValue PlistBuilder::finish(const PlistCell& root) noexcept {
    root.retain();
    return PlistValue::adopting(root);
}
