#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <memory>

#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/document/SearchField.h"
#include "app/ui/editors/DateValueEditor.h"
#include "app/ui/menus/EditMenu.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
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

    void standsInThisOrder() {
        QCOMPARE(MenuTools::titlesOf(menu()).join(u'|'),
                 QStringLiteral("Undo|Redo|-|Cut|Copy|Paste|Delete|Select All|-|"
                                "Find…|Find Next|Find Previous"));
    }

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
        QVERIFY(!MenuTools::enabledIn(menu()).contains(QStringLiteral("Delete")));
        window_->view().outline().select({rowId(2)});
        QVERIFY(MenuTools::enabledIn(menu()).contains(QStringLiteral("Delete")));
        item("Delete")->trigger();
        QCOMPARE(count(), 2);
    }

    /// The keys are the field's own; the menu does the same.
    void belongsToTheTextFieldThatHasTheKeyboard() {
        window_->view().outline().select({rowId(2)});
        window_->view().actions().changeFormat(PlistFormat::binary);
        SearchField& field = window_->view().toolBar()->searchField();
        field.setFocus();
        QTest::keyClicks(&field, QStringLiteral("words"));
        Q_EMIT menu().aboutToShow();
        QCOMPARE(titles(), (QStringList{QStringLiteral("Undo"), QStringLiteral("Redo")}));
        QVERIFY(item("Undo")->isEnabled());
        item("Undo")->trigger();
        QCOMPARE(field.text(), QString());
        Q_EMIT menu().aboutToHide();
        Q_EMIT menu().aboutToShow();
        QCOMPARE(titles(),
                 (QStringList{QStringLiteral("Undo Change Format"), QStringLiteral("Redo")}));
        QVERIFY(item("Redo")->isEnabled());
        item("Redo")->trigger();
        QCOMPARE(field.text(), QStringLiteral("words"));
        item("Select All")->trigger();
        QCOMPARE(field.selectedText(), QStringLiteral("words"));
        item("Delete")->trigger();
        QCOMPARE(field.text(), QString());
        Q_EMIT menu().aboutToHide();
        QCOMPARE(count(), 3);
        QCOMPARE(window_->controller().document().format(), PlistFormat::binary);
        // Behind the field's own steps are those of the document.
        while (field.isUndoAvailable()) {
            field.undo();
        }
        item("Undo Change Format")->trigger();
        QCOMPARE(window_->controller().document().format(), PlistFormat::xml);
    }

    /// The menu bar takes the keyboard while it is used by key.
    void knowsTheTextFieldFromBeforeTheMenuBar() {
        SearchField& field = window_->view().toolBar()->searchField();
        field.setFocus();
        QTest::keyClicks(&field, QStringLiteral("words"));
        window_->menuBar()->setFocusPolicy(Qt::StrongFocus);
        window_->menuBar()->setFocus(Qt::MenuBarFocusReason);
        QVERIFY(window_->menuBar()->hasFocus());
        QVERIFY(MenuTools::enabledIn(menu()).contains(QStringLiteral("Copy")));
        item("Select All")->trigger();
        QCOMPARE(field.selectedText(), QStringLiteral("words"));
    }

    void belongsToTheDateThatIsEdited() {
        const PlistValue root = PlistValue::dictionary({{"d", PlistValue::date(0)}});
        window_->controller().document().apply({root, PlistFormat::xml});
        PlistTable& table = window_->view().table();
        table.setFocus();
        table.setCurrentIndex(table.model()->index(1, 2));
        QTest::keyClick(&table, Qt::Key_Space);
        auto* editor = table.findChild<DateValueEditor*>();
        QVERIFY(editor != nullptr && editor->hasFocus());
        QVERIFY(item("Cut") != nullptr);
        item("Copy")->trigger();
        item("Delete")->trigger();
        QCOMPARE(count(), 1);
    }

    void selectsAllButTheRoot() {
        QTest::keyClick(&window_->view().table(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(window_->view().outline().selection(), (NodeIdSet{rowId(1), rowId(2), rowId(3)}));
    }

private:
    QAction* item(const char* title) const { return MenuTools::itemOf(*window_, title); }
    QMenu& menu() const { return *MenuTools::menuOf(*window_, "Edit"); }
    QStringList titles() const { return MenuTools::titlesOf(menu()).mid(0, 2); }
    qint64 count() const { return window_->controller().document().root().childCount(); }
    NodeId rowId(std::size_t row) const { return window_->view().outline().rows()[row].nodeId(); }

    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<EditMenuTest> registered;
#include "EditMenuTest.moc"
