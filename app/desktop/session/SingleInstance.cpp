#include "app/desktop/session/SingleInstance.h"

#include <sys/stat.h>

#include <QByteArray>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusMessage>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>
#include <optional>

#include "app/desktop/files/FilePath.h"

/// What the program does for others on the message bus: the interface org.freedesktop.Application
/// of the Desktop Entry Specification ("D-Bus Activation"). Belongs to the main thread.
class ApplicationService : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using QObject::QObject;

    /// The interface, for callers.
    static constexpr auto interfaceName = "org.freedesktop.Application";

    /// A call's platform data. A call that is only seen after the deadline is not carried out: who
    /// made it does not wait any more, and has found another way.
    static QVariantMap platformData(const LaunchToken& token,
                                    std::chrono::steady_clock::time_point deadline);

    /// From now on calls fail as if there were no such object.
    void stop() noexcept { isStopped_ = true; }

public Q_SLOTS:
    // The names are those of the interface.

    /// Shows the program, as when it is started without files.
    void Activate(const QVariantMap& platformData);  // NOLINT

    /// Opens the files at these addresses.
    void Open(const QStringList& uris, const QVariantMap& platformData);  // NOLINT

    /// Does what the desktop entry offers as an action: "new-window".
    void ActivateAction(const QString& name, const QVariantList& parameters,  // NOLINT
                        const QVariantMap& platformData);

Q_SIGNALS:
    void activated(const LaunchToken& token);
    void opened(const QStringList& paths, const LaunchToken& token);
    void newWindowChosen(const LaunchToken& token);

private:
    /// Answers the call with an error after `stop` and after its deadline.
    bool refuses(const QVariantMap& platformData) const;

    bool isStopped_ = false;
};

namespace {

// The names of the Desktop Entry Specification.
constexpr QLatin1String activationKey("activation-token");
constexpr QLatin1String startupKey("desktop-startup-id");

// That of the desktop entry.
constexpr QLatin1String newWindowAction("new-window");

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

/// How often another program may end just when it is asked, before this gives up.
constexpr int attemptLimit = 5;

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

constexpr auto addressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// Where the bus of a user is when nothing else says it (D-Bus Specification, "Well-known Message
/// Bus Instances").
bool hasUserBus() {
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    struct stat status {};
    return !folder.isEmpty() && ::stat((folder + "/bus").constData(), &status) == 0 &&
           S_ISSOCK(status.st_mode);
}

}  // namespace

// --- What others may call ---

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
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("Only local files can be opened."));
    }
    if (!paths.isEmpty()) {
        Q_EMIT opened(paths, tokenIn(platformData));
    }
}

void ApplicationService::ActivateAction(const QString& name, const QVariantList& /*parameters*/,
                                        const QVariantMap& platformData) {
    if (refuses(platformData)) {
        return;
    }
    if (name == newWindowAction) {
        Q_EMIT newWindowChosen(tokenIn(platformData));
    } else {
        sendErrorReply(QDBusError::InvalidArgs,
                       QStringLiteral("There is no action “%1”.").arg(name));
    }
}

bool ApplicationService::refuses(const QVariantMap& platformData) const {
    if (isStopped_) {
        sendErrorReply(QDBusError::UnknownObject, QStringLiteral("The program is quitting."));
        return true;
    }
    if (isTooLate(platformData)) {
        sendErrorReply(QDBusError::Timeout, QStringLiteral("The deadline of the call has passed."));
        return true;
    }
    return false;
}

// --- The one program ---

void SingleInstance::useBusOnlyIfThere() {
    if (qEnvironmentVariableIsEmpty(addressVariable) && !hasUserBus()) {
        qputenv(addressVariable, "disabled:");
    }
}

SingleInstance::SingleInstance(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), bus_(bus), service_(std::make_unique<ApplicationService>()) {
    connect(service_.get(), &ApplicationService::activated, this,
            [this](const LaunchToken& token) { Q_EMIT handedOver({}, token); });
    connect(service_.get(), &ApplicationService::opened, this, &SingleInstance::handedOver);
    connect(service_.get(), &ApplicationService::newWindowChosen, this,
            &SingleInstance::newWindowChosen);
}

SingleInstance::~SingleInstance() {
    stop();
}

SingleInstance::Role SingleInstance::start(const QStringList& paths, const LaunchToken& token,
                                           std::chrono::milliseconds timeout) {
    // The object before the name: who sees the name may call at once.
    if (!bus_.isConnected() ||
        !bus_.registerObject(object, service_.get(), QDBusConnection::ExportAllSlots)) {
        return Role::alone;
    }
    for (int attempt = 0; attempt < attemptLimit; ++attempt) {
        const auto reply = bus_.interface()->registerService(service);
        if (!reply.isValid()) {
            break;
        }
        if (reply.value() == QDBusConnectionInterface::ServiceRegistered) {
            return Role::first;
        }
        const Answer answer = handOver(paths, token, timeout);
        if (answer != Answer::refused) {
            bus_.unregisterObject(object);
            return answer == Answer::taken ? Role::handedOver : Role::alone;
        }
    }
    bus_.unregisterObject(object);
    return Role::alone;
}

SingleInstance::Answer SingleInstance::handOver(const QStringList& paths, const LaunchToken& token,
                                                std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    const QDBusMessage reply = bus_.call(callFor(paths, token, deadline), QDBus::Block,
                                         static_cast<int>((timeout + margin).count()));
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
    service_->stop();
    if (bus_.isConnected()) {
        bus_.unregisterService(service);
    }
}

#include "SingleInstance.moc"
