#include "tests/model/support/ReferenceActions.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "app/model/runtime/Plist.h"

namespace {

using Name = ReferenceItem::Name;
using Row = ReferenceOutline::Row;

std::set<std::string> keysIn(const ReferenceItem& container) {
    std::set<std::string> keys;
    for (const ReferenceItem& child : container.children) {
        keys.insert(ReferenceText::canonical(child.key));
    }
    return keys;
}

/// The key with a number if it is taken. It is taken from then on.
std::string takeKey(const std::string& wanted, std::set<std::string>& taken) {
    std::string key = wanted;
    for (int number = 2; !taken.insert(ReferenceText::canonical(key)).second; ++number) {
        key = wanted + " " + std::to_string(number);
    }
    return key;
}

std::set<Name> namesOf(const std::vector<ReferenceItem>& items) {
    std::set<Name> names;
    for (const ReferenceItem& item : items) {
        names.insert(item.name);
    }
    return names;
}

}  // namespace

// --- Where things are ---

const ReferenceItem* ReferenceActions::parentOf(Name name) const {
    return const_cast<ReferenceItem&>(root()).findParent(name);
}

qint64 ReferenceActions::indexOf(Name name) const {
    const std::vector<ReferenceItem>& siblings = parentOf(name)->children;
    const auto found = std::ranges::find(siblings, name, &ReferenceItem::name);
    return found - siblings.begin();
}

std::vector<Row> ReferenceActions::selectedRows() const {
    std::vector<Row> selected;
    std::ranges::copy_if(outline_.rows(), std::back_inserter(selected), [this](const Row& row) {
        return outline_.selection().contains(row.item);
    });
    return selected;
}

std::vector<Name> ReferenceActions::selectedTopLevelItems() const {
    std::vector<Name> items;
    for (const Row& row : selectedRows()) {
        const ReferenceItem* above = parentOf(row.item);
        bool isTop = above != nullptr;
        for (; above != nullptr; above = parentOf(above->name)) {
            isTop = isTop && !outline_.selection().contains(above->name);
        }
        if (isTop) {
            items.push_back(row.item);
        }
    }
    return items;
}

std::optional<ReferenceActions::Place> ReferenceActions::insertionPoint() const {
    if (!root().isContainer()) {
        return std::nullopt;
    }
    const std::vector<Row> selected = selectedRows();
    if (selected.empty()) {
        return Place{root().name, static_cast<qint64>(root().children.size())};
    }
    const ReferenceItem& last = item(selected.back().item);
    const bool isOpen = last.isContainer() && (outline_.filter() || outline_.isExpanded(last.name));
    if (isOpen || last.name == root().name) {
        return Place{last.name, 0};
    }
    return Place{parentOf(last.name)->name, indexOf(last.name) + 1};
}

// --- Items ---

void ReferenceActions::show(const std::vector<ReferenceItem>& added) {
    follow();
    outline_.reveal(root(), added.front().name);
    outline_.select(namesOf(added));
}

void ReferenceActions::addItem() {
    const std::optional<Place> place = insertionPoint();
    if (!place) {
        return;
    }
    const bool hasKey = item(place->container).type() == PlistType::dictionary;
    std::set<std::string> keys = keysIn(item(place->container));
    const std::vector<ReferenceItem> items = {document_.newItem(
        hasKey ? takeKey("New Item", keys) : std::string(), PlistValue::string(""))};
    document_.add(items, place->container, place->index);
    show(items);
    outline_.edit(ReferenceOutline::Field{items.front().name, hasKey});
}

void ReferenceActions::duplicate() {
    const std::vector<Name> originals = selectedTopLevelItems();
    if (originals.empty()) {
        return;
    }
    std::vector<ReferenceItem> copies;
    document_.beginGroup();
    for (const Name original : originals) {
        const ReferenceItem& parent = *parentOf(original);
        std::set<std::string> keys = keysIn(parent);
        const bool hasKey = parent.type() == PlistType::dictionary;
        copies.push_back(
            document_.newItem(hasKey ? takeKey(item(original).key + " copy", keys) : std::string(),
                              item(original).value()));
        document_.add({copies.back()}, parent.name, indexOf(original) + 1);
    }
    // All of them come and go in one step.
    document_.setRevisionStepBack(1);
    document_.endGroup();
    follow();
    outline_.select(namesOf(copies));
}

void ReferenceActions::deleteSelected() {
    const std::vector<Name> items = selectedTopLevelItems();
    if (items.empty()) {
        return;
    }
    const Name first = selectedRows().front().item;
    const auto position = static_cast<std::size_t>(
        std::ranges::find(outline_.rows(), first, &Row::item) - outline_.rows().begin());
    document_.remove(items);
    follow();
    if (!outline_.rows().empty()) {
        outline_.select({outline_.rows()[std::min(position, outline_.rows().size() - 1)].item});
    }
}

std::optional<std::vector<Name>> ReferenceActions::selectedSiblings() const {
    const std::vector<Name> items = selectedTopLevelItems();
    const bool areSiblings = std::ranges::all_of(
        items, [this, &items](Name name) { return parentOf(name) == parentOf(items.front()); });
    return items.empty() || !areSiblings ? std::nullopt : std::optional(items);
}

void ReferenceActions::moveUp() {
    const std::optional<std::vector<Name>> items = selectedSiblings();
    if (items && indexOf(items->front()) >= 1) {
        document_.move(*items, parentOf(items->front())->name, indexOf(items->front()) - 1);
    }
    follow();
}

void ReferenceActions::moveDown() {
    const std::optional<std::vector<Name>> items = selectedSiblings();
    if (items) {
        const ReferenceItem& parent = *parentOf(items->back());
        const qint64 last = indexOf(items->back());
        if (last < static_cast<qint64>(parent.children.size()) - 1) {
            document_.move(*items, parent.name, last + 2);
        }
    }
    follow();
}

void ReferenceActions::sortKeys() {
    const std::vector<Row> selected = selectedRows();
    const ReferenceItem* target = selected.empty() ? &root() : &item(selected.front().item);
    if (target->type() != PlistType::dictionary) {
        target = parentOf(target->name);
    }
    if (target != nullptr) {
        document_.sortKeys(target->name);
    }
    follow();
}

// --- One item ---

std::optional<QString> ReferenceActions::setValueFromText(Name name, const QString& text) {
    const PlistType type = item(name).type();
    const std::optional<PlistValue> value = PlistText::value(text.toStdString(), type);
    if (!value) {
        return QStringLiteral("“%1” is not a valid %2.")
            .arg(text, QString::fromStdString(std::string(displayName(type))));
    }
    document_.changeValue(name, *value);
    follow();
    return std::nullopt;
}

void ReferenceActions::changeType(Name name, PlistType type) {
    document_.changeType(name, type);
    // In one step: what is selected below the item has a row all the time.
    if (isContainer(type) && !outline_.isExpanded(name)) {
        outline_.expand(root(), {name}, false);
    }
    follow();
}

// --- Selection and expansion ---

void ReferenceActions::selectAll() {
    std::set<Name> names;
    for (const Row& row : outline_.rows()) {
        if (row.depth > 0) {
            names.insert(row.item);
        }
    }
    outline_.select(names);
}

std::vector<Name> ReferenceActions::selectedContainers() const {
    std::vector<Name> containers;
    for (const Row& row : selectedRows()) {
        if (item(row.item).isContainer()) {
            containers.push_back(row.item);
        }
    }
    return containers;
}

void ReferenceActions::expandSelected(bool wholeSubtree) {
    outline_.expand(root(), selectedContainers(), wholeSubtree);
}

void ReferenceActions::collapseSelected(bool wholeSubtree) {
    const std::vector<Row> selected = selectedRows();
    if (!wholeSubtree && selected.size() == 1) {
        const ReferenceItem& only = item(selected.front().item);
        const bool isOpen =
            only.isContainer() && (outline_.filter() || outline_.isExpanded(only.name));
        if (!isOpen) {
            if (const ReferenceItem* parent = parentOf(only.name)) {
                outline_.select({parent->name});
            }
            return;
        }
    }
    outline_.collapse(root(), selectedContainers(), wholeSubtree);
}

void ReferenceActions::collapseAll() {
    // Two steps here, but nobody can select what is hidden only in between.
    const std::set<Name> selection = outline_.selection();
    outline_.collapse(root(), {root().name}, true);
    outline_.select(selection);
    outline_.expand(root(), {root().name}, false);
}

// --- Copies ---

ReferenceActions::Transfer ReferenceActions::transferOf(const std::vector<Name>& items) const {
    const bool haveKeys = std::ranges::all_of(items, [this](Name name) {
        return parentOf(name) != nullptr && parentOf(name)->type() == PlistType::dictionary;
    });
    Transfer transfer;
    for (const Name name : items) {
        transfer.entries.push_back({haveKeys ? item(name).key : std::string(), item(name).value()});
        transfer.sources.push_back(name);
    }
    return transfer;
}

ReferenceActions::Transfer ReferenceActions::copy() const {
    return transferOf(selectedTopLevelItems());
}

ReferenceActions::Transfer ReferenceActions::dragItems(Name name) const {
    return outline_.selection().contains(name) ? transferOf(selectedTopLevelItems())
                                               : transferOf({name});
}

void ReferenceActions::insert(const std::vector<PlistEntry>& entries, const Place& place) {
    if (entries.empty()) {
        return;
    }
    const ReferenceItem& container = item(place.container);
    std::set<std::string> keys = keysIn(container);
    std::vector<ReferenceItem> items;
    for (const PlistEntry& entry : entries) {
        std::string key(entry.key.view());
        if (container.type() == PlistType::dictionary) {
            key = takeKey(key.empty() ? "New Item" : key, keys);
        }
        items.push_back(document_.newItem(key, entry.value));
    }
    document_.add(items, place.container, place.index);
    show(items);
}

void ReferenceActions::paste(const Transfer& transfer) {
    if (const std::optional<Place> place = insertionPoint()) {
        insert(transfer.entries, *place);
    }
}

std::optional<ReferenceActions::Place> ReferenceActions::dropPlace(qint64 position) const {
    if (!root().isContainer()) {
        return std::nullopt;
    }
    const std::vector<Row>& rows = outline_.rows();
    if (position < 1 || rows.empty()) {
        return Place{root().name, 0};
    }
    const auto above = std::min(static_cast<std::size_t>(position), rows.size()) - 1;
    if (rows[above].isExpanded) {
        return Place{rows[above].item, 0};
    }
    if (rows[above].depth == 0) {
        return Place{root().name, static_cast<qint64>(root().children.size())};
    }
    return Place{parentOf(rows[above].item)->name, static_cast<qint64>(rows[above].index) + 1};
}

std::optional<std::vector<Name>> ReferenceActions::movedBy(
    const std::vector<Transfer>& transfers) const {
    std::vector<Name> sources;
    std::size_t entryCount = 0;
    for (const Transfer& transfer : transfers) {
        sources.insert(sources.end(), transfer.sources.begin(), transfer.sources.end());
        entryCount += transfer.entries.size();
    }
    const bool areShown = std::ranges::all_of(sources, [this](Name name) {
        return std::ranges::count(outline_.rows(), name, &Row::item) == 1;
    });
    return sources.empty() || sources.size() != entryCount || !areShown ? std::nullopt
                                                                        : std::optional(sources);
}

void ReferenceActions::drop(const std::vector<Transfer>& transfers, qint64 position,
                            bool isFromHere) {
    const std::optional<Place> place = dropPlace(position);
    if (!place) {
        return;
    }
    const std::optional<std::vector<Name>> sources = movedBy(transfers);
    if (!isFromHere || !sources) {
        std::vector<PlistEntry> entries;
        for (const Transfer& transfer : transfers) {
            entries.insert(entries.end(), transfer.entries.begin(), transfer.entries.end());
        }
        insert(entries, *place);
        return;
    }
    std::set<Name> moved;
    for (const Name name : *sources) {
        if (name != root().name && !item(name).contains(place->container)) {
            moved.insert(name);
        }
    }
    document_.move(*sources, place->container, place->index);
    follow();
    if (!moved.empty()) {
        outline_.select(moved);
    }
}
