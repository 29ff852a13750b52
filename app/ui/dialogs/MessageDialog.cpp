#include "app/ui/dialogs/MessageDialog.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "app/desktop/files/FileError.h"

namespace {

QMessageBox* createBox(QWidget& window, QMessageBox::Icon icon, const QString& text,
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
    QMessageBox* box = createBox(window, QMessageBox::Warning, text, explanation);
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
            return QCoreApplication::translate(
                "MessageDialog",
                "Check that the file exists and that you have permission to read it.");
        case FileError::Code::corruptFile:
            return QCoreApplication::translate(
                "MessageDialog",
                "Fix the file in a text editor, or open another copy of it. The file has not been "
                "changed.");
        case FileError::Code::writeFailed:
            return QCoreApplication::translate(
                "MessageDialog",
                "Your changes are still in the window. Use File > Save As… to save them somewhere "
                "else.");
        case FileError::Code::changedOnDisk:
            return QCoreApplication::translate(
                "MessageDialog",
                "Your changes are still in the window. Use File > Save As… to save them under "
                "another name.");
        case FileError::Code::notEncoded:
            break;
    }
    return QCoreApplication::translate(
        "MessageDialog", "Your changes are still in the window. Try saving in the other format.");
}

QMessageBox* MessageDialog::askToDiscard(QWidget& window, const QString& question) {
    QMessageBox* box = createBox(
        window, QMessageBox::Warning, question,
        QCoreApplication::translate("MessageDialog", "Discarded changes can't be recovered."));
    box->setStandardButtons(QMessageBox::Discard | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Cancel);
    box->open();
    return box;
}

QMessageBox* MessageDialog::askToRestore(QWidget& window, const QString& name) {
    QMessageBox* box = createBox(
        window, QMessageBox::Warning,
        QCoreApplication::translate("MessageDialog", "Saving “%1” was interrupted.").arg(name),
        QCoreApplication::translate(
            "MessageDialog",
            "The file may contain only part of what was being saved. Its previous "
            "contents were backed up and can be restored."));
    box->setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Open);
    const auto rename = [box](QMessageBox::StandardButton button, const QString& text) {
        box->button(button)->setText(text);
        // The icon belongs to the old text.
        box->button(button)->setIcon({});
    };
    rename(QMessageBox::Yes, QCoreApplication::translate("MessageDialog", "Restore"));
    rename(QMessageBox::No, QCoreApplication::translate("MessageDialog", "Keep Current"));
    rename(QMessageBox::Open, QCoreApplication::translate("MessageDialog", "Show Folder"));
    box->setDefaultButton(QMessageBox::Yes);
    // Leaves everything as it is.
    box->setEscapeButton(QMessageBox::Open);
    box->open();
    return box;
}

QMessageBox* MessageDialog::askToSave(QWidget& window, const QString& name) {
    QMessageBox* box = createBox(
        window, QMessageBox::Warning,
        QCoreApplication::translate("MessageDialog", "Do you want to save the changes to “%1”?")
            .arg(name),
        QCoreApplication::translate("MessageDialog",
                                    "Your changes will be lost if you don't save them."));
    box->setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Save);
    box->open();
    return box;
}

QMessageBox* MessageDialog::askAboutChange(QWidget& window, const FileError& error,
                                           std::function<void(ChangeAnswer)> answered) {
    QMessageBox* box =
        createBox(window, QMessageBox::Warning, error.message(),
                  QStringLiteral("%1\n\n%2")
                      .arg(error.failureReason(),
                           QCoreApplication::translate(
                               "MessageDialog",
                               "Overwrite replaces what is in the file now. Reload replaces "
                               "what is in the window, and can be undone.")));
    const QAbstractButton* overwrite = box->addButton(
        QCoreApplication::translate("MessageDialog", "Overwrite"), QMessageBox::DestructiveRole);
    const QAbstractButton* saveAs = box->addButton(
        QCoreApplication::translate("MessageDialog", "Save As…"), QMessageBox::ActionRole);
    const QAbstractButton* reload = box->addButton(
        QCoreApplication::translate("MessageDialog", "Reload"), QMessageBox::ActionRole);
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
