#include "app/model/OutlineExpansion.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/PlistString.h"
#include "app/model/KeyTable.h"
#include "app/model/PlistNode.h"

namespace {

/// From here on a table of the keys is faster than looking through them for each step.
constexpr std::size_t manySteps = 4;

struct Pair {
    PlistNode* oldNode;
    PlistNode* newNode;
};

/// The position that a step of digits alone names.
std::optional<std::size_t> position(std::string_view step) {
    std::size_t number = 0;
    const char* end = step.data() + step.size();
    const auto [stop, error] = std::from_chars(step.data(), end, number);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return number;
}

/// Finds children by steps: keys in a dictionary, decimal positions in an array.
class Steps {
public:
    Steps(PlistNode& node, std::size_t expectedCount)
        : children_(node.children()), isDictionary_(node.type() == PlistType::dictionary) {
        if (isDictionary_ && expectedCount >= manySteps) {
            table_.emplace(children_);
            table_->insertAll([](std::size_t, std::size_t) {});
        }
    }

    PlistNode* follow(const PlistString& step) const {
        const std::optional<std::size_t> found = isDictionary_ ? find(step) : position(step.view());
        return found && *found < children_.size() ? children_[*found].get() : nullptr;
    }

private:
    std::optional<std::size_t> find(const PlistString& key) const {
        if (table_) {
            return table_->find(key);
        }
        const auto match =
            std::find_if(children_.begin(), children_.end(),
                         [&key](const PlistNodePtr& child) { return child->key() == key; });
        return static_cast<std::size_t>(match - children_.begin());
    }

    std::span<const PlistNodePtr> children_;
    bool isDictionary_;
    std::optional<KeyTable> table_;
};

/// The step that leads to a child at `index`.
PlistString stepTo(const PlistNode& parent, const PlistNode& child, std::size_t index) {
    return parent.type() == PlistType::dictionary ? child.key()
                                                  : PlistString(std::to_string(index));
}

std::vector<std::size_t> expandedChildren(PlistNode& node, const NodeIdSet& expanded) {
    std::vector<std::size_t> positions;
    const std::span<const PlistNodePtr> children = node.children();
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (children[i]->isMaterialized() && expanded.contains(children[i]->id())) {
            positions.push_back(i);
        }
    }
    return positions;
}

}  // namespace

// Both trees are walked side by side instead of writing paths down: the paths of a deep tree are
// longer than the tree.
NodeIdSet OutlineExpansion::carried(PlistNode& oldRoot, PlistNode& newRoot,
                                    const NodeIdSet& expanded) {
    NodeIdSet carriedOver{newRoot.id()};
    std::vector<Pair> waiting;
    if (oldRoot.isMaterialized() && expanded.contains(oldRoot.id()) && newRoot.isContainer()) {
        waiting.push_back({&oldRoot, &newRoot});
    }
    while (!waiting.empty()) {
        const Pair pair = waiting.back();
        waiting.pop_back();
        const std::vector<std::size_t> positions = expandedChildren(*pair.oldNode, expanded);
        if (positions.empty()) {
            continue;
        }
        const Steps steps(*pair.newNode, positions.size());
        for (const std::size_t index : positions) {
            PlistNode& oldChild = *pair.oldNode->children()[index];
            PlistNode* newChild = steps.follow(stepTo(*pair.oldNode, oldChild, index));
            if (newChild != nullptr && newChild->isContainer()) {
                carriedOver.insert(newChild->id());
                waiting.push_back({&oldChild, newChild});
            }
        }
    }
    return carriedOver;
}
