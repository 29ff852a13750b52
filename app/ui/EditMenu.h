#pragma once

#include <QMenu>

class DocumentView;
class QAction;
class UndoManager;

/// The Edit menu of a window: taking edits back and forth, what acts on the selection, and
/// the search.
class EditMenu : public QMenu {
    Q_OBJECT

public:
    /// Both must outlive the menu or be gone together with the window.
    EditMenu(DocumentView& view, UndoManager& undoManager, QWidget* parent);

private:
    QAction* add(const QString& title, const QKeySequence& key, const char* icon);
    void addHistory(DocumentView& view, UndoManager& undoManager);
    void addClipboard(DocumentView& view);
    void addSelection(DocumentView& view);
    void addSearch(DocumentView& view);
    void updateHistory(const UndoManager& undoManager);

    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QAction* delete_ = nullptr;
};
