#include "app/desktop/session/ColorScheme.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String interface("org.freedesktop.portal.Settings");
constexpr QLatin1String settingGroup("org.freedesktop.appearance");
constexpr QLatin1String settingKey("color-scheme");

/// The portal's first version wraps the answer twice.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

ColorScheme::Preference preferenceIn(const QVariant& value) {
    switch (unwrapped(value).toUInt()) {
        case 1:
            return ColorScheme::Preference::dark;
        case 2:
            return ColorScheme::Preference::light;
        default:
            return ColorScheme::Preference::none;
    }
}

}  // namespace

ColorScheme::ColorScheme(const QDBusConnection& bus, QObject* parent) : QObject(parent), bus_(bus) {
    if (!bus_.isConnected()) {
        return;
    }
    // A type that nobody has registered is unknown to `connect`, which refuses the slot then.
    qDBusRegisterMetaType<QDBusVariant>();
    if (!bus_.connect(service, path, interface, QLatin1String("SettingChanged"), this,
                      SLOT(handleSettingChange(QString, QString, QDBusVariant)))) {
        qWarning("Cannot watch the desktop's color scheme; changes of it will go unnoticed.");
    }
    ask();
}

void ColorScheme::ask() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, interface, QLatin1String("Read"));
    call << QString(settingGroup) << QString(settingKey);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &ColorScheme::handleAnswer);
}

void ColorScheme::handleAnswer(QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<QDBusVariant> answer = *call;
    if (answer.isValid()) {
        setPreference(preferenceIn(QVariant::fromValue(answer.value())));
    }
    call->deleteLater();
}

void ColorScheme::handleSettingChange(const QString& group, const QString& key,
                                      const QDBusVariant& value) {
    if (group == settingGroup && key == settingKey) {
        setPreference(preferenceIn(value.variant()));
    }
}

void ColorScheme::setPreference(Preference preference) {
    if (preference_ != preference) {
        preference_ = preference;
        Q_EMIT preferenceChanged();
    }
}
