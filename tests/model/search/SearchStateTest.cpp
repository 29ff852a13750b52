#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <chrono>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/model/editing/PlistDocument.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/search/SearchRun.h"
#include "app/model/search/SearchState.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/ManualTimer.h"
#include "tests/model/support/SearchDesk.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

using std::chrono::milliseconds;

namespace {

constexpr milliseconds nearlyAPause = SearchState::pause - milliseconds(1);

PlistValue text(const char* value) {
    return PlistValue::string(value);
}

PlistValue sample() {
    return tree(R"({name: "Ada", list: ["ab", 12, {a: "x", date: true}], cab: "Zoë"})");
}

/// Whether a search is under way, whatever it has found by now.
bool isSearching(const SearchDesk& desk) {
    return desk.search->findChild<SearchRun*>() != nullptr;
}

/// Arrays of two, in which both items are the same value, so many levels deep.
PlistValue doubling(int levels, PlistValue innermost) {
    PlistValue value = std::move(innermost);
    for (int i = 0; i < levels; ++i) {
        value = PlistValue::array({value, value});
    }
    return value;
}

}  // namespace

class SearchStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsWithoutASearch() {
        const SearchDesk desk(sample());
        QCOMPARE(desk.search->query(), QString());
        QVERIFY(desk.search->matchIDs().empty());
        QVERIFY(!desk.search->visibleIDs().has_value());
        QVERIFY(!desk.search->currentMatch().has_value());
        QVERIFY(desk.search->currentNode() == nullptr);
        QVERIFY(desk.search->hasAllMatches());
        QCOMPARE(desk.search->focusRequest(), 0);
        QVERIFY(!desk.search->isUpdating());
    }

    void findsKeysAndValuesInTheOrderOfTheDocument() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("a"));
        QCOMPARE(desk.matches(), QStringLiteral("/name /list/0 /list/2/a /list/2/date /cab"));
        QCOMPARE(desk.visible(),
                 QStringLiteral("/ /name /list /cab /list/0 /list/2 /list/2/a /list/2/date"));
        QCOMPARE(desk.current(), QStringLiteral("/name"));
        QCOMPARE(desk.search->currentNode(), &desk.at({0}));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 1, visible 1, current 1, updated 1"));
    }

    void ignoresCaseDiacriticsAndBlanksAround() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find(" \tZOE \t"));
        QCOMPARE(desk.matches(), QStringLiteral("/cab"));
        QCOMPARE(desk.search->query(), QStringLiteral(" \tZOE \t"));
    }

    void takesOtherBlanksAsPartOfTheQuery() {
        const SearchDesk desk(PlistValue::array({text("a\n"), text("a")}));
        QVERIFY(desk.find("a\n"));
        QCOMPARE(desk.matches(), QStringLiteral("/0"));
        QVERIFY(desk.find("\u00a0"));
        QCOMPARE(desk.matches(), QString());
        QCOMPARE(desk.visible(), QStringLiteral("/"));
    }

    void findsAScalarRoot() {
        const SearchDesk desk(text("alone"));
        QVERIFY(desk.find("lon"));
        QCOMPARE(desk.matches(), QStringLiteral("/"));
        QCOMPARE(desk.visible(), QStringLiteral("/"));
        QCOMPARE(desk.search->currentNode(), &desk.document.root());
    }

    void leavesTheRootAloneWhenNothingMatches() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("nowhere"));
        QCOMPARE(desk.matches(), QString());
        QCOMPARE(desk.visible(), QStringLiteral("/"));
        QCOMPARE(desk.current(), QStringLiteral("none"));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 1, current 0, updated 1"));
        // Nothing is left of a mark once it is folded: an active search that matches nothing.
        QVERIFY(desk.find("\u0301"));
        QCOMPARE(desk.visible(), QStringLiteral("/"));
    }

    void makesNoNodesBesideTheWayToTheMatches() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("zoe"));
        QCOMPARE(TreeText::ofTree(desk.document.root()),
                 QStringLiteral(": dictionary 3\n  name: \"Ada\"\n  list: array 3 ...\n"
                                "  cab: \"Zoë\""));
    }

    // --- The pause ---

    void searchesOnceAfterTheLastOfQuickKeystrokes() {
        const SearchDesk desk(sample());
        desk.type("a");
        desk.timer->advance(nearlyAPause);
        desk.type("ad");
        desk.timer->advance(nearlyAPause);
        desk.type("ada");
        desk.timer->advance(nearlyAPause);
        QCOMPARE(desk.timer->callbacks(), 0);
        QVERIFY(desk.search->isUpdating());
        desk.timer->advance(milliseconds(1));
        QCOMPARE(desk.timer->callbacks(), 1);
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/name"));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 1, visible 1, current 1, updated 1"));
    }

    void searchesByTheRealClock() {
        PlistDocument document;
        document.apply({sample(), PlistFormat::xml});
        SearchState search(document);
        QSignalSpy updated(&search, &SearchState::updated);
        QElapsedTimer timer;
        timer.start();
        search.setQuery(QStringLiteral("ada"));
        QVERIFY(updated.wait(60'000));
        QVERIFY(milliseconds(timer.elapsed()) >= SearchState::pause);
        QCOMPARE(SearchDesk::textOf(search.matchIDs(), document.root()), QStringLiteral("/name"));
    }

    void keepsTheResultsUntilTheNextOnesCome() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("zoe"));
        desk.signalCounts();
        desk.type("ada");
        desk.begin();
        QCOMPARE(desk.matches(), QStringLiteral("/cab"));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 0"));
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/name"));
    }

    void doesNothingForTheSameQuery() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("a"));
        const QSignalSpy queries(desk.search.get(), &SearchState::queryChanged);
        desk.type("a");
        QVERIFY(!desk.timer->isRunning());
        QCOMPARE(queries.count(), 0);
        desk.type("a ");
        QVERIFY(desk.timer->isRunning());
        QCOMPARE(queries.count(), 1);
    }

    void endsTheSearchAtOnceWhenTheQueryIsCleared_data() {
        QTest::addColumn<QString>("query");
        QTest::newRow("empty") << QString();
        QTest::newRow("spaces") << QStringLiteral("  ");
        QTest::newRow("tab") << QStringLiteral(" \t");
    }

    void endsTheSearchAtOnceWhenTheQueryIsCleared() {
        QFETCH(const QString, query);
        const SearchDesk desk(sample());
        QVERIFY(desk.find("a"));
        desk.signalCounts();
        desk.search->setQuery(query);
        QVERIFY(!desk.search->isUpdating());
        QVERIFY(!desk.timer->isRunning());
        QCOMPARE(desk.matches(), QString());
        QCOMPARE(desk.visible(), QStringLiteral("all"));
        QCOMPARE(desk.current(), QStringLiteral("none"));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 1, visible 1, current 1, updated 1"));
    }

    void startsNothingWhenTheQueryIsClearedInThePause() {
        const SearchDesk desk(sample());
        desk.type("a");
        desk.type("");
        QVERIFY(!desk.search->isUpdating());
        QVERIFY(!desk.timer->isRunning());
        desk.begin();
        QVERIFY(!isSearching(desk));
        QCOMPARE(desk.visible(), QStringLiteral("all"));
    }

    // --- Overtaken searches ---

    void dropsASearchThatTypingOvertakes() {
        const SearchDesk desk(sample());
        desk.type("zoe");
        desk.begin();
        QVERIFY(isSearching(desk));
        desk.type("ada");
        QVERIFY(!isSearching(desk));
        QCoreApplication::processEvents();
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 0"));
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/name"));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 1, visible 1, current 1, updated 1"));
    }

    void dropsASearchWhenTheQueryIsCleared() {
        const SearchDesk desk(sample());
        desk.type("a");
        desk.begin();
        QVERIFY(isSearching(desk));
        desk.type("");
        QVERIFY(!isSearching(desk));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 1"));
        QCoreApplication::processEvents();
        QCOMPARE(desk.visible(), QStringLiteral("all"));
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 0"));
    }

    void startsOverWhenAKeyIsRenamedMeanwhile() {
        const SearchDesk desk(sample());
        desk.type("name");
        desk.begin();
        QVERIFY(!desk.editor.rename(desk.at({0}), "title"));
        QVERIFY(!desk.isDone());
        QVERIFY(desk.timer->isRunning());
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 0"));
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QString());
        QCOMPARE(desk.visible(), QStringLiteral("/"));
    }

    void startsOverWhenASortIsUndoneMeanwhile() {
        const SearchDesk desk(sample());
        desk.editor.sortKeys(desk.document.root());
        desk.type("zoe");
        desk.begin();
        // In the order that was searched "cab" comes first, in this one "name".
        desk.undo->undo();
        QVERIFY(!desk.isDone());
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/cab"));
    }

    void startsOverWhenAValueChangesMeanwhile() {
        const SearchDesk desk(sample());
        desk.type("ada");
        desk.begin();
        desk.editor.changeValue(desk.at({0}), text("Grace"));
        QVERIFY(desk.timer->isRunning());
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QString());
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 1, current 0, updated 1"));
    }

    // --- Changes of the document ---

    void searchesAgainAfterAnEdit() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("ada"));
        desk.editor.changeValue(desk.at({2}), text("Adam"));
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/name /cab"));
        desk.editor.changeValue(desk.at({0}), text("Grace"));
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/cab"));
        desk.undo->undo();
        desk.undo->undo();
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/name"));
    }

    void startsAtTheFirstMatchEachTime() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("a"));
        desk.search->step(1);
        QCOMPARE(desk.current(), QStringLiteral("/list/0"));
        desk.editor.changeValue(desk.at({2}), text("Zoé"));
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.current(), QStringLiteral("/name"));
    }

    void leavesTheResultsAfterARenameOrAnUndoneSort() {
        const SearchDesk desk(sample());
        desk.editor.sortKeys(desk.document.root());
        QVERIFY(desk.find("name"));
        QVERIFY(!desk.editor.rename(desk.at({2}), "title"));
        desk.undo->undo();
        desk.undo->undo();
        desk.editor.changeFormat(PlistFormat::binary);
        QVERIFY(!desk.search->isUpdating());
        QCOMPARE(desk.matches(), QStringLiteral("/name"));
    }

    /// The window answers while many nodes are looked for; they may be others when the tree
    /// changes.
    void startsOverWhenTheTreeChangesBetweenTurns() {
        constexpr std::size_t count = 200'000;
        const SearchDesk desk(PlistValue::array(std::vector<PlistValue>(count, text("Ada"))));
        PlistNode& root = desk.document.root();
        desk.type("ada");
        desk.begin();
        while (!root.isMaterialized()) {
            QCoreApplication::processEvents();
        }
        QVERIFY(desk.search->isUpdating());
        QVERIFY(desk.search->matchIDs().empty());
        QVERIFY(!desk.editor.rename(desk.at({2}), "title"));
        QVERIFY(!desk.isDone());
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.search->matchIDs().size(), count);
        QVERIFY(!desk.search->isUpdating());
    }

    void givesUpTheNodesOfAnOlderQuery() {
        constexpr std::size_t count = 200'000;
        const SearchDesk desk(PlistValue::array(std::vector<PlistValue>(count, text("Ada"))));
        desk.type("ada");
        desk.begin();
        while (!desk.document.root().isMaterialized()) {
            QCoreApplication::processEvents();
        }
        desk.type("");
        QVERIFY(!desk.search->isUpdating());
        QCoreApplication::processEvents();
        QVERIFY(desk.search->matchIDs().empty());
        QVERIFY(!desk.search->visibleIDs());
    }

    void searchesAReloadedDocumentAgain() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("ada"));
        desk.editor.replaceContent(PlistNode::create({}, tree(R"(["x", "Ada"])")), PlistFormat::xml,
                                   QString());
        QVERIFY(desk.search->currentNode() == nullptr);
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/1"));
        desk.undo->undo();
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/name"));
    }

    void searchesAnyNewRoot() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("ada"));
        PlistDocument& document = desk.editor.document();
        document.setRoot(PlistNode::create({}, tree(R"(["Ada"])")));
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/0"));
    }

    void ignoresChangesWhileNothingIsSought() {
        const SearchDesk desk(sample());
        desk.editor.changeValue(desk.at({0}), text("Grace"));
        QVERIFY(!desk.timer->isRunning());
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 0"));
    }

    void saysNothingTwice() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("ada"));
        desk.signalCounts();
        desk.editor.changeValue(desk.at({1, 1}), PlistValue::integer(13));
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 1"));
    }

    // --- The current match ---

    void stepsAroundTheEnds() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("a"));
        QStringList stops{desk.current()};
        for (const int direction : {-1, 1, 1, 1, -1}) {
            desk.search->step(direction);
            stops += desk.current();
        }
        QCOMPARE(stops.join(QLatin1Char(' ')),
                 QStringLiteral("/name /cab /name /list/0 /list/2/a /list/0"));
    }

    void stepsToTheFirstMatchWithoutACurrentOne() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("a"));
        for (const std::optional<NodeId> start :
             {std::optional<NodeId>(), std::optional(desk.document.root().id())}) {
            for (const int direction : {-1, 1}) {
                desk.search->setCurrentMatch(start);
                desk.search->step(direction);
                QCOMPARE(desk.current(), QStringLiteral("/name"));
            }
        }
    }

    void stepsNowhereWithoutMatches() {
        const SearchDesk desk(sample());
        desk.search->step(1);
        QVERIFY(desk.find("nowhere"));
        desk.search->step(-1);
        QVERIFY(!desk.search->currentMatch().has_value());
        QCOMPARE(desk.currentSpy->count(), 0);
    }

    void saysOnlyThatTheCurrentMatchIsAnother() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("ada"));
        desk.signalCounts();
        desk.search->step(1);
        desk.search->setCurrentMatch(desk.search->currentMatch());
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 0, updated 0"));
        desk.search->setCurrentMatch(std::nullopt);
        QCOMPARE(desk.signalCounts(), QStringLiteral("matches 0, visible 0, current 1, updated 0"));
    }

    void losesTheNodeOfAMatchThatLeftTheDocument() {
        const SearchDesk desk(sample());
        QVERIFY(desk.find("ab"));
        QCOMPARE(desk.matches(), QStringLiteral("/list/0 /cab"));
        const PlistNodePtr list(&desk.at({1}));
        desk.editor.remove({&list, 1});
        QVERIFY(desk.search->currentNode() == nullptr);
        desk.undo->undo();
        QCOMPARE(desk.search->currentNode(), &desk.at({1, 0}));
    }

    void countsFocusRequests() {
        const SearchDesk desk(sample());
        const QSignalSpy requests(desk.search.get(), &SearchState::focusRequestChanged);
        desk.search->requestFocus();
        desk.search->requestFocus();
        QCOMPARE(desk.search->focusRequest(), 2);
        QCOMPARE(requests.count(), 2);
    }

    // --- Those who listen ---

    void filtersBeforeTheCurrentMatchIsRevealed() {
        const SearchDesk desk(sample());
        OutlineState outline;
        outline.rebuild(desk.document.root());
        QStringList heard;
        QObject::connect(desk.search.get(), &SearchState::visibleIDsChanged, &outline, [&] {
            outline.setFilter(desk.search->visibleIDs());
            heard += QStringLiteral("filter");
        });
        QObject::connect(desk.search.get(), &SearchState::currentMatchChanged, &outline, [&] {
            outline.reveal(*desk.search->currentNode());
            outline.select({*desk.search->currentMatch()});
            heard += QStringLiteral("reveal");
        });
        QVERIFY(desk.find("12"));
        QCOMPARE(heard.join(QLatin1Char(' ')), QStringLiteral("filter reveal"));
        QCOMPARE(TreeText::ofRows(outline),
                 QStringLiteral(": dictionary [-]\n  1 list: array [-]\n    1 12"));
        QCOMPARE(outline.selectedRows().size(), std::size_t{1});
    }

    void mayBeChangedByThoseWhoHearOfIt() {
        const SearchDesk desk(sample());
        QObject::connect(desk.search.get(), &SearchState::visibleIDsChanged, desk.search.get(),
                         [&desk] {
                             if (desk.search->query() == QStringLiteral("ada")) {
                                 desk.editor.changeValue(desk.at({0}), text("Grace"));
                             }
                         });
        QVERIFY(!desk.find("ada"));
        QVERIFY(desk.timer->isRunning());
        desk.type("grace");
        desk.begin();
        QVERIFY(desk.isDone());
        QCOMPARE(desk.matches(), QStringLiteral("/name"));
    }

    // --- Enormous values ---

    void searchesWhatSharingDescribes() {
        const SearchDesk desk(doubling(40, text("leaf")));
        QVERIFY(desk.find("absent"));
        QCOMPARE(desk.visible(), QStringLiteral("/"));
        QVERIFY(!desk.document.root().isMaterialized());
    }

    void keepsTheFirstOfExtremelyManyMatches() {
        const SearchDesk desk(doubling(40, text("leaf")));
        QVERIFY(desk.find("leaf"));
        QCOMPARE(desk.search->matchIDs().size(), PlistMatches::matchLimit);
        QVERIFY(desk.search->visibleIDs()->size() <
                static_cast<qsizetype>(PlistMatches::placeLimit));
        QVERIFY(!desk.search->hasAllMatches());
        QVERIFY(desk.find("absent"));
        QVERIFY(desk.search->hasAllMatches());
    }

    void canBeCancelledAndClosedWhileItRuns() {
        for (int i = 0; i < 20; ++i) {
            SearchDesk desk(doubling(40, text("leaf")));
            desk.type("leaf");
            desk.begin();
            desk.type(i % 2 == 0 ? "" : "lea");
            QVERIFY(desk.search->matchIDs().empty());
            desk.begin();
            desk.search.reset();
            QVERIFY(!desk.document.root().isMaterialized());
        }
    }

    void survivesAStormOfCancelledSearches() {
        constexpr int items = 20'000;
        constexpr int rounds = 300;
        std::vector<PlistValue> values;
        values.reserve(items);
        for (int i = 0; i < items; ++i) {
            values.push_back(PlistValue::dictionary(
                {{"key" + std::to_string(i), PlistValue::string("text " + std::to_string(i))}}));
        }
        const SearchDesk desk(PlistValue::array(std::move(values)));
        for (int i = 0; i < rounds; ++i) {
            desk.type(("t " + std::to_string(i)).c_str());
            desk.begin();
            if (i % 3 == 0) {
                QCoreApplication::processEvents();
            }
            if (i % 5 == 0) {
                desk.editor.changeValue(desk.at({static_cast<std::size_t>(i), 0}),
                                        PlistValue::string("edit " + std::to_string(i)));
                desk.begin();
            }
            if (i % 7 == 0) {
                desk.type("");
            }
        }
        QVERIFY(desk.find("edit 100"));
        QCOMPARE(desk.matches(), QStringLiteral("/100/key100"));
    }
};

const RegisteredTest<SearchStateTest> registered;
#include "SearchStateTest.moc"
