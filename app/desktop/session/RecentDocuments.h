#pragma once

#include <QString>
#include <QStringList>

/// The files that the user opened or saved last, remembered among the settings of the application
/// and shared by all its processes.
namespace RecentDocuments {

/// How many files are remembered.
inline constexpr qsizetype capacity = 10;

/// The absolute paths, the last one first. Files that do not exist at the moment are left out, but
/// not forgotten: they may lie on a disk that comes back.
QStringList existingPaths();

/// Puts a file first.
void add(const QString& path);

void clear();

/// The folder of the last file whose folder is there, where an open dialog best begins; empty
/// without one.
QString lastFolder();

}  // namespace RecentDocuments
