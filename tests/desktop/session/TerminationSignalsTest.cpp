#include <unistd.h>

#include <QSignalSpy>
#include <QTest>
#include <csignal>

#include "app/desktop/session/TerminationSignals.h"
#include "tests/support/TestProgram.h"

class TerminationSignalsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tellsOfEachSignalThatAsksToEnd_data() {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void tellsOfEachSignalThatAsksToEnd() {
        QFETCH(const int, signal);
        const TerminationSignals signals;
        QSignalSpy received(&signals, &TerminationSignals::received);
        QCOMPARE(::kill(::getpid(), signal), 0);
        QTRY_COMPARE(received.count(), 1);
    }
};

namespace {

int runBlocked(int argc, char** argv) {
    // Before the watchdog of the tests starts its thread.
    TerminationSignals::block();
    return TestProgram::runWithoutWindows<TerminationSignalsTest>(argc, argv);
}

const RegisteredTest<TerminationSignalsTest, runBlocked> registered;

}  // namespace

#include "TerminationSignalsTest.moc"
