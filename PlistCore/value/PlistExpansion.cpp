#include "PlistCore/PlistExpansion.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "PlistCore/PlistValue.h"
#include "PlistCore/memory/PlistArena.h"
#include "PlistCore/value/PlistBlock.h"

namespace plist {

namespace {

struct OpenContainer {
    const PlistValue* value;
    std::size_t next = 0;
    std::uint64_t count = 1;
};

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
    std::vector<OpenContainer> open{{&value}};
    for (;;) {
        OpenContainer& top = open.back();
        const auto children = top.value->children();
        if (top.next == children.size()) {
            const OpenContainer closed = top;
            open.pop_back();
            if (open.empty()) {
                return closed.count;
            }
            if (mayStandElsewhere(*closed.value, *open.back().value)) {
                remembered.emplace(closed.value->cell().pointer(), closed.count);
            }
            open.back().count += closed.count;
        } else {
            const PlistValue& child = children[top.next++];
            std::uint64_t count = detail::PlistBlock::knownCount(child.cell());
            if (count == detail::PlistBlock::notCounted && mayStandElsewhere(child, *top.value)) {
                const auto found = remembered.find(child.cell().pointer());
                count = found == remembered.end() ? detail::PlistBlock::notCounted : found->second;
            }
            if (count == detail::PlistBlock::notCounted) {
                open.push_back({&child});
                continue;
            }
            top.count += count;
        }
        if (open.back().count >= limit) {
            return limit;
        }
    }
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
