#include <QCoreApplication>
#include <QMimeDatabase>
#include <cstddef>
#include <iostream>
#include <span>

/// Prints what Qt takes each file for, as a type a line.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QMimeDatabase database;
    for (const char* path : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        const QMimeType type = database.mimeTypeForFile(QString::fromLocal8Bit(path));
        std::cout << qPrintable(type.name()) << '\n';
    }
    return 0;
}
