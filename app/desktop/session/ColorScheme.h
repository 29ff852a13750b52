#pragma once

#include <QDBusConnection>
#include <QObject>
#include <cstdint>

class QDBusPendingCallWatcher;
class QDBusVariant;

/// Whether the user wants dark windows, as the desktop's settings portal tells it, now and whenever
/// that changes. Without a session bus or a portal there is no preference. Belongs to the main
/// thread.
///
/// The name and the values of the setting are those of the freedesktop.org Settings portal.
class ColorScheme : public QObject {
    Q_OBJECT

public:
    enum class Preference : std::uint8_t { none, dark, light };
    Q_ENUM(Preference)

    /// Asks at once; the answer comes from the event loop.
    explicit ColorScheme(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                         QObject* parent = nullptr);

    Preference preference() const noexcept { return preference_; }

Q_SIGNALS:
    void preferenceChanged();

private Q_SLOTS:
    void handleAnswer(QDBusPendingCallWatcher* call);
    void handleSettingChange(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask();
    void setPreference(Preference preference);

    QDBusConnection bus_;
    Preference preference_ = Preference::none;
};
