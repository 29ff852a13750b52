#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>
#include <cmath>
#include <memory>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/editors/DataPopover.h"
#include "app/ui/editors/DateValueEditor.h"
#include "app/ui/editors/TypeMenu.h"
#include "app/ui/look/CellMetrics.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "tests/ui/support/ByName.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

/// The menu of types and the check boxes, by mouse and by key.
class CellEditorsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        document_ = std::make_unique<PlistDocument>();
        outline_ = std::make_unique<OutlineState>();
        undoManager_ = std::make_unique<UndoManager>();
        document_->apply({Samples::allTypes(), PlistFormat::xml});
        outline_->follow(*document_);
        table_ = std::make_unique<PlistTable>(
            DocumentActions(*document_, *outline_, undoManager_.get()));
        table_->resize(760, 400);
        table_->show();
        QVERIFY(QTest::qWaitForWindowActive(table_.get()));
        table_->setFocus();
    }

    void cleanup() {
        table_.reset();
        outline_.reset();
    }

    void aClickOnATypeOffersTheOthers() {
        click(rowOf("string"), OutlineTableModel::typeColumn);
        TypeMenu* menu = openMenu();
        QVERIFY(menu != nullptr);
        QCOMPARE(menu->title(), QStringLiteral("Type"));
        QCOMPARE(MenuTools::titlesOf(*menu).join(u' '),
                 QStringLiteral("Dictionary Array String Integer Real Boolean Date Data"));
        for (const QAction* item : menu->actions()) {
            QCOMPARE(item->isChecked(), item->text() == QStringLiteral("String"));
        }
    }

    void choosingATypeIsOneStep() {
        click(rowOf("string"), OutlineTableModel::typeColumn);
        choose("Dictionary");
        QCOMPARE(node("string").type(), PlistType::dictionary);
        QCOMPARE(undoManager_->undoCount(), 1);
        QCOMPARE(undoManager_->undoActionName(), QStringLiteral("Change Type"));
        undoManager_->undo();
        QCOMPARE(node("string").type(), PlistType::string);
    }

    void choosingTheSameTypeChangesNothing() {
        click(rowOf("string"), OutlineTableModel::typeColumn);
        choose("String");
        QCOMPARE(undoManager_->undoCount(), 0);
    }

    void choosingTheSameTypeLeavesAContainerCollapsed() {
        const int rowCount = table_->model()->rowCount();
        click(rowOf("array"), OutlineTableModel::typeColumn);
        choose("Array");
        QCOMPARE(undoManager_->undoCount(), 0);
        QVERIFY(!outline_->isExpanded(node("array").id()));
        QCOMPARE(table_->model()->rowCount(), rowCount);
    }

    void referencesHaveNoChoice() {
        click(rowOf("uid"), OutlineTableModel::typeColumn);
        QVERIFY(openMenu() == nullptr);
        QCOMPARE(table_->model()->index(rowOf("uid"), 1).data().toString(), QStringLiteral("UID"));
    }

    void aKeyOffersTheTypesOfTheCurrentRow() {
        table_->setCurrentIndex(table_->model()->index(rowOf("integer"), 0));
        QTest::keyClick(table_.get(), Qt::Key_F4);
        TypeMenu* menu = openMenu();
        QVERIFY(menu != nullptr);
        QVERIFY(MenuTools::itemOf(*menu, "Integer")->isChecked());
        // Return chooses what the keys have gone to.
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(node("integer").type(), PlistType::real);
    }

    void aClickWithAModifierOnlySelects() {
        QTest::mouseClick(table_->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          cell(rowOf("string"), OutlineTableModel::typeColumn).center());
        QVERIFY(openMenu() == nullptr);
        QCOMPARE(outline_->selection(), NodeIdSet{node("string").id()});
    }

    void aClickOnTheBoxToggles() {
        const bool before = node("boolean").scalar().booleanValue();
        const QModelIndex index =
            table_->model()->index(rowOf("boolean"), OutlineTableModel::valueColumn);
        const QPoint box = table_->checkBoxRect(index).center();
        QTest::mouseClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier, box);
        QCOMPARE(node("boolean").scalar().booleanValue(), !before);
        QCOMPARE(index.data().toString(),
                 before ? QStringLiteral("false") : QStringLiteral("true"));
        QCOMPARE(undoManager_->undoActionName(), QStringLiteral("Change Value"));
        undoManager_->undo();
        QCOMPARE(node("boolean").scalar().booleanValue(), before);
        // Beside the box nothing happens.
        QTest::mouseClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier,
                          cell(rowOf("boolean"), OutlineTableModel::valueColumn).center());
        QCOMPARE(undoManager_->undoCount(), 0);
    }

    void theSpaceBarTogglesTheCurrentRow() {
        const bool before = node("boolean").scalar().booleanValue();
        table_->setCurrentIndex(table_->model()->index(rowOf("boolean"), 0));
        QTest::keyClick(table_.get(), Qt::Key_Space);
        QCOMPARE(node("boolean").scalar().booleanValue(), !before);
        table_->setCurrentIndex(table_->model()->index(rowOf("string"), 0));
        QTest::keyClick(table_.get(), Qt::Key_Space);
        QCOMPARE(undoManager_->undoCount(), 1);
    }

    void aDoubleClickOrTheSpaceBarEditsADate() {
        const double before = node("date").scalar().dateValue();
        QTest::mouseDClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier,
                           cell(rowOf("date"), OutlineTableModel::valueColumn).center());
        auto* field = dateField();
        QVERIFY(field != nullptr && field->hasFocus());
        QCOMPARE(field->geometry(), cell(rowOf("date"), OutlineTableModel::valueColumn));
        const auto* line = field->findChild<QLineEdit*>();
        // The text stands where the cell shows it; the field keeps two pixels free by itself.
        QCOMPARE(line->x() + line->textMargins().left() + 2, CellMetrics(table_->font()).padding());
        field->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(field, Qt::Key_Up);
        QCOMPARE(node("date").scalar().dateValue(), std::floor(before) + 60);
        QCOMPARE(undoManager_->undoActionName(), QStringLiteral("Change Value"));
        QVERIFY(field->isVisible() && field->hasFocus());
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(table_->hasFocus());
        QCOMPARE(undoManager_->undoCount(), 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

        table_->setCurrentIndex(table_->model()->index(rowOf("date"), 0));
        QTest::keyClick(table_.get(), Qt::Key_Space);
        field = dateField();
        QVERIFY(field != nullptr && field->hasFocus());
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(table_->hasFocus());
        QCOMPARE(undoManager_->undoCount(), 1);
    }

    /// The text stands there, but no field that would bring it into its range.
    void aDateOutOfRangeIsOnlyShown() {
        const PlistValue early = PlistValue::date(-1e11);
        node("date").setScalar(early);
        const QModelIndex index =
            table_->model()->index(rowOf("date"), OutlineTableModel::valueColumn);
        QVERIFY(!index.data().toString().isEmpty());
        QTest::mouseDClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier,
                           cell(rowOf("date"), OutlineTableModel::valueColumn).center());
        table_->setCurrentIndex(index);
        QTest::keyClick(table_.get(), Qt::Key_Space);
        QVERIFY(dateField() == nullptr);
        QVERIFY(node("date").scalar() == early);
        QCOMPARE(undoManager_->undoCount(), 0);
    }

    void aDateThatIsHalfTypedIsTakenOver() {
        DateValueEditor* field = typeIntoDate();
        QCOMPARE(undoManager_->undoCount(), 0);
        QVERIFY(table_->commitEditing());
        QCOMPARE(undoManager_->undoActionName(), QStringLiteral("Change Value"));
        QVERIFY(!field->isVisible());
    }

    void aDateGoesWithItsRow() {
        DateValueEditor* field = typeIntoDate();
        const PlistNodePtr item(&node("date"));
        const DocumentActions actions(*document_, *outline_, undoManager_.get());
        actions.editor().remove({&item, 1});
        QVERIFY(!field->isVisible());
        QCOMPARE(undoManager_->undoCount(), 1);
        QCOMPARE(undoManager_->undoActionName(), QStringLiteral("Delete"));
    }

    void aClickOnTheSummaryShowsTheBytes() {
        const QModelIndex index =
            table_->model()->index(rowOf("data"), OutlineTableModel::valueColumn);
        QTest::mouseClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier,
                          table_->linkRect(index).center());
        auto* popover = table_->window()->findChild<DataPopover*>();
        QVERIFY(popover != nullptr && popover->isVisible());
        const PlistValue before = node("data").scalar();
        auto* base64 = ByName::find<QPlainTextEdit>(*popover, "Base64");
        base64->setPlainText(QStringLiteral("QUJD"));
        ByName::press(*popover, "Apply");
        QCOMPARE(index.data().toString(), QStringLiteral("3 bytes · 414243"));
        QCOMPARE(undoManager_->undoActionName(), QStringLiteral("Change Value"));
        // It follows what happens to the item elsewhere.
        undoManager_->undo();
        QVERIFY(node("data").scalar() == before);
        QVERIFY(base64->toPlainText() != QStringLiteral("QUJD"));
        const PlistNodePtr item(&node("data"));
        const DocumentActions actions(*document_, *outline_, undoManager_.get());
        actions.changeType(*item, PlistType::string);
        QVERIFY(!popover->isVisible());
    }

    void exportProposesTheNameOfTheRow_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("name");
        QTest::newRow("key") << 2 << QStringLiteral("a:b");
        QTest::newRow("place") << 3 << QStringLiteral("Item 1");
        QTest::newRow("root") << 0 << QStringLiteral("Root");
    }

    void exportProposesTheNameOfTheRow() {
        QFETCH(int, row);
        QFETCH(QString, name);
        const PlistValue bytes = PlistValue::data(std::vector<std::uint8_t>{1, 2});
        const PlistValue inner = PlistValue::dictionary({{"/a:b", bytes}});
        document_->apply({row == 0 ? bytes : PlistValue::array({inner, bytes}), PlistFormat::xml});
        outline_->setExpanded(document_->root(), OutlineState::Expansion::expand,
                              OutlineState::Reach::wholeSubtree);
        table_->setCurrentIndex(table_->model()->index(row, 0));
        QTest::keyClick(table_.get(), Qt::Key_Space);
        const auto* popover = table_->window()->findChild<DataPopover*>();
        QVERIFY(popover != nullptr);
        ByName::press(*popover, "Export…");
        const auto* dialog = popover->findChild<QFileDialog*>();
        QVERIFY(dialog != nullptr);
        QCOMPARE(QFileInfo(dialog->selectedFiles().value(0)).fileName(), name);
    }

    void theSpaceBarShowsTheBytes() {
        table_->setCurrentIndex(table_->model()->index(rowOf("data"), 0));
        QTest::keyClick(table_.get(), Qt::Key_Space);
        const auto* popover = table_->window()->findChild<DataPopover*>();
        QVERIFY(popover != nullptr && popover->isVisible());
        QCOMPARE(popover->windowTitle(), QStringLiteral("data"));
    }

    void onlyBooleansHaveABox() {
        for (int row = 0; row < table_->model()->rowCount(); ++row) {
            const QModelIndex index = table_->model()->index(row, OutlineTableModel::valueColumn);
            QCOMPARE(table_->checkBoxRect(index).isEmpty(), row != rowOf("boolean"));
        }
    }

private:
    int rowOf(const char* key) const {
        for (int row = 0; row < table_->model()->rowCount(); ++row) {
            if (table_->model()->index(row, 0).data().toString() == QString::fromUtf8(key)) {
                return row;
            }
        }
        return -1;
    }
    PlistNode& node(const char* key) const { return table_->outlineModel().row(rowOf(key)).node(); }
    QRect cell(int row, int column) const {
        return table_->visualRect(table_->model()->index(row, column));
    }
    void click(int row, int column) const {
        QTest::mouseClick(table_->viewport(), Qt::LeftButton, Qt::NoModifier,
                          cell(row, column).center());
    }
    /// Opens the field of the date and types a minute, which is not handed on yet.
    DateValueEditor* typeIntoDate() const {
        table_->setCurrentIndex(table_->model()->index(rowOf("date"), 0));
        QTest::keyClick(table_.get(), Qt::Key_Space);
        auto* field = dateField();
        field->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(field, Qt::Key_5);
        return field;
    }
    DateValueEditor* dateField() const { return ByName::find<DateValueEditor>(*table_, "Date"); }
    /// Chooses a type in the menu that is open.
    void choose(const char* type) const { MenuTools::itemOf(*openMenu(), type)->trigger(); }
    TypeMenu* openMenu() const { return table_->findChild<TypeMenu*>(); }

    std::unique_ptr<PlistDocument> document_;
    std::unique_ptr<OutlineState> outline_;
    std::unique_ptr<UndoManager> undoManager_;
    std::unique_ptr<PlistTable> table_;
};

const RegisteredUiTest<CellEditorsTest> registered;
#include "CellEditorsTest.moc"
