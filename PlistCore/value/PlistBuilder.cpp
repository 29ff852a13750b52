#include "PlistCore/value/PlistBuilder.h"

#include <cstring>

namespace plist::detail {

namespace {

/// Copies `children` to `place` and returns their flags together.
std::uint8_t copyChildren(std::span<const PlistCell> children, PlistCell* place) {
    unsigned flags = 0;
    for (const PlistCell& child : children) {
        *place++ = child;
        flags |= child.flags();
    }
    return static_cast<std::uint8_t>(flags);
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
    PlistCell* place = roomForEntries(keys, values.size());
    return dictionaryOf(place, values.size(), copyChildren(values, place));
}

PlistCell PlistBuilder::array(std::span<const PlistCell> items) {
    if (items.empty()) {
        return {PlistType::array, 0, 0};
    }
    PlistCell* place = roomForItems(items.size());
    return arrayOf(place, items.size(), copyChildren(items, place));
}

PlistCell* PlistBuilder::roomForEntries(const PlistString* keys, std::size_t count) {
    auto* place = static_cast<char*>(arena_->allocate(sizeof keys + count * sizeof(PlistCell)));
    std::memcpy(place, &keys, sizeof keys);
    return reinterpret_cast<PlistCell*>(place + sizeof keys);
}

PlistValue PlistBuilder::finish(const PlistCell& root) noexcept {
    root.retain();
    return PlistValue::adopting(root);
}

}  // namespace plist::detail
