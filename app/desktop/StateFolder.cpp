#include "app/desktop/StateFolder.h"

#include <QDir>

QString StateFolder::path() {
    const QString home = qEnvironmentVariable("XDG_STATE_HOME");
    // A relative path there is to be ignored.
    const QString base =
        QDir::isAbsolutePath(home) ? home : QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/tabulet");
}

QString StateFolder::recoveryPath() {
    return path() + QStringLiteral("/recovery");
}
