#include "tests/model/support/ReferenceDocument.h"

#include <algorithm>
#include <set>
#include <utility>

#include "app/model/runtime/Plist.h"

namespace {

using Name = ReferenceItem::Name;

std::set<std::string> canonicalKeys(const std::vector<ReferenceItem>& items) {
    std::set<std::string> keys;
    for (const ReferenceItem& item : items) {
        keys.insert(ReferenceText::canonical(item.key));
    }
    return keys;
}

std::string uniqueKey(const std::string& wanted, const std::set<std::string>& taken) {
    std::string key = wanted;
    for (int number = 2; taken.contains(ReferenceText::canonical(key)); ++number) {
        key = wanted + " " + std::to_string(number);
    }
    return key;
}

std::size_t positionOf(const std::vector<ReferenceItem>& items, Name name) {
    const auto found = std::ranges::find_if(
        items, [name](const ReferenceItem& item) { return item.name == name; });
    return static_cast<std::size_t>(found - items.begin());
}

/// Gives the children of an array keys for a dictionary.
void giveKeys(std::vector<ReferenceItem>& children) {
    std::set<std::string> given;
    for (std::size_t i = 0; i < children.size(); ++i) {
        std::string& key = children[i].key;
        if (key.empty() || given.contains(ReferenceText::canonical(key))) {
            key = "Item " + std::to_string(i);
            while (given.contains(ReferenceText::canonical(key))) {
                key += " copy";
            }
        }
        given.insert(ReferenceText::canonical(key));
    }
}

PlistFormat writable(PlistFormat format) {
    return format == PlistFormat::openStep ? PlistFormat::xml : format;
}

}  // namespace

ReferenceDocument::ReferenceDocument(const PlistFile& file, History history)
    : content_{ReferenceItem::make({}, file.root, lastName_), writable(file.format),
               file.format == PlistFormat::openStep},
      history_(history) {}

ReferenceItem ReferenceDocument::newItem(const std::string& key, const PlistValue& value) {
    return ReferenceItem::make(key, value, lastName_);
}

// --- Edits ---

std::optional<QString> ReferenceDocument::rename(Name item, const std::string& key) {
    ReferenceItem* parent = content_.root.findParent(item);
    if (parent == nullptr) {
        return QStringLiteral("The root cannot be renamed, moved or deleted.");
    }
    ReferenceItem& renamed = *parent->find(item);
    if (ReferenceText::areEqual(renamed.key, key)) {
        return std::nullopt;
    }
    for (const ReferenceItem& sibling : parent->children) {
        if (parent->type() == PlistType::dictionary && sibling.name != item &&
            ReferenceText::areEqual(sibling.key, key)) {
            return QStringLiteral("The key “%1” already exists.").arg(QString::fromStdString(key));
        }
    }
    beginGroup();
    renamed.key = key;
    note(QStringLiteral("Rename"), {}, true);
    endGroup();
    return std::nullopt;
}

void ReferenceDocument::changeValue(Name item, const PlistValue& value) {
    ReferenceItem& changed = *content_.root.find(item);
    if (changed.isContainer() || value.isContainer() ||
        ReferenceText::areEqualScalars(changed.scalar, value)) {
        return;
    }
    beginGroup();
    changed.scalar = value;
    note(QStringLiteral("Change Value"), {1, 1}, true);
    endGroup();
}

void ReferenceDocument::changeType(Name item, PlistType type) {
    ReferenceItem& changed = *content_.root.find(item);
    if (changed.type() == type) {
        return;
    }
    beginGroup();
    if (changed.isContainer() && isContainer(type)) {
        changed.scalar = PlistValue::defaultValue(type);
        if (type == PlistType::dictionary) {
            giveKeys(changed.children);
        }
    } else {
        ReferenceItem converted = newItem(changed.key, PlistText::converted(changed.value(), type));
        converted.name = changed.name;
        changed = std::move(converted);
    }
    note(QStringLiteral("Change Type"), {1, 1}, true);
    endGroup();
}

void ReferenceDocument::changeFormat(PlistFormat format) {
    if (format == PlistFormat::openStep || format == content_.format) {
        return;
    }
    beginGroup();
    content_.format = format;
    note(QStringLiteral("Change Format"), {}, false);
    endGroup();
}

void ReferenceDocument::add(const std::vector<ReferenceItem>& items, Name parent, qint64 index) {
    ReferenceItem& around = *content_.root.find(parent);
    if (!around.isContainer() || items.empty()) {
        return;
    }
    beginGroup();
    const auto place = std::clamp(index, qint64{0}, static_cast<qint64>(around.children.size()));
    around.children.insert(around.children.begin() + place, items.begin(), items.end());
    note(QStringLiteral("Add Item"), {1, 1}, true);
    endGroup();
}

void ReferenceDocument::remove(const std::vector<Name>& items) {
    bool removesAny = false;
    beginGroup();
    for (const Name item : items) {
        if (ReferenceItem* parent = content_.root.findParent(item)) {
            parent->children.erase(parent->children.begin() +
                                   static_cast<std::ptrdiff_t>(positionOf(parent->children, item)));
            removesAny = true;
        }
    }
    if (removesAny) {
        note(QStringLiteral("Delete"), {1, 1}, true);
    }
    endGroup();
}

void ReferenceDocument::move(const std::vector<Name>& items, Name parent, qint64 index) {
    if (!content_.root.find(parent)->isContainer()) {
        return;
    }
    std::vector<Name> movable;
    for (const Name item : items) {
        if (item != content_.root.name && !content_.root.find(item)->contains(parent) &&
            !std::ranges::count(movable, item)) {
            movable.push_back(item);
        }
    }
    if (movable.empty()) {
        return;
    }
    beginGroup();
    qint64 place = index;
    for (const Name item : movable) {
        const ReferenceItem& from = *content_.root.findParent(item);
        if (from.name == parent && static_cast<qint64>(positionOf(from.children, item)) < index) {
            --place;
        }
    }
    // Every item leaves its own parent, also where that has left before.
    std::vector<ReferenceItem> taken;
    for (const Name item : movable) {
        ReferenceItem* from = content_.root.findParent(item);
        for (ReferenceItem& earlier : taken) {
            from = from != nullptr ? from : earlier.findParent(item);
        }
        const auto at =
            from->children.begin() + static_cast<std::ptrdiff_t>(positionOf(from->children, item));
        ReferenceItem leaving = *at;
        from->children.erase(at);
        taken.push_back(std::move(leaving));
    }
    ReferenceItem& around = *content_.root.find(parent);
    std::set<std::string> keys = canonicalKeys(around.children);
    for (ReferenceItem& item : taken) {
        if (around.type() == PlistType::dictionary) {
            item.key = uniqueKey(item.key, keys);
            keys.insert(ReferenceText::canonical(item.key));
        }
    }
    place = std::clamp(place, qint64{0}, static_cast<qint64>(around.children.size()));
    around.children.insert(around.children.begin() + place, taken.begin(), taken.end());
    note(QStringLiteral("Move"), {2, 2}, true);
    endGroup();
}

void ReferenceDocument::sortKeys(Name item) {
    ReferenceItem& sorted = *content_.root.find(item);
    const auto isBefore = [](const ReferenceItem& left, const ReferenceItem& right) {
        return ReferenceText::canonical(left.key) < ReferenceText::canonical(right.key);
    };
    if (sorted.type() != PlistType::dictionary ||
        std::ranges::is_sorted(sorted.children, isBefore)) {
        return;
    }
    beginGroup();
    std::ranges::stable_sort(sorted.children, isBefore);
    note(QStringLiteral("Sort Keys"), {1, 0}, true);
    endGroup();
}

void ReferenceDocument::replaceContent(const PlistFile& file, const QString& actionName) {
    beginGroup();
    content_ = {newItem({}, file.root), writable(file.format),
                file.format == PlistFormat::openStep};
    note(actionName, {1, 1}, true);
    endGroup();
}

// --- History ---

void ReferenceDocument::beginGroup() {
    if (depth_++ == 0) {
        open_ = {};
        open_.before = content_;
    }
}

void ReferenceDocument::note(const QString& name, Steps steps, bool changesTree) {
    revision_ += steps.now;
    open_.name = name;
    open_.revisionStep += steps.back;
    open_.changesTree = open_.changesTree || changesTree;
    open_.isEmpty = false;
}

void ReferenceDocument::endGroup() {
    if (--depth_ > 0 || open_.isEmpty) {
        return;
    }
    treeChanges_ += open_.changesTree ? 1 : 0;
    if (history_ == History::none) {
        return;
    }
    open_.after = content_;
    open_.stateBefore = state_;
    open_.stateAfter = ++lastState_;
    state_ = open_.stateAfter;
    undoable_.push_back(std::move(open_));
    redoable_.clear();
}

void ReferenceDocument::undo() {
    goBack(undoable_, redoable_, true);
}

void ReferenceDocument::redo() {
    goBack(redoable_, undoable_, false);
}

void ReferenceDocument::goBack(std::vector<Entry>& from, std::vector<Entry>& to, bool isUndo) {
    if (from.empty()) {
        return;
    }
    to.push_back(std::move(from.back()));
    from.pop_back();
    const Entry& entry = to.back();
    content_ = isUndo ? entry.before : entry.after;
    state_ = isUndo ? entry.stateBefore : entry.stateAfter;
    revision_ += entry.revisionStep;
    treeChanges_ += entry.changesTree ? 1 : 0;
}

void ReferenceDocument::clearHistory() {
    undoable_.clear();
    redoable_.clear();
}
