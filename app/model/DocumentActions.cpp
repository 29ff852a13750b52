#include "app/model/DocumentActions.h"

#include <vector>

#include "app/model/PlistDocument.h"
#include "app/model/PlistNode.h"
#include "app/model/PlistNodePtr.h"

namespace {

std::vector<PlistNodePtr> containersOf(const std::vector<OutlineState::Row>& rows) {
    std::vector<PlistNodePtr> containers;
    for (const OutlineState::Row& row : rows) {
        if (row.node().isContainer()) {
            containers.emplace_back(&row.node());
        }
    }
    return containers;
}

/// Whether the row is a container that a collapse has something to do for: with a filter, which
/// shows all containers open, every one.
bool canCollapse(const OutlineState& outline, const OutlineState::Row& row) {
    return row.node().isContainer() &&
           (outline.filter().has_value() || outline.isExpanded(row.nodeId()));
}

}  // namespace

void DocumentActions::changeFormat(PlistFormat format) const {
    if (isWritable(format)) {
        document_->setFormat(format);
    }
}

OutlineState::ExpandResult DocumentActions::expandSelected(OutlineState::Reach reach) const {
    const std::vector<PlistNodePtr> containers = containersOf(outline_->selectedRows());
    return outline_->setExpanded(containers, OutlineState::Expansion::expand, reach);
}

void DocumentActions::collapseSelected(OutlineState::Reach reach) const {
    const std::vector<OutlineState::Row> rows = outline_->selectedRows();
    if (reach == OutlineState::Reach::nodeAlone && rows.size() == 1 &&
        !canCollapse(*outline_, rows.front())) {
        if (const PlistNode* parent = rows.front().node().parent()) {
            outline_->select({parent->id()});
        }
        return;
    }
    outline_->setExpanded(containersOf(rows), OutlineState::Expansion::collapse, reach);
}
