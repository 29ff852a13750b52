#include "app/ui/table/editing/CellEditors.h"

#include <QScrollBar>
#include <optional>
#include <utility>

#include "app/model/tree/PlistNode.h"
#include "app/ui/editors/DataValueEditor.h"
#include "app/ui/editors/DateValueEditor.h"
#include "app/ui/editors/TypeMenu.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"
#include "app/ui/table/view/ValueCell.h"

CellEditors::CellEditors(OutlineView& view, const DocumentActions& actions)
    : QObject(&view), view_(view), actions_(actions) {
    // The field covers its cell wherever that moves.
    connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, &CellEditors::placeDate);
    connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, this, &CellEditors::placeDate);
}

void CellEditors::click(const QModelIndex& index, const QPoint& position) {
    if (index.column() == OutlineTableModel::typeColumn) {
        showTypeMenu(index);
    } else if (index.column() == OutlineTableModel::valueColumn &&
               view_.checkBoxRect(index).contains(position)) {
        toggle(index);
    } else if (index.column() == OutlineTableModel::valueColumn &&
               view_.linkRect(index).contains(position)) {
        showBytes(index);
    }
}

void CellEditors::doubleClick(const QModelIndex& index) {
    if (index.column() == OutlineTableModel::valueColumn &&
        view_.outlineModel().row(index.row()).node().type() == PlistType::date) {
        editDate(index);
    }
}

bool CellEditors::activateCurrent() {
    const QModelIndex current = view_.currentIndex();
    if (!current.isValid()) {
        return false;
    }
    switch (view_.outlineModel().row(current.row()).node().type()) {
        case PlistType::boolean:
            toggle(current);
            return true;
        case PlistType::date:
            editDate(current);
            return true;
        case PlistType::data:
            showBytes(current);
            return true;
        default:
            return false;
    }
}

QWidget* CellEditors::fieldAt(const QModelIndex& index) const {
    const bool isOver = dateEditor_ && index.column() == OutlineTableModel::valueColumn &&
                        &view_.outlineModel().row(index.row()).node() == dateNode_.get();
    return isOver ? dateEditor_.data() : nullptr;
}

void CellEditors::showTypeMenuOfCurrent() {
    const QModelIndex current = view_.currentIndex();
    if (current.isValid()) {
        showTypeMenu(current.siblingAtColumn(OutlineTableModel::typeColumn));
    }
}

void CellEditors::toggle(const QModelIndex& index) {
    const PlistNodePtr node(&view_.outlineModel().row(index.row()).node());
    actions_.changeValue(*node, PlistValue::boolean(!node->scalar().booleanValue()));
}

void CellEditors::showTypeMenu(const QModelIndex& index) {
    const PlistNodePtr node(&view_.outlineModel().row(index.row()).node());
    if (!TypeMenu::isFor(*node)) {
        return;
    }
    auto* menu = new TypeMenu(actions_, node, &view_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QRect cell = view_.visualRect(index);
    menu->popup(view_.viewport()->mapToGlobal(cell.bottomLeft()));
}

void CellEditors::editDate(const QModelIndex& index) {
    const PlistNodePtr node(&view_.outlineModel().row(index.row()).node());
    if (!DateValueEditor::canEdit(node->scalar().dateValue())) {
        return;
    }
    closeDate();
    const auto change = [actions = actions_, node](double seconds) {
        actions.changeValue(*node, PlistValue::date(seconds));
    };
    dateEditor_ = new DateValueEditor(node->scalar().dateValue(), change, view_.viewport());
    connect(dateEditor_, &DateValueEditor::finished, this, [this] {
        closeDate();
        view_.setFocus();
    });
    dateEditor_->setFont(view_.font());
    dateNode_ = node;
    view_.scrollTo(index.siblingAtColumn(OutlineTableModel::valueColumn));
    placeDate();
    dateEditor_->show();
    dateEditor_->setFocus(Qt::OtherFocusReason);
}

void CellEditors::endEditing() {
    if (dateEditor_) {
        dateEditor_->commit();
    }
}

void CellEditors::placeDate() {
    if (!dateEditor_) {
        return;
    }
    const std::optional<int> row = actions_.outline().rowOf(*dateNode_);
    if (row && dateNode_->type() == PlistType::date) {
        dateEditor_->setGeometry(
            view_.visualRect(view_.outlineModel().index(*row, OutlineTableModel::valueColumn)));
    } else {
        closeDate();
        view_.setFocus();
    }
}

void CellEditors::closeDate() {
    if (dateEditor_) {
        DateValueEditor* editor = std::exchange(dateEditor_, nullptr);
        editor->abandon();
        editor->hide();
        // Not at once: the field itself may be what ends the edit.
        editor->deleteLater();
    }
}

void CellEditors::showBytes(const QModelIndex& index) {
    DataValueEditor::open(actions_, view_.outlineModel().row(index.row()), *view_.window());
}
