#pragma once

#include <QTableView>
#include <functional>
#include <optional>
#include <vector>

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNodePtr.h"

class KeyCell;
class OutlineHeader;
class OutlineTableModel;
class ValueCell;

/// The rows and columns of an outline on the screen: what they look like and where their parts are.
/// What is visible keeps its place while rows come and go. Editors, drags and screen readers need
/// no more of the table than this; keys and the mouse are left to `PlistTable`.
class OutlineView : public QTableView {
    Q_OBJECT

public:
    /// `outline` must outlive the view.
    explicit OutlineView(OutlineState& outline, QWidget* parent = nullptr);
    ~OutlineView() override;

    /// The model of the rows.
    OutlineTableModel& outlineModel() const noexcept { return *model_; }

    /// The outline that the rows belong to.
    OutlineState& outline() const noexcept;

    /// A visible row, and where it begins in the viewport.
    struct VisibleRow {
        PlistNodePtr node;
        int top = 0;
    };

    /// The visible rows from top to bottom, preceded by the current one if it is among them: that
    /// is where the user is looking.
    std::vector<VisibleRow> visibleRows() const;

    /// Scrolls so that the first of `rows` that still exists begins where it began. `rowOf` returns
    /// the number of a node's row, or nothing. False if none of them exists.
    bool scrollBack(const std::vector<VisibleRow>& rows,
                    const std::function<std::optional<int>(const PlistNode&)>& rowOf);

    /// Where the control that expands and collapses a container is in the viewport; empty for other
    /// cells.
    QRect disclosureRect(const QModelIndex& index) const;

    /// Whether a point of the viewport is on such a control, or so close to it that it is meant.
    bool isOnDisclosure(const QPoint& position) const;

    /// Where the check box of a boolean is in the viewport; empty for other cells.
    QRect checkBoxRect(const QModelIndex& index) const;

    /// Where the summary of data is in the viewport; empty for other cells.
    QRect linkRect(const QModelIndex& index) const;

    /// Puts the editor of a cell in its place.
    void placeEditor(QWidget& editor, const QModelIndex& index) const;

    /// Expands or collapses the container in a row.
    void toggle(int row, OutlineState::Reach reach);

    /// Opens the editor of `cell`, which must be the current cell: the field of its text or date,
    /// the menu of types or the bytes. A boolean is toggled.
    virtual void activateCell(const QModelIndex& cell) = 0;

    /// The field that is open over a cell; null if there is none.
    virtual QWidget* editorAt(const QModelIndex& index) const = 0;

    /// Applies the text of an open field, or drops it if it is refused, and closes the field.
    virtual void endEditing() = 0;

Q_SIGNALS:
    /// An expansion was refused because of its size.
    void expansionRefused();

protected:
    KeyCell& keyCell() const noexcept { return *keyCell_; }

    /// Begins to show the rows. Not in the constructor, because screen readers ask about them at
    /// once.
    void showRows();

    /// Whether the rows are being changed.
    bool isChangingRows() const noexcept { return isChangingRows_; }

    /// The rows have changed, and the view shows them.
    virtual void rowsChanged();

    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void changeEvent(QEvent* event) override;
    void updateGeometries() override;

private:
    void setUpAppearance();
    void setUpCells();
    void followOutline(const OutlineState& outline);
    void applyFont();
    QStyleOptionViewItem cellOption(const QModelIndex& index) const;

    void rememberVisibleRows();

    OutlineHeader* header_;
    OutlineTableModel* model_ = nullptr;
    KeyCell* keyCell_ = nullptr;
    ValueCell* valueCell_ = nullptr;
    std::vector<VisibleRow> visibleBefore_;
    bool isChangingRows_ = false;
};
