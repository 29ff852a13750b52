#include <QTest>
#include <limits>

#include "app/model/tree/NodeId.h"
#include "tests/model/support/BrokenRule.h"
#include "tests/support/TestProgram.h"

class NodeIdTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsAtOne() {
        NodeIdCounter counter;
        QCOMPARE(counter.take(), 1);
        QCOMPARE(counter.take(), 2);
    }

    void takesRangesWithoutGaps() {
        NodeIdCounter counter;
        QCOMPARE(counter.take(1000), 1);
        QCOMPARE(counter.take(), 1001);
    }

    void reachesTheLargestNumberAndNoFurther() {
        const NodeId largest = std::numeric_limits<NodeId>::max();
        NodeIdCounter counter(largest - 3);
        const BrokenRule broken;
        QVERIFY(broken.of([&counter] { counter.take(4); }));
        QCOMPARE(counter.take(3), largest - 2);
        QCOMPARE(broken.of([&counter] { counter.take(); }),
                 QStringLiteral("the node ids of a process are used up"));
    }
};

const RegisteredTest<NodeIdTest> registered;
#include "NodeIdTest.moc"
