#pragma once

#include <QPersistentModelIndex>
#include <QTableView>
#include <span>
#include <vector>

#include "app/model/actions/DocumentActions.h"
#include "app/model/tree/PlistNodePtr.h"

class InlineEditing;
class CellControls;
class KeyCell;
class OutlineHeader;
class OutlineTableModel;
class RowDragging;
class RowDropping;
class ValueCell;

/// The outline as a table of keys, types and values. It shows rows, passes on what the user does to
/// the actions and to the outline, and changes no document itself.
class PlistTable : public QTableView {
    Q_OBJECT

public:
    /// What `actions` name must outlive the table.
    explicit PlistTable(const DocumentActions& actions, QWidget* parent = nullptr);
    ~PlistTable() override;

    OutlineTableModel& outlineModel() const noexcept { return *model_; }

    /// What is dragged over the table and dropped on it.
    RowDropping& dropping() const noexcept { return *dropping_; }

    /// Whether a point of the viewport is on the control that expands and collapses a row, or so
    /// close that it is meant.
    bool isOnDisclosure(const QPoint& position) const;

    /// Where the check box of a boolean stands in the viewport; empty for other cells.
    QRect checkBoxRect(const QModelIndex& index) const;

    /// Where the summary of data stands in the viewport; empty for other cells.
    QRect linkRect(const QModelIndex& index) const;

    /// The nodes that a search has found, which are marked.
    void setMatchIDs(std::span<const NodeId> ids);

    /// Applies the text of an open field and closes it. False if the text is refused; then the
    /// field says why and stays open.
    bool commitEditing();

    /// Applies the text of an open field, or drops it if it is refused, and closes the field.
    void endEditing();

    /// Whether a field is open, or a window for a long text.
    bool isEditing() const;

    /// The field that is open over a cell; null if there is none.
    QWidget* editorAt(const QModelIndex& index) const;

    /// Works the current cell, which `cell` is: opens the field of its text or date, the menu of
    /// types or the bytes, or toggles the boolean.
    void work(const QModelIndex& cell);

    /// Expands or collapses the container in a row.
    void toggle(int row, OutlineState::Reach reach);

    /// Puts the editor of a cell in its place.
    void placeEditor(QWidget& editor, const QModelIndex& index) const;

Q_SIGNALS:
    /// An expansion was refused because of its size.
    void expansionRefused();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    /// A row that was in sight, and where.
    struct SeenRow {
        PlistNodePtr node;
        int top = 0;
    };

    OutlineState& outline() const noexcept { return actions_.outline(); }

    void setUpAppearance();
    void setUpModel();
    void setUpHelpers();
    void followOutline();
    void applyFont();

    bool handleKey(const QKeyEvent& event);
    void expandSelected(OutlineState::Reach reach);
    void editAt(const QPoint& position);
    void showRowMenuOfCurrent();
    void showRowMenu(const QModelIndex& index, const QPoint& place);
    bool toggleAt(const QPoint& position, Qt::KeyboardModifiers modifiers);

    void takeSelectionFromOutline();
    void giveSelectionToOutline();

    void rememberSight();
    void restoreSight();
    void scrollRowTo(int row, int top);
    std::vector<SeenRow> seenRows() const;

    DocumentActions actions_;
    OutlineTableModel* model_ = nullptr;
    OutlineHeader* header_;
    KeyCell* keyCell_ = nullptr;
    ValueCell* valueCell_ = nullptr;
    CellControls* controls_;
    QPersistentModelIndex pressed_;
    InlineEditing* editing_ = nullptr;
    RowDropping* dropping_ = nullptr;
    std::vector<SeenRow> sight_;
    bool isChangingRows_ = false;
    bool isSharingSelection_ = false;
};
