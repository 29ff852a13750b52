#pragma once

#include <QModelIndex>
#include <QObject>
#include <QPointer>

#include "app/model/actions/DocumentActions.h"
#include "app/model/tree/PlistNodePtr.h"

class DateValueEditor;
class OutlineView;

/// The editors of cells other than text fields: the menu of types, the check boxes of booleans, the
/// fields of dates and the bytes of data, by mouse and by key.
class CellEditors : public QObject {
    Q_OBJECT

public:
    /// Belongs to `view`; whatever `actions` refers to must outlive it.
    CellEditors(OutlineView& view, const DocumentActions& actions);

    /// Uses what is at `position` in the cell: its menu, check box or link, if there is one.
    void click(const QModelIndex& index, const QPoint& position);

    /// Opens the field of a date.
    void doubleClick(const QModelIndex& index);

    /// Toggles the boolean in the current row, or opens the field of the date or the bytes of the
    /// data there; false if it is none of these.
    bool activateCurrent();

    /// Applies what is in an open field, and closes it.
    void endEditing();

    /// Whether the field of a date is open.
    bool isOpen() const noexcept { return !dateEditor_.isNull(); }

    /// The field of a date if it is open over this cell, else null.
    QWidget* fieldAt(const QModelIndex& index) const;

    /// Opens the menu of types for the current row.
    void showTypeMenuOfCurrent();

    /// The view has other rows: the field follows its date, and closes when that has no row.
    void rowsChanged() { placeDate(); }

private:
    void toggle(const QModelIndex& index);
    void showTypeMenu(const QModelIndex& index);
    void editDate(const QModelIndex& index);
    void placeDate();
    void closeDate();
    void showBytes(const QModelIndex& index);

    OutlineView& view_;
    DocumentActions actions_;
    QPointer<DateValueEditor> dateEditor_;
    PlistNodePtr dateNode_;  ///< what `dateEditor_` edits
};
