#include "app/ui/InlineEditing.h"

#include <QApplication>
#include <QScrollBar>
#include <optional>
#include <string>
#include <utility>

#include "PlistCore/PlistText.h"
#include "app/model/PlistNode.h"
#include "app/ui/InlineTextField.h"
#include "app/ui/OutlineCell.h"
#include "app/ui/OutlineTableModel.h"
#include "app/ui/PlistTable.h"
#include "app/ui/RowText.h"

namespace {

using Column = OutlineState::Column;

/// What the edit begins with: the whole text, which the cell may show only the beginning of.
QString editedText(const PlistNode& node, Column column) {
    return QString::fromStdString(column == Column::key ? std::string(node.key().view())
                                                        : PlistText::displayText(node.scalar()));
}

InlineTextField::Owner ownerFor(const DocumentActions& actions, const PlistNodePtr& node,
                                Column column) {
    InlineTextField::Owner owner;
    owner.finish = [&outline = actions.outline()] { outline.setEditing(std::nullopt); };
    if (column == Column::key) {
        owner.commit = [actions, node](const QString& text) { return actions.rename(*node, text); };
        owner.onTab = [actions, node] { actions.moveOnFromKey(*node); };
    } else {
        owner.commit = [actions, node](const QString& text) {
            return actions.setValueFromText(*node, text);
        };
    }
    return owner;
}

}  // namespace

InlineEditing::InlineEditing(PlistTable& table, const DocumentActions& actions)
    : QObject(&table), table_(table), actions_(actions) {
    connect(&outline(), &OutlineState::editingChanged, this, &InlineEditing::follow);
    connect(&outline(), &OutlineState::rowsChanged, this, &InlineEditing::followRows);
    connect(table.verticalScrollBar(), &QScrollBar::valueChanged, this, &InlineEditing::place);
    connect(table.horizontalScrollBar(), &QScrollBar::valueChanged, this, &InlineEditing::place);
}

void InlineEditing::follow() {
    close();
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    const std::optional<int> row = edited ? outline().rowForId(edited->nodeId) : std::nullopt;
    // Behind a filter a new item may have no row yet.
    if (row) {
        open(*edited, *row);
    }
}

void InlineEditing::followRows() {
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    if (!edited) {
        return;
    }
    const std::optional<int> row = outline().rowForId(edited->nodeId);
    if (!row) {
        outline().setEditing(std::nullopt);
    } else if (field_) {
        place();
    } else {
        open(*edited, *row);
    }
}

void InlineEditing::open(const OutlineState::EditingField& edited, int row) {
    const QModelIndex index = cell(edited, row);
    const OutlineRow& shown = table_.outlineModel().row(row);
    const PlistNodePtr node(&shown.node());
    table_.scrollTo(index);
    field_ = new InlineTextField(editedText(*node, edited.column),
                                 ownerFor(actions_, node, edited.column), table_.viewport());
    field_->setFont(table_.font());
    field_->setAccessibleName(
        edited.column == Column::key ? tr("Key") : tr("Value of %1").arg(RowText::key(shown)));
    place();
    field_->show();
}

void InlineEditing::close() {
    if (!field_) {
        return;
    }
    InlineTextField* field = std::exchange(field_, nullptr);
    field->abandon();
    // Not if the user has gone on to another widget, which shall keep the keyboard.
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr || focus == field || focus == table_.viewport()) {
        table_.setFocus();
    }
    field->hide();
    // Not at once: it may be the field that ends the edit.
    field->deleteLater();
}

void InlineEditing::place() {
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    const std::optional<int> row =
        field_ && edited ? outline().rowForId(edited->nodeId) : std::nullopt;
    if (row) {
        table_.placeEditor(*field_, cell(*edited, *row));
    }
}

QWidget* InlineEditing::fieldAt(const QModelIndex& index) const {
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    const bool isOver = field_ && edited && index.isValid() &&
                        table_.outlineModel().row(index.row()).nodeId() == edited->nodeId &&
                        cell(*edited, index.row()) == index;
    return isOver ? field_.data() : nullptr;
}

QModelIndex InlineEditing::cell(const OutlineState::EditingField& edited, int row) const {
    return table_.outlineModel().index(row, edited.column == Column::key
                                                ? OutlineTableModel::keyColumn
                                                : OutlineTableModel::valueColumn);
}

bool InlineEditing::commit() {
    return !field_ || field_->commitNow();
}

void InlineEditing::end() {
    if (!commit()) {
        outline().setEditing(std::nullopt);
    }
}
