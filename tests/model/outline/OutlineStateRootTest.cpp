#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <string>
#include <vector>

#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/OutlineWindow.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Column = OutlineState::Column;
using Expansion = OutlineState::Expansion;
using Reach = OutlineState::Reach;
using Window = OutlineWindow;

}  // namespace

/// What an outline shows after a search, a jump to a node and a new root.
class OutlineStateRootTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- Reveal and filter ---

    void revealsANode() {
        Window window(sample());
        window.outline.reveal(window.node(QStringLiteral("items/0")));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 name: \"Ada\"\n"
                                               "  1 items: array [-]\n"
                                               "    0 dictionary [+]\n"
                                               "    1 \"x\"\n"
                                               "  2 more: dictionary [+]"));
    }

    void revealsThroughACollapsedRoot() {
        Window window(sample());
        window.collapse({});
        window.outline.reveal(window.node(QStringLiteral("name")));
        QCOMPARE(window.outline.rows().size(), std::size_t{4});
    }

    void filtersToTheMatchesAndTheirAncestors() {
        Window window(sample());
        PlistNode& deep = window.node(QStringLiteral("items/0/a"));
        window.outline.setFilter(
            idsOf({&deep, deep.parent(), deep.parent()->parent(), window.root.get()}));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  1 items: array [-]\n"
                                               "    0 dictionary [-]\n"
                                               "      0 a: 1"));
        QVERIFY(!window.outline.isExpanded(deep.parent()->id()));
        window.told();
        window.outline.setFilter(std::nullopt);
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 name: \"Ada\"\n"
                                               "  1 items: array [+]\n"
                                               "  2 more: dictionary [+]"));
        QCOMPARE(window.told(), QStringLiteral("rearrange"));
    }

    void hidesWhatHasAHiddenAncestor() {
        Window window(sample());
        PlistNode& deep = window.node(QStringLiteral("items/0/a"));
        window.outline.setFilter(idsOf({&deep, deep.parent(), window.root.get()}));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]"));
        window.outline.setFilter(NodeIdSet());
        QCOMPARE(window.rows(), QString());
        QCOMPARE(window.told(), QStringLiteral("remove 1-3, remove 0-0"));
    }

    void flagsRepeatedKeysAmongHiddenSiblingsToo() {
        Window window(tree("{a: 1, a: 2}"));
        window.outline.setFilter(idsOf({window.root.get(), window.root->children()[1].get()}));
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  1 a: 2 (duplicate)"));
    }

    // --- A new root ---

    void carriesTheExpansionOver() {
        Window window(sample());
        window.expand(QStringLiteral("items"));
        window.expand(QStringLiteral("items/0"));
        window.outline.select(idsOf({window.root.get()}));
        window.outline.setEditing(OutlineState::EditingField{window.root->id(), Column::key});
        window.told();
        const QSignalSpy selection(&window.outline, &OutlineState::selectionChanged);
        const QSignalSpy editing(&window.outline, &OutlineState::editingChanged);

        const PlistValue before = sample();
        const PlistNodePtr next = PlistNode::create(
            {},
            PlistValue::dictionary({{"more", tree("{b: 2}")}, {"items", before.children()[1]}}));
        window.outline.rebuild(*next);
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 more: dictionary [+]\n"
                                               "  1 items: array [-]\n"
                                               "    0 dictionary [-]\n"
                                               "      0 a: 1\n"
                                               "    1 \"x\""));
        QCOMPARE(window.told(), QStringLiteral("reset"));
        QCOMPARE(selection.count(), 1);
        QCOMPARE(editing.count(), 1);
        QVERIFY(window.outline.selection().isEmpty());
        QVERIFY(!window.outline.editing());
        QVERIFY(window.outline.root() == next.get());
    }

    void ignoresStepsThatLeadNowhere() {
        Window window(tree("[[1], [1], [1], [1]]"));
        window.expand(QStringLiteral("1"));
        window.expand(QStringLiteral("3"));
        const PlistNodePtr next = PlistNode::create({}, tree("[[1], [1]]"));
        window.outline.rebuild(*next);
        QCOMPARE(window.rows(), QStringLiteral(": array [-]\n"
                                               "  0 array [+]\n"
                                               "  1 array [-]\n"
                                               "    0 1"));
    }

    void takesKeysForPositionsAndTheReverse() {
        Window window(tree("{1: [1], +0: [1], x: [1]}"));
        window.expand(QStringLiteral("1"));
        window.expand(QStringLiteral("+0"));
        window.expand(QStringLiteral("x"));
        const PlistNodePtr array = PlistNode::create({}, tree("[[1], [1]]"));
        window.outline.rebuild(*array);
        QCOMPARE(window.rows(), QStringLiteral(": array [-]\n"
                                               "  0 array [+]\n"
                                               "  1 array [-]\n"
                                               "    0 1"));
        const PlistNodePtr dictionary = PlistNode::create({}, tree("{0: [1], 1: [1]}"));
        window.outline.rebuild(*dictionary);
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 0: array [+]\n"
                                               "  1 1: array [-]\n"
                                               "    0 1"));
    }

    void followsTheFirstOfRepeatedKeys() {
        Window window(tree("{a: 0, a: [1]}"));
        window.outline.setExpanded(*window.root->children()[1], Expansion::expand,
                                   Reach::nodeAlone);
        const PlistNodePtr next = PlistNode::create({}, tree("{a: [1], a: [1]}"));
        window.outline.rebuild(*next);
        QCOMPARE(window.rows(), QStringLiteral(": dictionary [-]\n"
                                               "  0 a: array [-] (duplicate)\n"
                                               "    0 1\n"
                                               "  1 a: array [+] (duplicate)"));
        // A scalar in that place takes the expansion away, whatever stands behind it.
        const PlistNodePtr scalar = PlistNode::create({}, tree("{a: 0, a: [1]}"));
        window.outline.rebuild(*scalar);
        QCOMPARE(window.outline.expanded(), idsOf({scalar.get()}));
    }

    /// Equal as text, whatever their spelling, for few steps and for so many that a table is made.
    void followsKeysThatAreEqualAsText() {
        const PlistValue inner = tree("[1]");
        for (const int count : {1, 100}) {
            std::vector<PlistEntry> composed;
            std::vector<PlistEntry> decomposed;
            for (int i = 0; i < count; ++i) {
                composed.push_back({"caf\u00e9 " + std::to_string(i), inner});
                decomposed.push_back({"cafe\u0301 " + std::to_string(i), inner});
            }
            Window window(PlistValue::dictionary(composed));
            window.expand({}, Reach::wholeSubtree);
            const PlistNodePtr next = PlistNode::create({}, PlistValue::dictionary(decomposed));
            window.outline.rebuild(*next);
            QCOMPARE(window.outline.rows().size(), static_cast<std::size_t>(1 + 2 * count));
        }
    }

    void forgetsWhatStoodBelowACollapsedContainer() {
        Window window(sample());
        window.expand(QStringLiteral("items"));
        window.expand(QStringLiteral("items/0"));
        window.collapse(QStringLiteral("items"));
        const PlistNodePtr next = PlistNode::create({}, sample());
        window.outline.rebuild(*next);
        QCOMPARE(window.outline.expanded(), idsOf({next.get()}));
        QVERIFY(!next->children()[1]->isMaterialized());
    }

    void expandsTheNewRootEvenIfTheOldWasCollapsed() {
        Window window(sample());
        window.expand(QStringLiteral("items"));
        window.collapse({});
        const PlistNodePtr next = PlistNode::create({}, sample());
        window.outline.rebuild(*next);
        QCOMPARE(window.outline.rows().size(), std::size_t{4});
    }

    void carriesManySteps() {
        std::vector<PlistEntry> entries(20'000);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            entries[i] = {std::to_string(i), PlistValue::array({number(static_cast<int>(i))})};
        }
        const PlistValue value = PlistValue::dictionary(entries);
        Window window(value);
        window.expand({}, Reach::wholeSubtree);
        std::reverse(entries.begin(), entries.end());
        const PlistNodePtr next = PlistNode::create({}, PlistValue::dictionary(entries));
        window.outline.rebuild(*next);
        QCOMPARE(window.outline.rows().size(), std::size_t{40'001});
    }

    void carriesDeepExpansions() {
        PlistValue value = number(1);
        constexpr int depth = 50'000;
        for (int i = 0; i < depth; ++i) {
            value = PlistValue::array({value});
        }
        OutlineState outline;
        const PlistNodePtr root = PlistNode::create({}, value);
        outline.rebuild(*root);
        outline.setExpanded(*root, Expansion::expand, Reach::wholeSubtree);
        QCOMPARE(outline.rows().size(), std::size_t{depth + 1});
        QCOMPARE(outline.rows().back().depth(), depth);
        const PlistNodePtr next = PlistNode::create({}, value);
        outline.rebuild(*next);
        QCOMPARE(outline.rows().size(), std::size_t{depth + 1});
    }
};

const RegisteredTest<OutlineStateRootTest> registered;
#include "OutlineStateRootTest.moc"
