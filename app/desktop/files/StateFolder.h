#pragma once

#include <QString>

/// Where the program keeps what must outlive it and is no setting: "tabulet" in the folder that
/// XDG_STATE_HOME names, or in ~/.local/state (XDG Base Directory Specification).
namespace StateFolder {

/// Absolute; need not exist.
QString path();

/// Where copies of documents lie until they are safe elsewhere.
QString recoveryPath();

}  // namespace StateFolder
