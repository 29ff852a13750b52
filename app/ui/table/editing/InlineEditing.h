#pragma once

#include <QObject>
#include <QPointer>

#include "app/model/actions/DocumentActions.h"
#include "app/model/outline/OutlineState.h"

class InlineTextField;
class LongTextEditor;
class OutlineView;

/// The text field that is open in a view, or the window for a text that is too long for one:
/// opens, places and closes it as the outline says which cell is edited. There is at most one.
class InlineEditing : public QObject {
    Q_OBJECT

public:
    /// Belongs to `view`; whatever `actions` refers to must outlive it.
    InlineEditing(OutlineView& view, const DocumentActions& actions);

    /// Applies the text of the open field and closes it. False if the text is refused; then the
    /// field says why and stays open.
    bool commit();

    /// Applies the text, or drops it if it is refused, and closes the field.
    void end();

    /// Whether a field or a window is open. Neither is while the edited item has no row.
    bool isOpen() const;

    /// The field if it is open over this cell, else null.
    QWidget* fieldAt(const QModelIndex& index) const;

    /// Puts the field where its cell is now.
    void place();

    /// The view has other rows: the field follows its item, and closes when that has no row.
    void rowsChanged();

private:
    OutlineState& outline() const noexcept { return actions_.outline(); }

    void follow();
    void open(const OutlineState::EditingField& edited, int row);
    void openField(const OutlineState::EditingField& edited, const OutlineRow& shown,
                   const QString& text);
    void openWindow(const OutlineState::EditingField& edited, const OutlineRow& shown,
                    const QString& text);
    void close();
    void closeField();
    void closeWindow();
    void takeFocusFrom(const QWidget& editor);
    QModelIndex cell(const OutlineState::EditingField& edited, int row) const;

    OutlineView& view_;
    DocumentActions actions_;
    QPointer<InlineTextField> field_;
    QPointer<LongTextEditor> longEditor_;
};
