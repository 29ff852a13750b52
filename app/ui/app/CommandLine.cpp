#include "app/ui/app/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "app/desktop/files/FilePath.h"

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("CommandLine", text);
}

[[noreturn]] void fail(const QString& message) {
    std::cerr << qUtf8Printable(message) << '\n';
    std::exit(2);
}

}  // namespace

bool CommandLine::asksForText(std::span<char* const> arguments) {
    constexpr std::array<std::string_view, 5> words = {"-h", "--help", "--help-all", "-v",
                                                       "--version"};
    const auto end = std::find(arguments.begin(), arguments.end(), std::string_view("--"));
    return std::find_first_of(arguments.begin(), end, words.begin(), words.end()) != end;
}

CommandLine CommandLine::parse(std::span<char* const> arguments) {
    // Names of files need not be texts, as the application's own list of arguments takes them.
    QStringList texts;
    for (const char* argument : arguments) {
        texts += FilePath::decoded(argument);
    }
    QCommandLineParser parser;
    parser.setApplicationDescription(translated("An editor for property lists."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption picture(
        QStringLiteral("picture"),
        translated("Open one file, save a screenshot of its window to <path>, and quit."),
        QStringLiteral("path"));
    parser.addOption(picture);
    parser.addPositionalArgument(QStringLiteral("file"), translated("The property lists to open."),
                                 QStringLiteral("[file\u2026]"));
    parser.process(texts);

    CommandLine result{parser.positionalArguments(), parser.value(picture)};
    if (parser.isSet(picture) && (result.paths.size() != 1 || result.picturePath.isEmpty())) {
        fail(translated("tabulet: --picture needs a path and exactly one file."));
    }
    return result;
}
