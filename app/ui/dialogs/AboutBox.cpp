#include "app/ui/dialogs/AboutBox.h"

#include <utf8proc.h>
#include <xxhash.h>

#include <QCoreApplication>
#include <QMessageBox>
#include <QStringList>

namespace {

/// From its number: two digits for each part but the first.
QString xxHashVersion() {
    const unsigned number = XXH_versionNumber();
    return QStringLiteral("%1.%2.%3").arg(number / 10000).arg(number / 100 % 100).arg(number % 100);
}

/// What the program runs with, which need not be what it was built with.
QStringList libraries() {
    return {QStringLiteral("Qt %1").arg(QLatin1String(qVersion())),
            QStringLiteral("utf8proc %1").arg(QLatin1String(utf8proc_version())),
            QStringLiteral("xxHash %1").arg(xxHashVersion())};
}

}  // namespace

void AboutBox::show(QWidget& window) {
    auto* box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(QCoreApplication::translate("AboutBox", "About Tabulet"));
    box->setIconPixmap(window.windowIcon().pixmap(64));
    box->setTextFormat(Qt::PlainText);
    box->setText(QCoreApplication::translate("AboutBox", "Tabulet %1")
                     .arg(QCoreApplication::applicationVersion()));
    box->setInformativeText(
        QCoreApplication::translate("AboutBox",
                                    "An editor for property lists.\nFree software under the MIT "
                                    "licence, without any warranty.\n\nWith %1.")
            .arg(libraries().join(QStringLiteral(", "))));
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->setStandardButtons(QMessageBox::Close);
    box->open();
}
