#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QUrl>
#include <memory>
#include <vector>

#include "app/model/actions/PlistTransfer.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/document/EmptyState.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/drag/RowDropping.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/model/support/ManualTimer.h"
#include "tests/ui/support/ByName.h"
#include "tests/ui/support/DragOver.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/MouseDrag.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

using std::chrono_literals::operator""ms;

QMimeData* mimeData(const char* type, const QByteArray& bytes) {
    auto* data = new QMimeData;
    data->setData(QLatin1String(type), bytes);
    return data;
}

/// {a: {b: {c: 1}, d: 2}, word: "x"}
PlistValue nested() {
    const PlistValue b = PlistValue::dictionary({{"c", PlistValue::integer(1)}});
    return PlistValue::dictionary(
        {{"a", PlistValue::dictionary({{"b", b}, {"d", PlistValue::integer(2)}})},
         {"word", PlistValue::string("x")}});
}

}  // namespace

/// What is dropped on the rows: moves, copies, and what shows where they go.
class RowDroppingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = makeWindow(Samples::numbers(4));
        auto hover = std::make_unique<ManualTimer>();
        auto scroll = std::make_unique<ManualTimer>();
        hover_ = hover.get();
        scroll_ = scroll.get();
        table().dropping().setTimers(std::move(hover), std::move(scroll));
        item_.reset(mimeData("text/plain", "{ ship = Vesta; }"));
    }

    void cleanup() { window_.reset(); }

    // --- Rows of the same table ---

    void movesARow() {
        dragTo(2, below(4));
        QCOMPARE(keys(), QStringLiteral("k0 k2 k3 k1"));
        QCOMPARE(selectedKeys(), QStringLiteral("k1"));
        QVERIFY(window_->isWindowModified());
        MenuTools::itemOf(*window_, "Undo Move")->trigger();
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2 k3"));
        QVERIFY(!window_->isWindowModified());
    }

    void saysThatRowsOfTheSameTableAreMoved() {
        Qt::DropAction own = Qt::IgnoreAction;
        Qt::DropAction others = Qt::IgnoreAction;
        const auto other = makeWindow(Samples::numbers(2));
        QWidget& otherViewport = *other->view().table().viewport();
        MouseDrag::run(viewport(), keyAt(2),
                       [this, &own, &others, &otherViewport](const MouseDrag&) {
                           own = DragOver(viewport(), *item_).enter(below(4)).action;
                           others = DragOver(otherViewport, *item_).enter(below(1)).action;
                       });
        QCOMPARE(own, Qt::MoveAction);
        QCOMPARE(others, Qt::CopyAction);
    }

    void takesItemsBetweenTheRowsThatASearchLeaves() {
        window_->view().outline().setFilter(NodeIdSet{idOf(0), idOf(2), idOf(4)});
        QCOMPARE(keys(), QStringLiteral("k1 k3"));
        dragTo(1, below(2));
        window_->view().outline().setFilter(std::nullopt);
        QCOMPARE(keys(), QStringLiteral("k0 k2 k3 k1"));
    }

    void movesAllSelectedRows() {
        select({1, 3});
        dragTo(3, below(4));
        QCOMPARE(keys(), QStringLiteral("k1 k3 k0 k2"));
        QCOMPARE(selectedKeys(), QStringLiteral("k0 k2"));
    }

    void movesToTheTop() {
        dragTo(3, above(0));
        QCOMPARE(keys(), QStringLiteral("k2 k0 k1 k3"));
    }

    void movesBelowTheLastRow() {
        dragTo(1, QPoint(50, table().viewport()->height() - 2));
        QCOMPARE(keys(), QStringLiteral("k1 k2 k3 k0"));
    }

    void movesTheNodeItself() {
        const NodeId id = idOf(2);
        dragTo(2, below(4));
        QCOMPARE(idOf(4), id);
    }

    void whatStandsThereAlreadyStaysUnchanged_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("isAbove");
        QTest::newRow("above the first") << 2 << true;
        QTest::newRow("between them") << 2 << false;
        QTest::newRow("below the last") << 3 << false;
    }

    void whatStandsThereAlreadyStaysUnchanged() {
        QFETCH(const int, row);
        QFETCH(const bool, isAbove);
        select({2, 3});
        dragTo(2, isAbove ? above(row) : below(row));
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2 k3"));
        QVERIFY(!window_->isWindowModified());
        QCOMPARE(selectedKeys(), QStringLiteral("k1 k2"));
    }

    void gathersRowsThatStandApart() {
        select({1, 2, 4});
        dragTo(1, below(2));
        QCOMPARE(keys(), QStringLiteral("k0 k1 k3 k2"));
    }

    void refusesToPutARowIntoItself() {
        window_->controller().document().apply({nested(), PlistFormat::xml});
        expand(1);
        bool hasLine = true;
        MouseDrag::run(viewport(), keyAt(1), [this, &hasLine](const MouseDrag& drag) {
            drag.moveTo(viewport(), below(1));
            hasLine = table().dropping().indicator().has_value();
            drag.dropOn(viewport(), below(1));
        });
        QVERIFY(!hasLine);
        QCOMPARE(keys(), QStringLiteral("a b d word"));
        QVERIFY(!window_->isWindowModified());
    }

    void escapeEndsADragWithoutAChange() {
        bool hadLine = false;
        const bool hasBegun =
            MouseDrag::run(viewport(), keyAt(2), [this, &hadLine](const MouseDrag& drag) {
                drag.moveTo(viewport(), below(4));
                hadLine = table().dropping().indicator().has_value();
                QTest::keyClick(&viewport(), Qt::Key_Escape);
            });
        QVERIFY(hasBegun);
        QVERIFY(hadLine);
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2 k3"));
    }

    // --- Rows of other tables ---

    void copiesToAnotherWindow() {
        const auto other = makeWindow(Samples::numbers(2));
        other->move(2000, 0);
        PlistTable& target = other->view().table();
        MouseDrag::run(viewport(), keyAt(2), [&target](const MouseDrag& drag) {
            drag.dropOn(*target.viewport(),
                        target.visualRect(target.model()->index(1, 0)).bottomLeft());
        });
        QCOMPARE(keysOf(*other), QStringLiteral("k0 k1 2 k1"));
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2 k3"));
        QVERIFY(!window_->isWindowModified());
        QVERIFY(MenuTools::itemOf(*other, "Undo Add Item") != nullptr);
    }

    void copiesWhatAnotherProcessCountsAlike() {
        const auto node = window_->view().outline().rows().at(2);
        const PlistTransfer transfer = window_->view().actions().dragItems(node.node());
        const std::unique_ptr<QMimeData> data(mimeData(
            "com.ventrel.tabulet.nodes", transfer.exported(PlistTransfer::Representation::nodes)));
        const DragOver::Answer answer = DragOver(viewport(), *data).enterAndDrop(below(4));
        QVERIFY(answer.isAccepted);
        QCOMPARE(answer.action, Qt::CopyAction);
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2 k3 k1 2"));
    }

    void takesItemsInManyForms_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("bytes");
        const PlistValue value = PlistValue::dictionary({{"ship", PlistValue::string("Vesta")}});
        const QByteArray xml = Samples::bytes(value, PlistFormat::xml);
        const QByteArray binary = Samples::bytes(value, PlistFormat::binary);
        QTest::newRow("XML") << QStringLiteral("application/x-plist") << xml;
        QTest::newRow("XML by its other name") << QStringLiteral("application/x-plist+xml") << xml;
        QTest::newRow("binary") << QStringLiteral("application/x-bplist") << binary;
        QTest::newRow("binary by the common name")
            << QStringLiteral("application/x-plist") << binary;
        QTest::newRow("text") << QStringLiteral("text/plain;charset=utf-8") << xml;
        QTest::newRow("plain text") << QStringLiteral("text/plain") << QByteArray("{ship=Vesta;}");
    }

    void takesItemsInManyForms() {
        QFETCH(const QString, type);
        QFETCH(const QByteArray, bytes);
        const std::unique_ptr<QMimeData> data(mimeData(qPrintable(type), bytes));
        QVERIFY(DragOver(viewport(), *data).enterAndDrop(below(2)).isAccepted);
        QCOMPARE(keys(), QStringLiteral("k0 k1 ship k2 k3"));
        QCOMPARE(selectedKeys(), QStringLiteral("ship"));
    }

    void explainsWhatCannotBeRead_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("explanation");
        QTest::newRow("own form") << QStringLiteral("com.ventrel.tabulet.nodes") << QByteArray("{}")
                                  << QStringLiteral("Invalid dragged items.");
        QTest::newRow("text") << QStringLiteral("text/plain")
                              << QByteArray("<plist><dict></array></plist>")
                              << QStringLiteral("Line 1, column 14: ");
    }

    void explainsWhatCannotBeRead() {
        QFETCH(const QString, type);
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, explanation);
        const std::unique_ptr<QMimeData> data(mimeData(qPrintable(type), bytes));
        QVERIFY(!DragOver(viewport(), *data).enterAndDrop(below(2)).isAccepted);
        const auto* box = window_->findChild<QMessageBox*>();
        QVERIFY(box != nullptr && box->isVisible());
        QCOMPARE(box->text(), QStringLiteral("The dropped items can't be inserted."));
        QVERIFY(box->informativeText().startsWith(explanation));
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2 k3"));
        QVERIFY(!window_->isWindowModified());
    }

    void leavesFilesToTheWindow() {
        QMimeData data;
        data.setUrls({QUrl(QStringLiteral("file:///a.plist"))});
        data.setText(QStringLiteral("{ ship = Vesta; }"));
        QStringList files;
        connect(window_.get(), &DocumentWindow::filesDropped, this,
                [&files](const QStringList& paths) { files = paths; });
        DragOver drag(viewport(), data);
        QVERIFY(drag.enter(below(2)).isAccepted);
        QVERIFY(!table().dropping().indicator());
        QVERIFY(drag.drop(below(2)).isAccepted);
        QCOMPARE(files, QStringList(QStringLiteral("/a.plist")));
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2 k3"));
    }

    void declinesWhatIsNoItem() {
        const std::unique_ptr<QMimeData> data(mimeData("image/png", "x"));
        QVERIFY(!DragOver(viewport(), *data).enter(below(2)).isAccepted);
        QVERIFY(!table().dropping().indicator());
    }

    void declinesWhereTheRootIsNoContainer() {
        window_->controller().document().apply({PlistValue::string("x"), PlistFormat::xml});
        QVERIFY(!DragOver(viewport(), *item_).enter(below(0)).isAccepted);
    }

    void takesItemsForAnEmptyDocument() {
        window_->controller().document().apply({PlistValue::dictionary({}), PlistFormat::xml});
        auto* invitation = window_->findChild<EmptyState*>();
        const auto isFramed = [invitation] {
            return invitation->grab().toImage().pixelColor(1, 1) ==
                   invitation->palette().color(QPalette::Active, QPalette::Highlight);
        };
        QVERIFY(invitation->isVisible());
        // The display system looks for what is below the pointer.
        QCOMPARE(window_->childAt(viewport().mapTo(window_.get(), viewport().rect().center())),
                 &viewport());
        DragOver drag(viewport(), *item_);
        QVERIFY(drag.enter(viewport().rect().center()).isAccepted);
        QVERIFY(isFramed());
        QVERIFY(drag.drop(viewport().rect().center()).isAccepted);
        QVERIFY(!isFramed());
        QVERIFY(!invitation->isVisible());
        QCOMPARE(keys(), QStringLiteral("ship"));
    }

    void appliesAnOpenFieldFirst() {
        select({1});
        QTest::keyClick(&table(), Qt::Key_Return);
        QTRY_VERIFY(ByName::find<QLineEdit>(table(), "Key") != nullptr);
        ByName::find<QLineEdit>(table(), "Key")->setText(QStringLiteral("port"));
        QVERIFY(DragOver(viewport(), *item_).enterAndDrop(below(4)).isAccepted);
        QCOMPARE(keys(), QStringLiteral("port k1 k2 k3 ship"));
        QVERIFY(!window_->view().outline().editing());
    }

    // --- The line ---

    void theLineStandsBetweenTheRows() {
        DragOver drag(viewport(), *item_);
        drag.enter(above(2));
        const int height = CellMetrics(table().font()).rowHeight();
        QCOMPARE(indicator().line.width(), viewport().width());
        QCOMPARE(middle(indicator().line), 2 * height);
        drag.move(below(2));
        QCOMPARE(middle(indicator().line), 3 * height);
        drag.move({50, viewport().height() / 2});
        QCOMPARE(middle(indicator().line), 5 * height);
        drag.leave();
        QVERIFY(!table().dropping().indicator());
    }

    void theLineAtTheTopIsInSight() {
        DragOver drag(viewport(), *item_);
        drag.enter(above(0));
        QVERIFY(viewport().rect().contains(indicator().line));
        QVERIFY(indicator().line.top() < 4);
    }

    void theRingShowsTheLevel() {
        window_->controller().document().apply({nested(), PlistFormat::xml});
        expand(1);
        DragOver drag(viewport(), *item_);
        drag.enter(below(0));
        const DropIndicator inRoot = indicator();
        drag.move(below(1));
        const DropIndicator inA = indicator();
        QCOMPARE(inA.ring.left() - inRoot.ring.left(), CellMetrics(table().font()).indentation());
        QCOMPARE(inRoot.container.top(), table().rowViewportPosition(0));
        QCOMPARE(inA.container.top(), table().rowViewportPosition(1));
        QCOMPARE(inA.container.height(), table().rowHeight(1));
        // Behind a collapsed container is beside it.
        drag.move(below(2));
        QCOMPARE(indicator().ring.left(), inA.ring.left());
        drag.move(below(4));
        QCOMPARE(indicator().ring.left(), inRoot.ring.left());
    }

    void theLineIsPaintedOverTheRows() {
        DragOver drag(viewport(), *item_);
        drag.enter(below(2));
        const QPoint point(viewport().width() - 4, indicator().line.center().y());
        const QColor color = table().palette().color(QPalette::Active, QPalette::Highlight);
        QCOMPARE(viewport().grab().toImage().pixelColor(point), color);
        drag.leave();
        QVERIFY(viewport().grab().toImage().pixelColor(point) != color);
    }

    void theLineGoesWithTheRows() {
        DragOver drag(viewport(), *item_);
        drag.enter(below(4));
        const int before = middle(indicator().line);
        window_->view().actions().deleteSelected();
        select({1});
        window_->view().actions().deleteSelected();
        QCOMPARE(middle(indicator().line), before - CellMetrics(table().font()).rowHeight());
    }

    // --- Resting ---

    void opensAContainerOnWhichADragRests() {
        window_->controller().document().apply({nested(), PlistFormat::xml});
        DragOver drag(viewport(), *item_);
        drag.enter(below(1));
        hover_->advance(SpringLoading::delay - 1ms);
        QCOMPARE(keys(), QStringLiteral("a word"));
        // Moving on the same row does not begin anew.
        drag.move(above(1));
        hover_->advance(1ms);
        QCOMPARE(keys(), QStringLiteral("a b d word"));
        QVERIFY(!hover_->isRunning());
        drag.move(below(1));
        QVERIFY(drag.drop(below(1)).isAccepted);
        QCOMPARE(keys(), QStringLiteral("a ship b d word"));
    }

    void opensNothingThatADragOnlyPasses() {
        window_->controller().document().apply({nested(), PlistFormat::xml});
        DragOver drag(viewport(), *item_);
        drag.enter(below(1));
        hover_->advance(SpringLoading::delay - 1ms);
        drag.move(below(2));
        hover_->advance(SpringLoading::delay);
        drag.move(below(1));
        drag.leave();
        hover_->advance(SpringLoading::delay);
        QCOMPARE(keys(), QStringLiteral("a word"));
    }

    void doesNotOpenWhatIsDragged() {
        window_->controller().document().apply({nested(), PlistFormat::xml});
        bool isRunning = true;
        MouseDrag::run(viewport(), keyAt(1), [this, &isRunning](const MouseDrag& drag) {
            drag.moveTo(viewport(), below(1));
            isRunning = hover_->isRunning();
        });
        QVERIFY(!isRunning);
    }

    void scrollsNearTheEdges() {
        showManyRows();
        const QScrollBar& bar = *table().verticalScrollBar();
        DragOver drag(viewport(), *item_);
        drag.enter(viewport().rect().center());
        QVERIFY(!scroll_->isRunning());
        drag.move({50, viewport().height() - 3});
        scroll_->advance(DragAutoScroll::interval);
        QCOMPARE(bar.value(), DragAutoScroll::acceleration);
        scroll_->advance(DragAutoScroll::interval);
        QCOMPARE(bar.value(), 3 * DragAutoScroll::acceleration);
        drag.move({50, 3});
        scroll_->advance(DragAutoScroll::interval);
        QCOMPARE(bar.value(), 2 * DragAutoScroll::acceleration);
        drag.leave();
        QVERIFY(!scroll_->isRunning());
    }

    void scrollsToTheEnd() {
        showManyRows();
        const QScrollBar& bar = *table().verticalScrollBar();
        DragOver drag(viewport(), *item_);
        const QPoint position(50, viewport().height() - 3);
        drag.enter(position);
        while (scroll_->isRunning()) {
            scroll_->advance(DragAutoScroll::interval);
        }
        QCOMPARE(bar.value(), bar.maximum());
        QVERIFY(viewport().rect().contains(indicator().line));
        QVERIFY(drag.drop(position).isAccepted);
        QVERIFY(keys().endsWith(QStringLiteral("k99 ship")));
    }

    void theLineGoesWithTheScrolledRows() {
        showManyRows();
        DragOver drag(viewport(), *item_);
        const int height = CellMetrics(table().font()).rowHeight();
        drag.enter({50, viewport().height() - height});
        constexpr int steps = 20;
        for (int step = 0; step < steps; ++step) {
            scroll_->advance(DragAutoScroll::interval);
        }
        QVERIFY(table().verticalScrollBar()->value() > height);
        QCOMPARE((middle(indicator().line) + table().verticalScrollBar()->value()) % height, 0);
    }

private:
    static std::unique_ptr<DocumentWindow> makeWindow(const PlistValue& value) {
        auto window = std::make_unique<DocumentWindow>(QStringLiteral("Untitled"));
        window->controller().document().apply({value, PlistFormat::xml});
        window->show();
        if (!QTest::qWaitForWindowExposed(window.get())) {
            qFatal("The window does not appear");
        }
        return window;
    }

    static QString keysOf(DocumentWindow& window) {
        QStringList keys;
        const QAbstractItemModel& model = *window.view().table().model();
        for (int row = 1; row < model.rowCount(); ++row) {
            keys += model.index(row, 0).data().toString();
        }
        return keys.join(QLatin1Char(' '));
    }

    static int middle(const QRect& rect) { return rect.top() + rect.height() / 2; }

    QString keys() { return keysOf(*window_); }

    QString selectedKeys() {
        QStringList keys;
        for (const OutlineRow& row : window_->view().outline().selectedRows()) {
            keys += QString::fromStdString(std::string(row.node().key().view()));
        }
        return keys.join(QLatin1Char(' '));
    }

    PlistTable& table() { return window_->view().table(); }
    QWidget& viewport() { return *table().viewport(); }
    DropIndicator indicator() { return table().dropping().indicator().value(); }

    NodeId idOf(int row) {
        return window_->view().outline().rows().at(static_cast<std::size_t>(row)).nodeId();
    }

    QRect rowRect(int row) { return table().visualRect(table().model()->index(row, 0)); }
    QPoint keyAt(int row) { return rowRect(row).center(); }
    QPoint above(int row) { return rowRect(row).center() - QPoint(0, rowRect(row).height() / 4); }
    QPoint below(int row) { return rowRect(row).center() + QPoint(0, rowRect(row).height() / 4); }

    void showManyRows() {
        window_->controller().document().apply({Samples::numbers(100), PlistFormat::xml});
        QTRY_VERIFY(table().verticalScrollBar()->maximum() > 0);
    }

    void expand(int row) {
        OutlineState& outline = window_->view().outline();
        outline.setExpanded(outline.rows().at(static_cast<std::size_t>(row)).node(),
                            OutlineState::Expansion::expand, OutlineState::Reach::nodeAlone);
    }

    void select(std::initializer_list<int> rows) {
        NodeIdSet ids;
        for (const int row : rows) {
            ids.insert(idOf(row));
        }
        window_->view().outline().select(ids);
    }

    void dragTo(int row, const QPoint& target) {
        QVERIFY(MouseDrag::run(viewport(), keyAt(row), [this, &target](const MouseDrag& drag) {
            drag.dropOn(viewport(), target);
        }));
    }

    std::unique_ptr<DocumentWindow> window_;
    std::unique_ptr<QMimeData> item_;
    ManualTimer* hover_ = nullptr;
    ManualTimer* scroll_ = nullptr;
};

namespace {

int runWithDrags(int argc, char** argv) {
    MouseDrag::choosePlatform();
    return runUiTest<RowDroppingTest>(argc, argv);
}

const RegisteredTest<RowDroppingTest, runWithDrags> registered;

}  // namespace
#include "RowDroppingTest.moc"
