#include "tests/desktop/support/PrivateBus.h"

#include <QUuid>

PrivateBus::PrivateBus() {
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    if (daemon_.waitForStarted() && daemon_.waitForReadyRead()) {
        address_ = QString::fromLatin1(daemon_.readLine()).trimmed();
    }
}

PrivateBus::~PrivateBus() {
    for (const QString& name : names_) {
        QDBusConnection::disconnectFromBus(name);
    }
    daemon_.kill();
    daemon_.waitForFinished();
}

QDBusConnection PrivateBus::connect() {
    names_ += QUuid::createUuid().toString();
    return QDBusConnection::connectToBus(address_, names_.last());
}

void PrivateBus::disconnect(const QDBusConnection& connection) {
    names_.removeAll(connection.name());
    QDBusConnection::disconnectFromBus(connection.name());
}
