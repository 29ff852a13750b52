#include <QStringList>
#include <QTest>
#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "tests/model/support/BrokenRule.h"
#include "tests/model/support/ComparedEditing.h"
#include "tests/model/support/RandomOperations.h"
#include "tests/support/TestProgram.h"

namespace {

using Kind = RandomOperation::Kind;
using Operations = std::vector<RandomOperation>;

struct Outcome {
    QStringList steps;  ///< what was done, up to the failure if there is one
    std::optional<QString> failure;
    int changes = 0;
};

Outcome run(unsigned seed, const Operations& operations) {
    const BrokenRule rule;
    Outcome outcome;
    const std::optional<QString> broken = rule.of([&] {
        ComparedEditing editing(ComparedEditing::setup(seed));
        for (const RandomOperation& operation : operations) {
            outcome.failure = editing.perform(operation);
            outcome.steps += editing.description();
            if (outcome.failure) {
                break;
            }
        }
        outcome.changes = editing.changeCount();
    });
    if (broken) {
        outcome.failure = QStringLiteral("broken: ") + *broken;
    }
    return outcome;
}

/// How to see the failure again, in as few steps as possible.
QString report(unsigned seed, const Operations& operations) {
    const Operations few = RandomOperations::shrunk(operations, [seed](const Operations& fewer) {
        return run(seed, fewer).failure.has_value();
    });
    const Outcome outcome = run(seed, few);
    return QStringLiteral("Seed %1 fails in %2 steps:\n  %3\n%4")
        .arg(seed)
        .arg(few.size())
        .arg(outcome.steps.join(QStringLiteral("\n  ")), outcome.failure.value_or(QString()));
}

}  // namespace

/// Random edits, undone and redone, with rows on show, against a plain model.
class EditingModelRandomTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void doesWhatThePlainModelDoes() {
        constexpr unsigned runs = 2000;
        constexpr std::size_t length = 150;
        int changes = 0;
        for (unsigned seed = 1; seed <= runs; ++seed) {
            const Operations operations = RandomOperations::sequence(seed, length);
            const Outcome outcome = run(seed, operations);
            if (outcome.failure) {
                QFAIL(qPrintable(report(seed, operations)));
            }
            changes += outcome.changes;
        }
        QVERIFY(changes > static_cast<int>(runs * length / 3));
    }

    void shrinksAFailingSequence() {
        const auto count = [](const Operations& operations, Kind kind) {
            return std::ranges::count(operations, kind, &RandomOperation::kind);
        };
        const Operations operations = RandomOperations::sequence(1, 500);
        const Operations few = RandomOperations::shrunk(operations, [&](const Operations& fewer) {
            return count(fewer, Kind::undo) >= 2 && count(fewer, Kind::rename) >= 1;
        });
        QCOMPARE(few.size(), std::size_t{3});
        QCOMPARE(count(few, Kind::undo), 2);
        QCOMPARE(count(few, Kind::rename), 1);
    }
};

const RegisteredTest<EditingModelRandomTest> registered;
#include "EditingModelRandomTest.moc"
