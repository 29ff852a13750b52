#include "app/model/tree/PlistNode.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/ChildrenMaker.h"
#include "app/model/tree/KeyTable.h"
#include "app/model/tree/PlistNodeBlock.h"

namespace {

/// Up to here, comparing every key with every other is faster than filling a table.
constexpr std::size_t fewKeys = 8;

/// The one counter of the process: ids tell nodes of different documents apart.
NodeIdCounter& nodeIds() {
    static NodeIdCounter counter;
    return counter;
}

/// A container whose value is being put together from its children's.
struct OpenContainer {
    PlistNode* node;
    std::size_t next;   ///< the child to look at next
    std::size_t start;  ///< where the values of its children begin
};

}  // namespace

// --- Life ---

PlistNodePtr PlistNode::create(PlistString key, PlistValue value) {
    MainThread::check();
    PlistNodeBlock* block = PlistNodeBlock::make(1);
    return PlistNodePtr(block->place(0, nodeIds().take(), std::move(key), std::move(value)));
}

NodeId PlistNode::takeIds(qint64 count) {
    return nodeIds().take(count);
}

PlistNode::PlistNode(NodeId id, std::uint16_t placeInBlock, PlistString key,
                     PlistValue value) noexcept
    : id_(id), placeInBlock_(placeInBlock), value_(std::move(value)), key_(std::move(key)) {
    if (value_.isContainer()) {
        set(cached);
    }
}

// Trees may be deeper than the machine's stack, so nodes that nobody owns any more wait in a chain
// (through the link to the parent, which they no longer need) instead of being freed by a call
// within a call.
void PlistNode::destroy(PlistNode* node) noexcept {
    node->owner_.parent = nullptr;
    PlistNode* waiting = node;
    while (waiting != nullptr) {
        PlistNode* dead = waiting;
        waiting = dead->owner_.parent;
        dead->detachChildren();
        PlistNodeList::Storage* list = std::exchange(dead->children_.storage_, nullptr);
        if (list != nullptr && --list->owners == 0) {
            PlistNodePtr* items = PlistNodeList::itemsOf(list);
            for (std::size_t i = 0; i < list->size; ++i) {
                PlistNode* child = items[i].surrender();
                if (child != nullptr && --child->owners_ == 0) {
                    child->owner_.parent = waiting;
                    waiting = child;
                }
            }
            PlistNodeList::free(list);
        }
        PlistNodeBlock::free(dead);
    }
}

// --- What a node is ---

PlistValue PlistNode::scalar() const {
    return isContainer() ? PlistValue::defaultValue(type()) : value_;
}

qint64 PlistNode::childCount() const noexcept {
    return static_cast<qint64>(has(materialized) ? children_.size() : value_.childCount());
}

bool PlistNode::isEntry() const noexcept {
    return parent() != nullptr && parent()->type() == PlistType::dictionary;
}

bool PlistNode::contains(const PlistNode& node) const noexcept {
    const PlistNode* above = &node;
    while (above != nullptr && above != this) {
        above = above->parent();
    }
    return above != nullptr;
}

std::span<const PlistNodePtr> PlistNode::children() {
    MainThread::check();
    materialize();
    return children_.nodes();
}

void PlistNode::materialize() {
    if (has(materialized) || !isContainer()) {
        return;
    }
    ChildrenMaker(*this).makeNodes(static_cast<std::size_t>(childCount()));
}

std::optional<qint64> PlistNode::indexInParent() const {
    MainThread::check();
    const PlistNode* above = parent();
    if (above == nullptr) {
        return std::nullopt;
    }
    // After a change among the siblings the node is near where it was: look there, then further
    // and further away on both sides.
    const std::span<const PlistNodePtr> siblings = above->children_.nodes();
    const std::size_t middle = std::min<std::size_t>(positionHint_, siblings.size());
    const std::size_t farthest = std::max(middle, siblings.size() - middle);
    for (std::size_t distance = 0; distance <= farthest; ++distance) {
        for (const std::size_t position : {middle + distance, middle - distance}) {
            if (position < siblings.size() && siblings[position].get() == this) {
                positionHint_ = static_cast<std::uint32_t>(position);
                return static_cast<qint64>(position);
            }
        }
    }
    return std::nullopt;
}

void PlistNode::updateDuplicateKeys() {
    if (has(duplicatesKnown)) {
        return;
    }
    const std::span<const PlistNodePtr> nodes = children_.nodes();
    for (const PlistNodePtr& node : nodes) {
        node->clear(duplicateKey);
    }
    if (nodes.size() <= fewKeys) {
        for (std::size_t i = 1; i < nodes.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (nodes[i]->key_ == nodes[j]->key_) {
                    nodes[i]->set(duplicateKey);
                    nodes[j]->set(duplicateKey);
                }
            }
        }
    } else {
        KeyTable keys(nodes);
        ChildrenMaker::markDuplicates(*this, keys, nodes.size());
    }
    set(duplicatesKnown);
}

// --- The value of the subtree ---

PlistValue PlistNode::value() {
    MainThread::check();
    if (needsRebuilding()) {
        rebuildValue();
    }
    return value_;
}

void PlistNode::rebuildValue() {
    std::vector<OpenContainer> open{{this, 0, 0}};
    std::vector<PlistValue> values;
    while (!open.empty()) {
        OpenContainer& top = open.back();
        PlistNode* node = top.node;
        const std::span<const PlistNodePtr> children = node->children_.nodes();
        while (top.next < children.size() && !children[top.next]->needsRebuilding()) {
            values.push_back(children[top.next++]->value_);
        }
        if (top.next < children.size()) {
            open.push_back({children[top.next].get(), 0, values.size()});
            continue;
        }
        const auto start = values.begin() + static_cast<std::ptrdiff_t>(top.start);
        std::vector<PlistValue> own(std::make_move_iterator(start),
                                    std::make_move_iterator(values.end()));
        values.erase(start, values.end());
        node->value_ = node->valueOf(std::move(own));
        node->clear(keysKept);
        node->set(cached);
        open.pop_back();
    }
}

PlistValue PlistNode::valueOf(std::vector<PlistValue> childValues) const {
    if (type() == PlistType::array) {
        return PlistValue::array(std::move(childValues));
    }
    if (has(keysKept)) {
        return PlistValue::dictionaryWithKeysOf(value_, std::move(childValues));
    }
    std::vector<PlistString> keys;
    keys.reserve(childValues.size());
    for (const PlistNodePtr& child : children_.nodes()) {
        keys.push_back(child->key_);
    }
    return PlistValue::dictionary(std::move(keys), std::move(childValues));
}

// Only a node with its children made may lose its value: they hold all that it said. The list of
// keys stays, through the old value, for the next one to share.
void PlistNode::contentChanged() noexcept {
    for (PlistNode* node = this; node != nullptr; node = node->parent()) {
        if (!node->has(materialized) || !node->has(cached)) {
            continue;
        }
        if (node->type() == PlistType::dictionary) {
            node->clear(cached);
            node->set(keysKept);
        } else {
            node->dropValue();
        }
    }
}

void PlistNode::keysOrChildrenChanged() noexcept {
    clear(duplicatesKnown);
    dropValue();
    if (PlistNode* above = parent()) {
        above->contentChanged();
    }
}

void PlistNode::dropValue() noexcept {
    value_ = PlistValue::defaultValue(type());
    clear(cached);
    clear(keysKept);
}

// --- Changes ---

void PlistNode::setKey(const PlistString& key) {
    MainThread::check();
    if (key_ == key) {
        return;
    }
    key_ = key;
    if (PlistNode* above = parent()) {
        above->keysOrChildrenChanged();
    }
    report(PlistNodeChange::key);
}

void PlistNode::setValue(PlistValue value) {
    restore(Representation(std::move(value)));
}

void PlistNode::setScalar(PlistValue value) {
    MainThread::check();
    plistCheck(!isContainer() && !value.isContainer(), "a scalar stays a scalar");
    if (value_ == value) {
        return;
    }
    const Shown before = shown();
    value_ = std::move(value);
    contentChanged();
    reportSince(before, {});
}

void PlistNode::insertChildren(std::span<const PlistNodePtr> nodes, qint64 index) {
    MainThread::check();
    plistCheck(isContainer(), "only containers have children");
    plistCheck(index >= 0 && index <= childCount(), "children are inserted among the others");
    if (nodes.empty()) {
        return;
    }
    materialize();
    const Shown before = shown();
    children_.insert(static_cast<std::size_t>(index), nodes);
    auto position = static_cast<std::uint32_t>(index);
    for (const PlistNodePtr& node : nodes) {
        node->setParent(this);
        node->positionHint_ = position++;
    }
    keysOrChildrenChanged();
    reportSince(before, PlistNodeChange::children,
                PlistNodeRun{static_cast<std::size_t>(index), 0, nodes.size()});
}

void PlistNode::removeChildren(std::span<const std::size_t> positions) {
    MainThread::check();
    if (positions.empty()) {
        return;
    }
    plistCheck(has(materialized), "only children that were made can be removed");
    plistCheck(std::ranges::is_sorted(positions, std::ranges::less_equal()) &&
                   positions.back() < children_.size(),
               "removed positions ascend and lie among the children");
    const Shown before = shown();
    for (const std::size_t position : positions) {
        children_.nodes()[position]->setParent(nullptr);
    }
    children_.remove(positions);
    keysOrChildrenChanged();
    std::optional<PlistNodeRun> run;
    if (positions.back() - positions.front() + 1 == positions.size()) {
        run = {positions.front(), positions.size(), 0};
    }
    reportSince(before, PlistNodeChange::children, run);
}

void PlistNode::setChildren(std::span<const PlistNodePtr> nodes) {
    MainThread::check();
    plistCheck(isContainer(), "only containers have children");
    materialize();
    const Shown before = shown();
    PlistNodeList list(nodes);
    detachChildren();
    std::swap(children_, list);
    adoptChildren();
    keysOrChildrenChanged();
    reportSince(before, PlistNodeChange::children);
}

void PlistNode::convertContainer(PlistType type) {
    MainThread::check();
    plistCheck(isContainer() && ::isContainer(type), "only containers convert into each other");
    materialize();
    const Shown before = shown();
    value_ = PlistValue::defaultValue(type);
    keysOrChildrenChanged();
    reportSince(before, {});
}

PlistNode::Representation PlistNode::representation() {
    MainThread::check();
    // Children say all; a value kept beside them would have to be dropped on the way back.
    Representation content(has(materialized) ? PlistValue::defaultValue(type()) : value_);
    content.isMaterialized_ = has(materialized);
    content.children_ = children_;
    return content;
}

void PlistNode::restore(const Representation& representation) {
    MainThread::check();
    const Shown before = shown();
    detachChildren();
    const PlistNodeList old = std::exchange(children_, representation.children_);
    value_ = representation.value_;
    for (const Flag flag : {materialized, keysKept, cached, duplicatesKnown}) {
        clear(flag);
    }
    if (representation.isMaterialized_) {
        set(materialized);
    } else if (isContainer()) {
        set(cached);
    }
    adoptChildren();
    contentChanged();
    reportReplacement(before);
}

// --- Links upwards ---

void PlistNode::setParent(PlistNode* parent) noexcept {
    clear(observed);
    owner_.parent = parent;
}

void PlistNode::adoptChildren() noexcept {
    std::uint32_t position = 0;
    for (const PlistNodePtr& child : children_.nodes()) {
        child->setParent(this);
        child->positionHint_ = position++;
    }
}

void PlistNode::detachChildren() noexcept {
    for (const PlistNodePtr& child : children_.nodes()) {
        if (child->parent() == this) {
            child->setParent(nullptr);
        }
    }
}

void PlistNode::setObserver(PlistNodeObserver* observer) {
    MainThread::check();
    plistCheck(parent() == nullptr, "only a root has an observer");
    clear(observed);
    owner_.parent = nullptr;
    if (observer != nullptr) {
        set(observed);
        owner_.observer = observer;
    }
}

PlistNode::Shown PlistNode::shown() const {
    return {scalar(), childCount()};
}

void PlistNode::reportSince(const Shown& before, PlistNodeChanges others,
                            std::optional<PlistNodeRun> run) {
    const PlistValue now = scalar();
    others.setFlag(PlistNodeChange::type, now.type() != before.scalar.type());
    others.setFlag(PlistNodeChange::scalar, !(now == before.scalar));
    others.setFlag(PlistNodeChange::childCount, childCount() != before.childCount);
    report(others, run);
}

void PlistNode::reportReplacement(const Shown& before) {
    const bool hadOrHasChildren = isContainer() || ::isContainer(before.scalar.type());
    reportSince(before, hadOrHasChildren ? PlistNodeChange::children : PlistNodeChanges());
}

void PlistNode::report(PlistNodeChanges changes, std::optional<PlistNodeRun> run) {
    if (!changes) {
        return;
    }
    if (changes != PlistNodeChange::children) {
        set(touched);
    }
    PlistNode* top = this;
    while (PlistNode* above = top->parent()) {
        top = above;
    }
    if (top->has(observed)) {
        top->owner_.observer->handleNodeChange(*this, changes, run);
    }
}
