#include "app/model/editing/PlistEditor.h"

#include <QCoreApplication>
#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "app/model/editing/EditGroup.h"
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

/// The keys that the children of an array get when it becomes a dictionary: their own where these
/// are there and new, else one made of the position.
std::vector<PlistString> keysForDictionary(std::span<const PlistNodePtr> children) {
    std::unordered_set<PlistString> given;
    std::vector<PlistString> keys;
    keys.reserve(children.size());
    for (std::size_t i = 0; i < children.size(); ++i) {
        PlistString key = children[i]->key();
        if (key.isEmpty() || given.contains(key)) {
            std::string candidate = "Item " + std::to_string(i);
            while (given.contains(candidate)) {
                candidate += " copy";
            }
            key = candidate;
        }
        given.insert(key);
        keys.push_back(std::move(key));
    }
    return keys;
}

bool isSameOrAncestor(const PlistNode& node, const PlistNode& of) {
    const PlistNode* above = &of;
    while (above != nullptr && above != &node) {
        above = above->parent();
    }
    return above == &node;
}

/// The nodes that can go to `parent`, each once.
std::vector<PlistNodePtr> movableTo(const PlistNode& parent, std::span<const PlistNodePtr> nodes) {
    std::unordered_set<const PlistNode*> seen;
    std::vector<PlistNodePtr> movable;
    for (const PlistNodePtr& node : nodes) {
        if (node->parent() != nullptr && !isSameOrAncestor(*node, parent) &&
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

}  // namespace

PlistEditor::PlistEditor(PlistDocument& document, UndoManager* undoManager)
    : document_(&document), undoManager_(undoManager) {}

template <typename Inverse>
void PlistEditor::registerUndo(Inverse inverse) const {
    if (undoManager_) {
        undoManager_->registerUndo(
            *document_, [editor = *this, inverse = std::move(inverse)] { inverse(editor); });
    }
}

// --- Keys ---

std::optional<EditError> PlistEditor::rename(PlistNode& node, const PlistString& key) const {
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

// Without the checks of a rename: in the middle of a move, and on the way back, the node may have
// no parent.
void PlistEditor::setKey(const PlistNodePtr& node, const PlistString& key) const {
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Rename")));
    const PlistString old = node->key();
    node->setKey(key);
    registerUndo([node, old](const PlistEditor& editor) { editor.setKey(node, old); });
}

// --- Values and types ---

void PlistEditor::changeValue(PlistNode& node, const PlistValue& value) const {
    MainThread::check();
    if (node.isContainer() || value.isContainer() || node.scalar() == value) {
        return;
    }
    replaceValue(PlistNodePtr(&node), value,
                 actionName(QT_TRANSLATE_NOOP("PlistEditor", "Change Value")));
}

void PlistEditor::changeType(PlistNode& node, PlistType type) const {
    MainThread::check();
    if (node.type() == type) {
        return;
    }
    if (node.isContainer() && isContainer(type)) {
        convert(PlistNodePtr(&node), type,
                type == PlistType::dictionary ? keysForDictionary(node.children()) : keysOf(node));
        return;
    }
    replaceValue(PlistNodePtr(&node), PlistText::converted(node.value(), type),
                 actionName(QT_TRANSLATE_NOOP("PlistEditor", "Change Type")));
}

void PlistEditor::replaceValue(const PlistNodePtr& node, const PlistValue& value,
                               const QString& actionName) const {
    const EditGroup group(*document_, undoManager_, actionName);
    const PlistNode::Representation old = node->representation();
    node->setValue(value);
    document_->increaseRevision();
    registerUndo([node, old](const PlistEditor& editor) { editor.restore(node, old); });
}

void PlistEditor::restore(const PlistNodePtr& node,
                          const PlistNode::Representation& content) const {
    const EditGroup group(*document_, undoManager_);
    const PlistNode::Representation old = node->representation();
    node->restore(content);
    document_->increaseRevision();
    registerUndo([node, old](const PlistEditor& editor) { editor.restore(node, old); });
}

std::vector<PlistString> PlistEditor::keysOf(PlistNode& node) {
    std::vector<PlistString> keys;
    keys.reserve(static_cast<std::size_t>(node.childCount()));
    for (const PlistNodePtr& child : node.children()) {
        keys.push_back(child->key());
    }
    return keys;
}

void PlistEditor::convert(const PlistNodePtr& node, PlistType type,
                          const std::vector<PlistString>& keys) const {
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Change Type")));
    const PlistType oldType = node->type();
    std::vector<PlistString> oldKeys = keysOf(*node);
    const std::span<const PlistNodePtr> children = node->children();
    for (std::size_t i = 0; i < children.size(); ++i) {
        children[i]->setKey(keys[i]);
    }
    node->convertContainer(type);
    document_->increaseRevision();
    registerUndo([node, oldType, oldKeys = std::move(oldKeys)](const PlistEditor& editor) {
        editor.convert(node, oldType, oldKeys);
    });
}

// --- Format and content ---

void PlistEditor::changeFormat(PlistFormat format) const {
    MainThread::check();
    if (isWritable(format) && format != document_->format()) {
        setFormat(format);
    }
}

void PlistEditor::setFormat(PlistFormat format) const {
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Change Format")));
    const PlistFormat old = document_->format();
    document_->setFormat(format);
    registerUndo([old](const PlistEditor& editor) { editor.setFormat(old); });
}

void PlistEditor::replaceContent(const PlistFile& snapshot, const QString& actionName) const {
    replaceContent(PlistNode::create({}, snapshot.root), snapshot.format, actionName);
}

void PlistEditor::replaceContent(const PlistNodePtr& root, PlistFormat format,
                                 const QString& actionName) const {
    MainThread::check();
    const EditGroup group(*document_, undoManager_, actionName);
    const Content old{PlistNodePtr(&document_->root()), document_->format(),
                      document_->wasReadOnlyFormat()};
    document_->apply(root, format);
    registerUndo([old](const PlistEditor& editor) { editor.setContent(old); });
}

void PlistEditor::setContent(const Content& content) const {
    const EditGroup group(*document_, undoManager_);
    const Content old{PlistNodePtr(&document_->root()), document_->format(),
                      document_->wasReadOnlyFormat()};
    document_->setWasReadOnlyFormat(content.wasReadOnlyFormat);
    document_->setFormat(content.format);
    document_->setRoot(content.root);
    document_->increaseRevision();
    registerUndo([old](const PlistEditor& editor) { editor.setContent(old); });
}

// --- The shape of the tree ---

void PlistEditor::add(std::span<const PlistNodePtr> nodes, PlistNode& parent, qint64 index) const {
    MainThread::check();
    if (!parent.isContainer() || nodes.empty()) {
        return;
    }
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Add Item")));
    parent.insertChildren(nodes, std::clamp(index, qint64{0}, parent.childCount()));
    document_->increaseRevision();
    std::vector<PlistNodePtr> added(nodes.begin(), nodes.end());
    registerUndo([added = std::move(added)](const PlistEditor& editor) { editor.remove(added); });
}

void PlistEditor::remove(std::span<const PlistNodePtr> nodes) const {
    MainThread::check();
    const std::vector<Places> places = placesOf(nodes);
    if (!places.empty()) {
        takeOut(places);
    }
}

std::vector<PlistEditor::Places> PlistEditor::placesOf(std::span<const PlistNodePtr> nodes) {
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

void PlistEditor::takeOut(const std::vector<Places>& places) const {
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Delete")));
    for (const Places& place : places) {
        place.parent->removeChildren(place.positions);
    }
    document_->increaseRevision();
    registerUndo([places](const PlistEditor& editor) { editor.putBack(places); });
}

void PlistEditor::putBack(const std::vector<Places>& places) const {
    const EditGroup group(*document_, undoManager_);
    for (const Places& place : places) {
        const auto first = static_cast<qint64>(place.positions.front());
        if (place.positions.back() - place.positions.front() + 1 == place.positions.size()) {
            place.parent->insertChildren(place.nodes, first);
            continue;
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
    document_->increaseRevision();
    registerUndo([places](const PlistEditor& editor) { editor.takeOut(places); });
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
            // Behind its original, and behind the copies before it.
            place.positions[i] += i + 1;
        }
    }
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Add Item")));
    putBack(places);
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
    const std::span<const PlistNodePtr> children = node.children();
    std::vector<PlistNodePtr> sorted(children.begin(), children.end());
    std::ranges::stable_sort(sorted, [](const PlistNodePtr& left, const PlistNodePtr& right) {
        return left->key().compare(right->key()) < 0;
    });
    if (std::ranges::equal(sorted, children)) {
        return;
    }
    const EditGroup group(*document_, undoManager_);
    setOrder(PlistNodePtr(&node), sorted);
    document_->increaseRevision();
}

// Counts no revision: taking a sort back changes no content that a search could have found.
void PlistEditor::setOrder(const PlistNodePtr& node, const std::vector<PlistNodePtr>& order) const {
    const EditGroup group(*document_, undoManager_,
                          actionName(QT_TRANSLATE_NOOP("PlistEditor", "Sort Keys")));
    const std::span<const PlistNodePtr> children = node->children();
    std::vector<PlistNodePtr> old(children.begin(), children.end());
    node->setChildren(order);
    registerUndo(
        [node, old = std::move(old)](const PlistEditor& editor) { editor.setOrder(node, old); });
}
