#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <set>
#include <vector>

#include "PlistCore/PlistType.h"
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

    /// To be called after each change of the tree.
    void rebuild(const ReferenceItem& root);

    void select(const std::set<Name>& items) { selection_ = items; }
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
};
