#include "app/model/editing/PlistEditor.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numeric>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UniqueKeys.h"
#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"

namespace {

QString actionName(const char* name) {
    return QCoreApplication::translate("PlistEditor", name);
}

bool hasOtherChildWithKey(PlistNode& parent, const PlistNode& node, const PlistString& key) {
    return std::ranges::any_of(parent.children(), [&node, &key](const PlistNodePtr& child) {
        return child.get() != &node && child->key() == key;
    });
}

std::vector<PlistString> keysOf(PlistNode& node) {
    std::vector<PlistString> keys;
    keys.reserve(static_cast<std::size_t>(node.childCount()));
    for (const PlistNodePtr& child : node.children()) {
        keys.push_back(child->key());
    }
    return keys;
}

/// The keys that the children of an array get when it becomes a dictionary: their own where these
/// are there and new, else one made of the position.
std::vector<PlistString> keysForDictionary(std::span<const PlistNodePtr> children) {
    UniqueKeys given;
    std::vector<PlistString> keys;
    keys.reserve(children.size());
    for (std::size_t i = 0; i < children.size(); ++i) {
        PlistString key = children[i]->key();
        if (key.isEmpty() || given.isTaken(key)) {
            std::string candidate = "Item " + std::to_string(i);
            while (given.isTaken(candidate)) {
                candidate += " copy";
            }
            key = candidate;
        }
        keys.push_back(given.take(key));
    }
    return keys;
}

/// The nodes that can go to `parent`, each once.
std::vector<PlistNodePtr> movableTo(const PlistNode& parent, std::span<const PlistNodePtr> nodes) {
    std::unordered_set<const PlistNode*> seen;
    std::vector<PlistNodePtr> movable;
    for (const PlistNodePtr& node : nodes) {
        if (node->parent() != nullptr && !node->contains(parent) &&
            seen.insert(node.get()).second) {
            movable.push_back(node);
        }
    }
    return movable;
}

/// How many of the nodes are children of `parent` before `index`.
qint64 countBefore(qint64 index, const PlistNode& parent, std::span<const PlistNodePtr> nodes) {
    return std::ranges::count_if(nodes, [&parent, index](const PlistNodePtr& node) {
        return node->parent() == &parent && *node->indexInParent() < index;
    });
}

// --- Changes that undo themselves when they are made again ---

/// Sets `value` and keeps what `get` has found before, so that each call takes back the previous
/// one.
template <typename Owner, typename Value, typename Get, typename Set>
auto exchange(Owner owner, Value value, Get get, Set set) {
    return [owner, get, set, value = std::move(value)]() mutable {
        Value old = std::invoke(get, *owner);
        std::invoke(set, *owner, value);
        value = std::move(old);
    };
}

/// A kind of container with the keys of its children, which an array hides.
struct Shape {
    PlistType type;
    std::vector<PlistString> keys;
};

Shape shapeOf(PlistNode& node) {
    return {node.type(), keysOf(node)};
}

void setShape(PlistNode& node, const Shape& shape) {
    const std::span<const PlistNodePtr> children = node.children();
    for (std::size_t i = 0; i < children.size(); ++i) {
        children[i]->setKey(shape.keys[i]);
    }
    node.convertContainer(shape.type);
}

std::vector<PlistNodePtr> orderOf(PlistNode& node) {
    const std::span<const PlistNodePtr> children = node.children();
    return {children.begin(), children.end()};
}

/// Nodes of one parent and where they stand in it, by ascending position.
struct Places {
    PlistNodePtr parent;
    std::vector<std::size_t> positions;
    std::vector<PlistNodePtr> nodes;
};

/// Where the nodes stand. Those without a parent are left out, and repeated ones counted once.
std::vector<Places> placesOf(std::span<const PlistNodePtr> nodes) {
    std::vector<Places> places;
    std::unordered_map<const PlistNode*, std::size_t> indexes;
    for (const PlistNodePtr& node : nodes) {
        const std::optional<qint64> position = node->indexInParent();
        if (position) {
            const auto [found, isNew] = indexes.try_emplace(node->parent(), places.size());
            if (isNew) {
                places.push_back({PlistNodePtr(node->parent()), {}, {}});
            }
            places[found->second].positions.push_back(static_cast<std::size_t>(*position));
        }
    }
    for (Places& place : places) {
        std::ranges::sort(place.positions);
        place.positions.erase(std::unique(place.positions.begin(), place.positions.end()),
                              place.positions.end());
        place.nodes.reserve(place.positions.size());
        for (const std::size_t position : place.positions) {
            place.nodes.push_back(place.parent->children()[position]);
        }
    }
    return places;
}

void insert(const Places& place) {
    const auto first = static_cast<qint64>(place.positions.front());
    if (place.positions.back() - place.positions.front() + 1 == place.positions.size()) {
        place.parent->insertChildren(place.nodes, first);
        return;
    }
    // Merged into one list: inserting one by one would move all that follow each time.
    const std::span<const PlistNodePtr> rest = place.parent->children();
    std::vector<PlistNodePtr> merged;
    merged.reserve(rest.size() + place.nodes.size());
    auto next = rest.begin();
    for (std::size_t i = 0; i < place.nodes.size(); ++i) {
        while (merged.size() < place.positions[i]) {
            merged.push_back(*next++);
        }
        merged.push_back(place.nodes[i]);
    }
    merged.insert(merged.end(), next, rest.end());
    place.parent->setChildren(merged);
}

enum class Step : std::uint8_t { insert, remove };

/// Inserts the nodes at their places and removes them, alternately, beginning with `first`.
auto alternate(std::vector<Places> places, Step first) {
    return [places = std::move(places), step = first]() mutable {
        for (const Places& place : places) {
            if (step == Step::insert) {
                insert(place);
            } else {
                place.parent->removeChildren(place.positions);
            }
        }
        step = step == Step::insert ? Step::remove : Step::insert;
    };
}

}  // namespace

// --- Failures ---

QString PlistEditor::EditError::message() const {
    if (const auto* duplicate = std::get_if<DuplicateKey>(&reason_)) {
        return QCoreApplication::translate("EditError", "The key “%1” already exists.")
            .arg(QString::fromUtf8(duplicate->key.view()));
    }
    return QCoreApplication::translate("EditError",
                                       "The root cannot be renamed, moved or deleted.");
}

PlistEditor::PlistEditor(PlistDocument& document, UndoManager* undoManager)
    : document_(&document), undoManager_(undoManager) {}

// --- Undo ---

/// Makes a change that undoes itself when it is made again, and registers that as its undo.
void PlistEditor::perform(const QString& actionName, Revision revision,
                          std::function<void()> change) const {
    const EditGroup group(*document_, undoManager_, actionName);
    change();
    if (revision == Revision::counts) {
        document_->increaseRevision();
    }
    if (undoManager_) {
        undoManager_->registerUndo(*document_, [editor = *this, actionName, revision,
                                                change = std::move(change)]() mutable {
            editor.perform(actionName, revision, std::move(change));
        });
    }
}

// --- Keys ---

std::optional<PlistEditor::EditError> PlistEditor::rename(PlistNode& node,
                                                          const PlistString& key) const {
    MainThread::check();
    PlistNode* parent = node.parent();
    if (parent == nullptr) {
        return EditError(EditError::RootCannotChange{});
    }
    if (node.key() == key) {
        return std::nullopt;
    }
    if (parent->type() == PlistType::dictionary && hasOtherChildWithKey(*parent, node, key)) {
        return EditError(EditError::DuplicateKey{key});
    }
    setKey(PlistNodePtr(&node), key);
    return std::nullopt;
}

// Without the checks of a rename: in the middle of a move the node has no parent.
void PlistEditor::setKey(const PlistNodePtr& node, const PlistString& key) const {
    perform(actionName(QT_TRANSLATE_NOOP("PlistEditor", "Rename")), Revision::stays,
            exchange(node, key, &PlistNode::key, &PlistNode::setKey));
}

// --- Values and types ---

void PlistEditor::changeValue(PlistNode& node, const PlistValue& value) const {
    MainThread::check();
    if (node.isContainer() || value.isContainer() || node.scalar() == value) {
        return;
    }
    perform(actionName(QT_TRANSLATE_NOOP("PlistEditor", "Change Value")), Revision::counts,
            exchange(PlistNodePtr(&node), value, &PlistNode::scalar, &PlistNode::setScalar));
}

void PlistEditor::changeType(PlistNode& node, PlistType type) const {
    MainThread::check();
    if (node.type() == type) {
        return;
    }
    const QString name = actionName(QT_TRANSLATE_NOOP("PlistEditor", "Change Type"));
    const PlistNodePtr changed(&node);
    if (node.isContainer() && isContainer(type)) {
        Shape shape{type, type == PlistType::dictionary ? keysForDictionary(node.children())
                                                        : keysOf(node)};
        perform(name, Revision::counts, exchange(changed, std::move(shape), shapeOf, setShape));
        return;
    }
    PlistNode::Representation converted(PlistText::converted(node.value(), type));
    perform(
        name, Revision::counts,
        exchange(changed, std::move(converted), &PlistNode::representation, &PlistNode::restore));
}

// --- Format and content ---

void PlistEditor::changeFormat(PlistFormat format) const {
    MainThread::check();
    if (isWritable(format) && format != document_->format()) {
        perform(actionName(QT_TRANSLATE_NOOP("PlistEditor", "Change Format")), Revision::stays,
                exchange(document_, format, &PlistDocument::format, &PlistDocument::setFormat));
    }
}

void PlistEditor::replaceContent(const PlistNodePtr& root, PlistFormat format,
                                 const QString& actionName) const {
    MainThread::check();
    perform(actionName, Revision::counts,
            exchange(document_, PlistDocument::Content::ofFile(root, format),
                     &PlistDocument::content, &PlistDocument::setContent));
}

// --- The shape of the tree ---

void PlistEditor::add(std::span<const PlistNodePtr> nodes, PlistNode& parent, qint64 index) const {
    MainThread::check();
    if (!parent.isContainer() || nodes.empty()) {
        return;
    }
    const qint64 first = std::clamp(index, qint64{0}, parent.childCount());
    Places place{PlistNodePtr(&parent),
                 std::vector<std::size_t>(nodes.size()),
                 {nodes.begin(), nodes.end()}};
    std::iota(place.positions.begin(), place.positions.end(), static_cast<std::size_t>(first));
    perform(actionName(QT_TRANSLATE_NOOP("PlistEditor", "Add Item")), Revision::counts,
            alternate({std::move(place)}, Step::insert));
}

void PlistEditor::remove(std::span<const PlistNodePtr> nodes) const {
    MainThread::check();
    std::vector<Places> places = placesOf(nodes);
    if (!places.empty()) {
        perform(actionName(QT_TRANSLATE_NOOP("PlistEditor", "Delete")), Revision::counts,
                alternate(std::move(places), Step::remove));
    }
}

void PlistEditor::addCopies(std::span<const Copy> copies) const {
    MainThread::check();
    std::vector<PlistNodePtr> originals;
    std::unordered_map<const PlistNode*, PlistNodePtr> copyOf;
    for (const Copy& copy : copies) {
        originals.push_back(copy.original);
        copyOf.emplace(copy.original.get(), copy.copy);
    }
    std::vector<Places> places = placesOf(originals);
    if (places.empty()) {
        return;
    }
    for (Places& place : places) {
        for (std::size_t i = 0; i < place.nodes.size(); ++i) {
            place.nodes[i] = copyOf[place.nodes[i].get()];
            // After its original, and after the copies before it.
            place.positions[i] += i + 1;
        }
    }
    const QString name = actionName(QT_TRANSLATE_NOOP("PlistEditor", "Add Item"));
    const EditGroup group(*document_, undoManager_, name);
    perform(name, Revision::counts, alternate(std::move(places), Step::insert));
    // Each copy counts, and putting them there has counted one.
    for (std::size_t i = 1; i < copyOf.size(); ++i) {
        document_->increaseRevision();
    }
}

std::vector<PlistNodePtr> PlistEditor::move(std::span<const PlistNodePtr> nodes, PlistNode& parent,
                                            qint64 index) const {
    MainThread::check();
    if (!parent.isContainer()) {
        return {};
    }
    std::vector<PlistNodePtr> moved = movableTo(parent, nodes);
    if (moved.empty()) {
        return {};
    }
    const qint64 place = index - countBefore(index, parent, moved);
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Move")));
    remove(moved);
    if (parent.type() == PlistType::dictionary) {
        makeKeysUnique(moved, parent);
    }
    add(moved, parent, place);
    return moved;
}

void PlistEditor::makeKeysUnique(std::span<const PlistNodePtr> nodes, PlistNode& parent) const {
    UniqueKeys keys(parent.children());
    for (const PlistNodePtr& node : nodes) {
        const PlistString key = keys.take(node->key());
        if (!(key == node->key())) {
            setKey(node, key);
        }
    }
}

void PlistEditor::sortKeys(PlistNode& node) const {
    MainThread::check();
    if (node.type() != PlistType::dictionary) {
        return;
    }
    std::vector<PlistNodePtr> sorted = orderOf(node);
    std::ranges::stable_sort(sorted, [](const PlistNodePtr& left, const PlistNodePtr& right) {
        return left->key().compare(right->key()) < 0;
    });
    if (std::ranges::equal(sorted, node.children())) {
        return;
    }
    const EditGroup group(*document_, undoManager_);
    // Counts no revision on the way back: no content changes that a search could have found.
    perform(actionName(QT_TRANSLATE_NOOP("PlistEditor", "Sort Keys")), Revision::stays,
            exchange(PlistNodePtr(&node), std::move(sorted), orderOf, &PlistNode::setChildren));
    document_->increaseRevision();
}
