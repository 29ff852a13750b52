#include <QAction>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/menus/PlistCommands.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

PlistValue number(int value) {
    return PlistValue::integer(value);
}

/// {b: 1, a: 2, list: [3, [4]]}
PlistValue sample() {
    const PlistValue inner = PlistValue::array({number(4)});
    return PlistValue::dictionary(
        {{"b", number(1)}, {"a", number(2)}, {"list", PlistValue::array({number(3), inner})}});
}

}  // namespace

class PlistCommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        show(sample());
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
    }

    void cleanup() { delete window_; }

    void hasTheseItems_data() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("key");
        const auto add = [](const char* title, const char* key) {
            QTest::newRow(title) << QString::fromUtf8(title) << QString::fromUtf8(key);
        };
        add("Add Item", "Ctrl+Shift+N");
        add("Duplicate", "Ctrl+D");
        // The menu shows the first one. Many desktops take it away.
        add("Move Up", "Ctrl+Alt+Up; Alt+Up");
        add("Move Down", "Ctrl+Alt+Down; Alt+Down");
        add("Sort Keys", "");
        add("Expand All", "Ctrl+Alt+Right; Ctrl+Shift+Right");
        add("Collapse All", "Ctrl+Alt+Left; Ctrl+Shift+Left");
        add("Find…", "Ctrl+F");
        add("Find Next", "Ctrl+G; F3");
        add("Find Previous", "Ctrl+Shift+G; Shift+F3");
    }

    void hasTheseItems() {
        QFETCH(QString, title);
        const QAction* item = MenuTools::itemOf(*window_, title.toUtf8());
        QVERIFY(item != nullptr);
        QTEST(QKeySequence::listToString(item->shortcuts()), "key");
    }

    void standsInThisOrder() {
        QCOMPARE(MenuTools::titlesOf(menu()).join(QLatin1Char('|')),
                 QStringLiteral("Add Item|Duplicate|-|Move Up|Move Down|Sort Keys|-|"
                                "Expand All|Collapse All"));
    }

    void offersWhatTheSelectionAllows() {
        QCOMPARE(enabled(), QStringLiteral("Add Item|Sort Keys|Expand All|Collapse All"));
        select(1);
        QCOMPARE(enabled(), QStringLiteral("Add Item|Duplicate|Move Up|Move Down|Sort Keys|"
                                           "Expand All|Collapse All"));
        // A closed menu keeps no key from its item.
        window_->view().outline().select({});
        QVERIFY(MenuTools::itemOf(*window_, "Duplicate")->isEnabled());
        MenuTools::itemOf(*window_, "Duplicate")->trigger();
        QVERIFY(!window_->isWindowModified());
        show(number(1));
        QCOMPARE(enabled(), QStringLiteral("Expand All|Collapse All"));
        press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        press(Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier);
        press(Qt::Key_Left, Qt::ControlModifier | Qt::AltModifier);
        QVERIFY(!window_->isWindowModified());
    }

    /// What is not offered does nothing, by whatever key it is tried.
    void keysOfWhatIsNotOfferedDoNothing_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        const auto add = [](const char* name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
            QTest::newRow(name) << static_cast<int>(key) << modifiers;
        };
        add("duplicate", Qt::Key_D, Qt::ControlModifier);
        add("up", Qt::Key_Up, Qt::ControlModifier | Qt::AltModifier);
        add("up, second key", Qt::Key_Up, Qt::AltModifier);
        add("down", Qt::Key_Down, Qt::ControlModifier | Qt::AltModifier);
        add("down, second key", Qt::Key_Down, Qt::AltModifier);
        add("next", Qt::Key_G, Qt::ControlModifier);
        add("next, second key", Qt::Key_F3, Qt::NoModifier);
        add("previous", Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
        add("previous, second key", Qt::Key_F3, Qt::ShiftModifier);
    }

    void keysOfWhatIsNotOfferedDoNothing() {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        press(static_cast<Qt::Key>(key), modifiers);
        QCOMPARE(keys(), QStringLiteral("b a list"));
        QVERIFY(!window_->isWindowModified());
        QVERIFY(window_->view().outline().selection().isEmpty());
        QCOMPARE(rowCount(), 4);
    }

    void keysWithOtherModifiersAreOtherKeys() {
        select(1);
        press(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
        press(Qt::Key_D, Qt::ControlModifier | Qt::AltModifier);
        press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier);
        press(Qt::Key_Down, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
        press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
        QCOMPARE(keys(), QStringLiteral("b a list"));
        QVERIFY(!window_->isWindowModified());
        const qint64 requests = window_->view().search().focusRequest();
        press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(window_->view().search().focusRequest(), requests);
    }

    void everyFindAsksForTheFocus() {
        const qint64 requests = window_->view().search().focusRequest();
        press(Qt::Key_F, Qt::ControlModifier);
        press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(window_->view().search().focusRequest(), requests + 2);
    }

    /// There is no document yet that they could act on.
    void nothingIsOfferedWhileADocumentIsRead() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.plist"));
        Samples::writeFile(path, Samples::bytes(sample(), PlistFormat::xml));
        const QSignalSpy opened(&window_->controller(), &DocumentController::opened);
        select(1);
        window_->open(path);
        QCOMPARE(enabled(), QString());
        const QStringList edit = MenuTools::enabledIn(*MenuTools::menuOf(*window_, "Edit"));
        QCOMPARE(edit, QStringList());
        for (const char* title : {"Add Item", "Duplicate", "Sort Keys", "Cut", "Delete"}) {
            MenuTools::itemOf(*window_, title)->trigger();
        }
        QVERIFY(!window_->isWindowModified());
        QTRY_COMPARE(opened.count(), 1);
        QCOMPARE(enabled(), QStringLiteral("Add Item|Sort Keys|Expand All|Collapse All"));
        QVERIFY(window_->view().table().hasFocus());
    }

    void addsByKey() {
        press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(keys(), QStringLiteral("b a list New Item"));
        QVERIFY(window_->isWindowModified());
    }

    void duplicatesByKey() {
        select(1);
        press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(keys(), QStringLiteral("b b copy a list"));
    }

    void movesByKey() {
        select(1);
        press(Qt::Key_Down, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(keys(), QStringLiteral("a b list"));
        press(Qt::Key_Up, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(keys(), QStringLiteral("b a list"));
        press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(keys(), QStringLiteral("a b list"));
        press(Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(keys(), QStringLiteral("b a list"));
    }

    void sortsFromTheMenu() {
        MenuTools::itemOf(*window_, "Sort Keys")->trigger();
        QCOMPARE(keys(), QStringLiteral("a b list"));
    }

    void expandsAndCollapsesByKey() {
        press(Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(rowCount(), 7);
        press(Qt::Key_Left, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(rowCount(), 4);
        press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(rowCount(), 7);
        press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(rowCount(), 4);
    }

    /// There they go over words, and do not reach the menu.
    void leavesTheKeysOfWordsToFields() {
        select(1);
        window_->view().actions().beginEditing(OutlineState::Column::key);
        QTRY_VERIFY(qobject_cast<QLineEdit*>(window_->focusWidget()) != nullptr);
        auto* field = qobject_cast<QLineEdit*>(window_->focusWidget());
        QTest::keyClick(field, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::keyClick(field, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(rowCount(), 4);
        QCOMPARE(window_->focusWidget(), field);
    }

private:
    void show(const PlistValue& value) {
        window_->controller().document().apply({value, PlistFormat::xml});
    }

    QMenu& menu() const { return *MenuTools::menuOf(*window_, "Editor"); }
    QString enabled() const { return MenuTools::enabledIn(menu()).join(QLatin1Char('|')); }
    int rowCount() const { return window_->view().table().model()->rowCount(); }

    void select(std::size_t row) {
        OutlineState& outline = window_->view().outline();
        outline.select({outline.rows()[row].nodeId()});
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
        QTest::keyClick(&window_->view().table(), key, modifiers);
    }

    QString keys() const {
        QStringList keys;
        for (const PlistNodePtr& child : window_->controller().document().root().children()) {
            const std::string_view key = child->key().view();
            keys += QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
        }
        return keys.join(QLatin1Char(' '));
    }

    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<PlistCommandsTest> registered;
#include "PlistCommandsTest.moc"
