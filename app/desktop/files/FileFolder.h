#pragma once

#include <sys/types.h>

#include <QByteArray>

/// The folders of files, by their paths as the system has them.
namespace FileFolder {

/// The folder that contains the file at a path.
QByteArray of(const QByteArray& path);

/// The mode of folders that `create` creates.
inline constexpr mode_t forTheUserAlone = 0700;

/// Creates a folder, and those above it, for the user alone; a folder that is there stays as it is.
/// Returns 0 or the number of the system's error.
int create(const QByteArray& folder);

/// Waits until the disk knows the names in a folder. Returns 0 or the number of the system's
/// error; a folder that may not be read is taken at its word.
int synchronize(const QByteArray& folder);

}  // namespace FileFolder
