#pragma once

class DocumentActions;
class QWidget;

/// Items on the clipboard of the desktop.
namespace ItemClipboard {

/// Copies the selected items. Without any the clipboard stays as it is.
void copy(const DocumentActions& actions);

/// Copies the selected items and deletes them.
void cut(const DocumentActions& actions);

/// Whether there is something on the clipboard that may be items, and a place for them.
bool canPaste(const DocumentActions& actions);

/// Inserts what is on the clipboard; what cannot be read is explained in `window`.
void paste(const DocumentActions& actions, QWidget& window);

}  // namespace ItemClipboard
