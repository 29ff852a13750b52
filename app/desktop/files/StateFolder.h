#pragma once

#include <QString>

/// Where the program keeps data that outlives it and is not a setting: "tabulet" in the folder that
/// XDG_STATE_HOME names, or in ~/.local/state (XDG Base Directory Specification).
namespace StateFolder {

/// Absolute; need not exist.
QString path();

/// Where the backups of documents are.
QString recoveryPath();

}  // namespace StateFolder
