#include "app/ui/window/Screenshot.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QPixmap>
#include <iostream>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/saving/ByteFile.h"
#include "app/ui/window/DocumentWindow.h"

namespace {

void fail(const QString& message) {
    std::cerr << "tabulet: " << qUtf8Printable(message) << '\n';
    QCoreApplication::exit(1);
}

void saveScreenshot(DocumentWindow& window, const QString& path) {
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    window.grab().save(&bytes, "PNG");
    const QString error = ByteFile::write(path, bytes.data());
    if (error.isEmpty()) {
        QCoreApplication::exit(0);
    } else {
        fail(DocumentWindow::tr("The screenshot “%1” could not be saved. %2")
                 .arg(FilePath::shown(path), error));
    }
}

}  // namespace

void takeScreenshot(const QString& path, const QString& screenshotPath) {
    auto* window = new DocumentWindow(QString());
    QObject::connect(&window->controller(), &DocumentController::openFailed, window,
                     [](const FileError& error) { fail(QString::fromUtf8(error.what())); });
    QObject::connect(window, &DocumentWindow::documentShown, window,
                     [window, screenshotPath] { saveScreenshot(*window, screenshotPath); });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, window, &QObject::deleteLater);
    window->open(path);
    window->show();
}
