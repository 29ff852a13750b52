#pragma once

#include <QPointer>
#include <QWidget>

#include "app/model/actions/DocumentActions.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/search/SearchState.h"

class DocumentToolBar;
class EmptyState;
class MatchCount;
class NoticeStrip;
class PlistDocument;
class PlistTable;

/// What a window shows of one document: the notice about a read-only format, the outline table or
/// the empty state, and the number of matches of a search. Its toolbar belongs in the window.
class DocumentView : public QWidget {
    Q_OBJECT

public:
    /// `document` must outlive the view. Without an undo manager edits cannot be undone.
    explicit DocumentView(PlistDocument& document, UndoManager* undoManager = nullptr,
                          QWidget* parent = nullptr);
    ~DocumentView() override;

    OutlineState& outline() noexcept { return outline_; }
    SearchState& search() noexcept { return search_; }
    PlistTable& table() noexcept { return *table_; }

    /// What is painted last when the view is: the rows, or the empty state.
    QList<QWidget*> paintedWidgets() const;

    /// What menu commands act through.
    DocumentActions actions() noexcept { return {document_, outline_, undoManager_.data()}; }

    /// Applies the text of an open field and closes it. False if the text is refused; then the
    /// field says why and stays open. Call it before the document is saved or closed.
    bool commitEditing();

    /// Applies the text of an open field, or drops it if it is refused, and closes the field. Call
    /// it before anything else is done to the document.
    void endEditing();

    /// Expands everything, or says why that is too much.
    void expandAll();

    /// For the window to place; lives as long as the view unless the window takes ownership.
    DocumentToolBar* toolBar() const noexcept { return toolBar_; }

private:
    void createLayout();
    void followToolBar();
    void followDocument();
    void followSearch();
    void updateButtons();
    void showCurrentMatch();
    void updateEmptyState();
    void explainRefusedExpansion();

    PlistDocument& document_;
    QPointer<UndoManager> undoManager_;
    OutlineState outline_;
    SearchState search_;
    NoticeStrip* banner_;
    PlistTable* table_;
    EmptyState* emptyState_;
    MatchCount* matchCount_;
    DocumentToolBar* toolBar_;
};
