#pragma once

#include <QString>

class QFileDialog;
class QWidget;

/// The desktop's dialogs for choosing files. They belong to a window and delete themselves when
/// they are closed; the caller connects to them and opens them.
namespace FileDialogs {

/// Chooses files to open, starting in `folder`.
QFileDialog* opening(QWidget& window, const QString& folder);

/// Chooses where to save, starting at `path` or, where that is empty, suggesting `name`.
QFileDialog* saving(QWidget& window, const QString& path, const QString& name);

}  // namespace FileDialogs
