#pragma once

#include <QObject>
#include <QPointer>

#include "app/model/DocumentActions.h"
#include "app/model/OutlineState.h"

class InlineTextField;
class PlistTable;

/// The text field that is open in a table: opens, places and closes it as the outline says which
/// cell is edited. There is one at most.
class InlineEditing : public QObject {
    Q_OBJECT

public:
    /// Belongs to `table`; what `actions` name must outlive it.
    InlineEditing(PlistTable& table, const DocumentActions& actions);

    /// Applies the text of the open field and closes it. False if the text is refused, which the
    /// field shows and stays open for.
    bool commit();

    /// Applies the text, or drops it if it is refused, and closes the field.
    void end();

    /// The field if it is open over this cell, else null.
    QWidget* fieldAt(const QModelIndex& index) const;

    /// Puts the field where its cell is now.
    void place();

private:
    OutlineState& outline() const noexcept { return actions_.outline(); }

    void follow();
    void followRows();
    void open(const OutlineState::EditingField& edited, int row);
    void close();
    QModelIndex cell(const OutlineState::EditingField& edited, int row) const;

    PlistTable& table_;
    DocumentActions actions_;
    QPointer<InlineTextField> field_;
};
