#include "app/model/outline/OutlineExpansion.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/KeyTable.h"
#include "app/model/tree/PlistNode.h"

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

/// Walks two trees side by side as far as the old one is expanded. Nothing is called for the roots.
///
/// The trees are walked instead of writing paths down: the paths of a deep tree are longer than the
/// tree.
class SideBySide {
public:
    SideBySide(PlistNode& oldRoot, PlistNode& newRoot, const NodeIdSet& expanded)
        : expanded_(expanded) {
        if (isExpanded(oldRoot) && newRoot.isContainer()) {
            waiting_.push_back({&oldRoot, &newRoot});
        }
    }

    /// Calls `visit(old, new)` for the children that stand in the same place and whose old one
    /// `isWanted`.
    template <typename IsWanted, typename Visit>
    void walk(IsWanted isWanted, Visit visit) {
        while (!waiting_.empty()) {
            const Pair pair = waiting_.back();
            waiting_.pop_back();
            const std::vector<std::size_t> positions = wantedChildren(*pair.oldNode, isWanted);
            if (positions.empty()) {
                continue;
            }
            const Steps steps(*pair.newNode, positions.size());
            for (const std::size_t index : positions) {
                PlistNode& oldChild = *pair.oldNode->children()[index];
                PlistNode* newChild = steps.follow(stepTo(*pair.oldNode, oldChild, index));
                if (newChild != nullptr) {
                    visit(oldChild, *newChild);
                    if (isExpanded(oldChild) && newChild->isContainer()) {
                        waiting_.push_back({&oldChild, newChild});
                    }
                }
            }
        }
    }

private:
    bool isExpanded(const PlistNode& node) const {
        return node.isMaterialized() && expanded_.contains(node.id());
    }

    template <typename IsWanted>
    std::vector<std::size_t> wantedChildren(PlistNode& node, IsWanted isWanted) const {
        std::vector<std::size_t> positions;
        const std::span<const PlistNodePtr> children = node.children();
        for (std::size_t i = 0; i < children.size(); ++i) {
            if (isExpanded(*children[i]) || isWanted(*children[i])) {
                positions.push_back(i);
            }
        }
        return positions;
    }

    const NodeIdSet& expanded_;
    std::vector<Pair> waiting_;
};

}  // namespace

NodeIdSet OutlineExpansion::carried(PlistNode& oldRoot, PlistNode& newRoot,
                                    const NodeIdSet& expanded) {
    NodeIdSet carriedOver{newRoot.id()};
    SideBySide(oldRoot, newRoot, expanded)
        .walk([](const PlistNode&) { return false; },
              [&carriedOver](const PlistNode&, const PlistNode& newNode) {
                  if (newNode.isContainer()) {
                      carriedOver.insert(newNode.id());
                  }
              });
    return carriedOver;
}

NodeIdSet OutlineExpansion::carriedSelection(PlistNode& oldRoot, PlistNode& newRoot,
                                             const NodeIdSet& expanded,
                                             const NodeIdSet& selection) {
    NodeIdSet carriedOver;
    if (selection.contains(oldRoot.id())) {
        carriedOver.insert(newRoot.id());
    }
    const auto isSelected = [&selection](const PlistNode& node) {
        return selection.contains(node.id());
    };
    SideBySide(oldRoot, newRoot, expanded)
        .walk(isSelected, [&](const PlistNode& oldNode, const PlistNode& newNode) {
            if (isSelected(oldNode)) {
                carriedOver.insert(newNode.id());
            }
        });
    return carriedOver;
}

PlistNode* OutlineExpansion::counterpart(const PlistNode& node, PlistNode& newRoot) {
    std::vector<PlistString> path;
    for (const PlistNode* below = &node; below->parent() != nullptr; below = below->parent()) {
        const auto index = static_cast<std::size_t>(*below->indexInParent());
        path.push_back(stepTo(*below->parent(), *below, index));
    }
    PlistNode* found = &newRoot;
    while (!path.empty() && found != nullptr) {
        found = found->isContainer() ? Steps(*found, 1).follow(path.back()) : nullptr;
        path.pop_back();
    }
    return found;
}
