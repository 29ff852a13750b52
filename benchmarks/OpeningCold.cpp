// Opens a file in a window. Prints for how many milliseconds the program did not answer at most,
// which is the longest time between two turns of the event loop, and after how many the document
// stood on the screen.
//
// usage: OpeningCold xml|binary DOCUMENT

#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>

#include "app/ui/app/TabuletApp.h"
#include "app/ui/window/DocumentWindow.h"
#include "benchmarks/support/Pulse.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    TabuletApp::setUp(QStringLiteral("measure"));
    if (argc != 3) {
        std::fputs("usage: OpeningCold xml|binary DOCUMENT\n", stderr);
        return 2;
    }
    auto* window = new DocumentWindow(QStringLiteral("Untitled"));
    window->show();
    QElapsedTimer whole;
    whole.start();
    Pulse pulse;
    QObject::connect(window, &DocumentWindow::documentShown, [&] {
        pulse.beat();
        std::printf("%lld %lld\n", pulse.longest(), whole.elapsed());
        QApplication::exit();
    });
    window->open(QStringLiteral("%1.%2").arg(QString::fromLocal8Bit(argv[2]),
                                             QString::fromLocal8Bit(argv[1])));
    return QApplication::exec();
}
