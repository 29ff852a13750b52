#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <memory>

#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/view/KeyCell.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

using Column = OutlineState::Column;
using Expansion = OutlineState::Expansion;
using Field = std::optional<OutlineState::EditingField>;
using Reach = OutlineState::Reach;

/// A table on the screen with its document.
struct Window {
    explicit Window(const PlistValue& value) {
        document.apply({value, PlistFormat::xml});
        outline.follow(document);
        table = std::make_unique<PlistTable>(actions());
        table->resize(760, 400);
        table->show();
        QVERIFY(QTest::qWaitForWindowActive(table.get()));
        table->setFocus();
    }

    DocumentActions actions() { return {document, outline}; }
    Field editing() const { return outline.editing(); }
    int rowCount() const { return static_cast<int>(outline.rows().size()); }
    QModelIndex index(int row, int column = 0) const {
        return table->outlineModel().index(row, column);
    }
    QString key(int row) const { return index(row).data().toString(); }
    NodeId id(int row) const { return table->outlineModel().row(row).nodeId(); }
    PlistNode& child(std::size_t number) const { return *document.root().children()[number]; }

    QStringList selectedKeys() const {
        QStringList keys;
        for (const QModelIndex& selected : table->selectionModel()->selectedRows()) {
            keys += selected.data().toString();
        }
        keys.sort();
        return keys;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(table.get(), key, modifiers);
    }

    KeyCell::Parts parts(int row) const {
        QStyleOptionViewItem option;
        option.initFrom(table.get());
        option.rect = table->visualRect(index(row));
        return qobject_cast<KeyCell*>(table->itemDelegateForColumn(0))->parts(option, index(row));
    }

    void click(const QPoint& position, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::mouseClick(table->viewport(), Qt::LeftButton, modifiers, position);
    }

    PlistDocument document;
    OutlineState outline;
    std::unique_ptr<PlistTable> table;
};

/// {a: {b: {c: 1}}, word: "x"}
PlistValue nested() {
    const PlistValue b = PlistValue::dictionary({{"c", PlistValue::integer(1)}});
    return PlistValue::dictionary(
        {{"a", PlistValue::dictionary({{"b", b}})}, {"word", PlistValue::string("x")}});
}

PlistValue stringsOf(const QStringList& texts) {
    std::vector<PlistEntry> entries;
    for (const QString& text : texts) {
        entries.push_back(
            {"k" + std::to_string(entries.size()), PlistValue::string(text.toStdString())});
    }
    return PlistValue::dictionary(std::move(entries));
}

}  // namespace

class PlistTableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void looksLikeAnOutline() {
        const Window window(Samples::allTypes());
        QVERIFY(!window.table->accessibleName().isEmpty());
        QVERIFY(!window.table->showGrid());
        QVERIFY(!window.table->verticalHeader()->isVisible());
        QCOMPARE(window.table->selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(window.table->selectionMode(), QAbstractItemView::ExtendedSelection);
        const int height = CellMetrics(window.table->font()).rowHeight();
        QCOMPARE(window.table->rowHeight(0), height);
        QCOMPARE(window.table->rowHeight(9), height);
        QVERIFY(height > QFontMetrics(window.table->font()).height());
    }

    void followsTheFont() {
        const Window window(Samples::allTypes());
        QFont font = window.table->font();
        font.setPointSizeF(font.pointSizeF() * 3);
        window.table->setFont(font);
        QCOMPARE(window.table->rowHeight(0), CellMetrics(font).rowHeight());
        QVERIFY(window.table->rowHeight(0) > QFontMetrics(font).height());
    }

    // --- Keys ---

    void firstArrowKeySelectsTheRoot() {
        const Window window(nested());
        QVERIFY(window.selectedKeys().isEmpty());
        window.press(Qt::Key_Down);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("Root")});
    }

    void homeAndEndLeadToTheFirstAndTheLastRow() {
        const Window window(nested());
        window.press(Qt::Key_End);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("word")});
        window.press(Qt::Key_Home);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("Root")});
        window.press(Qt::Key_End, Qt::ShiftModifier);
        QCOMPARE(window.selectedKeys().size(), 3);
    }

    void aKeyAsksForRoomForAllItsParts() {
        Window window(nested());
        window.outline.select({window.child(0).id()});
        window.press(Qt::Key_Right, Qt::AltModifier);
        constexpr int rowOfC = 3;
        QCOMPARE(window.key(rowOfC), QStringLiteral("c"));
        QStyleOptionViewItem option;
        option.initFrom(window.table.get());
        const QModelIndex deep = window.index(rowOfC);
        const int asked = window.table->itemDelegateForColumn(0)->sizeHint(option, deep).width();
        const QRect row = window.table->visualRect(deep);
        const int text = option.fontMetrics.horizontalAdvance(QStringLiteral("c"));
        QVERIFY(asked >= window.parts(rowOfC).text.left() - row.left() + text);
    }

    void rightAndLeftExpandAndCollapse() {
        Window window(nested());
        window.outline.select({window.child(0).id()});
        window.press(Qt::Key_Right);
        QCOMPARE(window.rowCount(), 4);
        QCOMPARE(window.key(2), QStringLiteral("b"));
        window.press(Qt::Key_Left);
        QCOMPARE(window.rowCount(), 3);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("a")});
        window.press(Qt::Key_Left);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("Root")});
        QCOMPARE(window.table->currentIndex().row(), 0);
    }

    void altExpandsAll() {
        Window window(nested());
        window.outline.select({window.child(0).id()});
        window.press(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(window.rowCount(), 5);
        window.press(Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(window.rowCount(), 3);
        window.press(Qt::Key_Right);
        QCOMPARE(window.rowCount(), 4);
    }

    void otherModifiersDoNotMatter() {
        Window window(nested());
        window.outline.select({window.child(0).id()});
        window.press(Qt::Key_Right, Qt::AltModifier | Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(window.rowCount(), 5);
    }

    void leavesArrowsToTheFieldBeingEdited() {
        Window window(nested());
        window.outline.select({window.child(0).id()});
        window.outline.setEditing(
            OutlineState::EditingField{window.child(0).id(), OutlineState::Column::key});
        window.press(Qt::Key_Right);
        QCOMPARE(window.rowCount(), 3);
    }

    void refusesToExpandWithoutEnd() {
        // Two references to the level below on each of 40 levels.
        PlistValue value = PlistValue::array();
        for (int i = 0; i < 40; ++i) {
            value = PlistValue::array({value, value});
        }
        Window window(value);
        const QSignalSpy refused(window.table.get(), &PlistTable::expansionRefused);
        window.outline.select({window.document.root().id()});
        window.press(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(refused.count(), 1);
        QCOMPARE(window.rowCount(), 3);
    }

    // --- Pointer ---

    void chevronTogglesByMouse() {
        const Window window(nested());
        QVERIFY(window.parts(2).disclosure.isEmpty());
        const QRect chevron = window.parts(1).disclosure;
        QCOMPARE(chevron.size(), QSize(12, 12));
        window.click(chevron.center());
        QCOMPARE(window.rowCount(), 4);
        QVERIFY(window.outline.isExpanded(window.id(1)));
        QVERIFY(window.selectedKeys().isEmpty());
        window.click(chevron.center());
        QCOMPARE(window.rowCount(), 3);
    }

    void twoQuickClicksOnTheChevronAreTwo() {
        const Window window(nested());
        const QPoint chevron = window.parts(1).disclosure.center();
        window.click(chevron);
        QTest::mouseDClick(window.table->viewport(), Qt::LeftButton, {}, chevron);
        QCOMPARE(window.rowCount(), 3);
    }

    void altClickTogglesAll() {
        const Window window(nested());
        window.click(window.parts(1).disclosure.center(), Qt::AltModifier);
        QCOMPARE(window.rowCount(), 5);
    }

    void clickOnTextSelects() {
        const Window window(nested());
        window.click(window.parts(1).text.center());
        QCOMPARE(window.rowCount(), 3);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("a")});
        QCOMPARE(window.outline.selection(), NodeIdSet{window.id(1)});
    }

    // --- Selection ---

    void selectionGoesToTheOutline() {
        Window window(nested());
        window.press(Qt::Key_Down);
        window.press(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(window.outline.selection(), (NodeIdSet{window.id(0), window.id(1)}));
        window.press(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(window.outline.selection().size(), 3);
        window.table->clearSelection();
        QVERIFY(window.outline.selection().isEmpty());
    }

    void selectionComesFromTheOutline() {
        Window window(nested());
        window.outline.select({window.id(0), window.id(2)});
        QCOMPARE(window.selectedKeys(),
                 (QStringList{QStringLiteral("Root"), QStringLiteral("word")}));
        QCOMPARE(window.table->currentIndex().row(), 0);
        window.outline.select({window.id(1)});
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("a")});
        QCOMPARE(window.table->currentIndex().row(), 1);
    }

    void selectionSurvivesExpanding() {
        Window window(nested());
        const NodeIdSet both{window.id(1), window.id(2)};
        window.outline.select(both);
        window.outline.setExpanded(window.child(0), Expansion::expand, Reach::nodeAlone);
        QCOMPARE(window.selectedKeys(), (QStringList{QStringLiteral("a"), QStringLiteral("word")}));
        QCOMPARE(window.outline.selection(), both);
    }

    void rowsThatVanishAreDeselected() {
        Window window(nested());
        window.outline.setExpanded(window.child(0), Expansion::expand, Reach::wholeSubtree);
        window.outline.select({window.id(2), window.id(4)});
        window.outline.setExpanded(window.child(0), Expansion::collapse, Reach::nodeAlone);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("word")});
        QCOMPARE(window.outline.selection(), NodeIdSet{window.id(2)});
    }

    void rowsThatASearchHidesAreDeselected() {
        constexpr int count = 5'000;
        Window window(Samples::numbers(count));
        NodeIdSet visible{window.id(0)};
        NodeIdSet selected;
        for (int row = 1; row <= count; ++row) {
            selected.insert(window.id(row));
            if (row % 2 == 0) {
                visible.insert(window.id(row));
            }
        }
        window.outline.select(selected);
        window.outline.setFilter(visible);
        QCOMPARE(window.outline.selection().size(), count / 2);
        QCOMPARE(window.table->selectionModel()->selectedRows().size(), count / 2);
    }

    void selectionFollowsMovedRows() {
        Window window(nested());
        window.outline.select({window.child(1).id()});
        const PlistNodePtr a(&window.child(0));
        const PlistNodePtr word(&window.child(1));
        const PlistNodePtr swapped[] = {word, a};
        window.document.root().setChildren(swapped);
        window.outline.rebuild(window.document.root());
        QCOMPARE(window.key(1), QStringLiteral("word"));
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("word")});
    }

    void anotherRootClearsTheSelection() {
        Window window(nested());
        window.outline.select({window.id(1)});
        window.document.apply({Samples::allTypes(), PlistFormat::xml});
        window.outline.rebuild(window.document.root());
        QVERIFY(window.selectedKeys().isEmpty());
        QCOMPARE(window.rowCount(), 10);
    }

    // --- Sight ---

    void selectedRowComesIntoView() {
        Window window(Samples::numbers(1000));
        window.outline.select({window.id(900)});
        const QRect row = window.table->visualRect(window.index(900));
        QVERIFY(window.table->viewport()->rect().contains(row.center()));
    }

    /// What is in sight stays where it is when rows come and go above it.
    void staysWhereItWas() {
        const PlistValue box = PlistValue::dictionary(
            {{"first", Samples::numbers(500)}, {"second", Samples::numbers(500)}});
        Window window(box);
        window.outline.setExpanded(window.child(1), Expansion::expand, Reach::nodeAlone);
        window.outline.select({window.id(300)});
        window.table->scrollTo(window.index(300), QAbstractItemView::PositionAtCenter);
        const int top = window.table->rowViewportPosition(300);

        window.outline.setExpanded(window.child(0), Expansion::expand, Reach::nodeAlone);
        QCOMPARE(window.table->currentIndex().row(), 800);
        QCOMPARE(window.table->rowViewportPosition(800), top);
        window.outline.setExpanded(window.child(0), Expansion::collapse, Reach::nodeAlone);
        QCOMPARE(window.table->currentIndex().row(), 300);
        QCOMPARE(window.table->rowViewportPosition(300), top);
    }

    void expandingDoesNotScroll() {
        const PlistValue box = PlistValue::dictionary(
            {{"first", Samples::numbers(100)}, {"second", Samples::numbers(100)}});
        Window window(box);
        window.outline.setExpanded(window.child(0), Expansion::expand, Reach::nodeAlone);
        window.table->verticalScrollBar()->setValue(777);
        window.outline.setExpanded(window.child(1), Expansion::expand, Reach::nodeAlone);
        QCOMPARE(window.table->verticalScrollBar()->value(), 777);
    }

    // --- Columns ---

    void columnsHaveTheirLimits() {
        const Window window(nested());
        const QHeaderView* header = window.table->horizontalHeader();
        QCOMPARE(header->sectionSize(0), 260);
        QCOMPARE(header->sectionSize(1), 110);
        QCOMPARE(header->sectionSize(2), window.table->viewport()->width() - 260 - 110);

        window.table->setColumnWidth(0, 20);
        QCOMPARE(header->sectionSize(0), 140);
        window.table->setColumnWidth(0, 400);
        QCOMPARE(header->sectionSize(0), 400);
        window.table->setColumnWidth(1, 20);
        QCOMPARE(header->sectionSize(1), 90);
        window.table->setColumnWidth(1, 500);
        QCOMPARE(header->sectionSize(1), 140);
        QCOMPARE(header->sectionSize(2), window.table->viewport()->width() - 400 - 140);
    }

    void lastColumnFillsTheTable() {
        const Window window(nested());
        const QHeaderView* header = window.table->horizontalHeader();
        window.table->resize(1000, 400);
        QCOMPARE(header->length(), window.table->viewport()->width());
        window.table->resize(300, 400);
        QCOMPARE(header->sectionSize(2), 120);
        window.table->resize(760, 400);
        window.table->setColumnWidth(2, 900);
        QCOMPARE(header->sectionSize(2), 900);
        window.table->setColumnWidth(2, 10);
        QCOMPARE(header->sectionSize(2), window.table->viewport()->width() - 370);
    }

    // --- Cells ---

    void indentsByDepth() {
        Window window(nested());
        window.outline.setExpanded(window.child(0), Expansion::expand, Reach::wholeSubtree);
        const int left = window.parts(0).text.left();
        for (int row = 0; row < 4; ++row) {
            QCOMPARE(window.parts(row).text.left(), left + 14 * row);
        }
        QCOMPARE(window.parts(4).text.left(), left + 14);
        QCOMPARE(window.parts(0).text.left() - window.parts(0).disclosure.right() - 1, 4);
    }

    void marksDuplicateKeys() {
        const Window window(
            PlistValue::dictionary({{"a", PlistValue::integer(1)},
                                    {"b", PlistValue::integer(2)},
                                    {"a", PlistValue::integer(3)},
                                    {std::string(300, 'w'), PlistValue::integer(4)},
                                    {std::string(300, 'w'), PlistValue::integer(5)}}));
        QVERIFY(window.parts(0).duplicateSign.isEmpty());
        QVERIFY(window.parts(2).duplicateSign.isEmpty());
        for (const int row : {1, 3, 4, 5}) {
            const KeyCell::Parts parts = window.parts(row);
            QCOMPARE(parts.duplicateSign.size(), QSize(12, 12));
            QVERIFY(parts.duplicateSign.left() > parts.text.right());
            QVERIFY(window.table->visualRect(window.index(row)).contains(parts.duplicateSign));
        }
    }

    void saysWhatTheSignMeans() {
        const Window window(
            PlistValue::dictionary({{"a", PlistValue::integer(1)}, {"a", PlistValue::integer(3)}}));
        for (const int row : {1, 2}) {
            QToolTip::hideText();
            const QPoint sign = window.parts(row).duplicateSign.center();
            QHelpEvent event(QEvent::ToolTip, sign, window.table->viewport()->mapToGlobal(sign));
            QApplication::sendEvent(window.table->viewport(), &event);
            QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText().simplified(),
                     QStringLiteral("Duplicate key: only one of them is used when the file is "
                                    "read."));
        }
    }

    void paintsAllCells() {
        const Window window(Samples::allTypes());
        const QImage image = window.table->viewport()->grab().toImage();
        for (int row = 0; row < window.rowCount(); ++row) {
            for (int column = 0; column < 3; ++column) {
                const QRect cell = window.table->visualRect(window.index(row, column));
                QVERIFY2(hasInk(image.copy(scaled(cell, image))),
                         qPrintable(QStringLiteral("%1, %2").arg(row).arg(column)));
            }
        }
    }

    /// A text that does not fit ends in an ellipsis, and stays on its line.
    void cutsTextsThatDoNotFit() {
        const QString text = QString(20, u'W');
        Window window(stringsOf({text, text + QStringLiteral("iiii"), QString(20, u'x')}));
        window.table->setColumnWidth(OutlineTableModel::keyColumn, 520);
        const auto picture = [&window](int row) {
            return pictureOf(window, window.table->visualRect(
                                         window.index(row, OutlineTableModel::valueColumn)));
        };
        const QImage cut = picture(1);
        QVERIFY(hasInk(cut));
        // Rows take turns with their grounds.
        QVERIFY(picture(3) != cut);
        const QFontMetrics metrics(window.table->font());
        QStyleOptionViewItem option;
        option.initFrom(window.table.get());
        option.rect = window.table->visualRect(window.index(1, OutlineTableModel::valueColumn));
        const int room = option.rect.width() - 2 * CellMetrics(option.font).padding();
        const QString shown = metrics.elidedText(text, Qt::ElideRight, room);
        QVERIFY(shown.endsWith(QChar(0x2026)));
        window.child(0).setScalar(PlistValue::string(shown.toStdString()));
        QCOMPARE(picture(1), cut);
        window.child(0).setScalar(
            PlistValue::string((text + QStringLiteral("iiii")).toStdString()));
        QCOMPARE(picture(1), cut);
    }

    void chevronTurns() {
        Window window(nested());
        const QRect chevron = window.parts(1).disclosure;
        const QImage collapsed = pictureOf(window, chevron);
        QVERIFY(hasInk(collapsed));
        // Higher than wide it points to the side, wider than high it points down.
        QVERIFY(extentOf(collapsed).height() > extentOf(collapsed).width());
        window.outline.setExpanded(window.child(0), Expansion::expand, Reach::nodeAlone);
        const QImage expanded = pictureOf(window, chevron);
        QVERIFY(hasInk(expanded));
        QVERIFY(extentOf(expanded).width() > extentOf(expanded).height());
    }

    // --- Editing ---

    void deletesByKey() {
        Window window(Samples::numbers(6));
        window.outline.select({window.id(2), window.id(3)});
        window.press(Qt::Key_Delete);
        QCOMPARE(window.rowCount(), 5);
        QCOMPARE(window.selectedKeys(), QStringList{QStringLiteral("k3")});
        QCOMPARE(window.table->currentIndex().row(), 2);
        window.press(Qt::Key_Backspace);
        QCOMPARE(window.rowCount(), 4);
        window.press(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(window.rowCount(), 4);
    }

    void editsTheKeyByReturn() {
        Window window(Samples::numbers(3));
        window.press(Qt::Key_Return);
        QCoreApplication::processEvents();
        QVERIFY(!window.outline.editing());
        window.outline.select({window.id(2)});
        window.press(Qt::Key_Return);
        QTRY_VERIFY(window.outline.editing());
        QCOMPARE(window.editing(), (Field{{window.id(2), Column::key}}));
        window.outline.setEditing(std::nullopt);
        window.press(Qt::Key_Enter, Qt::KeypadModifier);
        QTRY_VERIFY(window.outline.editing());
    }

    void editsTheKeyByReturnWithAnyModifier_data() {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::newRow("Control") << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Alt") << Qt::KeyboardModifiers(Qt::AltModifier);
    }

    void editsTheKeyByReturnWithAnyModifier() {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        Window window(Samples::numbers(3));
        window.outline.select({window.id(2)});
        window.press(Qt::Key_Return, modifiers);
        QTRY_COMPARE(window.editing(), (Field{{window.id(2), Column::key}}));
    }

    void editsWhatIsDoubleClicked() {
        Window window(Samples::numbers(3));
        const auto doubleClick = [&window](int row, int column) {
            const QPoint center = window.table->visualRect(window.index(row, column)).center();
            window.outline.setEditing(std::nullopt);
            QTest::mouseClick(window.table->viewport(), Qt::LeftButton, {}, center);
            QTest::mouseDClick(window.table->viewport(), Qt::LeftButton, {}, center);
            QCoreApplication::processEvents();
            return window.editing();
        };
        QCOMPARE(doubleClick(1, 0), (Field{{window.id(1), Column::key}}));
        QCOMPARE(doubleClick(2, 2), (Field{{window.id(2), Column::value}}));
        // Over a type: the value, if it is text.
        QCOMPARE(doubleClick(3, 1), (Field{{window.id(3), Column::value}}));
        QCOMPARE(window.outline.pointerColumn(), std::nullopt);
        QCOMPARE(doubleClick(0, 0), Field());
    }

    void endsEditingWithTheRow() {
        Window window(Samples::numbers(3));
        window.outline.setEditing(Field{{window.id(2), Column::key}});
        window.actions().editor().remove(std::vector<PlistNodePtr>{PlistNodePtr(&window.child(1))});
        QCOMPARE(window.editing(), Field());
        QVERIFY(window.table->hasFocus());
    }

private:
    static QRect scaled(const QRect& rect, const QImage& image) {
        const qreal scale = image.devicePixelRatio();
        return {(QPointF(rect.topLeft()) * scale).toPoint(),
                (QSizeF(rect.size()) * scale).toSize()};
    }

    static QImage pictureOf(const Window& window, const QRect& rect) {
        return window.table->viewport()->grab(rect).toImage();
    }

    /// What is painted in another colour than the corner.
    static QRect extentOf(const QImage& image) {
        QRect extent;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != image.pixel(0, 0)) {
                    extent |= QRect(x, y, 1, 1);
                }
            }
        }
        return extent;
    }

    static bool hasInk(const QImage& image) { return !extentOf(image).isEmpty(); }
};

const RegisteredUiTest<PlistTableTest> registered;
#include "PlistTableTest.moc"
