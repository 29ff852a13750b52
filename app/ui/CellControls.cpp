#include "app/ui/CellControls.h"

#include "app/model/PlistNode.h"
#include "app/ui/OutlineTableModel.h"
#include "app/ui/PlistTable.h"
#include "app/ui/TypeMenu.h"
#include "app/ui/ValueCell.h"

CellControls::CellControls(PlistTable& table, const DocumentActions& actions)
    : QObject(&table), table_(table), actions_(actions) {}

void CellControls::click(const QModelIndex& index, const QPoint& position) {
    if (index.column() == OutlineTableModel::typeColumn) {
        chooseType(index);
    } else if (index.column() == OutlineTableModel::valueColumn &&
               table_.checkBoxRect(index).contains(position)) {
        toggle(index);
    }
}

bool CellControls::toggleCurrent() {
    const QModelIndex current = table_.currentIndex();
    const bool isBoolean =
        current.isValid() &&
        table_.outlineModel().row(current.row()).node().type() == PlistType::boolean;
    if (isBoolean) {
        toggle(current);
    }
    return isBoolean;
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
