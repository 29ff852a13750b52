#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/document/EmptyState.h"
#include "app/ui/document/MatchCount.h"
#include "app/ui/document/SearchField.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/view/KeyCell.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/UiTest.h"

namespace {

PlistValue text(const char* value) {
    return PlistValue::string(value);
}

/// {port: "North Mole", ships: [{name: "Vesta"}, {name: "Mole"}], tide: 4}
PlistValue harbour() {
    return PlistValue::dictionary(
        {{"port", text("North Mole")},
         {"ships", PlistValue::array({PlistValue::dictionary({{"name", text("Vesta")}}),
                                      PlistValue::dictionary({{"name", text("Mole")}})})},
         {"tide", PlistValue::integer(4)}});
}

}  // namespace

/// A search as the user makes it: in the field, with the menu, and looking at the table.
class DocumentSearchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        window_->controller().document().apply({harbour(), PlistFormat::xml});
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
    }

    void cleanup() { delete window_; }

    void theFieldSaysWhatItIsFor() {
        QCOMPARE(field().placeholderText(), QStringLiteral("Search keys and values"));
        QCOMPARE(field().accessibleName(), QStringLiteral("Search"));
    }

    void findMovesTheFocusToTheField() {
        press(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(field().hasFocus());
        QCOMPARE(view().search().focusRequest(), 1);
        view().table().setFocus();
        press(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(field().hasFocus());
        QCOMPARE(view().search().focusRequest(), 2);
    }

    void showsMatchesAndTheWayToThem() {
        search("mole");
        QCOMPARE(rows(), QStringLiteral("Root/port/ships/Item 1/name"));
        QCOMPARE(selected(), QStringLiteral("port"));
        QCOMPARE(countText(), QStringLiteral("2 matches"));
        QVERIFY(count().isVisible());
        search("vesta");
        QCOMPARE(countText(), QStringLiteral("1 match"));
        QCOMPARE(selected(), QStringLiteral("name"));
        search("no such thing");
        QCOMPARE(countText(), QStringLiteral("0 matches"));
        QCOMPARE(rows(), QStringLiteral("Root"));
        search("");
        QVERIFY(!count().isVisible());
        // What was shown as the current match stays open.
        QCOMPARE(rows(), QStringLiteral("Root/port/ships/Item 0/name/Item 1/tide"));
    }

    void stepsAroundTheMatches() {
        search("mole");
        QCOMPARE(selected(), QStringLiteral("port"));
        press(Qt::Key_G, Qt::ControlModifier);
        QCOMPARE(selected(), QStringLiteral("name"));
        press(Qt::Key_F3);
        QCOMPARE(selected(), QStringLiteral("port"));
        press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(selected(), QStringLiteral("name"));
        press(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(selected(), QStringLiteral("port"));
        QTest::keyClick(&field(), Qt::Key_Return);
        QCOMPARE(selected(), QStringLiteral("name"));
        QTest::keyClick(&field(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(selected(), QStringLiteral("port"));
        QCOMPARE(view().table().currentIndex().row(), 1);
    }

    void theMenuKnowsWhetherThereAreMatches() {
        QMenu& menu = *MenuTools::menuOf(*window_, "Edit");
        const QStringList find = {QStringLiteral("Find…"), QStringLiteral("Find Next"),
                                  QStringLiteral("Find Previous")};
        QCOMPARE(MenuTools::titlesOf(menu).last(3), find);
        QCOMPARE(findItems(menu), find.first(1));
        search("no such thing");
        QCOMPARE(findItems(menu), find.first(1));
        search("mole");
        QCOMPARE(findItems(menu), find);
        const auto keys = [this](const char* title) {
            return QKeySequence::listToString(MenuTools::itemOf(*window_, title)->shortcuts());
        };
        QCOMPARE(keys("Find…"), QStringLiteral("Ctrl+F"));
        QCOMPARE(keys("Find Next"), QStringLiteral("Ctrl+G; F3"));
        QCOMPARE(keys("Find Previous"), QStringLiteral("Ctrl+Shift+G; Shift+F3"));
    }

    void searchesAgainAfterAnEdit() {
        search("mole");
        QCOMPARE(countText(), QStringLiteral("2 matches"));
        QSignalSpy updated(&view().search(), &SearchState::updated);
        PlistNode& port = *window_->controller().document().root().children()[0];
        QVERIFY(!view().actions().setValueFromText(port, QStringLiteral("South")).has_value());
        QVERIFY(updated.wait());
        QCOMPARE(countText(), QStringLiteral("1 match"));
        QCOMPARE(rows(), QStringLiteral("Root/ships/Item 1/name"));
    }

    void anEmptyDocumentWithoutMatchesInvitesNobody() {
        window_->controller().document().apply({PlistValue::dictionary({}), PlistFormat::xml});
        const auto* empty = window_->findChild<EmptyState*>();
        QVERIFY(empty->isVisible());
        search("x");
        QVERIFY(!empty->isVisible());
        QCOMPARE(countText(), QStringLiteral("0 matches"));
    }

    void escapeEmptiesTheFieldAndThenLeavesIt() {
        search("mole");
        field().setFocus();
        QTest::keyClick(&field(), Qt::Key_Escape);
        QCOMPARE(field().text(), QString());
        QVERIFY(field().hasFocus());
        QTest::keyClick(&field(), Qt::Key_Escape);
        QVERIFY(view().table().hasFocus());
        field().setFocus();
        QTest::keyClick(&field(), Qt::Key_Down);
        QVERIFY(view().table().hasFocus());
    }

    void marksTheKeysOfMatches() {
        search("mole");
        // The frame of the mark, in a row that is not selected and in one that is.
        const QPalette palette = view().table().palette();
        QCOMPARE(frameColor(4), palette.color(QPalette::Highlight));
        QCOMPARE(frameColor(1), palette.color(QPalette::HighlightedText));
        QVERIFY(frameColor(2) != palette.color(QPalette::Highlight));
    }

    void theButtonsAddAndDelete() {
        const QList<QAction*> buttons = view().toolBar()->actions();
        QCOMPARE(buttons[0]->text(), QStringLiteral("Add Item"));
        QCOMPARE(buttons[0]->toolTip(), QStringLiteral("Add an item (⇧⌘N)"));
        QCOMPARE(buttons[1]->text(), QStringLiteral("Delete"));
        QCOMPARE(buttons[1]->toolTip(), QStringLiteral("Delete the selected items (⌫)"));
        QVERIFY(!buttons[0]->icon().isNull());
        QVERIFY(!buttons[1]->icon().isNull());

        QVERIFY(buttons[0]->isEnabled());
        QVERIFY(!buttons[1]->isEnabled());
        buttons[0]->trigger();
        QCOMPARE(window_->controller().document().root().childCount(), 4);
        QVERIFY(buttons[1]->isEnabled());
        buttons[1]->trigger();
        QCOMPARE(window_->controller().document().root().childCount(), 3);
        view().outline().select({window_->controller().document().root().id()});
        QVERIFY(!buttons[1]->isEnabled());
        window_->controller().document().apply({text("alone"), PlistFormat::xml});
        QVERIFY(!buttons[0]->isEnabled());
    }

    void theAddButtonFollowsTheRoot() {
        const QAction& add = *view().toolBar()->actions().front();
        PlistDocument& document = window_->controller().document();
        document.apply({text("alone"), PlistFormat::xml});
        QVERIFY(!add.isEnabled());
        view().actions().changeType(document.root(), PlistType::array);
        QVERIFY(add.isEnabled());
        window_->controller().undoManager().undo();
        QVERIFY(!add.isEnabled());
    }

private:
    DocumentView& view() const { return window_->view(); }
    SearchField& field() const { return view().toolBar()->searchField(); }
    MatchCount& count() const { return *window_->findChild<MatchCount*>(); }
    QString countText() const { return count().findChild<QLabel*>()->text(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(window_->focusWidget(), key, modifiers);
    }

    /// Types a query and waits for the results.
    void search(const char* query) const {
        QSignalSpy updated(&view().search(), &SearchState::updated);
        field().setFocus();
        field().selectAll();
        if (*query == '\0') {
            QTest::keyClick(&field(), Qt::Key_Delete);
        } else {
            QTest::keyClicks(&field(), QString::fromUtf8(query));
        }
        QVERIFY(!updated.isEmpty() || updated.wait());
    }

    QString rows() const {
        QStringList keys;
        for (int row = 0; row < view().table().model()->rowCount(); ++row) {
            keys += view().table().model()->index(row, 0).data().toString();
        }
        return keys.join(u'/');
    }

    QString selected() const {
        QStringList keys;
        for (const QModelIndex& index : view().table().selectionModel()->selectedRows()) {
            keys += index.data().toString();
        }
        return keys.join(u'/');
    }

    static QStringList findItems(QMenu& menu) {
        return MenuTools::enabledIn(menu).filter(QStringLiteral("Find"));
    }

    /// The colour at the upper edge of the mark that a key cell may have.
    QColor frameColor(int row) const {
        PlistTable& table = view().table();
        const QRect cell = table.visualRect(table.model()->index(row, 0));
        const QImage image = table.viewport()->grab(cell).toImage();
        return image.pixelColor(image.width() / 2, 1);
    }

    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<DocumentSearchTest> registered;
#include "DocumentSearchTest.moc"
