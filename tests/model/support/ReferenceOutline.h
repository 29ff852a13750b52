#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <set>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "tests/model/support/ReferenceItem.h"

/// The rows of an outline by the plain rules, slowly: all of them are made anew each time.
class ReferenceOutline {
public:
    using Name = ReferenceItem::Name;

    struct Row {
        Name item = 0;
        std::size_t depth = 0;
        std::size_t index = 0;
        std::optional<PlistType> parentType;
        bool isDuplicateKey = false;
        bool isExpanded = false;
        friend bool operator==(const Row&, const Row&) = default;
    };

    explicit ReferenceOutline(const ReferenceItem& root) { rebuild(root); }

    const std::vector<Row>& rows() const { return rows_; }
    const std::set<Name>& selection() const { return selection_; }
    const std::optional<std::set<Name>>& filter() const { return filter_; }
    bool isExpanded(Name item) const { return expanded_.contains(item); }

    void rebuild(const ReferenceItem& root);

    /// Rebuilds if it has not done so since the tree has changed for the last of `changes` times.
    void follow(const ReferenceItem& root, int changes);

    void select(const std::set<Name>& items) { selection_ = items; }

    /// The field that is being edited: the key of an item, or its value.
    struct Field {
        Name item;
        bool isKey;
        friend bool operator==(const Field&, const Field&) = default;
    };
    const std::optional<Field>& editing() const { return editing_; }
    void edit(const std::optional<Field>& field) { editing_ = field; }

    void expand(const ReferenceItem& root, const std::vector<Name>& items, bool wholeSubtree);
    void collapse(const ReferenceItem& root, const std::vector<Name>& items, bool wholeSubtree);
    void reveal(ReferenceItem root, Name item);
    void setFilter(const ReferenceItem& root, const std::optional<std::set<Name>>& filter);

    static QString text(const Row& row);

private:
    void installRoot(const ReferenceItem& root);
    void carry(const ReferenceItem& oldItem, const ReferenceItem& newItem,
               const std::set<Name>& expanded);
    void addRows(const ReferenceItem& item, Row row);

    ReferenceItem root_;
    std::vector<Row> rows_;
    std::set<Name> selection_;
    std::set<Name> expanded_;
    std::optional<std::set<Name>> filter_;
    std::optional<Field> editing_;
    int followed_ = 0;
};
