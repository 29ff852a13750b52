#include <QTest>
#include <vector>

#include "app/model/outline/RowHintCorrections.h"
#include "tests/support/TestProgram.h"

/// Looks for rows by hints, in a plain list that has moved in the same way.
class RowHintCorrectionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesHintsAsTheyAreWithoutShifts() {
        const RowHintCorrections shifts;
        QCOMPARE(found(shifts, 7, 7), std::optional(7));
        QCOMPARE(found(shifts, 7, 8), std::optional<int>());
    }

    void movesHintsFromBehindAShift() {
        RowHintCorrections shifts;
        shifts.add(10, 5);
        QCOMPARE(found(shifts, 9, 9), std::optional(9));
        QCOMPARE(found(shifts, 10, 15), std::optional(15));
        QCOMPARE(found(shifts, 99, 104), std::optional(104));
    }

    void movesHintsOverAndOver() {
        RowHintCorrections shifts;
        shifts.add(10, 5);
        shifts.add(3, -2);
        shifts.add(50, 100);
        QCOMPARE(found(shifts, 2, 2), std::optional(2));
        QCOMPARE(found(shifts, 10, 13), std::optional(13));
        QCOMPARE(found(shifts, 60, 163), std::optional(163));
    }

    void knowsHintsThatWereGivenInBetween() {
        RowHintCorrections shifts;
        shifts.add(10, 5);
        // Here a node was told that it stands in row 60.
        shifts.add(20, 7);
        QCOMPARE(found(shifts, 60, 67), std::optional(67));
        // And here another one.
        QCOMPARE(found(shifts, 60, 60), std::optional(60));
    }

    void isFullAfterItsLimit() {
        RowHintCorrections shifts;
        for (std::size_t i = 0; i < RowHintCorrections::limit; ++i) {
            QVERIFY(!shifts.isFull());
            shifts.add(1, 1);
        }
        QVERIFY(shifts.isFull());
        QCOMPARE(found(shifts, 1, 33), std::optional(33));
        shifts.clear();
        QVERIFY(!shifts.isFull());
        QCOMPARE(found(shifts, 1, 33), std::optional<int>());
    }

private:
    static std::optional<int> found(const RowHintCorrections& shifts, int hint, int right) {
        return shifts.find(hint, [right](int row) { return row == right; });
    }
};

const RegisteredTest<RowHintCorrectionsTest> registered;
#include "RowHintCorrectionsTest.moc"
