#pragma once

#include <QMenu>
#include <QPointer>

class DocumentView;
class PlistCommands;
class QAction;
class UndoManager;

/// The Edit menu of a window: taking edits back and forth, what acts on the selection, and
/// the search. While a text field has the keyboard, what there is to do with texts goes to it.
class EditMenu : public QMenu {
    Q_OBJECT

public:
    /// All must outlive the menu or be gone together with the window.
    EditMenu(DocumentView& view, UndoManager& undoManager, PlistCommands& commands,
             QWidget* parent);

private:
    QAction* add(const QString& title, const QKeySequence& key, const char* icon);
    void addHistory();
    void addClipboard();
    void addSelection();

    /// Names and enables what can be taken back: by the document, or while the menu is shown by
    /// the text field with the keyboard.
    void updateHistory();
    void updateHistoryForField();
    void updateItems();

    /// The text field that has the keyboard, of whatever kind; null if something else has it.
    QWidget* textField() const;

    /// Has the text field with the keyboard do what it calls `command`; false if there is none.
    bool passToTextField(const char* command) const;

    /// The same, if `property` says that the field can.
    bool passIfPossible(const char* property, const char* command) const;

    bool hasSelection() const;

    DocumentView& view_;
    UndoManager& undoManager_;
    /// What has the keyboard, or had it before the menu bar took it.
    QPointer<QWidget> focused_;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QAction* cut_ = nullptr;
    QAction* copy_ = nullptr;
    QAction* paste_ = nullptr;
    QAction* delete_ = nullptr;
    QAction* selectAll_ = nullptr;
};
