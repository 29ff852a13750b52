#include "tests/desktop/support/SettingsPortal.h"

namespace {

const QString clientName = QStringLiteral("client of the settings portal");

}  // namespace

SettingsPortal::SettingsPortal(uint colorScheme) : colorScheme_(colorScheme) {
    server_.setAnonymousAuthenticationAllowed(true);
    connect(&server_, &QDBusServer::newConnection, this, [this](QDBusConnection connection) {
        connection.registerObject(
            QStringLiteral("/org/freedesktop/portal/desktop"), this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    });
}

SettingsPortal::~SettingsPortal() {
    QDBusConnection::disconnectFromPeer(clientName);
}

QDBusConnection SettingsPortal::connection() {
    return QDBusConnection::connectToPeer(server_.address(), clientName);
}

void SettingsPortal::set(const QString& group, const QString& key, uint value) {
    colorScheme_ = value;
    Q_EMIT SettingChanged(group, key, QDBusVariant(value));
}

QDBusVariant SettingsPortal::Read(const QString& group, const QString& key) {
    const bool isKnown = group == QStringLiteral("org.freedesktop.appearance") &&
                         key == QStringLiteral("color-scheme");
    // The first version of the portal wraps the value twice.
    return isKnown ? QDBusVariant(QVariant::fromValue(QDBusVariant(colorScheme_)))
                   : QDBusVariant(QString());
}
