#pragma once

#include <QString>
#include <QStringList>

/// How a session manager starts the program again at the next login.
namespace RestartCommand {

/// The program and arguments that show the files at `paths`, which are absolute. They are named by
/// their addresses: a session manager keeps texts, and a path need not be one. By `session`, an
/// identity, the session manager knows the program again.
QStringList showing(const QStringList& paths, const QString& session);

}  // namespace RestartCommand
