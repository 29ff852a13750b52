#include <QAction>
#include <QMenu>
#include <QTest>
#include <memory>

#include "app/model/PlistNode.h"
#include "app/ui/DocumentView.h"
#include "app/ui/DocumentWindow.h"
#include "app/ui/EditMenu.h"
#include "app/ui/PlistTable.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

class EditMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        window_->controller().document().apply({Samples::numbers(3), PlistFormat::xml});
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
    }

    void cleanup() { delete window_; }

    void namesWhatCanBeTakenBack() {
        QCOMPARE(titles(), (QStringList{QStringLiteral("Undo"), QStringLiteral("Redo")}));
        QVERIFY(!item("Undo")->isEnabled());
        QVERIFY(!item("Redo")->isEnabled());
        window_->view().actions().addItem();
        QCOMPARE(titles(), (QStringList{QStringLiteral("Undo Add Item"), QStringLiteral("Redo")}));
        QVERIFY(item("Undo Add Item")->isEnabled());
        item("Undo Add Item")->trigger();
        QCOMPARE(titles(), (QStringList{QStringLiteral("Undo"), QStringLiteral("Redo Add Item")}));
        QVERIFY(!item("Undo")->isEnabled());
        item("Redo Add Item")->trigger();
        QCOMPARE(count(), 4);
    }

    void takesBackByKey() {
        window_->view().actions().changeFormat(PlistFormat::binary);
        QVERIFY(window_->isWindowModified());
        QTest::keyClick(&window_->view().table(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window_->controller().document().format(), PlistFormat::xml);
        QVERIFY(!window_->isWindowModified());
        QTest::keyClick(&window_->view().table(), Qt::Key_Z,
                        Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(window_->controller().document().format(), PlistFormat::binary);
        QVERIFY(window_->isWindowModified());
    }

    void deletesWhatIsSelected() {
        QMenu& menu = *MenuTools::menuOf(*window_, "Edit");
        QVERIFY(!MenuTools::enabledIn(menu).contains(QStringLiteral("Delete")));
        window_->view().outline().select({rowId(2)});
        QVERIFY(MenuTools::enabledIn(menu).contains(QStringLiteral("Delete")));
        item("Delete")->trigger();
        QCOMPARE(count(), 2);
    }

    void selectsAllButTheRoot() {
        QTest::keyClick(&window_->view().table(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(window_->view().outline().selection(), (NodeIdSet{rowId(1), rowId(2), rowId(3)}));
    }

private:
    QAction* item(const char* title) const { return MenuTools::itemOf(*window_, title); }
    QStringList titles() const {
        return MenuTools::titlesOf(*MenuTools::menuOf(*window_, "Edit")).mid(0, 2);
    }
    qint64 count() const { return window_->controller().document().root().childCount(); }
    NodeId rowId(std::size_t row) const { return window_->view().outline().rows()[row].nodeId(); }

    DocumentWindow* window_ = nullptr;
};

int main(int argc, char** argv) {
    return runUiTest<EditMenuTest>(argc, argv);
}
#include "EditMenuTest.moc"
