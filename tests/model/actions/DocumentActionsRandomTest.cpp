#include <QAbstractItemModelTester>
#include <QTest>
#include <functional>
#include <random>
#include <vector>

#include "app/model/actions/DocumentActions.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ActionsDesk.h"
#include "tests/model/support/RowMirror.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Direction = DocumentActions::Direction;
using Reach = OutlineState::Reach;

PlistValue sample() {
    const PlistValue list = tree(R"([1, "x"])");
    const PlistValue inner = PlistValue::dictionary({{"a", list}, {"b", PlistValue::real(1.5)}});
    return PlistValue::dictionary({{"list", list},
                                   {"inner", inner},
                                   {"deep", PlistValue::array({inner, list})},
                                   {"truth", PlistValue::boolean(true)}});
}

/// Somebody who does anything that a window lets one do, at random.
class User {
public:
    User(ActionsDesk& desk, std::uint32_t seed) : desk_(desk), random_(seed) {}

    void doSomething() {
        const DocumentActions& actions = desk_.actions;
        const std::vector<std::function<void()>> gestures = {
            [this] { selectSome(); },
            [this] { selectSome(); },
            [this] { selectSome(); },
            [&actions] { actions.selectAll(); },
            [&actions] { actions.addItem(); },
            [&actions] { actions.duplicate(); },
            [&actions] { actions.deleteSelected(); },
            [&actions] { actions.moveSelected(Direction::up); },
            [&actions] { actions.moveSelected(Direction::down); },
            [&actions] { actions.sortKeys(); },
            [this, &actions] { actions.rename(someNode(), QString::number(below(5))); },
            [this, &actions] { actions.setValueFromText(someNode(), QString::number(below(5))); },
            [this, &actions] { actions.changeType(someNode(), allPlistTypes[below(8)]); },
            [this, &actions] {
                actions.changeFormat(below(2) == 0 ? PlistFormat::xml : PlistFormat::binary);
            },
            [this, &actions] { actions.expandSelected(someReach()); },
            [this, &actions] { actions.collapseSelected(someReach()); },
            [&actions] { actions.collapseAll(); },
            [this, &actions] { clipboard_ = actions.copy(); },
            [this, &actions] { actions.paste(clipboard_); },
            [this] { drag(); },
            [this] { desk_.undo.undo(); },
            [this] { desk_.undo.undo(); },
            [this] { desk_.undo.redo(); },
        };
        gestures[below(gestures.size())]();
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    Reach someReach() { return below(3) == 0 ? Reach::wholeSubtree : Reach::nodeAlone; }

    PlistNode& someNode() {
        return desk_.outline.rows()[below(desk_.outline.rows().size())].node();
    }

    void selectSome() {
        NodeIdSet ids;
        const std::size_t count = below(4);
        for (std::size_t i = 0; i < count; ++i) {
            ids.insert(someNode().id());
        }
        desk_.outline.select(ids);
    }

    void drag() {
        const PlistTransfer transfer = desk_.actions.dragItems(someNode());
        const auto position = static_cast<qint64>(below(desk_.outline.rows().size() + 2));
        const auto origin = below(3) == 0 ? DocumentActions::DragOrigin::elsewhere
                                          : DocumentActions::DragOrigin::thisProcess;
        desk_.actions.drop({&transfer, 1}, position, origin);
    }

    ActionsDesk& desk_;
    std::mt19937 random_;
    PlistTransfer clipboard_;
};

bool selectionHasRows(const OutlineState& outline) {
    return outline.selectedRows().size() == static_cast<std::size_t>(outline.selection().size());
}

}  // namespace

/// Long sequences of random gestures: whatever happens, the rows fit the tree, everything selected
/// has a row, listeners are told rightly, and all can be undone and redone to the very bytes.
class DocumentActionsRandomTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void holdsTogether() {
        constexpr std::uint32_t sequences = 500;
        constexpr int gestures = 80;
        constexpr std::size_t enough = 2000;
        constexpr int pace = 8;
        for (std::uint32_t seed = 1; seed <= sequences; ++seed) {
            ActionsDesk desk(sample());
            RowMirror mirror(desk.outline);
            const QAbstractItemModelTester tester(&mirror);
            User user(desk, seed);
            // Copies of copies grow without end.
            for (int i = 0; i < gestures && desk.outline.rows().size() < enough; ++i) {
                user.doSomething();
                const QByteArray where = QStringLiteral("seed %1, %2").arg(seed).arg(i).toUtf8();
                QVERIFY2(selectionHasRows(desk.outline), where);
                QVERIFY2(mirror.text() == TreeText::ofRows(desk.outline), where);
                // Making all rows anew shows nothing that was missed.
                mirror.takeSignals();
                if (i % pace == pace - 1) {
                    desk.outline.rebuild(desk.document.root());
                    QVERIFY2(mirror.takeSignals().isEmpty(), where);
                }
            }
            QCOMPARE(desk.backAndForth(), QString());
        }
    }
};

const RegisteredTest<DocumentActionsRandomTest> registered;
#include "DocumentActionsRandomTest.moc"
