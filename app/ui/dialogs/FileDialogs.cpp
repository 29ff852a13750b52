#include "app/ui/dialogs/FileDialogs.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QStringList>

#include "app/desktop/files/FilePath.h"

namespace {

constexpr auto fileSuffix = "plist";

QFileDialog* createDialog(QWidget& window, const QString& title) {
    auto* dialog = new QFileDialog(&window, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setNameFilters(
        {QCoreApplication::translate(
             "FileDialogs", "Property lists (*.plist *.entitlements *.xcprivacy *.stringsdict)"),
         QCoreApplication::translate("FileDialogs", "All files (*)")});
    return dialog;
}

}  // namespace

QFileDialog* FileDialogs::opening(QWidget& window, const QString& folder) {
    QFileDialog* dialog = createDialog(window, QCoreApplication::translate("FileDialogs", "Open"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    if (!folder.isEmpty()) {
        dialog->setDirectory(folder);
    }
    return dialog;
}

QFileDialog* FileDialogs::saving(QWidget& window, const QString& path, const QString& name) {
    QFileDialog* dialog =
        createDialog(window, QCoreApplication::translate("FileDialogs", "Save As"));
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QLatin1String(fileSuffix));
    if (path.isEmpty()) {
        dialog->selectFile(name + u'.' + QLatin1String(fileSuffix));
    } else {
        dialog->setDirectory(FilePath::folder(path));
        dialog->selectFile(FilePath::shownName(path));
    }
    return dialog;
}
