#pragma once

#include <QString>
#include <cstdint>
#include <functional>

class FileError;
class QMessageBox;
class QWidget;

/// Messages about one window, which do not block the others. Their texts are plain: file names and
/// text from documents are never taken for markup.
namespace MessageDialog {

/// Shows what happened, and below it the reason and what can be done. The box belongs to `window`
/// and deletes itself when it is closed.
QMessageBox* show(QWidget& window, const QString& text, const QString& explanation);

/// Shows why a file could not be read or written, and what can be done about it.
QMessageBox* show(QWidget& window, const FileError& error);

/// What a user can do about an error of this kind.
QString advice(const FileError& error);

/// Asks whether to save the changes to the document `name` before it is closed: buttons Save,
/// Discard and Cancel.
QMessageBox* askToSave(QWidget& window, const QString& name);

/// What to do with a document whose file another program has changed.
enum class ChangeAnswer : std::uint8_t { overwrite, saveAs, reload, cancel };

/// Says that a file was not saved because another program has changed it, and asks what to do.
QMessageBox* askAboutChange(QWidget& window, const FileError& error,
                            std::function<void(ChangeAnswer)> answered);

/// Asks `question`: whether to discard a backup for good. Buttons Discard and Cancel.
QMessageBox* askToDiscard(QWidget& window, const QString& question);

/// Says that a crash interrupted the saving of the file `name`, whose previous contents were backed
/// up: buttons Yes ("Restore"), No ("Keep Current") and Open ("Show Folder").
QMessageBox* askToRestore(QWidget& window, const QString& name);

}  // namespace MessageDialog
