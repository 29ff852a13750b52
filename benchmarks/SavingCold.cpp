// Opens a copy of a file in a window, edits it and saves it. Prints for how many milliseconds the
// program did not answer at most while it saved, which is the longest time between two turns of the
// event loop, and after how many the document was saved.
//
// usage: SavingCold xml|binary DOCUMENT

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "app/ui/app/TabuletApp.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/window/DocumentWindow.h"
#include "benchmarks/support/Pulse.h"

namespace {

/// Saves, and prints the times at the end.
void measure(DocumentWindow& window) {
    auto whole = std::make_shared<QElapsedTimer>();
    whole->start();
    auto pulse = std::make_shared<Pulse>();
    QObject::connect(&window.controller(), &DocumentController::saved, [whole, pulse] {
        const qint64 duration = whole->elapsed();
        // With what is done because it has been saved.
        QTimer::singleShot(0, [pulse, duration] {
            pulse->beat();
            std::printf("%lld %lld\n", pulse->longest(), duration);
            QApplication::exit();
        });
    });
    QObject::connect(&window.controller(), &DocumentController::saveFailed,
                     [](const FileError& error) {
                         std::fprintf(stderr, "%s\n", error.what());
                         QApplication::exit(1);
                     });
    window.save();
    pulse->beat();
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    TabuletApp::setUp(QStringLiteral("measure"));
    if (argc != 3) {
        std::fputs("usage: SavingCold xml|binary DOCUMENT\n", stderr);
        return 2;
    }
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("document.plist"));
    if (!QFile::copy(QStringLiteral("%1.%2").arg(QString::fromLocal8Bit(argv[2]),
                                                 QString::fromLocal8Bit(argv[1])),
                     copy)) {
        std::fputs("The document cannot be copied.\n", stderr);
        return 2;
    }
    auto* window = new DocumentWindow(QStringLiteral("Untitled"));
    window->show();
    QObject::connect(window, &DocumentWindow::documentShown, [window] {
        window->view().actions().addItem();
        measure(*window);
    });
    window->open(copy);
    return QApplication::exec();
}
