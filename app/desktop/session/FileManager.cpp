#include "app/desktop/session/FileManager.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <utility>

#include "app/desktop/files/FilePath.h"

namespace {

constexpr QLatin1String interface("org.freedesktop.FileManager1");
constexpr QLatin1String path("/org/freedesktop/FileManager1");

}  // namespace

void FileManager::show(const QString& file, QObject& receiver, std::function<void()> failed,
                       QDBusConnection bus) {
    if (!bus.isConnected()) {
        QMetaObject::invokeMethod(&receiver, std::move(failed), Qt::QueuedConnection);
        return;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(interface, path, interface, QStringLiteral("ShowItems"));
    call << QStringList{QString::fromLatin1(FilePath::toUri(file))} << QString();
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), &receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &receiver,
                     [failed = std::move(failed)](QDBusPendingCallWatcher* answered) {
                         answered->deleteLater();
                         if (answered->isError()) {
                             failed();
                         }
                     });
}
