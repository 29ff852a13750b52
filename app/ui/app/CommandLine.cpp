#include "app/ui/app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string_view>

#include "app/desktop/files/FilePath.h"

namespace {

[[noreturn]] void fail(const QString& message) {
    std::cerr << "tabulet: " << qUtf8Printable(message) << '\n';
    std::exit(2);
}

QStringList pathsNamedBy(const QStringList& arguments) {
    QStringList paths;
    for (const QString& argument : arguments) {
        const std::optional<QString> path = FilePath::fromInput(argument);
        if (!path) {
            fail(QCoreApplication::translate("CommandLine",
                                             "“%1” is not the address of a file on this computer.")
                     .arg(FilePath::shown(argument)));
        }
        paths += *path;
    }
    return paths;
}

/// The arguments before "--", after which there are only files.
std::span<char* const> optionsIn(std::span<char* const> arguments) {
    const auto end = std::find(arguments.begin(), arguments.end(), std::string_view("--"));
    return {arguments.begin(), end};
}

}  // namespace

bool CommandLine::onlyPrints(std::span<char* const> arguments) {
    constexpr std::array<std::string_view, 5> words = {"-h", "--help", "--help-all", "-v",
                                                       "--version"};
    const auto options = optionsIn(arguments);
    return std::find_first_of(options.begin(), options.end(), words.begin(), words.end()) !=
           options.end();
}

bool CommandLine::hasDisplay(std::span<char* const> arguments) {
    constexpr std::array<const char*, 3> variables = {"DISPLAY", "WAYLAND_DISPLAY",
                                                      "QT_QPA_PLATFORM"};
    const auto isSet = [](const char* variable) { return !qEnvironmentVariableIsEmpty(variable); };
    const auto choosesPlatform = [](std::string_view argument) {
        return argument == "-platform" || argument == "--platform" ||
               argument.starts_with("-platform=") || argument.starts_with("--platform=");
    };
    return std::ranges::any_of(variables, isSet) ||
           std::ranges::any_of(optionsIn(arguments), choosesPlatform);
}

CommandLine CommandLine::parse(std::span<char* const> arguments) {
    // File names need not be UTF-8, which the application's own list of arguments takes them for.
    QStringList decoded;
    for (const char* argument : arguments) {
        decoded += FilePath::decoded(argument);
    }
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("CommandLine", "An editor for property lists."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption picture(
        QStringLiteral("picture"),
        QCoreApplication::translate(
            "CommandLine", "Open one file, save a screenshot of its window to <path>, and quit."),
        QStringLiteral("path"));
    parser.addOption(picture);
    parser.addPositionalArgument(
        QStringLiteral("file"),
        QCoreApplication::translate("CommandLine", "The property lists to open."),
        QStringLiteral("[file\u2026]"));
    QCommandLineOption service(QStringLiteral("service"));
    service.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(service);
    if (!parser.parse(decoded)) {
        fail(parser.errorText());
    }
    parser.process(decoded);

    CommandLine result{pathsNamedBy(parser.positionalArguments()), parser.isSet(service),
                       parser.value(picture)};
    if (parser.isSet(picture) && (result.paths.size() != 1 || result.screenshotPath.isEmpty())) {
        fail(QCoreApplication::translate(
            "CommandLine",
            "--picture needs the path of the picture and exactly one file to open."));
    }
    return result;
}
