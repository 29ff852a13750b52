#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QStringList>

/// A message bus for one test, without services; ends with this.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// Whether it runs: not where the program dbus-daemon is not installed.
    bool isRunning() const { return !address_.isEmpty(); }

    /// Where other processes find it.
    const QString& address() const noexcept { return address_; }

    /// A new connection of its own, closed with this at the latest.
    QDBusConnection connect();

    /// Closes a connection, as the end of a process does.
    void disconnect(const QDBusConnection& connection);

private:
    QProcess daemon_;
    QString address_;
    QStringList names_;
};
