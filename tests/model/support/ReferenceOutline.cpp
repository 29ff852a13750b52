#include "tests/model/support/ReferenceOutline.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace {

using Name = ReferenceItem::Name;

bool isDuplicateKey(const ReferenceItem& parent, const std::string& key) {
    return parent.type() == PlistType::dictionary &&
           std::ranges::count_if(parent.children, [&key](const ReferenceItem& child) {
               return ReferenceText::areEqual(child.key, key);
           }) > 1;
}

/// The child that a step of a path leads to.
const ReferenceItem* childAt(const ReferenceItem& parent, const std::string& step) {
    for (std::size_t i = 0; i < parent.children.size(); ++i) {
        const bool isMeant = parent.type() == PlistType::dictionary
                                 ? ReferenceText::areEqual(parent.children[i].key, step)
                                 : std::to_string(i) == step;
        if (isMeant) {
            return &parent.children[i];
        }
    }
    return nullptr;
}

void addContainers(const ReferenceItem& top, std::set<Name>& names) {
    if (top.isContainer()) {
        names.insert(top.name);
    }
    for (const ReferenceItem& child : top.children) {
        addContainers(child, names);
    }
}

/// The containers that are meant by expanding or collapsing these items.
std::set<Name> containersOf(const ReferenceItem& root, const std::vector<Name>& items,
                            bool wholeSubtree) {
    std::set<Name> names;
    for (const Name name : items) {
        const ReferenceItem& item = *root.find(name);
        if (wholeSubtree) {
            addContainers(item, names);
        } else if (item.isContainer()) {
            names.insert(name);
        }
    }
    return names;
}

}  // namespace

void ReferenceOutline::rebuild(const ReferenceItem& root) {
    if (root_.name != root.name) {
        installRoot(root);
    }
    root_ = root;
    rows_.clear();
    Row first;
    first.item = root.name;
    addRows(root, first);
    std::set<Name> visible;
    for (const Row& row : rows_) {
        visible.insert(row.item);
    }
    std::set<Name> kept;
    std::ranges::set_intersection(selection_, visible, std::inserter(kept, kept.end()));
    selection_ = std::move(kept);
}

void ReferenceOutline::follow(const ReferenceItem& root, int changes) {
    if (followed_ != changes) {
        followed_ = changes;
        rebuild(root);
    }
}

void ReferenceOutline::installRoot(const ReferenceItem& root) {
    const std::set<Name> before = std::exchange(expanded_, {root.name});
    if (before.contains(root_.name)) {
        carry(root_, root, before);
    }
    selection_.clear();
    editing_.reset();
}

void ReferenceOutline::carry(const ReferenceItem& oldItem, const ReferenceItem& newItem,
                             const std::set<Name>& expanded) {
    for (std::size_t i = 0; i < oldItem.children.size(); ++i) {
        const ReferenceItem& oldChild = oldItem.children[i];
        if (!oldChild.isContainer() || !expanded.contains(oldChild.name)) {
            continue;
        }
        const std::string step =
            oldItem.type() == PlistType::dictionary ? oldChild.key : std::to_string(i);
        const ReferenceItem* newChild = childAt(newItem, step);
        if (newChild != nullptr && newChild->isContainer()) {
            expanded_.insert(newChild->name);
            carry(oldChild, *newChild, expanded);
        }
    }
}

void ReferenceOutline::addRows(const ReferenceItem& item, Row row) {
    if (filter_ && !filter_->contains(item.name)) {
        return;
    }
    row.isExpanded = item.isContainer() && (filter_ || expanded_.contains(item.name));
    rows_.push_back(row);
    if (!row.isExpanded) {
        return;
    }
    for (std::size_t i = 0; i < item.children.size(); ++i) {
        const ReferenceItem& child = item.children[i];
        addRows(child, {.item = child.name,
                        .depth = row.depth + 1,
                        .index = i,
                        .parentType = item.type(),
                        .isDuplicateKey = isDuplicateKey(item, child.key)});
    }
}

void ReferenceOutline::expand(const ReferenceItem& root, const std::vector<Name>& items,
                              bool wholeSubtree) {
    expanded_.merge(containersOf(root, items, wholeSubtree));
    rebuild(root);
}

void ReferenceOutline::collapse(const ReferenceItem& root, const std::vector<Name>& items,
                                bool wholeSubtree) {
    for (const Name name : containersOf(root, items, wholeSubtree)) {
        expanded_.erase(name);
    }
    rebuild(root);
}

void ReferenceOutline::reveal(ReferenceItem root, Name item) {
    for (const ReferenceItem* above = root.findParent(item); above != nullptr;
         above = root.findParent(above->name)) {
        expanded_.insert(above->name);
    }
    rebuild(root);
}

void ReferenceOutline::setFilter(const ReferenceItem& root,
                                 const std::optional<std::set<Name>>& filter) {
    filter_ = filter;
    rebuild(root);
}

QString ReferenceOutline::text(const Row& row) {
    return QStringLiteral("item %1, depth %2, index %3%4%5%6\n")
        .arg(row.item)
        .arg(row.depth)
        .arg(row.index)
        .arg(
            row.parentType == PlistType::dictionary ? QStringLiteral(", in dictionary") : QString(),
            row.isDuplicateKey ? QStringLiteral(", duplicate") : QString(),
            row.isExpanded ? QStringLiteral(", expanded") : QString());
}
