#include "PlistCore/PlistExpansion.h"

#include <algorithm>
#include <unordered_map>

#include "PlistCore/PlistValue.h"
#include "PlistCore/memory/PlistArena.h"
#include "PlistCore/value/PlistBlock.h"
#include "PlistCore/value/PlistWalk.h"

namespace plist {

namespace {

/// Whether `container`, met inside `parent`, may stand in another place too. What was read from a
/// file without sharing stands where it was read, and remembering it would only take memory.
bool mayStandElsewhere(const PlistValue& container, const PlistValue& parent) {
    return !parent.cell().has(detail::PlistCell::inArena) ||
           detail::PlistArena::of(container.cell().pointer())->sharesContainers();
}

}  // namespace

std::uint64_t PlistExpansion::count(const PlistValue& value, std::uint64_t limit) {
    if (const std::uint64_t count = detail::PlistBlock::knownCount(value.cell());
        count != detail::PlistBlock::notCounted) {
        return std::min(limit, count);
    }
    std::unordered_map<const void*, std::uint64_t> remembered;
    detail::PlistWalk<std::uint64_t> walk;  // with the count so far
    walk.enter(value, 1);
    while (walk.note() < limit) {
        if (const PlistValue* const child = walk.next()) {
            std::uint64_t count = detail::PlistBlock::knownCount(child->cell());
            if (count == detail::PlistBlock::notCounted &&
                mayStandElsewhere(*child, walk.container())) {
                const auto found = remembered.find(child->cell().pointer());
                count = found == remembered.end() ? detail::PlistBlock::notCounted : found->second;
            }
            if (count == detail::PlistBlock::notCounted) {
                walk.enter(*child, 1);
            } else {
                walk.note() += count;
            }
            continue;
        }
        const PlistValue& container = walk.container();
        const std::uint64_t count = walk.leave();
        if (walk.isAtEnd()) {
            return count;
        }
        if (mayStandElsewhere(container, walk.container())) {
            remembered.emplace(container.cell().pointer(), count);
        }
        walk.note() += count;
    }
    return limit;
}

bool PlistExpansion::exceeds(std::span<const PlistValue> values, std::uint64_t limit) {
    std::uint64_t bound = 0;
    for (const PlistValue& value : values) {
        bound = std::min(limit + 1, bound + std::min(limit + 1, value.expandedCount()));
    }
    if (bound <= limit) {
        return false;
    }
    std::uint64_t total = 0;
    for (const PlistValue& value : values) {
        total += count(value, limit + 1);
        if (total > limit) {
            return true;
        }
    }
    return false;
}

}  // namespace plist
