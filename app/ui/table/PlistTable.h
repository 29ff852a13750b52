#pragma once

#include <QPersistentModelIndex>
#include <span>

#include "app/model/actions/DocumentActions.h"
#include "app/ui/table/view/OutlineView.h"

class InlineEditing;
class CellEditors;
class RowDropping;

/// The outline as a table of keys, types and values. It passes on what the user does to the actions
/// and to the outline, and does not change the document itself.
class PlistTable : public OutlineView {
    Q_OBJECT

public:
    /// Whatever `actions` refers to must outlive the table.
    explicit PlistTable(const DocumentActions& actions, QWidget* parent = nullptr);
    ~PlistTable() override;

    /// Handles what is dragged over the table and dropped on it.
    RowDropping& dropping() const noexcept { return *dropping_; }

    /// Sets the nodes that a search has found, which are marked.
    void setMatchIDs(std::span<const NodeId> ids);

    /// Applies the text of an open field and closes it. False if the text is refused; then the
    /// field says why and stays open.
    bool commitEditing();

    /// Whether a field is open, or a window for a long text.
    bool isEditing() const;

    void activateCell(const QModelIndex& cell) override;
    QWidget* editorAt(const QModelIndex& index) const override;
    void endEditing() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void rowsChanged() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    bool handleKey(const QKeyEvent& event);
    void expandSelected(OutlineState::Reach reach);
    void editAt(const QPoint& position);
    void showRowMenuOfCurrent();
    void showRowMenu(const QModelIndex& index, const QPoint& place);
    bool toggleAt(const QPoint& position, Qt::KeyboardModifiers modifiers);

    void takeSelectionFromOutline();
    void giveSelectionToOutline();

    DocumentActions actions_;
    CellEditors* editors_;
    InlineEditing* editing_;
    RowDropping* dropping_;
    QPersistentModelIndex pressed_;
    bool isSharingSelection_ = false;
};
