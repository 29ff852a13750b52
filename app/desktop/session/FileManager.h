#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>

/// The file manager of the desktop.
namespace FileManager {

/// Asks it to show the folder of the file at `path`, with the file selected (D-Bus interface
/// org.freedesktop.FileManager1). Calls `failed` if there is none that does so, unless `receiver`
/// is gone by then.
void show(const QString& path, QObject& receiver, std::function<void()> failed,
          QDBusConnection bus = QDBusConnection::sessionBus());

}  // namespace FileManager
