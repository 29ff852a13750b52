#pragma once

#include <QDBusConnection>
#include <QDBusServer>
#include <QDBusVariant>
#include <QObject>
#include <QString>

/// What a desktop's settings portal answers, on a connection of its own without a bus.
class SettingsPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit SettingsPortal(uint colorScheme);
    ~SettingsPortal() override;

    /// A connection of a client. Closed with the portal.
    QDBusConnection connection();

    /// Changes a setting and tells everybody.
    void set(const QString& group, const QString& key, uint value);

public Q_SLOTS:
    // The names are those of the interface.
    QDBusVariant Read(const QString& group, const QString& key);  // NOLINT

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key,  // NOLINT
                        const QDBusVariant& value);

private:
    QDBusServer server_;
    uint colorScheme_;
};
