#include "app/ui/dialogs/MessageDialog.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "app/desktop/files/FileError.h"

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("MessageDialog", text);
}

QMessageBox* makeBox(QWidget& window, QMessageBox::Icon icon, const QString& text,
                     const QString& explanation) {
    auto* box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(icon);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setInformativeText(explanation);
    // The box applies the format to its first text only.
    for (QLabel* label : box->findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    return box;
}

}  // namespace

QMessageBox* MessageDialog::show(QWidget& window, const QString& text, const QString& explanation) {
    QMessageBox* box = makeBox(window, QMessageBox::Warning, text, explanation);
    box->setStandardButtons(QMessageBox::Ok);
    box->open();
    return box;
}

QMessageBox* MessageDialog::show(QWidget& window, const FileError& error) {
    return show(window, error.message(),
                QStringLiteral("%1\n\n%2").arg(error.failureReason(), advice(error)));
}

QString MessageDialog::advice(const FileError& error) {
    switch (error.code()) {
        case FileError::Code::readFailed:
            return translated(
                "Check that the file exists and that you have permission to read it.");
        case FileError::Code::corruptFile:
            return translated(
                "Fix the file in a text editor, or open another copy of it. The file has not been "
                "changed.");
        case FileError::Code::writeFailed:
            return translated(
                "Your changes are still in the window. Use File > Save As… to save them somewhere "
                "else.");
        case FileError::Code::changedOnDisk:
            return translated(
                "Your changes are still in the window. Use File > Save As… to save them under "
                "another name.");
        case FileError::Code::notEncoded:
            break;
    }
    return translated("Your changes are still in the window. Try saving in the other format.");
}

QMessageBox* MessageDialog::askToDiscard(QWidget& window, const QString& question) {
    QMessageBox* box = makeBox(window, QMessageBox::Warning, question,
                               translated("Discarded changes can't be recovered."));
    box->setStandardButtons(QMessageBox::Discard | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Cancel);
    box->open();
    return box;
}

QMessageBox* MessageDialog::askToRestore(QWidget& window, const QString& name) {
    QMessageBox* box =
        makeBox(window, QMessageBox::Warning, translated("Saving “%1” was interrupted.").arg(name),
                translated("The file may contain only part of what was being saved. Its previous "
                           "contents were backed up and can be restored."));
    box->setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Open);
    const auto rename = [box](QMessageBox::StandardButton button, const QString& text) {
        box->button(button)->setText(text);
        // The icon belongs to the old text.
        box->button(button)->setIcon({});
    };
    rename(QMessageBox::Yes, translated("Restore"));
    rename(QMessageBox::No, translated("Keep Current"));
    rename(QMessageBox::Open, translated("Show Folder"));
    box->setDefaultButton(QMessageBox::Yes);
    // Leaves everything as it is.
    box->setEscapeButton(QMessageBox::Open);
    box->open();
    return box;
}

QMessageBox* MessageDialog::askToSave(QWidget& window, const QString& name) {
    QMessageBox* box = makeBox(window, QMessageBox::Warning,
                               translated("Do you want to save the changes to “%1”?").arg(name),
                               translated("Your changes will be lost if you don't save them."));
    box->setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Save);
    box->open();
    return box;
}

QMessageBox* MessageDialog::askAboutChange(QWidget& window, const FileError& error,
                                           std::function<void(ChangeAnswer)> answered) {
    QMessageBox* box =
        makeBox(window, QMessageBox::Warning, error.message(),
                QStringLiteral("%1\n\n%2")
                    .arg(error.failureReason(),
                         translated("Overwrite replaces what is in the file now. Reload replaces "
                                    "what is in the window, and can be undone.")));
    const QAbstractButton* overwrite =
        box->addButton(translated("Overwrite"), QMessageBox::DestructiveRole);
    const QAbstractButton* saveAs = box->addButton(translated("Save As…"), QMessageBox::ActionRole);
    const QAbstractButton* reload = box->addButton(translated("Reload"), QMessageBox::ActionRole);
    box->setDefaultButton(box->addButton(QMessageBox::Cancel));
    box->setEscapeButton(QMessageBox::Cancel);
    QObject::connect(box, &QMessageBox::finished, &window,
                     [box, overwrite, saveAs, reload, answered = std::move(answered)] {
                         const QAbstractButton* clicked = box->clickedButton();
                         answered(clicked == overwrite ? ChangeAnswer::overwrite
                                  : clicked == saveAs  ? ChangeAnswer::saveAs
                                  : clicked == reload  ? ChangeAnswer::reload
                                                       : ChangeAnswer::cancel);
                     });
    box->open();
    return box;
}
