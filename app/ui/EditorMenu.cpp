#include "app/ui/EditorMenu.h"

#include <QAction>

#include "app/model/PlistNode.h"
#include "app/ui/DocumentView.h"

namespace {

using Direction = DocumentActions::Direction;

bool hasDocument(const DocumentActions&) {
    return true;
}

}  // namespace

// Many desktops keep Ctrl+Alt with an arrow to themselves, to go from one workspace to another:
// what has such a key has a second one.
EditorMenu::EditorMenu(DocumentView& view, QWidget* parent)
    : QMenu(tr("Edi&tor"), parent), view_(view) {
    add(tr("Add &Item"), {Qt::CTRL | Qt::SHIFT | Qt::Key_N}, &DocumentActions::canAddItem,
        &DocumentActions::addItem);
    add(tr("&Duplicate"), {Qt::CTRL | Qt::Key_D}, &DocumentActions::hasSelectedTopLevelNodes,
        &DocumentActions::duplicate);
    addSeparator();
    add(tr("Move &Up"), {Qt::CTRL | Qt::ALT | Qt::Key_Up, Qt::ALT | Qt::Key_Up},
        &DocumentActions::hasSelectedTopLevelNodes,
        [](const DocumentActions& actions) { actions.moveSelected(Direction::up); });
    add(tr("Move Do&wn"), {Qt::CTRL | Qt::ALT | Qt::Key_Down, Qt::ALT | Qt::Key_Down},
        &DocumentActions::hasSelectedTopLevelNodes,
        [](const DocumentActions& actions) { actions.moveSelected(Direction::down); });
    add(tr("&Sort Keys"), {}, &DocumentActions::sortTarget, &DocumentActions::sortKeys);
    addSeparator();
    add(tr("&Expand All"),
        {Qt::CTRL | Qt::ALT | Qt::Key_Right, Qt::CTRL | Qt::SHIFT | Qt::Key_Right}, hasDocument,
        [this](const DocumentActions&) { view_.expandAll(); });
    add(tr("&Collapse All"),
        {Qt::CTRL | Qt::ALT | Qt::Key_Left, Qt::CTRL | Qt::SHIFT | Qt::Key_Left}, hasDocument,
        &DocumentActions::collapseAll);
}

QAction* EditorMenu::add(const QString& title, const QList<QKeySequence>& keys,
                         const Condition& condition,
                         const std::function<void(const DocumentActions&)>& action) {
    QAction* item = addAction(title);
    item->setShortcuts(keys);
    connect(item, &QAction::triggered, &view_, [this, condition, action] {
        view_.endEditing();
        if (condition(view_.actions())) {
            action(view_.actions());
        }
    });
    // Looked at when somebody looks at the menu: following every change of the selection of a
    // million rows would cost more. While the menu is closed the keys reach the items, which check.
    connect(this, &QMenu::aboutToShow, item,
            [this, item, condition] { item->setEnabled(condition(view_.actions())); });
    connect(this, &QMenu::aboutToHide, item, [item] { item->setEnabled(true); });
    return item;
}
