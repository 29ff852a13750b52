#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusMessage>
#include <QDir>
#include <QLocalServer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/session/SingleInstance.h"
#include "tests/desktop/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

using Role = SingleInstance::Role;
using namespace std::chrono_literals;

namespace {

/// Another process: starts on a thread, so that the first can answer meanwhile.
class OtherStart {
public:
    OtherStart(const QDBusConnection& bus, QStringList paths, LaunchToken token = {})
        : thread_([this, bus, paths = std::move(paths), token = std::move(token)] {
              SingleInstance instance(bus);
              role_ = instance.start(paths, token);
              isDone_ = true;
          }) {}
    ~OtherStart() { thread_.join(); }
    OtherStart(const OtherStart&) = delete;
    OtherStart& operator=(const OtherStart&) = delete;

    bool isDone() const { return isDone_; }
    Role role() const { return role_; }

private:
    Role role_ = Role::alone;
    std::atomic<bool> isDone_ = false;
    std::thread thread_;
};

/// While this lives, no bus is named, and the user's folder for sockets is an empty one.
class BusVariables {
public:
    BusVariables() {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
    }
    ~BusVariables() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address_);
        qputenv("XDG_RUNTIME_DIR", runtimeFolder_);
    }
    BusVariables(const BusVariables&) = delete;
    BusVariables& operator=(const BusVariables&) = delete;

    const QTemporaryDir& folder() const { return folder_; }

private:
    QByteArray address_ = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    QByteArray runtimeFolder_ = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir folder_;
};

}  // namespace

/// Has the name, and does something of its own when it is asked to show itself.
class OtherOwner : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    OtherOwner(QDBusConnection bus, std::function<void(const OtherOwner&)> answer)
        : answer_(std::move(answer)) {
        bus.registerObject(QLatin1String(SingleInstance::objectPath), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QLatin1String(SingleInstance::serviceName));
    }

    void refuse(QDBusError::ErrorType error) const {
        sendErrorReply(error, QStringLiteral("refused"));
    }

    void stayMute() const { setDelayedReply(true); }

public Q_SLOTS:
    void Activate(const QVariantMap& /*platformData*/) const { answer_(*this); }  // NOLINT

private:
    std::function<void(const OtherOwner&)> answer_;
};

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        bus_ = std::make_unique<PrivateBus>();
        if (!bus_->isRunning()) {
            QSKIP("The program dbus-daemon is not installed, so there is no bus to test with.");
        }
    }

    void cleanup() { bus_.reset(); }

    void runsAloneWithoutBus() {
        SingleInstance instance{QDBusConnection(QStringLiteral("no such connection"))};
        QCOMPARE(instance.start({}, {}), Role::alone);
    }

    void runsAloneOnABusThatHasEnded() {
        const QDBusConnection connection = bus_->connect();
        QVERIFY(connection.isConnected());
        bus_.reset();
        SingleInstance instance(connection);
        QCOMPARE(instance.start({}, {}), Role::alone);
    }

    void isFirstWhereNobodyIs() {
        const QDBusConnection connection = bus_->connect();
        SingleInstance instance(connection);
        QCOMPARE(instance.start({}, {}), Role::first);
        QVERIFY(connection.interface()->isServiceRegistered(QStringLiteral("com.ventrel.Tabulet")));
    }

    void startsNoBus() {
        const BusVariables variables;
        SingleInstance::useBusOnlyIfThere();
        QCOMPARE(qgetenv("DBUS_SESSION_BUS_ADDRESS"), QByteArray("disabled:"));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("XDG_RUNTIME_DIR");
        SingleInstance::useBusOnlyIfThere();
        QCOMPARE(qgetenv("DBUS_SESSION_BUS_ADDRESS"), QByteArray("disabled:"));
    }

    void usesTheBusOfTheUser() {
        const BusVariables variables;
        QLocalServer bus;
        QVERIFY(bus.listen(variables.folder().filePath(QStringLiteral("bus"))));
        SingleInstance::useBusOnlyIfThere();
        QVERIFY(!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"));
    }

    void usesTheBusThatIsNamed() {
        const BusVariables variables;
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/elsewhere");
        SingleInstance::useBusOnlyIfThere();
        QCOMPARE(qgetenv("DBUS_SESSION_BUS_ADDRESS"), QByteArray("unix:path=/elsewhere"));
    }

    void handsFilesOver() {
        SingleInstance first(bus_->connect());
        QCOMPARE(first.start({}, {}), Role::first);
        QSignalSpy spy(&first, &SingleInstance::handedOver);
        const QString odd = FilePath::decoded("/a b/%41#?;&\n\xE9\xC3\xA9.plist");
        const OtherStart second(bus_->connect(), {QStringLiteral("x/../a.plist"), odd},
                                {"token", "startup"});
        QTRY_VERIFY(second.isDone());
        QCOMPARE(second.role(), Role::handedOver);
        QCOMPARE(spy.count(), 1);
        const QString relative = QDir::currentPath() + QStringLiteral("/a.plist");
        QCOMPARE(spy.first().first().toStringList(), (QStringList{relative, odd}));
        const auto token = spy.first().last().value<LaunchToken>();
        QCOMPARE(token.activationToken, QByteArray("token"));
        QCOMPARE(token.startupId, QByteArray("startup"));
    }

    void handsOverThatItWasStarted() {
        SingleInstance first(bus_->connect());
        QCOMPARE(first.start({}, {}), Role::first);
        QSignalSpy spy(&first, &SingleInstance::handedOver);
        const OtherStart second(bus_->connect(), {});
        QTRY_VERIFY(second.isDone());
        QCOMPARE(second.role(), Role::handedOver);
        QCOMPARE(spy.count(), 1);
        QVERIFY(spy.first().first().toStringList().isEmpty());
        QVERIFY(spy.first().last().value<LaunchToken>().activationToken.isEmpty());
    }

    void runsAloneBesideOneThatHangs() {
        SingleInstance first(bus_->connect());
        QCOMPARE(first.start({}, {}), Role::first);
        // On the thread of the first, which thus cannot answer.
        SingleInstance second(bus_->connect());
        QCOMPARE(second.start({}, {}, 100ms), Role::alone);
        // Nor does the first do later what the second has done itself.
        QSignalSpy later(&first, &SingleInstance::handedOver);
        const OtherStart third(bus_->connect(), {QStringLiteral("/a")});
        QTRY_VERIFY(third.isDone());
        QCOMPARE(third.role(), Role::handedOver);
        QCOMPARE(later.count(), 1);
        QCOMPARE(later.first().first().toStringList(), QStringList(QStringLiteral("/a")));
    }

    void runsAloneBesideOneThatCannot() {
        const OtherOwner owner(bus_->connect(),
                               [](const OtherOwner& one) { one.refuse(QDBusError::AccessDenied); });
        const OtherStart second(bus_->connect(), {});
        QTRY_VERIFY(second.isDone());
        QCOMPARE(second.role(), Role::alone);
    }

    void comesAfterOneThatHasEnded() {
        SingleInstance first(bus_->connect());
        QCOMPARE(first.start({}, {}), Role::first);
        first.stop();
        SingleInstance second(bus_->connect());
        QCOMPARE(second.start({}, {}), Role::first);
    }

    void comesAfterOneThatEndsMeanwhile() {
        QDBusConnection connection = bus_->connect();
        const OtherOwner owner(connection, [&connection](const OtherOwner& one) {
            connection.unregisterService(QLatin1String(SingleInstance::serviceName));
            one.refuse(QDBusError::UnknownObject);
        });
        const OtherStart second(bus_->connect(), {});
        QTRY_VERIFY(second.isDone());
        QCOMPARE(second.role(), Role::first);
    }

    void comesAfterOneThatCrashesMeanwhile() {
        std::optional<QDBusConnection> connection = bus_->connect();
        const OtherOwner owner(*connection, [this, &connection](const OtherOwner& one) {
            one.stayMute();
            // Not before the call has let go of the connection.
            QTimer::singleShot(0, this, [this, &connection] {
                bus_->disconnect(*connection);
                connection.reset();
            });
        });
        const OtherStart second(bus_->connect(), {});
        QTRY_VERIFY(second.isDone());
        QCOMPARE(second.role(), Role::first);
    }

    void refusesCallsWhenItEnds() {
        QDBusConnection connection = bus_->connect();
        SingleInstance first(connection);
        QCOMPARE(first.start({}, {}), Role::first);
        const QSignalSpy spy(&first, &SingleInstance::handedOver);
        first.stop();
        const QDBusMessage reply = call(connection.baseService(), QStringLiteral("Activate"), {});
        QCOMPARE(QDBusError(reply).type(), QDBusError::UnknownObject);
        QCOMPARE(spy.count(), 0);
    }

    void takesFilesOfThisMachineOnly() {
        SingleInstance first(bus_->connect());
        QCOMPARE(first.start({}, {}), Role::first);
        QSignalSpy spy(&first, &SingleInstance::handedOver);
        const QStringList uris{QStringLiteral("https://example.org/a.plist"),
                               QStringLiteral("file:///b.plist")};
        const QDBusMessage reply = call(QLatin1String(SingleInstance::serviceName),
                                        QStringLiteral("Open"), {QVariant(uris)});
        QCOMPARE(QDBusError(reply).type(), QDBusError::InvalidArgs);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.first().first().toStringList(), QStringList(QStringLiteral("/b.plist")));
    }

    void makesNewWindows() {
        SingleInstance first(bus_->connect());
        QCOMPARE(first.start({}, {}), Role::first);
        QSignalSpy spy(&first, &SingleInstance::newWindowChosen);
        const QDBusMessage reply =
            call(QLatin1String(SingleInstance::serviceName), QStringLiteral("ActivateAction"),
                 {QStringLiteral("new-window"), QVariantList()},
                 {{QStringLiteral("desktop-startup-id"), QStringLiteral("id")}});
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.first().first().value<LaunchToken>().startupId, QByteArray("id"));
    }

    void hasNoOtherActions() {
        SingleInstance first(bus_->connect());
        QCOMPARE(first.start({}, {}), Role::first);
        const QDBusMessage reply =
            call(QLatin1String(SingleInstance::serviceName), QStringLiteral("ActivateAction"),
                 {QStringLiteral("fly"), QVariantList()});
        QCOMPARE(QDBusError(reply).type(), QDBusError::InvalidArgs);
        QCOMPARE(reply.errorMessage(), QStringLiteral("There is no action “fly”."));
    }

private:
    /// What the object at the name answers to a call from another connection.
    QDBusMessage call(const QString& name, const QString& method, const QVariantList& arguments,
                      const QVariantMap& platformData = {}) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(name, QLatin1String(SingleInstance::objectPath),
                                           QStringLiteral("org.freedesktop.Application"), method);
        message.setArguments(arguments + QVariantList{platformData});
        const QDBusPendingCall pending = bus_->connect().asyncCall(message);
        [&pending] { QTRY_VERIFY(pending.isFinished()); }();
        return pending.reply();
    }

    std::unique_ptr<PrivateBus> bus_;
};

const RegisteredTest<SingleInstanceTest> registered;
#include "SingleInstanceTest.moc"
