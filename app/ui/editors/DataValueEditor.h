#pragma once

#include "app/model/actions/DocumentActions.h"
#include "app/model/outline/OutlineRow.h"

class DataPopover;
class QWidget;

/// Edits the bytes of a data item of a document.
namespace DataValueEditor {

/// Opens the bytes of the item that `row` shows over `window`. What is typed or imported there
/// becomes the item's value, in one step that can be undone; the bytes follow the item however it
/// changes, and go when it is no longer data. The popover deletes itself when it is closed.
DataPopover* open(const DocumentActions& actions, const OutlineRow& row, QWidget& window);

}  // namespace DataValueEditor
