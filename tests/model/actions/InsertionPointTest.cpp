#include <QTest>
#include <array>
#include <optional>

#include "app/model/actions/InsertionPoint.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ActionsDesk.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

PlistValue number(int value) {
    return PlistValue::integer(value);
}

/// {a: 0, open: [1, 2], shut: {b: 3}, last: 4}, with the first container expanded. Its rows are
/// root, a, open, 1, 2, shut, last.
PlistValue sample() {
    return tree("{a: 0, open: [1, 2], shut: {b: 3}, last: 4}");
}

/// "open 1": the key of the container ("root" for the root) and the index.
QString textOf(const std::optional<InsertionPoint>& point) {
    if (!point) {
        return QStringLiteral("none");
    }
    const std::string_view key = point->container->key().view();
    return QStringLiteral("%1 %2")
        .arg(point->container->parent() == nullptr
                 ? QStringLiteral("root")
                 : QString::fromUtf8(key.data(), qsizetype(key.size())))
        .arg(point->index);
}

QString forDrop(const ActionsDesk& desk, qint64 position) {
    return textOf(InsertionPoint::forDrop(desk.outline, desk.document.root(), position));
}

QString forNewItems(const ActionsDesk& desk) {
    return textOf(InsertionPoint::forNewItems(desk.outline, desk.document.root()));
}

}  // namespace

class InsertionPointTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesDropsBelowTheRowAbove() {
        ActionsDesk desk(sample());
        desk.expand({{1}});
        constexpr std::array<const char*, 10> expected = {"root 0", "root 0", "root 0", "root 1",
                                                          "open 0", "open 1", "open 2", "root 3",
                                                          "root 4", "root 4"};
        for (int i = 0; i < 10; ++i) {
            const int position = i - 1;
            QCOMPARE(forDrop(desk, position), QLatin1String(expected[static_cast<std::size_t>(i)]));
        }
        QCOMPARE(forDrop(desk, 1000), QStringLiteral("root 4"));
    }

    void takesDropsBelowACollapsedRootAtItsEnd() {
        ActionsDesk desk(sample());
        desk.select({{}});
        desk.actions.collapseSelected(OutlineState::Reach::nodeAlone);
        QCOMPARE(forDrop(desk, 0), QStringLiteral("root 0"));
        QCOMPARE(forDrop(desk, 1), QStringLiteral("root 4"));
    }

    void takesNoDropsInAScalar() {
        const ActionsDesk desk(number(1));
        QCOMPARE(forDrop(desk, 0), QStringLiteral("none"));
        QCOMPARE(forDrop(desk, 1), QStringLiteral("none"));
    }

    void takesDropsWithoutRows() {
        PlistDocument document;
        const OutlineState outline;
        QCOMPARE(textOf(InsertionPoint::forDrop(outline, document.root(), 5)),
                 QStringLiteral("root 0"));
    }

    /// Hidden siblings count, and what a filter shows open takes drops inside.
    void takesDropsBehindAFilter() {
        ActionsDesk desk(sample());
        desk.outline.setFilter(
            NodeIdSet{desk.at({})->id(), desk.at({2})->id(), desk.at({3})->id()});
        QCOMPARE(forDrop(desk, 2), QStringLiteral("shut 0"));
        QCOMPARE(forDrop(desk, 3), QStringLiteral("root 4"));
    }

    void putsNewItemsByTheLastSelectedRow() {
        ActionsDesk desk(sample());
        desk.expand({{1}});
        QCOMPARE(forNewItems(desk), QStringLiteral("root 4"));
        desk.select({{}});
        QCOMPARE(forNewItems(desk), QStringLiteral("root 0"));
        desk.select({{}, {0}});
        QCOMPARE(forNewItems(desk), QStringLiteral("root 1"));
        desk.select({{1}});
        QCOMPARE(forNewItems(desk), QStringLiteral("open 0"));
        desk.select({{1}, {1, 0}});
        QCOMPARE(forNewItems(desk), QStringLiteral("open 1"));
        desk.select({{2}});
        QCOMPARE(forNewItems(desk), QStringLiteral("root 3"));
        desk.outline.setFilter(NodeIdSet{desk.at({})->id(), desk.at({2})->id()});
        QCOMPARE(forNewItems(desk), QStringLiteral("shut 0"));
    }

    void putsNoNewItemsInAScalar() {
        ActionsDesk desk(number(1));
        QCOMPARE(forNewItems(desk), QStringLiteral("none"));
        desk.select({{}});
        QCOMPARE(forNewItems(desk), QStringLiteral("none"));
    }
};

const RegisteredTest<InsertionPointTest> registered;
#include "InsertionPointTest.moc"
