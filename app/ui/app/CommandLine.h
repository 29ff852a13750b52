#pragma once

#include <QString>
#include <QStringList>
#include <span>

/// What the program was asked to do on its command line.
struct CommandLine {
    /// The files to open.
    QStringList paths;

    /// Whether the message bus has started the program and will say what to open.
    bool isService = false;

    /// Where to save a screenshot of the window that shows the only file; empty for none.
    QString screenshotPath;

    /// Whether there is something to show windows on: a display, or what the arguments or the
    /// environment have chosen instead.
    static bool hasDisplay(std::span<char* const> arguments);

    /// Whether the arguments only ask for something to be printed, which needs no display.
    static bool onlyPrints(std::span<char* const> arguments);

    /// Understands the arguments of the program as the system gave them, the first of which is its
    /// name. Prints help and version, and errors, and then ends the process.
    static CommandLine parse(std::span<char* const> arguments);
};
