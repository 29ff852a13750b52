#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

#include "app/desktop/session/SessionBus.h"

class SessionBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
    }

    void startsNoBus() {
        SessionBus::useOnlyIfThere();
        QCOMPARE(qgetenv("DBUS_SESSION_BUS_ADDRESS"), QByteArray("disabled:"));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("XDG_RUNTIME_DIR");
        SessionBus::useOnlyIfThere();
        QCOMPARE(qgetenv("DBUS_SESSION_BUS_ADDRESS"), QByteArray("disabled:"));
    }

    void usesTheBusOfTheUser() {
        QLocalServer bus;
        QVERIFY(bus.listen(folder_.filePath(QStringLiteral("bus"))));
        SessionBus::useOnlyIfThere();
        QVERIFY(!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"));
    }

    void usesTheBusThatIsNamed() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/elsewhere");
        SessionBus::useOnlyIfThere();
        QCOMPARE(qgetenv("DBUS_SESSION_BUS_ADDRESS"), QByteArray("unix:path=/elsewhere"));
    }

private:
    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(SessionBusTest)
#include "SessionBusTest.moc"
