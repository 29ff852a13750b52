#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QTest>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/document/SearchField.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/RowMenu.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

void setClipboardText(const char* text) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
}

/// An item of so many arrays, in a dictionary of its own, which is not pasted.
QByteArray nested(int depth) {
    return "{ deep = " + QByteArray("(").repeated(depth) + "x" + QByteArray(")").repeated(depth) +
           "; }";
}

}  // namespace

/// Cut, copy and paste by menu and by key, and the context menu.
class ItemClipboardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        QGuiApplication::clipboard()->clear();
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        window_->controller().document().apply({Samples::numbers(3), PlistFormat::xml});
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
    }

    void cleanup() { delete window_; }

    void theMenuHasTheUsualItems() {
        QCOMPARE(
            MenuTools::titlesOf(edit()).mid(3, 5),
            (QStringList{QStringLiteral("Cut"), QStringLiteral("Copy"), QStringLiteral("Paste"),
                         QStringLiteral("Delete"), QStringLiteral("Select All")}));
        QCOMPARE(item("Cut")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_X));
        QCOMPARE(item("Copy")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_C));
        QCOMPARE(item("Paste")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_V));
    }

    void theItemsKnowWhenTheyCanBeChosen() {
        QCOMPARE(clipboardItems(), QString());
        select(1);
        QCOMPARE(clipboardItems(), QStringLiteral("Cut Copy"));
        setClipboardText("<plist><array><true/></array></plist>");
        QCOMPARE(clipboardItems(), QStringLiteral("Cut Copy Paste"));
        window_->controller().document().apply({PlistValue::string("a"), PlistFormat::xml});
        QCOMPARE(clipboardItems(), QString());
    }

    void copiesAndPastes() {
        select(1);
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2"));
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        QVERIFY(data->hasFormat(QStringLiteral("com.ventrel.tabulet.nodes")));
        QVERIFY(data->text().contains(QStringLiteral("<key>k0</key>")));
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(keys(), QStringLiteral("k0 k0 2 k1 k2"));
        QVERIFY(item("Undo Add Item") != nullptr);
    }

    void cuts() {
        select(2);
        press(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(keys(), QStringLiteral("k0 k2"));
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(keys(), QStringLiteral("k0 k2 k1"));
    }

    void pastesTextOfOtherPrograms() {
        window_->controller().document().apply({PlistValue::dictionary({}), PlistFormat::xml});
        setClipboardText("{ ship = Vesta; tide = 4; }");
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(keys(), QStringLiteral("ship tide"));
    }

    /// Such a document could be saved, but never be opened again.
    void refusesWhatWouldNestTooDeep() {
        const int deepest = PlistCodec::maximumDepth - 1;
        setClipboardText(nested(deepest));
        press(Qt::Key_V, Qt::ControlModifier);
        const QString before = keys();
        QVERIFY(before.startsWith(QStringLiteral("k0 k1 k2 ")));
        setClipboardText(nested(deepest + 1));
        press(Qt::Key_V, Qt::ControlModifier);
        const auto* box = window_->findChild<QMessageBox*>();
        QVERIFY(box != nullptr && box->isVisible());
        QCOMPARE(box->text(), QStringLiteral("The clipboard's contents can't be pasted."));
        QCOMPARE(box->informativeText(),
                 QStringLiteral("The file nests more than 512 levels deep."));
        QCOMPARE(keys(), before);
    }

    void explainsWhatCannotBePasted() {
        setClipboardText("<plist><dict></array></plist>");
        press(Qt::Key_V, Qt::ControlModifier);
        const auto* box = window_->findChild<QMessageBox*>();
        QVERIFY(box != nullptr && box->isVisible());
        QCOMPARE(box->text(), QStringLiteral("The clipboard's contents can't be pasted."));
        QVERIFY(box->informativeText().startsWith(QStringLiteral("Line 1, column 14: ")));
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2"));
        QVERIFY(!window_->isWindowModified());
    }

    void belongsToTheTextFieldThatHasTheKeyboard() {
        select(1);
        QLineEdit& field = window_->view().toolBar()->searchField();
        field.setFocus();
        field.setText(QStringLiteral("words"));
        field.selectAll();
        QCOMPARE(clipboardItems(), QStringLiteral("Cut Copy Paste"));
        item("Cut")->trigger();
        QCOMPARE(field.text(), QString());
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("words"));
        item("Paste")->trigger();
        QCOMPARE(field.text(), QStringLiteral("words"));
        item("Select All")->trigger();
        QCOMPARE(field.selectedText(), QStringLiteral("words"));
        QCOMPARE(keys(), QStringLiteral("k0 k1 k2"));
    }

    void theContextMenuActsOnTheRowUnderThePointer() {
        select(1);
        RowMenu* menu = contextMenuAt(3);
        QCOMPARE(window_->view().outline().selection(), NodeIdSet{rowId(3)});
        QCOMPARE(MenuTools::titlesOf(*menu),
                 (QStringList{QStringLiteral("Add Item"), QStringLiteral("Duplicate"),
                              QStringLiteral("Delete"), QStringLiteral("-"),
                              QStringLiteral("Sort Keys"), QStringLiteral("Expand All Below"),
                              QStringLiteral("Collapse All Below")}));
        choose(*menu, "Delete");
        QCOMPARE(keys(), QStringLiteral("k0 k1"));
    }

    void theContextMenuKeepsASelectionItIsOpenedOn() {
        window_->view().outline().select({rowId(1), rowId(2)});
        choose(*contextMenuAt(2), "Duplicate");
        QCOMPARE(keys(), QStringLiteral("k0 k0 copy k1 k1 copy k2"));
    }

    void theContextMenuOpensByKeyAtTheCurrentRow() {
        select(2);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(0, 0), QPoint(0, 0));
        QCoreApplication::sendEvent(&window_->view().table(), &event);
        auto* menu = window_->findChild<RowMenu*>();
        QVERIFY(menu != nullptr && menu->isVisible());
        choose(*menu, "Delete");
        QCOMPARE(keys(), QStringLiteral("k0 k2"));
    }

    /// The same on keyboards that have no key for it.
    void theContextMenuOpensByAnotherKey() {
        select(2);
        press(Qt::Key_F10, Qt::NoModifier);
        QVERIFY(window_->findChild<RowMenu*>() == nullptr);
        press(Qt::Key_F10, Qt::ShiftModifier);
        auto* menu = window_->findChild<RowMenu*>();
        QVERIFY(menu != nullptr && menu->isVisible());
        const PlistTable& table = window_->view().table();
        QVERIFY(
            menu->y() >=
            table.viewport()->mapToGlobal(table.visualRect(table.currentIndex()).bottomLeft()).y());
        choose(*menu, "Delete");
        QCOMPARE(keys(), QStringLiteral("k0 k2"));
    }

    void theContextMenuKnowsWhatCanBeDone() {
        window_->view().outline().select({rowId(0)});
        QCOMPARE(MenuTools::enabledIn(*contextMenuAt(0)),
                 (QStringList{QStringLiteral("Add Item"), QStringLiteral("Sort Keys"),
                              QStringLiteral("Expand All Below"),
                              QStringLiteral("Collapse All Below")}));
        window_->controller().document().apply({PlistValue::string("a"), PlistFormat::xml});
        QCOMPARE(MenuTools::enabledIn(*contextMenuAt(0)),
                 (QStringList{QStringLiteral("Expand All Below"),
                              QStringLiteral("Collapse All Below")}));
    }

    void theContextMenuExpandsAndCollapsesAllBelow() {
        const PlistValue inner = PlistValue::array({PlistValue::array({Samples::numbers(1)})});
        window_->controller().document().apply({inner, PlistFormat::xml});
        const QAbstractItemModel* model = window_->view().table().model();
        QCOMPARE(model->rowCount(), 2);
        choose(*contextMenuAt(1), "Expand All Below");
        QCOMPARE(model->rowCount(), 4);
        choose(*contextMenuAt(1), "Collapse All Below");
        QCOMPARE(model->rowCount(), 2);
        choose(*contextMenuAt(1), "Expand All Below");
        // There is nothing below a number.
        choose(*contextMenuAt(3), "Collapse All Below");
        choose(*contextMenuAt(3), "Expand All Below");
        QCOMPARE(model->rowCount(), 4);
        QVERIFY(!window_->isWindowModified());
    }

private:
    QMenu& edit() const { return *MenuTools::menuOf(*window_, "Edit"); }
    QAction* item(const char* title) const { return MenuTools::itemOf(*window_, title); }
    NodeId rowId(std::size_t row) const { return window_->view().outline().rows()[row].nodeId(); }
    void select(std::size_t row) const { window_->view().outline().select({rowId(row)}); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
        QTest::keyClick(window_->focusWidget(), key, modifiers);
    }

    QString keys() const {
        QStringList keys;
        for (const PlistNodePtr& child : window_->controller().document().root().children()) {
            keys += QString::fromStdString(std::string(child->key().view()));
        }
        return keys.join(u' ');
    }

    QString clipboardItems() const {
        QStringList titles = MenuTools::enabledIn(edit());
        titles.removeIf([](const QString& title) {
            return title != QStringLiteral("Cut") && title != QStringLiteral("Copy") &&
                   title != QStringLiteral("Paste");
        });
        return titles.join(u' ');
    }

    RowMenu* contextMenuAt(int row) const {
        PlistTable& table = window_->view().table();
        const QPoint place = table.visualRect(table.model()->index(row, 0)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                table.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(table.viewport(), &event);
        return table.findChildren<RowMenu*>().last();
    }

    static void choose(QMenu& menu, const char* title) {
        for (QAction* action : menu.actions()) {
            if (action->text() == QString::fromUtf8(title)) {
                action->trigger();
            }
        }
        menu.close();
    }

    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<ItemClipboardTest> registered;
#include "ItemClipboardTest.moc"
