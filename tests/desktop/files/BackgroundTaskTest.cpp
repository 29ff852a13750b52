#include <QObject>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>
#include <chrono>

#include "app/desktop/files/BackgroundTask.h"
#include "tests/support/TestProgram.h"

namespace {

/// Long enough for any machine, and never waited for when all is well.
constexpr int patience = std::chrono::milliseconds(std::chrono::seconds(30)).count();

}  // namespace

class BackgroundTaskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The toolkit paints with the help of its own threads: with all of them busy, the window would
    /// stand still until a file is written.
    void leavesTheThreadsOfTheToolkitAlone() {
        constexpr int tasks = 4;
        QSemaphore begun;
        QSemaphore gate;
        int sum = 0;
        for (int i = 1; i <= tasks; ++i) {
            BackgroundTask::run(
                *this,
                [i, &begun, &gate] {
                    begun.release();
                    gate.acquire();
                    return i;
                },
                [&sum](int result) { sum += result; });
        }
        const bool haveAllBegun = begun.tryAcquire(tasks, patience);
        const int busy = QThreadPool::globalInstance()->activeThreadCount();
        gate.release(tasks);
        QTRY_COMPARE(sum, 1 + 2 + 3 + 4);
        QVERIFY(haveAllBegun);
        QCOMPARE(busy, 0);
    }

    void dropsTheResultForAReceiverThatHasGone() {
        QSemaphore gate;
        bool isDone = false;
        {
            QObject receiver;
            BackgroundTask::run(
                receiver,
                [&gate] {
                    gate.acquire();
                    return 1;
                },
                [&isDone](int) { isDone = true; });
        }
        gate.release();
        QVERIFY(BackgroundTask::threads().waitForDone(patience));
        QCoreApplication::processEvents();
        QVERIFY(!isDone);
    }
};

const RegisteredTest<BackgroundTaskTest> registered;
#include "BackgroundTaskTest.moc"
