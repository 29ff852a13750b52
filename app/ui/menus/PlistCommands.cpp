#include "app/ui/menus/PlistCommands.h"

#include <QAction>
#include <QIcon>
#include <QMenu>

#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentView.h"

namespace {

using Direction = DocumentActions::Direction;

bool always(const DocumentActions&) {
    return true;
}

}  // namespace

PlistCommands::PlistCommands(DocumentView& view, QObject* parent) : QObject(parent), view_(view) {}

// Many desktops reserve Ctrl+Alt with an arrow for switching workspaces: commands with such a
// shortcut have a second one.
void PlistCommands::addEditorItems(QMenu& menu) {
    add(menu, tr("Add &Item"), {Qt::CTRL | Qt::SHIFT | Qt::Key_N}, &DocumentActions::canAddItem,
        &DocumentActions::addItem);
    add(menu, tr("&Duplicate"), {Qt::CTRL | Qt::Key_D}, &DocumentActions::hasSelectedTopLevelNodes,
        &DocumentActions::duplicate);
    menu.addSeparator();
    add(menu, tr("Move &Up"), {Qt::CTRL | Qt::ALT | Qt::Key_Up, Qt::ALT | Qt::Key_Up},
        &DocumentActions::hasSelectedTopLevelNodes,
        [](const DocumentActions& actions) { actions.moveSelected(Direction::up); });
    add(menu, tr("Move Do&wn"), {Qt::CTRL | Qt::ALT | Qt::Key_Down, Qt::ALT | Qt::Key_Down},
        &DocumentActions::hasSelectedTopLevelNodes,
        [](const DocumentActions& actions) { actions.moveSelected(Direction::down); });
    add(menu, tr("&Sort Keys"), {}, &DocumentActions::sortTarget, &DocumentActions::sortKeys);
    menu.addSeparator();
    add(menu, tr("&Expand All"),
        {Qt::CTRL | Qt::ALT | Qt::Key_Right, Qt::CTRL | Qt::SHIFT | Qt::Key_Right}, always,
        [this](const DocumentActions&) { view_.expandAll(); });
    add(menu, tr("&Collapse All"),
        {Qt::CTRL | Qt::ALT | Qt::Key_Left, Qt::CTRL | Qt::SHIFT | Qt::Key_Left}, always,
        &DocumentActions::collapseAll);
}

void PlistCommands::addFindItems(QMenu& menu) {
    const auto hasMatches = [this](const DocumentActions&) {
        return !view_.search().matchIDs().empty();
    };
    addFind(menu, tr("&Find\u2026"), {Qt::CTRL | Qt::Key_F}, "edit-find", always,
            [this](const DocumentActions&) { view_.search().requestFocus(); });
    addFind(menu, tr("Find &Next"), {Qt::CTRL | Qt::Key_G, Qt::Key_F3}, "go-down", hasMatches,
            [this](const DocumentActions&) { view_.search().step(1); });
    addFind(menu, tr("Find Pre&vious"), {Qt::CTRL | Qt::SHIFT | Qt::Key_G, Qt::SHIFT | Qt::Key_F3},
            "go-up", hasMatches, [this](const DocumentActions&) { view_.search().step(-1); });
}

void PlistCommands::addFind(QMenu& menu, const QString& title, const QList<QKeySequence>& keys,
                            const char* icon, const Condition& condition, const Action& action) {
    add(menu, title, keys, condition, action)->setIcon(QIcon::fromTheme(QLatin1String(icon)));
}

QAction* PlistCommands::add(QMenu& menu, const QString& title, const QList<QKeySequence>& keys,
                            const Condition& condition, const Action& action) {
    QAction* item = menu.addAction(title);
    item->setShortcuts(keys);
    connect(item, &QAction::triggered, &view_, [this, condition, action] {
        // Applying what is being typed may change what can be done.
        if (isAvailable(condition) && view_.commitEditing() && isAvailable(condition)) {
            action(view_.actions());
        }
    });
    // Checked when the menu is shown: following every change of the selection of a million rows
    // would cost more. While the menu is closed the shortcuts reach the items, which check.
    connect(&menu, &QMenu::aboutToShow, item,
            [this, item, condition] { item->setEnabled(isAvailable(condition)); });
    connect(&menu, &QMenu::aboutToHide, item, [item] { item->setEnabled(true); });
    return item;
}

bool PlistCommands::isAvailable(const Condition& condition) const {
    return view_.isEnabled() && condition(view_.actions());
}
