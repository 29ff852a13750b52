#include "app/desktop/session/ApplicationService.h"

#include <QDBusError>
#include <QUrl>
#include <optional>

#include "app/desktop/files/FilePath.h"

namespace {

// The names of the Desktop Entry Specification.
constexpr QLatin1String activationKey("activation-token");
constexpr QLatin1String startupKey("desktop-startup-id");

// Ours. The clock is the same for all processes: it counts from the start of the system.
constexpr QLatin1String deadlineKey("com.ventrel.Tabulet.deadline");

using Clock = std::chrono::steady_clock;

qint64 millisecondsAt(Clock::time_point time) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count();
}

bool isTooLate(const QVariantMap& platformData) {
    const QVariant deadline = platformData.value(deadlineKey);
    return deadline.isValid() && deadline.toLongLong() < millisecondsAt(Clock::now());
}

LaunchToken tokenIn(const QVariantMap& platformData) {
    return {platformData.value(activationKey).toString().toUtf8(),
            platformData.value(startupKey).toString().toUtf8()};
}

}  // namespace

QVariantMap ApplicationService::platformData(const LaunchToken& token, Clock::time_point deadline) {
    QVariantMap data{{deadlineKey, millisecondsAt(deadline)}};
    if (!token.activationToken.isEmpty()) {
        data.insert(activationKey, QString::fromUtf8(token.activationToken));
    }
    if (!token.startupId.isEmpty()) {
        data.insert(startupKey, QString::fromUtf8(token.startupId));
    }
    return data;
}

void ApplicationService::Activate(const QVariantMap& platformData) {
    if (!refuses(platformData)) {
        Q_EMIT activated(tokenIn(platformData));
    }
}

void ApplicationService::Open(const QStringList& uris, const QVariantMap& platformData) {
    if (refuses(platformData)) {
        return;
    }
    QStringList paths;
    for (const QString& uri : uris) {
        if (const std::optional<QString> path =
                FilePath::fromUri(QUrl::fromEncoded(uri.toUtf8()))) {
            paths += *path;
        }
    }
    if (paths.size() < uris.size()) {
        sendErrorReply(QDBusError::InvalidArgs,
                       QStringLiteral("Only files of this machine can be opened."));
    }
    if (!paths.isEmpty()) {
        Q_EMIT opened(paths, tokenIn(platformData));
    }
}

void ApplicationService::ActivateAction(const QString& name, const QVariantList& /*parameters*/,
                                        const QVariantMap& platformData) {
    if (!refuses(platformData)) {
        sendErrorReply(QDBusError::InvalidArgs,
                       QStringLiteral("There is no action “%1”.").arg(name));
    }
}

bool ApplicationService::refuses(const QVariantMap& platformData) const {
    if (isStopped_) {
        sendErrorReply(QDBusError::UnknownObject, QStringLiteral("The program is ending."));
        return true;
    }
    if (isTooLate(platformData)) {
        sendErrorReply(QDBusError::Timeout, QStringLiteral("Nobody waits for this any more."));
        return true;
    }
    return false;
}
