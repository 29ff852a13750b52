#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <optional>
#include <string>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/editors/InlineTextField.h"
#include "app/ui/editors/LongTextEditor.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/editing/InlineEditing.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

using Column = OutlineState::Column;
using Field = std::optional<OutlineState::EditingField>;

/// A table on the screen, with a button below it and {name: "Ada", count: 5, truth: true, list:
/// ["x"]}, all expanded. Its rows are root, name, count, truth, list, x.
struct Window {
    Window() {
        document.apply(
            {PlistValue::dictionary({{"name", PlistValue::string("Ada")},
                                     {"count", PlistValue::integer(5)},
                                     {"truth", PlistValue::boolean(true)},
                                     {"list", PlistValue::array({PlistValue::string("x")})}}),
             PlistFormat::xml});
        outline.follow(document);
        outline.setExpanded(child(3), OutlineState::Expansion::expand,
                            OutlineState::Reach::nodeAlone);
        table = new PlistTable(actions(), &window);
        button = new QPushButton(QStringLiteral("Other"), &window);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(table);
        layout->addWidget(button);
        window.resize(760, 400);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        table->setFocus();
    }

    ~Window() { delete table; }

    DocumentActions actions() { return {document, outline, &undo}; }
    PlistNode& child(std::size_t number) const { return *document.root().children()[number]; }
    NodeId id(std::size_t row) const { return outline.rows()[row].nodeId(); }

    InlineTextField* field() const {
        const auto fields = table->findChildren<InlineTextField*>();
        return fields.size() == 1 && fields.first()->isVisible() ? fields.first() : nullptr;
    }

    /// Begins to edit a row as by a key, and waits until the field can be typed in.
    InlineTextField* edit(std::size_t row, Column column) {
        outline.select({id(row)});
        actions().beginEditing(column);
        return openField();
    }

    InlineTextField* openField() const {
        const bool isOpen =
            QTest::qWaitFor([this] { return field() != nullptr && field()->hasFocus(); });
        return isOpen ? field() : nullptr;
    }

    /// Opens the window of a text that is too long for a field.
    LongTextEditor* editLong(std::size_t row, Column column) {
        outline.select({id(row)});
        actions().beginEditing(column);
        return QTest::qWaitFor([this] { return longEditor() != nullptr; }) ? longEditor() : nullptr;
    }

    LongTextEditor* longEditor() const { return table->findChild<LongTextEditor*>(); }

    /// No field is left, not even one that waits to be deleted.
    bool isClosed() const {
        return !outline.editing() && QTest::qWaitFor([this] {
            return table->findChild<InlineTextField*>() == nullptr && longEditor() == nullptr;
        });
    }

    PlistDocument document;
    UndoManager undo;
    OutlineState outline;
    QWidget window;
    PlistTable* table = nullptr;
    QPushButton* button = nullptr;
};

}  // namespace

class InlineEditingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { window_ = std::make_unique<Window>(); }
    void cleanup() { window_.reset(); }

    // --- Begin ---

    void opensInTheCell() {
        QTest::keyClick(window_->table, Qt::Key_Down);
        QTest::keyClick(window_->table, Qt::Key_Down);
        QTest::keyClick(window_->table, Qt::Key_Return);
        const InlineTextField* key = window_->openField();
        QVERIFY(key != nullptr);
        QCOMPARE(key->text(), QStringLiteral("name"));
        QCOMPARE(key->selectedText(), QStringLiteral("name"));
        QCOMPARE(key->accessibleName(), QStringLiteral("Key"));
        QVERIFY(cell(1, OutlineTableModel::keyColumn).contains(key->geometry()));

        const InlineTextField* value = window_->edit(2, Column::value);
        QVERIFY(value != nullptr);
        QCOMPARE(value->text(), QStringLiteral("5"));
        QCOMPARE(value->accessibleName(), QStringLiteral("Value of count"));
        QVERIFY(cell(2, OutlineTableModel::valueColumn).contains(value->geometry()));
    }

    /// The text does not jump when its edit begins, and the field fills the rest of the cell.
    void theTextKeepsItsPlace() {
        const InlineTextField* value = window_->edit(2, Column::value);
        QCOMPARE(value->geometry(), cell(2, OutlineTableModel::valueColumn));
        const int padding = CellMetrics(window_->table->font()).padding();
        // What the toolkit's fields keep free by themselves.
        constexpr int ownMargin = 2;
        QCOMPARE(value->textMargins().left() + ownMargin, padding);
        QCOMPARE(value->textMargins().right() + ownMargin, padding);
        const InlineTextField* key = window_->edit(2, Column::key);
        QCOMPARE(key->geometry().right(), cell(2, OutlineTableModel::keyColumn).right());
    }

    void beginsWithTheWholeText() {
        const std::string text = std::string(99'000, 'x') + "\nsecond line";
        window_->actions().changeValue(window_->child(0), PlistValue::string(text));
        InlineTextField* field = window_->edit(1, Column::value);
        QCOMPARE(field->text(), QString::fromStdString(text));
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(window_->isClosed());
        QCOMPARE(window_->undo.undoCount(), 1);
    }

    void staysWithItsRow() {
        InlineTextField* field = window_->edit(2, Column::value);
        window_->actions().editor().remove(
            std::vector<PlistNodePtr>{PlistNodePtr(&window_->child(0))});
        QCOMPARE(window_->field(), field);
        QVERIFY(cell(1, OutlineTableModel::valueColumn).contains(field->geometry()));
        window_->table->setColumnWidth(0, 140);
        window_->table->resize(500, 300);
        QTRY_VERIFY(cell(1, OutlineTableModel::valueColumn).contains(field->geometry()));
    }

    void scrollsWithItsRow() {
        window_->document.apply({Samples::numbers(100), PlistFormat::xml});
        InlineTextField* field = window_->edit(90, Column::key);
        QVERIFY(window_->table->viewport()->rect().contains(field->geometry()));
        window_->table->scrollToTop();
        QVERIFY(!window_->table->viewport()->rect().intersects(field->geometry()));
        QVERIFY(cell(90, OutlineTableModel::keyColumn).contains(field->geometry()));
        QTest::keyClicks(field, QStringLiteral("new"));
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(window_->child(89).key() == "new");
    }

    /// A new item may not be what is sought.
    void waitsForTheRow() {
        const NodeIdSet visible{window_->id(0), window_->id(1)};
        window_->outline.setFilter(visible);
        window_->actions().addItem();
        QVERIFY(window_->outline.editing());
        QVERIFY(window_->table->findChild<InlineTextField*>() == nullptr);
        window_->outline.setFilter(std::nullopt);
        QCOMPARE(window_->openField()->text(), QStringLiteral("New Item"));
        window_->outline.setFilter(visible);
        QVERIFY(window_->isClosed());
    }

    void theTableHasItsKeysWhileItWaits() {
        window_->outline.setFilter(NodeIdSet{window_->id(0), window_->id(1), window_->id(2)});
        window_->actions().addItem();
        QVERIFY(window_->outline.editing());
        window_->outline.select({window_->id(1)});
        window_->table->setFocus();
        QTest::keyClick(window_->table, Qt::Key_Return);
        InlineTextField* field = window_->openField();
        QVERIFY(field != nullptr);
        QCOMPARE(field->text(), QStringLiteral("name"));
        QTest::keyClick(field, Qt::Key_Escape);

        window_->outline.select({});
        window_->actions().addItem();
        window_->outline.select({window_->id(1)});
        QTest::keyClick(window_->table, Qt::Key_Delete);
        QVERIFY(window_->child(0).key() == "count");
    }

    // --- End ---

    void returnCommits() {
        InlineTextField* field = window_->edit(2, Column::value);
        QTest::keyClicks(field, QStringLiteral("42"));
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(window_->child(1).value() == PlistValue::integer(42));
        QVERIFY(window_->isClosed());
        QVERIFY(window_->table->hasFocus());
        QCOMPARE(window_->undo.undoActionName(), QStringLiteral("Change Value"));
        window_->undo.undo();
        QVERIFY(window_->child(1).value() == PlistValue::integer(5));
        QVERIFY(!window_->outline.editing());
    }

    void returnShowsWhatIsWrong() {
        InlineTextField* field = window_->edit(2, Column::value);
        QTest::keyClicks(field, QStringLiteral("abc"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(field->error(), QStringLiteral("“abc” is not a valid Integer."));
        QCOMPARE(window_->field(), field);
        QVERIFY(!window_->table->commitEditing());
        field->selectAll();
        QTest::keyClicks(field, QStringLiteral("7"));
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(window_->isClosed());
        QVERIFY(window_->child(1).value() == PlistValue::integer(7));
    }

    void refusesTheKeyOfASibling() {
        InlineTextField* field = window_->edit(2, Column::key);
        QTest::keyClicks(field, QStringLiteral("name"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(field->error(), QStringLiteral("The key “name” already exists."));
        // Dropped when the field is left.
        QTest::mouseClick(window_->table->viewport(), Qt::LeftButton, {},
                          cell(1, OutlineTableModel::keyColumn).center());
        QVERIFY(window_->isClosed());
        QVERIFY(window_->child(1).key() == "count");
        QVERIFY(!window_->undo.canUndo());
    }

    void escapeDrops() {
        InlineTextField* field = window_->edit(1, Column::key);
        QTest::keyClicks(field, QStringLiteral("other"));
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(window_->isClosed());
        QVERIFY(window_->table->hasFocus());
        QVERIFY(!window_->undo.canUndo());
    }

    void tabGoesOnToTheValue() {
        InlineTextField* field = window_->edit(1, Column::key);
        QTest::keyClicks(field, QStringLiteral("first"));
        QTest::keyClick(field, Qt::Key_Tab);
        QVERIFY(window_->child(0).key() == "first");
        QTRY_COMPARE(window_->outline.editing(), (Field{{window_->id(1), Column::value}}));
        InlineTextField* value = window_->openField();
        QCOMPARE(value->text(), QStringLiteral("Ada"));
        QTest::keyClick(value, Qt::Key_Tab);
        QVERIFY(window_->isClosed());
        QVERIFY(window_->table->hasFocus());
    }

    void tabEndsWhereTheValueIsNoText() {
        QTest::keyClick(window_->edit(3, Column::key), Qt::Key_Tab);
        QVERIFY(window_->isClosed());
        QVERIFY(window_->table->hasFocus());
        QTest::keyClick(window_->edit(1, Column::key), Qt::Key_Backtab);
        QVERIFY(window_->isClosed());
        QVERIFY(window_->table->hasFocus());
    }

    void leavesTheFocusWhereItWent() {
        InlineTextField* field = window_->edit(1, Column::value);
        QTest::keyClicks(field, QStringLiteral("Bob"));
        window_->button->setFocus(Qt::MouseFocusReason);
        QVERIFY(window_->child(0).value() == PlistValue::string("Bob"));
        QVERIFY(window_->isClosed());
        QVERIFY(window_->button->hasFocus());
    }

    void endsWithTheRow() {
        InlineTextField* field = window_->edit(2, Column::key);
        QTest::keyClicks(field, QStringLiteral("other"));
        window_->actions().editor().remove(
            std::vector<PlistNodePtr>{PlistNodePtr(&window_->child(1))});
        QVERIFY(window_->isClosed());
        QVERIFY(window_->table->hasFocus());
        QCOMPARE(window_->undo.undoCount(), 1);
    }

    void endsWithTheDocument() {
        QTest::keyClicks(window_->edit(5, Column::value), QStringLiteral("other"));
        window_->document.apply({Samples::numbers(3), PlistFormat::xml});
        QVERIFY(window_->isClosed());
        QVERIFY(window_->document.root().value() == Samples::numbers(3));
    }

    void mayBeOpenWhenTheWindowCloses() {
        QVERIFY(window_->edit(1, Column::key) != nullptr);
        window_.reset();
    }

    void endingAppliesOrDrops() {
        QTest::keyClicks(window_->edit(2, Column::value), QStringLiteral("6"));
        window_->table->endEditing();
        QVERIFY(window_->isClosed());
        QVERIFY(window_->child(1).value() == PlistValue::integer(6));
        QTest::keyClicks(window_->edit(2, Column::value), QStringLiteral("six"));
        window_->table->endEditing();
        QVERIFY(window_->isClosed());
        QVERIFY(window_->child(1).value() == PlistValue::integer(6));
        QVERIFY(window_->table->commitEditing());
    }

    void keysStayInTheField() {
        InlineTextField* field = window_->edit(1, Column::value);
        QTest::keyClick(field, Qt::Key_Left);
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClick(field, Qt::Key_Backspace);
        QTest::keyClick(field, Qt::Key_Backspace);
        QTest::keyClick(field, Qt::Key_Right);
        QCOMPARE(window_->field(), field);
        QCOMPARE(window_->document.root().childCount(), 4);
        QCOMPARE(window_->outline.selection(), NodeIdSet{window_->id(1)});
    }

    /// Keys of the table would drop what is typed, or give the value another type below it.
    void keysOfTheTableRest() {
        InlineTextField* field = window_->edit(1, Column::value);
        QTest::keyClicks(field, QStringLiteral("typed"));
        QTest::keyClick(field, Qt::Key_F2);
        QTest::keyClick(field, Qt::Key_F4);
        QCoreApplication::processEvents();
        QCOMPARE(window_->field(), field);
        QCOMPARE(field->text(), QStringLiteral("typed"));
        QVERIFY(QApplication::activePopupWidget() == nullptr);
        QCOMPARE(window_->outline.editing(), (Field{{window_->id(1), Column::value}}));
    }

    void newItemsBeginWithTheirKey() {
        window_->actions().addItem();
        InlineTextField* field = window_->openField();
        QCOMPARE(field->text(), QStringLiteral("New Item"));
        QTest::keyClicks(field, QStringLiteral("color"));
        QTest::keyClick(field, Qt::Key_Tab);
        InlineTextField* value = window_->openField();
        QTest::keyClicks(value, QStringLiteral("red"));
        QTest::keyClick(value, Qt::Key_Return);
        QVERIFY(window_->child(4).key() == "color");
        QVERIFY(window_->child(4).value() == PlistValue::string("red"));
        QCOMPARE(window_->undo.undoCount(), 3);
    }

    // --- Texts that are too long for a field ---

    void opensLongTextsInAWindow() {
        makeLong();
        const LongTextEditor* editor = window_->editLong(1, Column::value);
        QVERIFY(editor != nullptr);
        QVERIFY(editor->isWindow());
        QVERIFY(window_->field() == nullptr);
        QCOMPARE(editor->windowTitle(), QStringLiteral("name"));
        QVERIFY(longText().toPlainText().size() > LongTextEditor::longestInField);
        QCOMPARE(longText().accessibleName(), QStringLiteral("Value of name"));
    }

    void savingAndUndoingCommitTheWindow() {
        const std::string text = makeLong();
        window_->editLong(1, Column::value);
        QTest::keyClicks(&longText(), QStringLiteral("new "));
        QVERIFY(window_->table->commitEditing());
        QVERIFY(window_->isClosed());
        QVERIFY(window_->child(0).value() == PlistValue::string("new " + text));
        QCOMPARE(window_->undo.undoCount(), 2);
    }

    void lookingAtALongTextIsNoEdit() {
        const std::string text = makeLong("\r\n");
        window_->editLong(1, Column::value);
        window_->table->endEditing();
        QVERIFY(window_->isClosed());
        QVERIFY(window_->child(0).value() == PlistValue::string(text));
        QCOMPARE(window_->undo.undoCount(), 1);
    }

    void theWindowClosesWithItsRow() {
        makeLong();
        window_->editLong(1, Column::value);
        QTest::keyClicks(&longText(), QStringLiteral("new"));
        window_->actions().editor().remove(
            std::vector<PlistNodePtr>{PlistNodePtr(&window_->child(0))});
        QVERIFY(window_->isClosed());
        QCOMPARE(window_->undo.undoCount(), 2);
    }

    void cancellingTheWindowBringsTheTableBack() {
        makeLong();
        window_->editLong(1, Column::value)->reject();
        QVERIFY(window_->isClosed());
        // The display makes the window active again; here there is none to do so.
        QCOMPARE(window_->window.focusWidget(), window_->table);
    }

    void aWindowRefusesTheKeyOfASibling() {
        const std::string key(LongTextEditor::longestInField + 1, 'k');
        window_->actions().rename(window_->child(1), QString::fromStdString(key));
        QVERIFY(window_->editLong(2, Column::key) != nullptr);
        QCOMPARE(longText().accessibleName(), QStringLiteral("Key"));
        longText().selectAll();
        QTest::keyClicks(&longText(), QStringLiteral("name"));
        QVERIFY(!window_->table->commitEditing());
        QCOMPARE(longText().accessibleDescription(),
                 QStringLiteral("The key “name” already exists."));
        QVERIFY(window_->child(1).key() == key);
    }

    void mayHaveItsWindowOpenWhenItGoes() {
        makeLong();
        QVERIFY(window_->editLong(1, Column::value) != nullptr);
        window_.reset();
    }

private:
    /// Gives the first entry a text that no field takes.
    std::string makeLong(const std::string& lineBreak = "\n") {
        const std::string text = std::string(LongTextEditor::longestInField, 'x') + lineBreak + "y";
        window_->actions().changeValue(window_->child(0), PlistValue::string(text));
        return text;
    }

    QPlainTextEdit& longText() const {
        return *window_->longEditor()->findChild<QPlainTextEdit*>();
    }

    QRect cell(int row, int column) const {
        return window_->table->visualRect(window_->table->outlineModel().index(row, column));
    }

    std::unique_ptr<Window> window_;
};

const RegisteredUiTest<InlineEditingTest> registered;
#include "InlineEditingTest.moc"
