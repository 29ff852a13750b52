#include <QApplication>
#include <QIcon>
#include <cstddef>
#include <span>

#include "app/desktop/session/LaunchToken.h"
#include "app/desktop/session/SingleInstance.h"
#include "app/desktop/session/TerminationSignals.h"
#include "app/ui/app/CommandLine.h"
#include "app/ui/app/TabuletApp.h"
#include "app/ui/window/Screenshot.h"

namespace {

/// Prints what was asked for, also where there is no display.
int printText(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    TabuletApp::setUp(QStringLiteral(TABULET_VERSION));
    CommandLine::parse({argv, static_cast<std::size_t>(argc)});
    return 0;
}

/// The icon of the user's theme, or ours where it has none and the program is not installed.
QIcon windowIcon() {
    QIcon own;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        own.addFile(QStringLiteral(":/icons/%1.png").arg(size));
    }
    return QIcon::fromTheme(QGuiApplication::desktopFileName(), own);
}

int showWindows(int argc, char** argv) {
    const LaunchToken token = LaunchToken::ofThisProcess();
    SingleInstance::useBusOnlyIfThere();
    const QApplication application(argc, argv);
    TabuletApp::setUp(QStringLiteral(TABULET_VERSION));
    QApplication::setWindowIcon(windowIcon());
    // The toolkit has taken out its own options.
    const CommandLine commandLine = CommandLine::parse({argv, static_cast<std::size_t>(argc)});

    if (!commandLine.picturePath.isEmpty()) {
        takeScreenshot(commandLine.paths.first(), commandLine.picturePath);
        return QApplication::exec();
    }
    SingleInstance instance;
    if (instance.start(commandLine.paths, token) == SingleInstance::Role::handedOver) {
        return 0;
    }
    TabuletApp app;
    QObject::connect(&instance, &SingleInstance::handedOver, &app, &TabuletApp::takeOver);
    // Nothing more can be taken over when the program is about to end.
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &instance,
                     &SingleInstance::stop);
    app.start(commandLine.paths);
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    TerminationSignals::block();
    const bool isText = CommandLine::asksForText({argv, static_cast<std::size_t>(argc)});
    return isText ? printText(argc, argv) : showWindows(argc, argv);
}
