#pragma once

class DocumentActions;
class QWidget;

/// Copies items to the desktop's clipboard and pastes them from it.
namespace ItemClipboard {

/// Copies the selected items. Without a selection the clipboard stays as it is.
void copy(const DocumentActions& actions);

/// Copies the selected items and deletes them.
void cut(const DocumentActions& actions);

/// Whether the clipboard has something that may be items, and there is a place for them.
bool canPaste(const DocumentActions& actions);

/// Inserts what is on the clipboard; what cannot be read is explained in `window`.
void paste(const DocumentActions& actions, QWidget& window);

}  // namespace ItemClipboard
