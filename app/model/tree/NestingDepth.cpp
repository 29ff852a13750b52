#include "app/model/tree/NestingDepth.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"

namespace {

using Children = std::span<const PlistValue>;

/// Empty containers take no level: readers do not open them.
void addContainers(Children values, std::vector<Children>& containers) {
    for (const PlistValue& value : values) {
        if (value.isContainer() && !value.children().empty()) {
            containers.push_back(value.children());
        }
    }
}

/// Keeps one of those that are shared, or a small file that shares much would take forever.
void keepEachOnce(std::vector<Children>& containers) {
    const auto isBefore = [](const Children& left, const Children& right) {
        return std::less<>()(left.data(), right.data());
    };
    const auto isSame = [](const Children& left, const Children& right) {
        return left.data() == right.data();
    };
    std::sort(containers.begin(), containers.end(), isBefore);
    containers.erase(std::unique(containers.begin(), containers.end(), isSame), containers.end());
}

int levelOf(const PlistNode& container) {
    int level = 1;
    for (const PlistNode* above = container.parent(); above != nullptr; above = above->parent()) {
        ++level;
    }
    return level;
}

}  // namespace

void NestingDepth::check(std::span<const PlistEntry> entries, const PlistNode& container) {
    std::vector<Children> onLevel;
    for (const PlistEntry& entry : entries) {
        addContainers({&entry.value, 1}, onLevel);
    }
    for (int level = levelOf(container) + 1; !onLevel.empty(); ++level) {
        if (level > PlistCodec::maximumDepth) {
            throw PlistError(PlistError::NestingTooDeep{PlistCodec::maximumDepth});
        }
        keepEachOnce(onLevel);
        std::vector<Children> below;
        for (const Children& children : onLevel) {
            addContainers(children, below);
        }
        onLevel = std::move(below);
    }
}
