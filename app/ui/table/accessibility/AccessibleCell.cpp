#include "app/ui/table/accessibility/AccessibleCell.h"

#include <QHeaderView>
#include <optional>
#include <utility>

#include "app/model/tree/PlistNode.h"
#include "app/ui/editors/DateValueEditor.h"
#include "app/ui/editors/TypeMenu.h"
#include "app/ui/table/accessibility/AccessibleTable.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"

namespace {

const QString expandAction = QStringLiteral("Expand");
const QString collapseAction = QStringLiteral("Collapse");
const QString editAction = QStringLiteral("Edit");

QString keyOf(const QString& action) {
    if (action == expandAction) {
        return QStringLiteral("Right");
    }
    if (action == collapseAction) {
        return QStringLiteral("Left");
    }
    if (action == QAccessibleActionInterface::showMenuAction()) {
        return QStringLiteral("F4");
    }
    return action == QAccessibleActionInterface::setFocusAction() ? QString()
                                                                  : QStringLiteral("Space");
}

}  // namespace

// --- What headers and cells have in common ---

bool AccessiblePart::isValid() const {
    return true;
}

QObject* AccessiblePart::object() const {
    return nullptr;
}

QAccessibleInterface* AccessiblePart::parent() const {
    return QAccessible::queryAccessibleInterface(&view_);
}

int AccessiblePart::childCount() const {
    return 0;
}

QAccessibleInterface* AccessiblePart::child(int) const {
    return nullptr;
}

QAccessibleInterface* AccessiblePart::childAt(int, int) const {
    return nullptr;
}

int AccessiblePart::indexOfChild(const QAccessibleInterface*) const {
    return -1;
}

void AccessiblePart::setText(QAccessible::Text, const QString&) {}

// --- The header of a column ---

QString AccessibleHeader::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? view()
                                           .outlineModel()
                                           .headerData(column(), Qt::Horizontal, Qt::DisplayRole)
                                           .toString()
                                     : QString();
}

QRect AccessibleHeader::rect() const {
    const QHeaderView& header = *view().horizontalHeader();
    const QPoint corner(header.sectionViewportPosition(column()), 0);
    return {header.viewport()->mapToGlobal(corner),
            QSize(header.sectionSize(column()), header.height())};
}

QAccessible::Role AccessibleHeader::role() const {
    return QAccessible::ColumnHeader;
}

QAccessible::State AccessibleHeader::state() const {
    return {};
}

// --- A cell and its node ---

AccessibleCell::AccessibleCell(OutlineView& view, PlistNodePtr node, int column)
    : AccessiblePart(view, column), node_(std::move(node)) {}

AccessibleCell::~AccessibleCell() = default;

QModelIndex AccessibleCell::index() const {
    const std::optional<int> row = view().outline().hintedRowOf(*node_);
    return row ? view().outlineModel().index(*row, column()) : QModelIndex();
}

void AccessibleCell::announceChange() {
    // Screen readers get no event for an expansion: the description says it.
    for (const QAccessible::Event kind :
         {QAccessible::NameChanged, QAccessible::DescriptionChanged}) {
        QAccessibleEvent event(this, kind);
        QAccessible::updateAccessibility(&event);
    }
}

// --- The cell among accessible objects ---

bool AccessibleCell::isValid() const {
    return index().isValid();
}

int AccessibleCell::childCount() const {
    return view().editorAt(index()) != nullptr ? 1 : 0;
}

QAccessibleInterface* AccessibleCell::child(int number) const {
    QWidget* editor = number == 0 ? view().editorAt(index()) : nullptr;
    return editor != nullptr ? QAccessible::queryAccessibleInterface(editor) : nullptr;
}

QAccessibleInterface* AccessibleCell::childAt(int x, int y) const {
    QAccessibleInterface* editor = child(0);
    return editor != nullptr && editor->rect().contains(x, y) ? editor : nullptr;
}

int AccessibleCell::indexOfChild(const QAccessibleInterface* child) const {
    const QWidget* editor = view().editorAt(index());
    return editor != nullptr && child != nullptr && child->object() == editor ? 0 : -1;
}

QString AccessibleCell::text(QAccessible::Text kind) const {
    switch (kind) {
        case QAccessible::Name:
            return index().data(Qt::AccessibleTextRole).toString();
        case QAccessible::Description:
            return index().data(Qt::AccessibleDescriptionRole).toString();
        default:
            return {};
    }
}

QRect AccessibleCell::rect() const {
    const QRect cell = view().visualRect(index());
    return {view().viewport()->mapToGlobal(cell.topLeft()), cell.size()};
}

QAccessible::Role AccessibleCell::role() const {
    return QAccessible::Cell;
}

QAccessible::State AccessibleCell::state() const {
    QAccessible::State state;
    const QModelIndex cell = index();
    if (!cell.isValid()) {
        state.invalid = true;
        return state;
    }
    state.selectable = true;
    state.focusable = true;
    state.selected = isSelected();
    state.active = view().currentIndex() == cell;
    state.focused = state.active && view().hasFocus();
    state.offscreen = !view().viewport()->rect().intersects(view().visualRect(cell));
    state.editable = actionNames().contains(editAction);
    const QVariant check = cell.data(Qt::CheckStateRole);
    state.checkable = check.isValid();
    state.checked = check.toInt() == Qt::Checked;
    if (canExpand()) {
        const bool isExpanded = view().outlineModel().row(cell.row()).isExpanded();
        state.expandable = true;
        state.expanded = isExpanded;
        state.collapsed = !isExpanded;
    }
    return state;
}

void* AccessibleCell::interface_cast(QAccessible::InterfaceType type) {
    switch (type) {
        case QAccessible::TableCellInterface:
            return static_cast<QAccessibleTableCellInterface*>(this);
        case QAccessible::ActionInterface:
            return static_cast<QAccessibleActionInterface*>(this);
        default:
            return nullptr;
    }
}

// --- The cell in its table ---

bool AccessibleCell::isSelected() const {
    return view().selectionModel()->isSelected(index());
}

QList<QAccessibleInterface*> AccessibleCell::columnHeaderCells() const {
    return {parent()->child(column())};
}

QList<QAccessibleInterface*> AccessibleCell::rowHeaderCells() const {
    if (column() == OutlineTableModel::keyColumn) {
        return {};
    }
    // The key tells which item the type and the value belong to.
    return {parent()->tableInterface()->cellAt(rowIndex(), OutlineTableModel::keyColumn)};
}

int AccessibleCell::columnIndex() const {
    return column();
}

int AccessibleCell::rowIndex() const {
    return index().row();
}

int AccessibleCell::columnExtent() const {
    return 1;
}

int AccessibleCell::rowExtent() const {
    return 1;
}

QAccessibleInterface* AccessibleCell::table() const {
    return parent();
}

// --- What can be done ---

bool AccessibleCell::canExpand() const {
    return column() == OutlineTableModel::keyColumn && node_->isContainer();
}

/// What Space does with the value; empty if there is nothing to do.
QString AccessibleCell::valueAction() const {
    switch (node_->type()) {
        case PlistType::boolean:
            return toggleAction();
        case PlistType::data:
            return pressAction();
        case PlistType::date:
            return DateValueEditor::canEdit(node_->scalar().dateValue()) ? editAction : QString();
        default:
            return DocumentActions::canEditValue(*node_) ? editAction : QString();
    }
}

QStringList AccessibleCell::actionNames() const {
    const QModelIndex cell = index();
    if (!cell.isValid()) {
        return {};
    }
    QStringList names;
    if (canExpand()) {
        names += view().outlineModel().row(cell.row()).isExpanded() ? collapseAction : expandAction;
    }
    if (column() == OutlineTableModel::keyColumn && DocumentActions::canEditKey(*node_)) {
        names += editAction;
    }
    if (column() == OutlineTableModel::typeColumn && TypeMenu::isFor(*node_)) {
        names += showMenuAction();
    }
    if (column() == OutlineTableModel::valueColumn) {
        names += valueAction();
        names.removeAll(QString());
    }
    return names << setFocusAction();
}

QString AccessibleCell::localizedActionName(const QString& name) const {
    if (name == expandAction) {
        return tr("Expand");
    }
    if (name == collapseAction) {
        return tr("Collapse");
    }
    return name == editAction ? tr("Edit") : QAccessibleActionInterface::localizedActionName(name);
}

QString AccessibleCell::localizedActionDescription(const QString& name) const {
    if (name == expandAction) {
        return tr("Shows the items inside");
    }
    if (name == collapseAction) {
        return tr("Hides the items inside");
    }
    return name == editAction ? tr("Opens a text field")
                              : QAccessibleActionInterface::localizedActionDescription(name);
}

void AccessibleCell::doAction(const QString& name) {
    const QModelIndex cell = index();
    if (!actionNames().contains(name)) {
        return;
    }
    if (name == expandAction || name == collapseAction) {
        view().toggle(cell.row(), OutlineState::Reach::nodeAlone);
        return;
    }
    view().setFocus();
    view().setCurrentIndex(cell);
    if (name != setFocusAction()) {
        view().activateCell(cell);
    }
}

QStringList AccessibleCell::keyBindingsForAction(const QString& name) const {
    const bool isText = name == editAction && node_->type() != PlistType::date;
    const QString key = isText ? QStringLiteral("Return") : keyOf(name);
    return key.isEmpty() ? QStringList() : QStringList(key);
}
