#include "app/desktop/files/StateFolder.h"

#include <QDir>

#include "app/desktop/files/FilePath.h"

namespace {

/// An absolute path in a variable of the environment; empty if there is none.
QString folderIn(const char* variable) {
    const QString folder = FilePath::decoded(qgetenv(variable));
    return folder.startsWith(u'/') ? folder : QString();
}

QString homePath() {
    const QString home = folderIn("HOME");
    return home.isEmpty() ? QDir::homePath() : home;
}

}  // namespace

QString StateFolder::path() {
    // A relative path there is to be ignored.
    const QString folder = folderIn("XDG_STATE_HOME");
    const QString base = folder.isEmpty() ? homePath() + QStringLiteral("/.local/state") : folder;
    return base + QStringLiteral("/tabulet");
}

QString StateFolder::recoveryPath() {
    return path() + QStringLiteral("/recovery");
}
