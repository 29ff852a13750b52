#pragma once

#include <QModelIndex>
#include <QObject>
#include <QPointer>

#include "app/model/DocumentActions.h"

class DateValueEditor;
class PlistTable;

/// What can be worked in the cells beside text fields: the menu of types, the check boxes of
/// booleans and the fields of dates, by mouse and by key.
class CellControls : public QObject {
    Q_OBJECT

public:
    /// Belongs to `table`; what `actions` name must outlive it.
    CellControls(PlistTable& table, const DocumentActions& actions);

    /// Works the control of the cell that stands at `position`, if there is one.
    void click(const QModelIndex& index, const QPoint& position);

    /// Opens the field of a date.
    void doubleClick(const QModelIndex& index);

    /// Toggles the boolean in the current row, or opens the field of the date there; false if there
    /// is neither.
    bool workCurrent();

    /// Opens the menu of types for the current row.
    void chooseTypeOfCurrent();

private:
    void toggle(const QModelIndex& index);
    void chooseType(const QModelIndex& index);
    void editDate(const QModelIndex& index);
    void closeDate();

    PlistTable& table_;
    DocumentActions actions_;
    QPointer<DateValueEditor> dateEditor_;
};
