#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <memory>

#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/drag/DragPixmap.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/MouseDrag.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

/// Takes whatever is dropped on it, as another program would.
class Taker : public QWidget {
public:
    explicit Taker(Qt::DropAction action) : action_(action) { setAcceptDrops(true); }

    QStringList formats;
    QByteArray xml;
    Qt::DropActions possibleActions = Qt::IgnoreAction;
    Qt::DropAction proposedAction = Qt::IgnoreAction;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override {
        proposedAction = event->proposedAction();
        event->setDropAction(action_);
        event->accept();
    }

    void dropEvent(QDropEvent* event) override {
        formats = event->mimeData()->formats();
        xml = event->mimeData()->data(QStringLiteral("application/x-plist"));
        possibleActions = event->possibleActions();
        event->setDropAction(action_);
        event->accept();
    }

private:
    Qt::DropAction action_;
};

}  // namespace

/// Taking hold of rows and dragging them out of the window.
class RowDraggingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = std::make_unique<DocumentWindow>(QStringLiteral("Untitled"));
        window_->controller().document().apply({Samples::numbers(4), PlistFormat::xml});
        window_->show();
        makeTaker(Qt::CopyAction);
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }

    void cleanup() {
        taker_.reset();
        window_.reset();
    }

    void offersTheRowInAllForms() {
        QVERIFY(dragOut(2));
        QCOMPARE(taker_->formats, (QStringList{QStringLiteral("com.ventrel.tabulet.nodes"),
                                               QStringLiteral("application/x-plist"),
                                               QStringLiteral("text/plain;charset=utf-8"),
                                               QStringLiteral("text/plain")}));
        QCOMPARE(Samples::valueOf(taker_->xml), dictionary({1}));
        QCOMPARE(taker_->possibleActions, Qt::CopyAction | Qt::MoveAction);
        QCOMPARE(taker_->proposedAction, Qt::CopyAction);
    }

    void takesAnUnselectedRowAlone() {
        select({1, 2});
        QVERIFY(dragOut(4));
        QCOMPARE(Samples::valueOf(taker_->xml), dictionary({3}));
    }

    void takesAllSelectedRows() {
        select({1, 2, 4});
        QVERIFY(dragOut(2));
        QCOMPARE(Samples::valueOf(taker_->xml), dictionary({0, 1, 3}));
        QCOMPARE(table().selectionModel()->selectedRows().size(), 3);
    }

    void aClickOnASelectedRowSelectsItAlone() {
        select({1, 2});
        QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, keyAt(2));
        QCOMPARE(table().selectionModel()->selectedRows().size(), 1);
    }

    void keepsTheRowsEvenWhereTheyWereTakenAsMoved() {
        makeTaker(Qt::MoveAction);
        QVERIFY(dragOut(2));
        QCOMPARE(Samples::valueOf(taker_->xml), dictionary({1}));
        QCOMPARE(table().model()->rowCount(), 5);
        QVERIFY(!window_->isWindowModified());
    }

    void nothingElseIsAHandle_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("type") << 2 << 1 << int(Qt::NoModifier);
        QTest::newRow("value") << 2 << 2 << int(Qt::NoModifier);
        QTest::newRow("root") << 0 << 0 << int(Qt::NoModifier);
        QTest::newRow("extending the selection") << 2 << 0 << int(Qt::ShiftModifier);
        QTest::newRow("adding to the selection") << 2 << 0 << int(Qt::ControlModifier);
    }

    void nothingElseIsAHandle() {
        QFETCH(const int, row);
        QFETCH(const int, column);
        QFETCH(const int, modifiers);
        QVERIFY(!MouseDrag::run(*table().viewport(), centerOf(row, column), doNothing,
                                Qt::KeyboardModifiers(modifiers)));
    }

    void theDisclosureControlIsNoHandle() {
        const QPoint control = table().disclosureRect(table().model()->index(0, 0)).center();
        QVERIFY(table().isOnDisclosure(control));
        QVERIFY(!MouseDrag::run(*table().viewport(), control, doNothing));
        QCOMPARE(table().model()->rowCount(), 1);
    }

    void aShortPullIsAClick() {
        const QPoint position = keyAt(2);
        QTest::mousePress(table().viewport(), Qt::LeftButton, Qt::NoModifier, position);
        QTest::mouseMove(table().viewport(), position + QPoint(0, 3));
        QTest::mouseRelease(table().viewport(), Qt::LeftButton, Qt::NoModifier,
                            position + QPoint(0, 3));
        QCOMPARE(table().selectionModel()->selectedRows().size(), 1);
        QCOMPARE(taker_->proposedAction, Qt::IgnoreAction);
    }

    void survivesTheEndOfItsWindow() {
        const bool hasBegun = MouseDrag::run(*table().viewport(), keyAt(2),
                                             [this](const MouseDrag&) { window_.reset(); });
        QVERIFY(hasBegun);
    }

    void thePictureShowsAFewNames() {
        const QStringList names{QStringLiteral("one"), QStringLiteral("two"),
                                QStringLiteral("three"), QStringLiteral("four")};
        const QSize one = DragPixmap::of(names.mid(0, 1), 1, table()).size();
        const QSize two = DragPixmap::of(names.mid(0, 2), 2, table()).size();
        const QSize three = DragPixmap::of(names.mid(0, 3), 3, table()).size();
        QVERIFY(one.height() < two.height());
        QVERIFY(two.height() < three.height());
        QCOMPARE(DragPixmap::of(names, 4, table()).size(), three);
        QVERIFY(DragPixmap::of(names.mid(0, 1), 1000000, table()).width() > one.width());
    }

    void thePictureCutsLongNames() {
        const QString name(10000, QLatin1Char('m'));
        QVERIFY(DragPixmap::of({name}, 1, table()).width() < 600);
    }

private:
    static void doNothing(const MouseDrag& drag) { Q_UNUSED(drag); }

    /// What `Samples::numbers` has under these numbers.
    static PlistValue dictionary(std::initializer_list<int> numbers) {
        std::vector<PlistEntry> entries;
        for (const int number : numbers) {
            entries.push_back({"k" + std::to_string(number), PlistValue::integer(number)});
        }
        return PlistValue::dictionary(std::move(entries));
    }

    void makeTaker(Qt::DropAction action) {
        taker_ = std::make_unique<Taker>(action);
        taker_->setGeometry(2000, 0, 200, 200);
        taker_->show();
    }

    PlistTable& table() { return window_->view().table(); }

    QPoint centerOf(int row, int column) {
        return table().visualRect(table().model()->index(row, column)).center();
    }

    QPoint keyAt(int row) { return centerOf(row, 0); }

    void select(std::initializer_list<int> rows) {
        NodeIdSet ids;
        for (const int row : rows) {
            ids.insert(window_->view().outline().rows().at(static_cast<std::size_t>(row)).nodeId());
        }
        window_->view().outline().select(ids);
    }

    bool dragOut(int row) {
        return MouseDrag::run(*table().viewport(), keyAt(row), [this](const MouseDrag& drag) {
            drag.dropOn(*taker_, {50, 50});
        });
    }

    std::unique_ptr<DocumentWindow> window_;
    std::unique_ptr<Taker> taker_;
};

namespace {

int runWithDrags(int argc, char** argv) {
    MouseDrag::choosePlatform();
    return runUiTest<RowDraggingTest>(argc, argv);
}

const RegisteredTest<RowDraggingTest, runWithDrags> registered;

}  // namespace
#include "RowDraggingTest.moc"
