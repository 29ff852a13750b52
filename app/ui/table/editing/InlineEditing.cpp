#include "app/ui/table/editing/InlineEditing.h"

#include <QApplication>
#include <QScrollBar>
#include <optional>
#include <string>
#include <utility>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/editors/InlineTextField.h"
#include "app/ui/editors/LongTextEditor.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/table/view/OutlineView.h"
#include "app/ui/text/RowText.h"

namespace {

using Column = OutlineState::Column;

/// The initial text of the edit: all of it, where the cell may show only the beginning.
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

/// The name of the field for screen readers.
QString accessibleName(const OutlineRow& row, Column column) {
    return column == Column::key ? InlineEditing::tr("Key")
                                 : InlineEditing::tr("Value of %1").arg(RowText::key(row));
}

}  // namespace

InlineEditing::InlineEditing(OutlineView& view, const DocumentActions& actions)
    : QObject(&view), view_(view), actions_(actions) {
    connect(&outline(), &OutlineState::editingChanged, this, &InlineEditing::follow);
    connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, &InlineEditing::place);
    connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, this, &InlineEditing::place);
}

void InlineEditing::follow() {
    close();
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    const std::optional<int> row = edited ? outline().rowForId(edited->nodeId) : std::nullopt;
    // While a filter is set a new item may have no row yet.
    if (row) {
        open(*edited, *row);
    }
}

void InlineEditing::rowsChanged() {
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    if (!edited) {
        return;
    }
    const std::optional<int> row = outline().rowForId(edited->nodeId);
    if (!row) {
        outline().setEditing(std::nullopt);
    } else if (isOpen()) {
        place();
    } else {
        open(*edited, *row);
    }
}

void InlineEditing::open(const OutlineState::EditingField& edited, int row) {
    const OutlineRow shown = view_.outlineModel().row(row);
    view_.scrollTo(cell(edited, row));
    const QString text = editedText(shown.node(), edited.column);
    if (text.size() > LongTextEditor::longestInField) {
        openWindow(edited, shown, text);
    } else {
        openField(edited, shown, text);
    }
}

void InlineEditing::openField(const OutlineState::EditingField& edited, const OutlineRow& shown,
                              const QString& text) {
    const PlistNodePtr node(&shown.node());
    field_ = new InlineTextField(text, ownerFor(actions_, node, edited.column), view_.viewport());
    field_->setFont(view_.font());
    field_->setAccessibleName(accessibleName(shown, edited.column));
    place();
    field_->show();
}

void InlineEditing::openWindow(const OutlineState::EditingField& edited, const OutlineRow& shown,
                               const QString& text) {
    const PlistNodePtr node(&shown.node());
    longEditor_ = new LongTextEditor(text, ownerFor(actions_, node, edited.column), &view_);
    longEditor_->setNames(RowText::key(shown), accessibleName(shown, edited.column));
    longEditor_->show();
}

void InlineEditing::close() {
    closeField();
    closeWindow();
}

void InlineEditing::closeField() {
    if (field_) {
        InlineTextField* field = std::exchange(field_, nullptr);
        field->abandon();
        takeFocusFrom(*field);
        field->hide();
        // Not at once: the field itself may be what ends the edit.
        field->deleteLater();
    }
}

void InlineEditing::closeWindow() {
    if (longEditor_) {
        LongTextEditor* editor = std::exchange(longEditor_, nullptr);
        editor->abandon();
        takeFocusFrom(*editor);
        editor->hide();
        editor->deleteLater();
    }
}

/// Returns the keyboard focus to the view, unless the user has moved on to another widget, which
/// is to keep it.
void InlineEditing::takeFocusFrom(const QWidget& editor) {
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr || focus == &editor || editor.isAncestorOf(focus) ||
        focus == view_.viewport()) {
        view_.setFocus();
    }
}

void InlineEditing::place() {
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    const std::optional<int> row =
        field_ && edited ? outline().rowForId(edited->nodeId) : std::nullopt;
    if (row) {
        view_.placeEditor(*field_, cell(*edited, *row));
    }
}

bool InlineEditing::isOpen() const {
    return field_ || longEditor_;
}

QWidget* InlineEditing::fieldAt(const QModelIndex& index) const {
    const std::optional<OutlineState::EditingField> edited = outline().editing();
    const bool isOver = field_ && edited && index.isValid() &&
                        view_.outlineModel().row(index.row()).nodeId() == edited->nodeId &&
                        cell(*edited, index.row()) == index;
    return isOver ? field_.data() : nullptr;
}

QModelIndex InlineEditing::cell(const OutlineState::EditingField& edited, int row) const {
    return view_.outlineModel().index(row, edited.column == Column::key
                                               ? OutlineTableModel::keyColumn
                                               : OutlineTableModel::valueColumn);
}

bool InlineEditing::commit() {
    return longEditor_ ? longEditor_->commitNow() : !field_ || field_->commitNow();
}

void InlineEditing::end() {
    if (!commit()) {
        outline().setEditing(std::nullopt);
    }
}
