#include <QAccessible>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <memory>
#include <vector>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/editors/InlineTextField.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/accessibility/AccessibleCell.h"
#include "app/ui/table/accessibility/AccessibleTable.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

/// A table on the screen, and what a screen reader sees of it.
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

    DocumentActions actions() { return {document, outline, &undo}; }
    QAccessibleInterface* seen() const {
        return QAccessible::queryAccessibleInterface(table.get());
    }
    QAccessibleInterface* cell(int row, int column) const {
        return seen()->tableInterface()->cellAt(row, column);
    }
    QString name(int row, int column) const { return cell(row, column)->text(QAccessible::Name); }
    QString description(int row) const { return cell(row, 0)->text(QAccessible::Description); }
    void act(int row, int column, const char* action) const {
        cell(row, column)->actionInterface()->doAction(QString::fromLatin1(action));
    }
    QStringList actionsOf(int row, int column) const {
        QStringList names = cell(row, column)->actionInterface()->actionNames();
        names.removeAll(QAccessibleActionInterface::setFocusAction());
        return names;
    }

    PlistDocument document;
    OutlineState outline;
    UndoManager undo;
    std::unique_ptr<PlistTable> table;
};

PlistValue port() {
    const PlistValue ships = PlistValue::dictionary(
        {{"name", PlistValue::string("Anna")}, {"name", PlistValue::string("Berta")}});
    return PlistValue::dictionary(
        {{"ships", ships}, {"open", PlistValue::boolean(true)}, {"piers", PlistValue::integer(4)}});
}

}  // namespace

class AccessibleTableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isATableWithHeadersAndCells() {
        const Window window(port());
        QAccessibleInterface* table = window.seen();
        QCOMPARE(table->role(), QAccessible::Table);
        QCOMPARE(table->text(QAccessible::Name), QStringLiteral("Property list"));
        QCOMPARE(table->tableInterface()->rowCount(), 4);
        QCOMPARE(table->tableInterface()->columnCount(), 3);
        QCOMPARE(table->childCount(), 15);

        const QStringList headers{QStringLiteral("Key"), QStringLiteral("Type"),
                                  QStringLiteral("Value")};
        for (int column = 0; column < 3; ++column) {
            QAccessibleInterface* header = table->child(column);
            QCOMPARE(header->role(), QAccessible::ColumnHeader);
            QCOMPARE(header->text(QAccessible::Name), headers[column]);
            QCOMPARE(table->indexOfChild(header), column);
            QCOMPARE(table->tableInterface()->columnDescription(column), headers[column]);
        }
        QCOMPARE(table->child(15), nullptr);
        QCOMPARE(table->child(-1), nullptr);
        QCOMPARE(table->tableInterface()->cellAt(4, 0), nullptr);
    }

    void cellsStandRowByRowBehindTheHeaders() {
        const Window window(port());
        for (int row = 0; row < 4; ++row) {
            for (int column = 0; column < 3; ++column) {
                const int number = (row + 1) * 3 + column;
                QAccessibleInterface* cell = window.seen()->child(number);
                QCOMPARE(cell, window.cell(row, column));
                QCOMPARE(window.seen()->indexOfChild(cell), number);
                QCOMPARE(cell->role(), QAccessible::Cell);
                QCOMPARE(cell->parent(), window.seen());
                QCOMPARE(cell->tableCellInterface()->rowIndex(), row);
                QCOMPARE(cell->tableCellInterface()->columnIndex(), column);
                QCOMPARE(cell->tableCellInterface()->columnHeaderCells().first(),
                         window.seen()->child(column));
            }
        }
        QCOMPARE(window.cell(2, 2)->tableCellInterface()->rowHeaderCells().first(),
                 window.cell(2, 0));
    }

    void cellsSayWhatTheyShow() {
        const Window window(port());
        QCOMPARE(window.name(0, 0), QStringLiteral("Root"));
        QCOMPARE(window.name(1, 0), QStringLiteral("ships"));
        QCOMPARE(window.name(1, 1), QStringLiteral("Dictionary"));
        QCOMPARE(window.name(1, 2), QStringLiteral("2 items"));
        QCOMPARE(window.name(3, 2), QStringLiteral("4"));
        QCOMPARE(window.description(0), QStringLiteral("level 0, expanded"));
        QCOMPARE(window.description(1), QStringLiteral("level 1, collapsed"));
        QCOMPARE(window.description(3), QStringLiteral("level 1"));
        window.act(1, 0, "Expand");
        QCOMPARE(window.description(2),
                 QStringLiteral("level 2, Duplicate key: only one of them is used when the file "
                                "is read."));
    }

    void cellsAreWhereTheyAreDrawn() {
        const Window window(port());
        for (const int row : {0, 3}) {
            QAccessibleInterface* cell = window.cell(row, 2);
            const QPoint centre = cell->rect().center();
            QCOMPARE(window.seen()->childAt(centre.x(), centre.y()), cell);
            QVERIFY(!cell->state().offscreen);
        }
        QAccessibleInterface* header = window.seen()->child(1);
        const QPoint centre = header->rect().center();
        QCOMPARE(window.seen()->childAt(centre.x(), centre.y()), header);
    }

    void containersExpandAndCollapse() {
        const Window window(port());
        QVERIFY(window.cell(1, 0)->state().expandable);
        QVERIFY(window.cell(1, 0)->state().collapsed);
        QVERIFY(!window.cell(3, 0)->state().expandable);
        QCOMPARE(window.actionsOf(1, 0),
                 QStringList({QStringLiteral("Expand"), QStringLiteral("Edit")}));
        window.act(1, 0, "Expand");
        QCOMPARE(window.outline.rows().size(), std::size_t{6});
        QVERIFY(window.cell(1, 0)->state().expanded);
        QCOMPARE(window.actionsOf(1, 0).first(), QStringLiteral("Collapse"));
        QCOMPARE(
            window.cell(1, 0)->actionInterface()->keyBindingsForAction(QStringLiteral("Collapse")),
            QStringList(QStringLiteral("Left")));
        window.act(1, 0, "Collapse");
    }

    void cellsFollowTheirItems() {
        Window window(port());
        QAccessibleInterface* piers = window.cell(3, 0);
        QAccessibleInterface* ships = window.cell(1, 0);
        window.act(1, 0, "Expand");
        QCOMPARE(piers->tableCellInterface()->rowIndex(), 5);
        QCOMPARE(window.cell(5, 0), piers);
        QCOMPARE(piers->text(QAccessible::Name), QStringLiteral("piers"));

        const QAccessible::Id id = QAccessible::uniqueId(ships);
        window.outline.select({window.table->outlineModel().row(1).nodeId()});
        window.actions().deleteSelected();
        QCOMPARE(piers->tableCellInterface()->rowIndex(), 2);
        QCOMPARE(QAccessible::accessibleInterface(id), nullptr);
    }

    void theCurrentCellHasTheFocus() {
        const Window window(port());
        QTest::keyClick(window.table.get(), Qt::Key_Down);
        QTest::keyClick(window.table.get(), Qt::Key_Down);
        const QModelIndex current = window.table->currentIndex();
        QAccessibleInterface* cell = window.cell(current.row(), current.column());
        QCOMPARE(window.seen()->focusChild(), cell);
        QVERIFY(cell->state().focused);
        QVERIFY(!window.cell(3, 0)->state().focused);
    }

    void rowsAreSelectedByTheReader() {
        const Window window(port());
        QAccessibleTableInterface* table = window.seen()->tableInterface();
        QVERIFY(table->selectRow(2));
        QVERIFY(table->selectRow(3));
        QVERIFY(!table->selectRow(9));
        QCOMPARE(table->selectedRows(), QList<int>({2, 3}));
        QCOMPARE(table->selectedRowCount(), 2);
        QCOMPARE(table->selectedCells().size(), 6);
        QCOMPARE(table->selectedCellCount(), 6);
        QCOMPARE(window.outline.selection().size(), std::size_t{2});
        QVERIFY(window.cell(2, 1)->state().selected);
        QVERIFY(table->unselectRow(2));
        QVERIFY(!table->isRowSelected(2));
    }

    void eachTypeSaysWhatCanBeDone() {
        const Window window(Samples::allTypes());
        const QString edit = QStringLiteral("Edit");
        const QString menu = QAccessibleActionInterface::showMenuAction();
        const std::vector<std::pair<const char*, QString>> expected{
            {"dictionary", QString()},
            {"array", QString()},
            {"string", edit},
            {"integer", edit},
            {"real", edit},
            {"boolean", QAccessibleActionInterface::toggleAction()},
            {"date", edit},
            {"data", QAccessibleActionInterface::pressAction()},
            {"uid", QString()}};
        for (int row = 1; row < window.seen()->tableInterface()->rowCount(); ++row) {
            const QString key = window.name(row, 0);
            const auto found =
                std::find_if(expected.begin(), expected.end(),
                             [&key](const auto& one) { return key == QLatin1String(one.first); });
            QVERIFY2(found != expected.end(), qPrintable(key));
            QCOMPARE(window.actionsOf(row, 2).join(u','), found->second);
            QCOMPARE(window.actionsOf(row, 1).join(u','),
                     key == QStringLiteral("uid") ? QString() : menu);
            QCOMPARE(window.cell(row, 2)->state().editable, found->second == edit);
        }
        QCOMPARE(window.actionsOf(0, 0), QStringList(QStringLiteral("Collapse")));
    }

    void booleansAreToggled() {
        const Window window(port());
        QVERIFY(window.cell(2, 2)->state().checkable);
        QVERIFY(window.cell(2, 2)->state().checked);
        window.act(2, 2, "Toggle");
        QVERIFY(!window.cell(2, 2)->state().checked);
        QCOMPARE(window.name(2, 2), QStringLiteral("false"));
    }

    void textsAreEdited() {
        Window window(port());
        window.act(3, 2, "Edit");
        QTRY_VERIFY(window.cell(3, 2)->childCount() == 1);
        QAccessibleInterface* field = window.cell(3, 2)->child(0);
        QCOMPARE(field->text(QAccessible::Name), QStringLiteral("Value of piers"));
        QCOMPARE(field->role(), QAccessible::EditableText);
        QCOMPARE(window.cell(3, 2)->indexOfChild(field), 0);
        QCOMPARE(window.cell(3, 0)->childCount(), 0);
        const QPoint centre = field->rect().center();
        QCOMPARE(window.cell(3, 2)->childAt(centre.x(), centre.y()), field);

        field->setText(QAccessible::Value, QStringLiteral("5"));
        QTest::keyClick(
            field->object() == nullptr ? nullptr : qobject_cast<QWidget*>(field->object()),
            Qt::Key_Return);
        QCOMPARE(window.name(3, 2), QStringLiteral("5"));
    }

    void typesAreChosenFromTheirMenu() {
        const Window window(port());
        window.act(3, 1, "ShowMenu");
        auto* menu = window.table->findChild<QMenu*>();
        QVERIFY(menu != nullptr && menu->isVisible());
        menu->close();
    }
};

const RegisteredUiTest<AccessibleTableTest> registered;

#include "AccessibleTableTest.moc"
