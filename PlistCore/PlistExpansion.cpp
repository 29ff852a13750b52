#include "PlistCore/PlistExpansion.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "PlistCore/PlistValue.h"

namespace {

struct OpenContainer {
    const PlistValue* value;
    std::size_t next = 0;
    std::uint64_t count = 1;
};

}  // namespace

std::uint64_t PlistExpansion::count(const PlistValue& value, std::uint64_t limit) {
    std::unordered_map<const void*, std::uint64_t> known;
    std::vector<OpenContainer> open{{&value}};
    for (;;) {
        OpenContainer& top = open.back();
        const auto children = top.value->children();
        if (top.next == children.size()) {
            const std::uint64_t count = top.count;
            known.emplace(top.value->cell().pointer(), count);
            open.pop_back();
            if (open.empty()) {
                return count;
            }
            open.back().count = std::min(limit, open.back().count + count);
            continue;
        }
        const PlistValue& child = children[top.next++];
        if (child.childCount() == 0) {
            top.count = std::min(limit, top.count + 1);
            continue;
        }
        const auto found = known.find(child.cell().pointer());
        if (found == known.end()) {
            open.push_back({&child});
        } else {
            top.count = std::min(limit, top.count + found->second);
        }
    }
}
