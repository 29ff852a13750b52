#pragma once

#include <QProcess>
#include <QString>

class PrivateBus;

/// A desktop's settings portal on a bus, in another process: the types that it registers for its
/// messages are unknown in this one, as on a real desktop. Ends with this.
/// The other process is the test program once more.
class SettingsPortal {
public:
    /// Returns when the portal can be asked.
    SettingsPortal(const PrivateBus& bus, uint colorScheme);
    ~SettingsPortal();
    SettingsPortal(const SettingsPortal&) = delete;
    SettingsPortal& operator=(const SettingsPortal&) = delete;

    /// Changes a setting and tells everybody.
    void set(const QString& group, const QString& key, uint value);

private:
    QProcess process_;
};
