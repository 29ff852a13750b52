#include <QElapsedTimer>
#include <QStringList>
#include <QTest>
#include <chrono>

#include "app/model/runtime/TimerAlarm.h"

using std::chrono::milliseconds;

/// Rings of other alarms tell when the time of a cancelled one would have come.
class TimerAlarmTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ringsOnceAndNotEarly() {
        constexpr milliseconds delay(20);
        TimerAlarm alarm;
        int rings = 0;
        QElapsedTimer timer;
        timer.start();
        alarm.set(delay, [&rings] { ++rings; });
        QCOMPARE(rings, 0);
        QTRY_COMPARE(rings, 1);
        QVERIFY(milliseconds(timer.elapsed()) >= delay);
        alarm.cancel();
    }

    void ringsForTheLastCallAlone() {
        TimerAlarm alarm;
        QStringList rung;
        alarm.set(milliseconds(1), [&rung] { rung += QStringLiteral("first"); });
        alarm.set(milliseconds(2), [&rung] { rung += QStringLiteral("second"); });
        QTRY_COMPARE(rung, QStringList(QStringLiteral("second")));
    }

    void canBeCancelled() {
        TimerAlarm alarm;
        TimerAlarm later;
        QStringList rung;
        alarm.set(milliseconds(1), [&rung] { rung += QStringLiteral("cancelled"); });
        alarm.cancel();
        later.set(milliseconds(2), [&rung] { rung += QStringLiteral("later"); });
        QTRY_COMPARE(rung, QStringList(QStringLiteral("later")));
    }

    void canBeSetAgainWhileItRings() {
        TimerAlarm alarm;
        int rings = 0;
        alarm.set(milliseconds(0), [&] {
            ++rings;
            alarm.set(milliseconds(0), [&rings] { ++rings; });
        });
        QTRY_COMPARE(rings, 2);
    }
};

QTEST_GUILESS_MAIN(TimerAlarmTest)
#include "TimerAlarmTest.moc"
