#pragma once

#include <QString>
#include <cstdint>
#include <functional>

class FileError;
class QMessageBox;
class QWidget;

/// Messages about one window, which do not hold up the others. Their texts are plain: names of
/// files and words from documents are never taken for markup.
namespace MessageDialog {

/// Shows what happened, and below it why and what can be done. The box belongs to `window` and
/// deletes itself when it is closed.
QMessageBox* show(QWidget& window, const QString& text, const QString& explanation);

/// Shows why a file could not be read or written, and what can be done about it.
QMessageBox* show(QWidget& window, const FileError& error);

/// What a user can do about an error of this kind.
QString advice(const FileError& error);

/// Asks whether the changes to the document `name` shall be saved before it is closed: buttons
/// Save, Discard and Cancel.
QMessageBox* askToSave(QWidget& window, const QString& name);

/// What shall become of a document whose file another program has changed.
enum class ChangeAnswer : std::uint8_t { overwrite, saveAs, reload, cancel };

/// Says that a file was not saved because another program has changed it, and asks what to do.
QMessageBox* askAboutChange(QWidget& window, const FileError& error,
                            std::function<void(ChangeAnswer)> answered);

/// Asks `question`, whether something kept for the user shall go for good: buttons Discard and
/// Cancel.
QMessageBox* askToDiscard(QWidget& window, const QString& question);

/// Tells that a crash interrupted the save of the file `name`, of which the old content was kept:
/// buttons Yes ("Restore"), No ("Keep Current") and Open ("Show Folder").
QMessageBox* askToRestore(QWidget& window, const QString& name);

}  // namespace MessageDialog
