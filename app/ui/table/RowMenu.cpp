#include "app/ui/table/RowMenu.h"

RowMenu::RowMenu(const DocumentActions& actions, QWidget* parent)
    : QMenu(parent), actions_(actions) {
    const bool hasNodes = actions_.hasSelectedTopLevelNodes();
    add(tr("Add Item"), actions_.canAddItem(), [this] { actions_.addItem(); });
    add(tr("Duplicate"), hasNodes, [this] { actions_.duplicate(); });
    add(tr("Delete"), hasNodes, [this] { actions_.deleteSelected(); });
    addSeparator();
    add(tr("Sort Keys"), actions_.sortTarget() != nullptr, [this] { actions_.sortKeys(); });
    add(tr("Expand All Below"), true, [this] { expandAllBelow(); });
    add(tr("Collapse All Below"), true,
        [this] { actions_.collapseSelected(OutlineState::Reach::wholeSubtree); });
}

void RowMenu::add(const QString& title, bool isEnabled, const std::function<void()>& action) {
    QAction* item = addAction(title);
    item->setEnabled(isEnabled);
    connect(item, &QAction::triggered, this, action);
}

void RowMenu::expandAllBelow() {
    const OutlineState::ExpandResult result =
        actions_.expandSelected(OutlineState::Reach::wholeSubtree);
    if (result == OutlineState::ExpandResult::tooManyRows) {
        Q_EMIT expansionRefused();
    }
}
