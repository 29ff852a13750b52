#include <QApplication>
#include <QIcon>
#include <cstddef>
#include <iostream>
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

/// Says why nothing can be shown, which the toolkit would answer with an abort. What is wrong with
/// the arguments comes first.
int refuseWithoutDisplay(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    TabuletApp::setUp(QStringLiteral(TABULET_VERSION));
    CommandLine::parse({argv, static_cast<std::size_t>(argc)});
    const QString reason = QCoreApplication::translate(
        "CommandLine",
        "No display is available: neither DISPLAY nor WAYLAND_DISPLAY is set. Start Tabulet from "
        "a desktop session.");
    std::cerr << "tabulet: " << qUtf8Printable(reason) << '\n';
    return 1;
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

    if (!commandLine.screenshotPath.isEmpty()) {
        takeScreenshot(commandLine.paths.first(), commandLine.screenshotPath);
        return QApplication::exec();
    }
    SingleInstance instance;
    const SingleInstance::Role role = instance.start(commandLine.paths, token);
    if (role == SingleInstance::Role::handedOver) {
        return 0;
    }
    TabuletApp app;
    QObject::connect(&instance, &SingleInstance::handedOver, &app, &TabuletApp::takeOver);
    // Nothing more can be taken over when the program is about to end.
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &instance,
                     &SingleInstance::stop);
    QObject::connect(&instance, &SingleInstance::newWindowChosen, &app, &TabuletApp::openNewWindow);
    if (commandLine.isService && role == SingleInstance::Role::first) {
        app.waitForRequests();
    } else {
        app.start(commandLine.paths);
    }
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    TerminationSignals::block();
    const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
    if (CommandLine::onlyPrints(arguments)) {
        return printText(argc, argv);
    }
    return CommandLine::hasDisplay(arguments) ? showWindows(argc, argv)
                                              : refuseWithoutDisplay(argc, argv);
}
