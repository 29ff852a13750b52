#include "app/desktop/session/SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>

#include "app/desktop/files/FilePath.h"

namespace {

/// How often another program may end just when it is asked, before this gives up.
constexpr int mostAttempts = 5;

constexpr QLatin1String service(SingleInstance::serviceName);
constexpr QLatin1String object(SingleInstance::objectPath);

/// How much longer to wait than the deadline says, so that what is begun before it is seen to end.
constexpr std::chrono::milliseconds margin{500};

QDBusMessage callFor(const QStringList& paths, const LaunchToken& token,
                     std::chrono::steady_clock::time_point deadline) {
    const auto method = paths.isEmpty() ? QLatin1String("Activate") : QLatin1String("Open");
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, object, QLatin1String(ApplicationService::interfaceName), method);
    // Nobody is to be started for this: this process is there.
    call.setAutoStartService(false);
    if (!paths.isEmpty()) {
        QStringList uris;
        for (const QString& path : paths) {
            uris += QString::fromLatin1(FilePath::toUri(FilePath::absolute(path)));
        }
        call << uris;
    }
    call << ApplicationService::platformData(token, deadline);
    return call;
}

}  // namespace

SingleInstance::SingleInstance(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), bus_(bus) {
    connect(&service_, &ApplicationService::activated, this,
            [this](const LaunchToken& token) { Q_EMIT handedOver({}, token); });
    connect(&service_, &ApplicationService::opened, this, &SingleInstance::handedOver);
}

SingleInstance::~SingleInstance() {
    stop();
}

SingleInstance::Role SingleInstance::start(const QStringList& paths, const LaunchToken& token,
                                           std::chrono::milliseconds longest) {
    // The object before the name: who sees the name may call at once.
    if (!bus_.isConnected() ||
        !bus_.registerObject(object, &service_, QDBusConnection::ExportAllSlots)) {
        return Role::alone;
    }
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const auto reply = bus_.interface()->registerService(service);
        if (!reply.isValid()) {
            break;
        }
        if (reply.value() == QDBusConnectionInterface::ServiceRegistered) {
            return Role::first;
        }
        const Answer answer = handOver(paths, token, longest);
        if (answer != Answer::refused) {
            bus_.unregisterObject(object);
            return answer == Answer::taken ? Role::handedOver : Role::alone;
        }
    }
    bus_.unregisterObject(object);
    return Role::alone;
}

SingleInstance::Answer SingleInstance::handOver(const QStringList& paths, const LaunchToken& token,
                                                std::chrono::milliseconds longest) {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    const QDBusMessage reply = bus_.call(callFor(paths, token, deadline), QDBus::Block,
                                         static_cast<int>((longest + margin).count()));
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return Answer::taken;
    }
    const bool isThere = bus_.interface()->isServiceRegistered(service);
    const QDBusError::ErrorType error = QDBusError(reply).type();
    // The other one has ended, or another has come after it.
    return !isThere || error == QDBusError::UnknownObject || error == QDBusError::ServiceUnknown
               ? Answer::refused
               : Answer::none;
}

void SingleInstance::stop() {
    service_.stop();
    if (bus_.isConnected()) {
        bus_.unregisterService(service);
    }
}
