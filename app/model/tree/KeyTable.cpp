#include "app/model/tree/KeyTable.h"

#include <algorithm>
#include <bit>
#include <functional>

#include "app/model/tree/PlistNode.h"

namespace {

constexpr std::size_t leastSlots = 16;

/// Spreads a hash over all bits (the finaliser of SplitMix64), because the low ones choose the
/// slot.
std::uint64_t hashOf(const PlistString& key) {
    std::uint64_t bits = std::hash<PlistString>{}(key);
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111eb;
    return bits ^ (bits >> 31);
}

std::uint32_t tagOf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32);
}

}  // namespace

KeyTable::KeyTable(std::span<const PlistNodePtr> nodes)
    : nodes_(nodes),
      slots_(std::max(leastSlots, std::bit_ceil(nodes.size() * 2))),
      mask_(slots_.size() - 1) {}

void KeyTable::prepare(std::size_t start, std::span<std::uint64_t> hashes) const {
    for (std::size_t i = 0; i < hashes.size(); ++i) {
        hashes[i] = hashOf(nodes_[start + i]->key());
        __builtin_prefetch(&slots_[static_cast<std::size_t>(hashes[i]) & mask_]);
    }
}

std::size_t KeyTable::insert(std::size_t index, std::uint64_t hash) {
    Slot& slot = slots_[slotFor(nodes_[index]->key(), hash)];
    if (slot.number == 0) {
        slot = {tagOf(hash), static_cast<std::uint32_t>(index + 1)};
    }
    return slot.number - 1;
}

std::optional<std::size_t> KeyTable::find(const PlistString& key) const {
    const Slot& slot = slots_[slotFor(key, hashOf(key))];
    if (slot.number == 0) {
        return std::nullopt;
    }
    return slot.number - 1;
}

std::size_t KeyTable::slotFor(const PlistString& key, std::uint64_t hash) const {
    const std::uint32_t tag = tagOf(hash);
    std::size_t place = static_cast<std::size_t>(hash) & mask_;
    for (;;) {
        const Slot& slot = slots_[place];
        if (slot.number == 0 || (slot.tag == tag && nodes_[slot.number - 1]->key() == key)) {
            return place;
        }
        place = (place + 1) & mask_;
    }
}
