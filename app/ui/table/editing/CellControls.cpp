#include "app/ui/table/editing/CellControls.h"

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

CellControls::CellControls(OutlineView& table, const DocumentActions& actions)
    : QObject(&table), table_(table), actions_(actions) {
    // The field covers its cell wherever that goes.
    connect(table.verticalScrollBar(), &QScrollBar::valueChanged, this, &CellControls::placeDate);
    connect(table.horizontalScrollBar(), &QScrollBar::valueChanged, this, &CellControls::placeDate);
}

void CellControls::click(const QModelIndex& index, const QPoint& position) {
    if (index.column() == OutlineTableModel::typeColumn) {
        chooseType(index);
    } else if (index.column() == OutlineTableModel::valueColumn &&
               table_.checkBoxRect(index).contains(position)) {
        toggle(index);
    } else if (index.column() == OutlineTableModel::valueColumn &&
               table_.linkRect(index).contains(position)) {
        showBytes(index);
    }
}

void CellControls::doubleClick(const QModelIndex& index) {
    if (index.column() == OutlineTableModel::valueColumn &&
        table_.outlineModel().row(index.row()).node().type() == PlistType::date) {
        editDate(index);
    }
}

bool CellControls::workCurrent() {
    const QModelIndex current = table_.currentIndex();
    if (!current.isValid()) {
        return false;
    }
    switch (table_.outlineModel().row(current.row()).node().type()) {
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

QWidget* CellControls::fieldAt(const QModelIndex& index) const {
    const bool isOver = dateEditor_ && index.column() == OutlineTableModel::valueColumn &&
                        &table_.outlineModel().row(index.row()).node() == dateNode_.get();
    return isOver ? dateEditor_.data() : nullptr;
}

void CellControls::chooseTypeOfCurrent() {
    const QModelIndex current = table_.currentIndex();
    if (current.isValid()) {
        chooseType(current.siblingAtColumn(OutlineTableModel::typeColumn));
    }
}

void CellControls::toggle(const QModelIndex& index) {
    const PlistNodePtr node(&table_.outlineModel().row(index.row()).node());
    actions_.changeValue(*node, PlistValue::boolean(!node->scalar().booleanValue()));
}

void CellControls::chooseType(const QModelIndex& index) {
    const PlistNodePtr node(&table_.outlineModel().row(index.row()).node());
    if (!TypeMenu::isFor(*node)) {
        return;
    }
    auto* menu = new TypeMenu(actions_, node, &table_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QRect cell = table_.visualRect(index);
    menu->popup(table_.viewport()->mapToGlobal(cell.bottomLeft()));
}

void CellControls::editDate(const QModelIndex& index) {
    const PlistNodePtr node(&table_.outlineModel().row(index.row()).node());
    if (!DateValueEditor::canEdit(node->scalar().dateValue())) {
        return;
    }
    closeDate();
    const auto change = [actions = actions_, node](double seconds) {
        actions.changeValue(*node, PlistValue::date(seconds));
    };
    dateEditor_ = new DateValueEditor(node->scalar().dateValue(), change, table_.viewport());
    connect(dateEditor_, &DateValueEditor::finished, this, [this] {
        closeDate();
        table_.setFocus();
    });
    dateEditor_->setFont(table_.font());
    dateNode_ = node;
    table_.scrollTo(index.siblingAtColumn(OutlineTableModel::valueColumn));
    placeDate();
    dateEditor_->show();
    dateEditor_->setFocus(Qt::OtherFocusReason);
}

void CellControls::endEditing() {
    if (dateEditor_) {
        dateEditor_->commit();
    }
}

void CellControls::placeDate() {
    if (!dateEditor_) {
        return;
    }
    const std::optional<int> row = actions_.outline().rowOf(*dateNode_);
    if (row && dateNode_->type() == PlistType::date) {
        dateEditor_->setGeometry(
            table_.visualRect(table_.outlineModel().index(*row, OutlineTableModel::valueColumn)));
    } else {
        closeDate();
        table_.setFocus();
    }
}

void CellControls::closeDate() {
    if (dateEditor_) {
        DateValueEditor* editor = std::exchange(dateEditor_, nullptr);
        editor->abandon();
        editor->hide();
        // Not at once: it may be the field that ends the edit.
        editor->deleteLater();
    }
}

void CellControls::showBytes(const QModelIndex& index) {
    DataValueEditor::open(actions_, table_.outlineModel().row(index.row()), *table_.window());
}
