#include <QTest>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <thread>
#include <vector>

#include "app/model/editing/PlistDocument.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/MainThread.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/BrokenRule.h"
#include "tests/support/TestProgram.h"

namespace {

const QString rule = QStringLiteral("the model belongs to the main thread");

/// The rule that `action` breaks in another thread.
std::optional<QString> brokenElsewhere(const std::function<void()>& action) {
    const BrokenRule broken;
    std::optional<QString> result;
    std::thread([&] { result = broken.of(action); }).join();
    return result;
}

}  // namespace

class MainThreadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void passesOnTheMainThread() {
        const BrokenRule broken;
        QVERIFY(!broken.of([] { MainThread::check(); }));
        QCOMPARE(brokenElsewhere([] { MainThread::check(); }), rule);
    }

    void guardsEveryOperationOfNodes() {
        const PlistNodePtr node = PlistNode::create({}, PlistValue());
        const PlistNodePtr number = PlistNode::create({}, PlistValue::integer(1));
        const PlistNode::Representation content = node->representation();
        const std::vector<std::function<void()>> operations = {
            [] { PlistNode::create({}, PlistValue()); },
            [&] { node->children(); },
            [&] { node->value(); },
            [&] { (void)node->indexInParent(); },
            [&] { node->setKey("a"); },
            [&] { node->setValue(PlistValue::integer(1)); },
            [&] { number->setScalar(PlistValue::integer(2)); },
            [&] { node->insertChildren({}, 0); },
            [&] { node->removeChildren({}); },
            [&] { node->setChildren({}); },
            [&] { node->convertContainer(PlistType::array); },
            [&] { node->representation(); },
            [&] { node->restore(content); },
            [&] { node->setObserver(nullptr); },
        };
        for (std::size_t i = 0; i < operations.size(); ++i) {
            QVERIFY2(brokenElsewhere(operations[i]) == rule, qPrintable(QString::number(i)));
        }
        QVERIFY(node->key().isEmpty());
        QCOMPARE(node->type(), PlistType::dictionary);
    }

    void guardsTheDocument() {
        PlistDocument document;
        const PlistNodePtr root = PlistNode::create({}, PlistValue());
        const std::vector<std::function<void()>> operations = {
            [&] { document.setRoot(root); },      [&] { document.setFormat(PlistFormat::binary); },
            [&] { document.increaseRevision(); }, [&] { document.setWasReadOnlyFormat(true); },
            [&] { document.apply({}); },          [&] { document.snapshot(); },
        };
        for (std::size_t i = 0; i < operations.size(); ++i) {
            QVERIFY2(brokenElsewhere(operations[i]) == rule, qPrintable(QString::number(i)));
        }
        QCOMPARE(document.revision(), 0);
    }

    void guardsTheOutline() {
        OutlineState outline;
        const PlistNodePtr root = PlistNode::create({}, PlistValue());
        const std::vector<std::function<void()>> operations = {
            [&] { outline.rebuild(*root); },
            [&] { outline.select({1}); },
            [&] { outline.selectedRows(); },
            [&] { (void)outline.rowOf(*root); },
            [&] { (void)outline.rowForId(1); },
            [&] { outline.setEditing(OutlineState::EditingField{}); },
            [&] {
                outline.setExpanded(*root, OutlineState::Expansion::expand,
                                    OutlineState::Reach::nodeAlone);
            },
            [&] { outline.reveal(*root); },
            [&] { outline.setFilter(NodeIdSet()); },
        };
        for (std::size_t i = 0; i < operations.size(); ++i) {
            QVERIFY2(brokenElsewhere(operations[i]) == rule, qPrintable(QString::number(i)));
        }
        QVERIFY(outline.rows().empty());
    }
};

const RegisteredTest<MainThreadTest> registered;
#include "MainThreadTest.moc"
