#include <QTest>

#include "app/desktop/session/LaunchToken.h"
#include "tests/support/TestProgram.h"

class LaunchTokenTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        qunsetenv("XDG_ACTIVATION_TOKEN");
        qunsetenv("DESKTOP_STARTUP_ID");
    }

    void comesFromTheLauncher() {
        QVERIFY(LaunchToken::ofThisProcess().activationToken.isEmpty());
        qputenv("XDG_ACTIVATION_TOKEN", "a");
        qputenv("DESKTOP_STARTUP_ID", "b");
        QCOMPARE(LaunchToken::ofThisProcess().activationToken, QByteArray("a"));
        QCOMPARE(LaunchToken::ofThisProcess().startupId, QByteArray("b"));
    }

    void servesTheNextWindow() {
        LaunchToken{}.useForNextWindow();
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        LaunchToken{{}, "b"}.useForNextWindow();
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("b"));
        LaunchToken{"a", "b"}.useForNextWindow();
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("a"));
    }
};

const RegisteredTest<LaunchTokenTest> registered;
#include "LaunchTokenTest.moc"
