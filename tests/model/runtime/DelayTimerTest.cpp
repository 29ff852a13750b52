#include <QElapsedTimer>
#include <QStringList>
#include <QTest>
#include <chrono>

#include "app/model/runtime/DelayTimer.h"
#include "tests/support/TestProgram.h"

using std::chrono::milliseconds;

/// Callbacks of other timers tell when the time of a stopped one would have come.
class DelayTimerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void callsBackOnceAndNotEarly() {
        constexpr milliseconds delay(20);
        DelayTimer timer;
        int calls = 0;
        QElapsedTimer clock;
        clock.start();
        timer.start(delay, [&calls] { ++calls; });
        QCOMPARE(calls, 0);
        QVERIFY(timer.isRunning());
        QTRY_COMPARE(calls, 1);
        QVERIFY(!timer.isRunning());
        QVERIFY(milliseconds(clock.elapsed()) >= delay);
        timer.stop();
    }

    void callsBackForTheLastStartAlone() {
        DelayTimer timer;
        QStringList called;
        timer.start(milliseconds(1), [&called] { called += QStringLiteral("first"); });
        timer.start(milliseconds(2), [&called] { called += QStringLiteral("second"); });
        QTRY_COMPARE(called, QStringList(QStringLiteral("second")));
    }

    void canBeStopped() {
        DelayTimer timer;
        DelayTimer later;
        QStringList called;
        timer.start(milliseconds(1), [&called] { called += QStringLiteral("stopped"); });
        timer.stop();
        later.start(milliseconds(2), [&called] { called += QStringLiteral("later"); });
        QTRY_COMPARE(called, QStringList(QStringLiteral("later")));
    }

    void canBeStartedAgainByItsCallback() {
        DelayTimer timer;
        int calls = 0;
        timer.start(milliseconds(0), [&] {
            ++calls;
            timer.start(milliseconds(0), [&calls] { ++calls; });
        });
        QTRY_COMPARE(calls, 2);
    }
};

const RegisteredTest<DelayTimerTest> registered;
#include "DelayTimerTest.moc"
