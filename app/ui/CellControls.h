#pragma once

#include <QModelIndex>
#include <QObject>

#include "app/model/DocumentActions.h"

class PlistTable;

/// What can be worked in the cells beside text fields: the menu of types and the check boxes of
/// booleans, by mouse and by key.
class CellControls : public QObject {
    Q_OBJECT

public:
    /// Belongs to `table`; what `actions` name must outlive it.
    CellControls(PlistTable& table, const DocumentActions& actions);

    /// Works the control of the cell that stands at `position`, if there is one.
    void click(const QModelIndex& index, const QPoint& position);

    /// Toggles the boolean in the current row; false if there is none.
    bool toggleCurrent();

    /// Opens the menu of types for the current row.
    void chooseTypeOfCurrent();

private:
    void toggle(const QModelIndex& index);
    void chooseType(const QModelIndex& index);

    PlistTable& table_;
    DocumentActions actions_;
};
