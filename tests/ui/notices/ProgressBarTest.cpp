#include <QTest>
#include <memory>

#include "app/desktop/files/ProgressReporter.h"
#include "app/ui/notices/ProgressBar.h"
#include "tests/ui/support/UiTest.h"

class ProgressBarTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsHowFarATaskHasComeWhereThatIsKnown() {
        const auto task = std::make_shared<ProgressReporter>();
        ProgressBar bar(100);
        bar.follow(task);
        bar.show();
        QVERIFY(onlyMoves(bar));
        task->start(1);
        task->advance(0.25);
        QTRY_COMPARE(bar.value() * 4, bar.maximum());
        QVERIFY(!onlyMoves(bar));
        task->advance(0.5);
        QTRY_COMPARE(bar.value() * 2, bar.maximum());
        task->advance(1);
        QTRY_VERIFY(onlyMoves(bar));
    }

    void startsAnewWithAnotherTask() {
        const auto task = std::make_shared<ProgressReporter>();
        task->start(2);
        task->complete(1);
        ProgressBar bar(100);
        bar.follow(task);
        QCOMPARE(bar.value() * 2, bar.maximum());
        bar.follow(nullptr);
        QVERIFY(onlyMoves(bar));
    }

private:
    static bool onlyMoves(const QProgressBar& bar) {
        return bar.minimum() == 0 && bar.maximum() == 0;
    }
};

const RegisteredUiTest<ProgressBarTest> registered;
#include "ProgressBarTest.moc"
