#include "app/ui/EditMenu.h"

#include <QAction>
#include <QApplication>
#include <QIcon>

#include "app/model/UndoManager.h"
#include "app/ui/DocumentView.h"
#include "app/ui/ItemClipboard.h"

namespace {

/// The text field that has the keyboard, of whatever kind; null if something else has it.
QWidget* textFieldWithFocus() {
    QWidget* widget = QApplication::focusWidget();
    return widget != nullptr && widget->metaObject()->indexOfSlot("paste()") >= 0 ? widget
                                                                                  : nullptr;
}

/// Has the text field with the keyboard do what it calls `command`; false if there is none.
bool passToTextField(const char* command) {
    QWidget* field = textFieldWithFocus();
    return field != nullptr && QMetaObject::invokeMethod(field, command);
}

}  // namespace

EditMenu::EditMenu(DocumentView& view, UndoManager& undoManager, QWidget* parent)
    : QMenu(tr("&Edit"), parent) {
    addHistory(view, undoManager);
    addSeparator();
    addClipboard(view);
    addSelection(view);
    addSeparator();
    addSearch(view);
}

void EditMenu::addHistory(DocumentView& view, UndoManager& undoManager) {
    undo_ = add({}, Qt::CTRL | Qt::Key_Z, "edit-undo");
    redo_ = add({}, Qt::CTRL | Qt::SHIFT | Qt::Key_Z, "edit-redo");
    connect(undo_, &QAction::triggered, &view, [&view, &undoManager] {
        if (view.commitEditing()) {
            undoManager.undo();
        }
    });
    connect(redo_, &QAction::triggered, &view, [&view, &undoManager] {
        if (view.commitEditing()) {
            undoManager.redo();
        }
    });
    connect(&undoManager, &UndoManager::historyChanged, this,
            [this, &undoManager] { updateHistory(undoManager); });
    updateHistory(undoManager);
}

void EditMenu::updateHistory(const UndoManager& undoManager) {
    undo_->setText(tr("&Undo %1").arg(undoManager.undoActionName()).trimmed());
    redo_->setText(tr("&Redo %1").arg(undoManager.redoActionName()).trimmed());
    undo_->setEnabled(undoManager.canUndo());
    redo_->setEnabled(undoManager.canRedo());
}

void EditMenu::addClipboard(DocumentView& view) {
    QAction* cut = add(tr("Cu&t"), Qt::CTRL | Qt::Key_X, "edit-cut");
    QAction* copy = add(tr("&Copy"), Qt::CTRL | Qt::Key_C, "edit-copy");
    QAction* paste = add(tr("&Paste"), Qt::CTRL | Qt::Key_V, "edit-paste");
    connect(cut, &QAction::triggered, &view, [&view] {
        if (!passToTextField("cut")) {
            ItemClipboard::cut(view.actions());
        }
    });
    connect(copy, &QAction::triggered, &view, [&view] {
        if (!passToTextField("copy")) {
            ItemClipboard::copy(view.actions());
        }
    });
    connect(paste, &QAction::triggered, &view, [&view] {
        if (!passToTextField("paste")) {
            ItemClipboard::paste(view.actions(), *view.window());
        }
    });
    connect(this, &QMenu::aboutToShow, &view, [cut, copy, paste, &view] {
        const bool isText = textFieldWithFocus() != nullptr;
        const bool hasItems = isText || view.actions().hasSelectedTopLevelNodes();
        cut->setEnabled(hasItems);
        copy->setEnabled(hasItems);
        paste->setEnabled(isText || ItemClipboard::canPaste(view.actions()));
    });
    for (QAction* item : {cut, copy, paste}) {
        connect(this, &QMenu::aboutToHide, item, [item] { item->setEnabled(true); });
    }
}

void EditMenu::addSelection(DocumentView& view) {
    // The table itself takes the key, which in a text field deletes characters.
    delete_ = add(tr("&Delete"), {}, "edit-delete");
    QAction* selectAll = add(tr("Select &All"), Qt::CTRL | Qt::Key_A, "edit-select-all");
    connect(delete_, &QAction::triggered, &view, [&view] {
        view.endEditing();
        view.actions().deleteSelected();
    });
    connect(selectAll, &QAction::triggered, &view, [&view] {
        if (!passToTextField("selectAll")) {
            view.actions().selectAll();
        }
    });
    connect(this, &QMenu::aboutToShow, &view,
            [this, &view] { delete_->setEnabled(view.actions().hasSelectedTopLevelNodes()); });
}

void EditMenu::addSearch(DocumentView& view) {
    QAction* find = add(tr("&Find\u2026"), Qt::CTRL | Qt::Key_F, "edit-find");
    QAction* next = add(tr("Find &Next"), Qt::CTRL | Qt::Key_G, "go-down");
    QAction* previous = add(tr("Find Pre&vious"), Qt::CTRL | Qt::SHIFT | Qt::Key_G, "go-up");
    next->setShortcuts({next->shortcut(), Qt::Key_F3});
    previous->setShortcuts({previous->shortcut(), Qt::SHIFT | Qt::Key_F3});
    connect(find, &QAction::triggered, &view, [&view] { view.search().requestFocus(); });
    // Without a match a step does nothing; the menu says so while somebody looks at it.
    connect(next, &QAction::triggered, &view, [&view] { view.search().step(1); });
    connect(previous, &QAction::triggered, &view, [&view] { view.search().step(-1); });
    for (QAction* item : {next, previous}) {
        connect(this, &QMenu::aboutToShow, item,
                [item, &view] { item->setEnabled(!view.search().matchIDs().empty()); });
        connect(this, &QMenu::aboutToHide, item, [item] { item->setEnabled(true); });
    }
}

QAction* EditMenu::add(const QString& title, const QKeySequence& key, const char* icon) {
    QAction* action = addAction(QIcon::fromTheme(QLatin1String(icon)), title);
    action->setShortcut(key);
    return action;
}
