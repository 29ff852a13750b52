#include "app/desktop/session/RestartCommand.h"

#include <QCoreApplication>

#include "app/desktop/files/FilePath.h"

QStringList RestartCommand::showing(const QStringList& paths, const QString& session) {
    // How the program was called may mean nothing in the folder where the session begins.
    QStringList command = {QCoreApplication::applicationFilePath(), QStringLiteral("-session"),
                           session};
    for (const QString& path : paths) {
        command += QString::fromLatin1(FilePath::toUri(path));
    }
    return command;
}
