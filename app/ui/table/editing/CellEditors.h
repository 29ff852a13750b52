#pragma once

#include <QModelIndex>
#include <QObject>
#include <QPointer>

#include "app/model/actions/DocumentActions.h"
#include "app/model/tree/PlistNodePtr.h"

class DateValueEditor;
class OutlineView;

/// What can be worked in the cells beside text fields: the menu of types, the check boxes of
/// booleans, the fields of dates and the bytes of data, by mouse and by key.
class CellEditors : public QObject {
    Q_OBJECT

public:
    /// Belongs to `view`; what `actions` name must outlive it.
    CellEditors(OutlineView& view, const DocumentActions& actions);

    /// Works the control of the cell that stands at `position`, if there is one.
    void click(const QModelIndex& index, const QPoint& position);

    /// Opens the field of a date.
    void doubleClick(const QModelIndex& index);

    /// Toggles the boolean in the current row, or opens the field of the date or the bytes of the
    /// data there; false if there is nothing of these.
    bool workCurrent();

    /// Takes over what stands in an open field, and closes it.
    void endEditing();

    /// Whether the field of a date is open.
    bool isOpen() const noexcept { return !dateEditor_.isNull(); }

    /// The field of a date if it is open over this cell, else null.
    QWidget* fieldAt(const QModelIndex& index) const;

    /// Opens the menu of types for the current row.
    void chooseTypeOfCurrent();

    /// The table has other rows: the field follows its date, and is closed when that has no row.
    void rowsChanged() { placeDate(); }

private:
    void toggle(const QModelIndex& index);
    void chooseType(const QModelIndex& index);
    void editDate(const QModelIndex& index);
    void placeDate();
    void closeDate();
    void showBytes(const QModelIndex& index);

    OutlineView& view_;
    DocumentActions actions_;
    QPointer<DateValueEditor> dateEditor_;
    PlistNodePtr dateNode_;  ///< what `dateEditor_` edits
};
