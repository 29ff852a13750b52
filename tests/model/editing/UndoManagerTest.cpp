#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <stdexcept>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UndoManager.h"
#include "tests/model/support/BrokenRule.h"
#include "tests/support/TestProgram.h"

/// A text stands for the document: each change of it registers its inverse.
class UndoManagerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PlistDocument> document_;
    std::unique_ptr<UndoManager> manager_;
    QString text_;

    void set(const QString& text, const QString& name) {
        manager_->beginGroup();
        change(text);
        manager_->setActionName(name);
        manager_->endGroup();
    }

    void change(const QString& text) {
        manager_->registerUndo(*document_, [this, old = text_] { change(old); });
        text_ = text;
    }

    QString history() const {
        return QStringLiteral("%1 | undo %2 %3 | redo %4 %5")
            .arg(text_)
            .arg(manager_->undoCount())
            .arg(manager_->undoActionName())
            .arg(manager_->redoCount())
            .arg(manager_->redoActionName());
    }

private Q_SLOTS:
    void init() {
        document_ = std::make_unique<PlistDocument>();
        manager_ = std::make_unique<UndoManager>();
        text_ = QStringLiteral("-");
    }

    void startsEmpty() {
        QCOMPARE(history(), QStringLiteral("- | undo 0  | redo 0 "));
        QVERIFY(!manager_->canUndo());
        QVERIFY(!manager_->canRedo());
        QVERIFY(!manager_->isModified());
        manager_->undo();
        manager_->redo();
        QCOMPARE(history(), QStringLiteral("- | undo 0  | redo 0 "));
    }

    void goesBackAndForth() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        set(QStringLiteral("b"), QStringLiteral("Second"));
        QCOMPARE(history(), QStringLiteral("b | undo 2 Second | redo 0 "));
        for (int i = 0; i < 3; ++i) {
            manager_->undo();
            QCOMPARE(history(), QStringLiteral("a | undo 1 First | redo 1 Second"));
            manager_->undo();
            QCOMPARE(history(), QStringLiteral("- | undo 0  | redo 2 First"));
            manager_->redo();
            QCOMPARE(history(), QStringLiteral("a | undo 1 First | redo 1 Second"));
            manager_->redo();
            QCOMPARE(history(), QStringLiteral("b | undo 2 Second | redo 0 "));
        }
    }

    void endsTheRedoWithANewEntry() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        manager_->undo();
        set(QStringLiteral("b"), QStringLiteral("Second"));
        QCOMPARE(history(), QStringLiteral("b | undo 1 Second | redo 0 "));
    }

    void meltsNestedGroups() {
        manager_->beginGroup();
        set(QStringLiteral("a"), QStringLiteral("Inner"));
        set(QStringLiteral("b"), QStringLiteral("Inner Too"));
        manager_->setActionName(QStringLiteral("Outer"));
        QCOMPARE(manager_->undoCount(), 0);
        manager_->endGroup();
        QCOMPARE(history(), QStringLiteral("b | undo 1 Outer | redo 0 "));
        manager_->undo();
        QCOMPARE(history(), QStringLiteral("- | undo 0  | redo 1 Outer"));
        manager_->redo();
        QCOMPARE(history(), QStringLiteral("b | undo 1 Outer | redo 0 "));
    }

    void runsHandlersLastToFirst() {
        QString order;
        manager_->beginGroup();
        for (const char* name : {"a", "b", "c"}) {
            manager_->registerUndo(*document_, [&order, name] { order += QLatin1String(name); });
        }
        manager_->endGroup();
        manager_->undo();
        QCOMPARE(order, QStringLiteral("cba"));
        // Nothing was registered on the way back, so there is nothing to redo.
        QCOMPARE(manager_->redoCount(), 0);
    }

    void leavesNothingOfAnEmptyGroup() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        manager_->undo();
        const UndoManager::State state = manager_->state();
        const QSignalSpy spy(manager_.get(), &UndoManager::historyChanged);
        manager_->beginGroup();
        manager_->beginGroup();
        manager_->setActionName(QStringLiteral("Nothing"));
        manager_->endGroup();
        manager_->endGroup();
        QCOMPARE(history(), QStringLiteral("- | undo 0  | redo 1 First"));
        QCOMPARE(manager_->state(), state);
        QCOMPARE(spy.count(), 0);
        set(QStringLiteral("b"), QStringLiteral("Second"));
        manager_->beginGroup();
        change(QStringLiteral("c"));
        manager_->endGroup();
        QCOMPARE(history(), QStringLiteral("c | undo 2  | redo 0 "));
    }

    void keepsTheNameOfTheEntryThatItAnswers() {
        manager_->beginGroup();
        manager_->registerUndo(*document_,
                               [this] { set(QStringLiteral("-"), QStringLiteral("Delete")); });
        text_ = QStringLiteral("a");
        manager_->setActionName(QStringLiteral("Add Item"));
        manager_->endGroup();
        manager_->undo();
        QCOMPARE(history(), QStringLiteral("- | undo 0  | redo 1 Add Item"));
        manager_->redo();
        QCOMPARE(history(), QStringLiteral("a | undo 1 Add Item | redo 0 "));
    }

    // --- Modified ---

    void isModifiedAwayFromTheSavedState() {
        const QSignalSpy spy(manager_.get(), &UndoManager::isModifiedChanged);
        set(QStringLiteral("a"), QStringLiteral("First"));
        QVERIFY(manager_->isModified());
        manager_->undo();
        QVERIFY(!manager_->isModified());
        manager_->redo();
        manager_->setSavedState(manager_->state());
        QVERIFY(!manager_->isModified());
        QCOMPARE(spy.count(), 4);
        manager_->undo();
        QVERIFY(manager_->isModified());
        manager_->redo();
        QVERIFY(!manager_->isModified());
    }

    void keepsAnEditMadeWhileSavingUnsaved() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        const UndoManager::State snapshot = manager_->state();
        set(QStringLiteral("b"), QStringLiteral("Second"));
        manager_->setSavedState(snapshot);
        QVERIFY(manager_->isModified());
        manager_->undo();
        QVERIFY(!manager_->isModified());
    }

    void losesASavedStateThatCannotComeBack() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        manager_->setSavedState(manager_->state());
        manager_->undo();
        set(QStringLiteral("b"), QStringLiteral("Second"));
        QVERIFY(manager_->isModified());
        manager_->undo();
        QVERIFY(manager_->isModified());
        QVERIFY(!manager_->canUndo());
    }

    void isModifiedWithoutASavedState() {
        manager_->setSavedState(std::nullopt);
        QVERIFY(manager_->isModified());
        set(QStringLiteral("a"), QStringLiteral("First"));
        manager_->undo();
        QVERIFY(manager_->isModified());
    }

    void staysModifiedWhenTheHistoryIsCleared() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        manager_->clear();
        QCOMPARE(history(), QStringLiteral("a | undo 0  | redo 0 "));
        QVERIFY(manager_->isModified());
    }

    // --- When things go wrong ---

    void forgetsAllWhenAHandlerThrows() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        manager_->beginGroup();
        manager_->registerUndo(*document_, [] { throw std::runtime_error("broken"); });
        change(QStringLiteral("b"));
        manager_->endGroup();
        manager_->setSavedState(manager_->state());
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, manager_->undo());
        QCOMPARE(history(), QStringLiteral("a | undo 0  | redo 0 "));
        QVERIFY(manager_->isModified());
        set(QStringLiteral("c"), QStringLiteral("Third"));
        manager_->undo();
        QCOMPARE(history(), QStringLiteral("a | undo 0  | redo 1 Third"));
    }

    void leavesOutHandlersOfADocumentThatIsGone() {
        set(QStringLiteral("a"), QStringLiteral("First"));
        document_.reset();
        manager_->undo();
        QCOMPARE(history(), QStringLiteral("a | undo 0  | redo 0 "));
    }

    void checksWhatCallersOwe() {
        const BrokenRule broken;
        QVERIFY(broken.of([this] { manager_->endGroup(); }));
        QVERIFY(broken.of([this] { manager_->registerUndo(*document_, [] {}); }));
        QVERIFY(broken.of([this] { manager_->setActionName({}); }));
        manager_->beginGroup();
        QVERIFY(broken.of([this] { manager_->undo(); }));
        QVERIFY(broken.of([this] { manager_->clear(); }));
        std::optional<QString> rule;
        manager_->registerUndo(*document_, [&] { rule = broken.of([this] { manager_->redo(); }); });
        manager_->endGroup();
        manager_->undo();
        QVERIFY(rule);
    }
};

const RegisteredTest<UndoManagerTest> registered;
#include "UndoManagerTest.moc"
