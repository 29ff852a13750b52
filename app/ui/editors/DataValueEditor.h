#pragma once

#include "app/model/actions/DocumentActions.h"
#include "app/model/outline/OutlineRow.h"

class DataPopover;
class QWidget;

/// Opens the bytes of a data item of a document for editing.
namespace DataValueEditor {

/// Opens a popover over `window` with the bytes of the item in `row`. What is typed or imported
/// there becomes the item's value, as a single undo step. The popover follows every change of the
/// item, closes when it is no longer data, and deletes itself when it is closed.
DataPopover* open(const DocumentActions& actions, const OutlineRow& row, QWidget& window);

}  // namespace DataValueEditor
