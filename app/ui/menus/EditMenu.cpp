#include "app/ui/menus/EditMenu.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>

#include "app/model/editing/UndoManager.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/menus/ItemClipboard.h"
#include "app/ui/menus/PlistCommands.h"

EditMenu::EditMenu(DocumentView& view, UndoManager& undoManager, PlistCommands& commands,
                   QWidget* parent)
    : QMenu(tr("&Edit"), parent),
      view_(view),
      undoManager_(undoManager),
      focused_(QApplication::focusWidget()) {
    addHistory();
    addSeparator();
    addClipboard();
    addSelection();
    addSeparator();
    commands.addFindItems(*this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (qobject_cast<QMenuBar*>(now) == nullptr) {
            focused_ = now;
        }
    });
    connect(this, &QMenu::aboutToShow, this, &EditMenu::updateItems);
    // While the menu is closed the shortcuts reach the items, which check.
    connect(this, &QMenu::aboutToHide, this, [this] {
        updateHistory();
        for (QAction* item : {cut_, copy_, paste_, delete_, selectAll_}) {
            item->setEnabled(true);
        }
    });
}

// --- Taking back ---

void EditMenu::addHistory() {
    undo_ = add({}, Qt::CTRL | Qt::Key_Z, "edit-undo");
    redo_ = add({}, Qt::CTRL | Qt::SHIFT | Qt::Key_Z, "edit-redo");
    connect(undo_, &QAction::triggered, &view_, [this] {
        if (!passIfPossible("undoAvailable", "undo") && view_.commitEditing()) {
            undoManager_.undo();
        }
    });
    connect(redo_, &QAction::triggered, &view_, [this] {
        if (!passIfPossible("redoAvailable", "redo") && view_.commitEditing()) {
            undoManager_.redo();
        }
    });
    connect(&undoManager_, &UndoManager::historyChanged, this, &EditMenu::updateHistory);
    updateHistory();
}

void EditMenu::updateHistory() {
    const QString undone = undoManager_.undoActionName();
    const QString redone = undoManager_.redoActionName();
    undo_->setText(undone.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(undone));
    redo_->setText(redone.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(redone));
    undo_->setEnabled(undoManager_.canUndo());
    redo_->setEnabled(undoManager_.canRedo());
}

void EditMenu::updateHistoryForField() {
    const QWidget* field = textField();
    const auto offer = [field](QAction* item, const char* property, const QString& title) {
        if (field != nullptr && field->property(property).toBool()) {
            item->setText(title);
            item->setEnabled(true);
        }
    };
    offer(undo_, "undoAvailable", tr("&Undo"));
    offer(redo_, "redoAvailable", tr("&Redo"));
}

// --- What is selected ---

void EditMenu::addClipboard() {
    cut_ = add(tr("Cu&t"), Qt::CTRL | Qt::Key_X, "edit-cut");
    copy_ = add(tr("&Copy"), Qt::CTRL | Qt::Key_C, "edit-copy");
    paste_ = add(tr("&Paste"), Qt::CTRL | Qt::Key_V, "edit-paste");
    connect(cut_, &QAction::triggered, &view_, [this] {
        if (!passToTextField("cut") && hasSelection()) {
            ItemClipboard::cut(view_.actions());
        }
    });
    connect(copy_, &QAction::triggered, &view_, [this] {
        if (!passToTextField("copy") && hasSelection()) {
            ItemClipboard::copy(view_.actions());
        }
    });
    connect(paste_, &QAction::triggered, &view_, [this] {
        if (!passToTextField("paste") && view_.isEnabled()) {
            ItemClipboard::paste(view_.actions(), *view_.window());
        }
    });
}

void EditMenu::addSelection() {
    // No shortcut: the table itself handles the key, which in a text field deletes characters.
    delete_ = add(tr("&Delete"), {}, "edit-delete");
    selectAll_ = add(tr("Select &All"), Qt::CTRL | Qt::Key_A, "edit-select-all");
    connect(delete_, &QAction::triggered, &view_, [this] {
        if (QWidget* field = textField()) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
            QCoreApplication::sendEvent(field, &press);
        } else if (hasSelection()) {
            view_.actions().deleteSelected();
        }
    });
    connect(selectAll_, &QAction::triggered, &view_, [this] {
        if (!passToTextField("selectAll") && view_.isEnabled()) {
            view_.actions().selectAll();
        }
    });
}

void EditMenu::updateItems() {
    updateHistory();
    updateHistoryForField();
    const bool isText = textField() != nullptr;
    for (QAction* item : {cut_, copy_, delete_}) {
        item->setEnabled(isText || hasSelection());
    }
    paste_->setEnabled(isText || (view_.isEnabled() && ItemClipboard::canPaste(view_.actions())));
    selectAll_->setEnabled(isText || view_.isEnabled());
}

bool EditMenu::hasSelection() const {
    return view_.isEnabled() && view_.actions().hasSelectedTopLevelNodes();
}

// --- Text fields ---

QWidget* EditMenu::textField() const {
    QWidget* widget = focused_;
    if (const auto* box = qobject_cast<QAbstractSpinBox*>(widget)) {
        widget = box->findChild<QLineEdit*>();
    }
    return widget != nullptr && widget->metaObject()->indexOfSlot("paste()") >= 0 ? widget
                                                                                  : nullptr;
}

bool EditMenu::passToTextField(const char* command) const {
    QWidget* field = textField();
    return field != nullptr && QMetaObject::invokeMethod(field, command);
}

bool EditMenu::passIfPossible(const char* property, const char* command) const {
    const QWidget* field = textField();
    return field != nullptr && field->property(property).toBool() && passToTextField(command);
}

QAction* EditMenu::add(const QString& title, const QKeySequence& key, const char* icon) {
    QAction* action = addAction(QIcon::fromTheme(QLatin1String(icon)), title);
    action->setShortcut(key);
    return action;
}
