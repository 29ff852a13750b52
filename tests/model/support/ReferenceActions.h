#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "tests/model/support/ReferenceDocument.h"
#include "tests/model/support/ReferenceOutline.h"

/// What users do, by the plain rules, on the plain document and its plain outline.
class ReferenceActions {
public:
    using Name = ReferenceItem::Name;

    /// What is copied: entries, and the items that they come from.
    struct Transfer {
        std::vector<PlistEntry> entries;
        std::vector<Name> sources;
    };

    /// Both must outlive it.
    ReferenceActions(ReferenceDocument& document, ReferenceOutline& outline)
        : document_(document), outline_(outline) {}

    std::vector<Name> selectedTopLevelItems() const;

    void addItem();
    void duplicate();
    void deleteSelected();
    void moveUp();
    void moveDown();
    void sortKeys();
    std::optional<QString> setValueFromText(Name name, const QString& text);
    void changeType(Name name, PlistType type);
    void selectAll();
    void expandSelected(bool wholeSubtree);
    void collapseSelected(bool wholeSubtree);
    void collapseAll();
    Transfer copy() const;
    Transfer dragItems(Name name) const;
    void paste(const Transfer& transfer);
    void drop(const std::vector<Transfer>& transfers, qint64 position, bool isFromHere);

private:
    /// Before the child at `index` of `container`.
    struct Place {
        Name container = 0;
        qint64 index = 0;
    };

    const ReferenceItem& root() const { return document_.root(); }
    const ReferenceItem& item(Name name) const { return *root().find(name); }
    const ReferenceItem* parentOf(Name name) const;
    qint64 indexOf(Name name) const;
    std::vector<ReferenceOutline::Row> selectedRows() const;
    std::optional<Place> insertionPoint() const;
    std::optional<Place> dropPlace(qint64 position) const;
    std::optional<std::vector<Name>> movedBy(const std::vector<Transfer>& transfers) const;
    std::vector<Name> selectedContainers() const;
    std::optional<std::vector<Name>> selectedSiblings() const;
    Transfer transferOf(const std::vector<Name>& items) const;
    void insert(const std::vector<PlistEntry>& entries, const Place& place);
    void show(const std::vector<ReferenceItem>& added);
    void follow() { outline_.follow(document_.root(), document_.treeChanges()); }

    ReferenceDocument& document_;
    ReferenceOutline& outline_;
};
