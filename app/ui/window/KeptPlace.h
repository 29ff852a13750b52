#pragma once

#include <vector>

#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodePtr.h"

class DocumentView;
class PlistTable;

/// Where the user is in a document: which rows are selected, which cell is the current one, and
/// what is in sight; for finding the same place in another tree, by keys and positions.
class KeptPlace {
public:
    /// Remembers where the user is now.
    explicit KeptPlace(DocumentView& view);

    /// Goes there in the tree that the view shows now.
    void restore(DocumentView& view) const;

private:
    /// A row in sight, and where it begins.
    struct SeenRow {
        PlistNodePtr node;
        int top;
    };

    void rememberRows(const PlistTable& table);
    void restoreCurrent(DocumentView& view) const;
    void restoreSight(DocumentView& view) const;

    PlistNodePtr root_;
    NodeIdSet expanded_;
    NodeIdSet selection_;
    PlistNodePtr current_;
    int currentColumn_ = 0;
    std::vector<SeenRow> seen_;
    int scrolled_ = 0;
};
