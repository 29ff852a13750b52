#pragma once

#include <QMenu>
#include <QPointer>

class DocumentView;
class PlistCommands;
class QAction;
class UndoManager;

/// The Edit menu of a window: undo and redo, the commands for the selection, and the search. While
/// a text field has the focus, the commands that it knows go to it.
class EditMenu : public QMenu {
    Q_OBJECT

public:
    /// All must outlive the menu or be deleted together with the window.
    EditMenu(DocumentView& view, UndoManager& undoManager, PlistCommands& commands,
             QWidget* parent);

private:
    QAction* add(const QString& title, const QKeySequence& key, const char* icon);
    void addHistory();
    void addClipboard();
    void addSelection();

    /// Names and enables Undo and Redo: for the document or, while the menu is shown, for the text
    /// field with the focus.
    void updateHistory();
    void updateHistoryForField();
    void updateItems();

    /// The text field that has the focus, of whatever kind; null if something else has it.
    QWidget* textField() const;

    /// Calls the slot `command` of the text field with the focus; false if there is none.
    bool passToTextField(const char* command) const;

    /// The same, if the field's `property` is true.
    bool passIfPossible(const char* property, const char* command) const;

    bool hasSelection() const;

    DocumentView& view_;
    UndoManager& undoManager_;
    /// What has the focus, or had it before the menu bar took it.
    QPointer<QWidget> focused_;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QAction* cut_ = nullptr;
    QAction* copy_ = nullptr;
    QAction* paste_ = nullptr;
    QAction* delete_ = nullptr;
    QAction* selectAll_ = nullptr;
};
