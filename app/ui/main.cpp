#include <QApplication>
#include <cstddef>
#include <span>

#include "app/ui/CommandLine.h"
#include "app/ui/TabuletApp.h"
#include "app/ui/WindowPicture.h"

namespace {

/// Prints what was asked for, also where there is no display.
int printText(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    TabuletApp::setUp(QStringLiteral(TABULET_VERSION));
    CommandLine::parse({argv, static_cast<std::size_t>(argc)});
    return 0;
}

int showWindows(int argc, char** argv) {
    const QApplication application(argc, argv);
    TabuletApp::setUp(QStringLiteral(TABULET_VERSION));
    // Those that are meant for the toolkit have been taken out.
    const CommandLine commandLine = CommandLine::parse({argv, static_cast<std::size_t>(argc)});

    TabuletApp app;
    if (commandLine.picturePath.isEmpty()) {
        app.start(commandLine.paths);
    } else {
        takeWindowPicture(commandLine.paths.first(), commandLine.picturePath);
    }
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const bool isText = CommandLine::asksForText({argv, static_cast<std::size_t>(argc)});
    return isText ? printText(argc, argv) : showWindows(argc, argv);
}
