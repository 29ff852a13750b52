#include <QAction>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <memory>

#include "app/desktop/session/RecentDocuments.h"
#include "app/ui/app/TabuletApp.h"
#include "app/ui/dialogs/ManualWindow.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

/// The menus that lead to other files and windows, and to help.
class WindowMenusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        RecentDocuments::clear();
        folder_ = std::make_unique<QTemporaryDir>();
        app_ = std::make_unique<TabuletApp>();
    }

    void cleanup() { app_.reset(); }

    void listsWhatWasOpenedLast() {
        const QString a = fileAt(QStringLiteral("a & b.plist"));
        const QString c = fileAt(QStringLiteral("c.plist"));
        openOne(a);
        openOne(c);
        QMenu& menu = recentMenu();
        QCOMPARE(MenuTools::enabledIn(menu),
                 (QStringList{QStringLiteral("c.plist"), QStringLiteral("a  b.plist"),
                              QStringLiteral("Clear Menu")}));
        QCOMPARE(menu.actions().at(1)->text(), QStringLiteral("a && b.plist"));
    }

    void tellsNamesakesApart() {
        QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("x")));
        openOne(fileAt(QStringLiteral("x/a.plist")));
        openOne(fileAt(QStringLiteral("a.plist")));
        QCOMPARE(MenuTools::enabledIn(recentMenu()).first(2),
                 (QStringList{QStringLiteral("a.plist (%1)").arg(folder_->path()),
                              QStringLiteral("a.plist (%1/x)").arg(folder_->path())}));
    }

    void opensWhatIsChosen() {
        const QString path = fileAt(QStringLiteral("a.plist"));
        RecentDocuments::add(path);
        DocumentWindow* window = app_->newDocument();
        QMenu& menu = recentMenu();
        Q_EMIT menu.aboutToShow();
        QSignalSpy opened(&window->controller(), &DocumentController::opened);
        menu.actions().first()->trigger();
        QVERIFY(opened.wait());
        QCOMPARE(window->controller().path(), path);
        QCOMPARE(app_->windows().size(), 1);
    }

    void canBeCleared() {
        RecentDocuments::add(fileAt(QStringLiteral("a.plist")));
        app_->newDocument();
        QMenu& menu = recentMenu();
        Q_EMIT menu.aboutToShow();
        menu.actions().last()->trigger();
        QVERIFY(RecentDocuments::existingPaths().isEmpty());
        QCOMPARE(MenuTools::enabledIn(menu), QStringList());
        QCOMPARE(MenuTools::titlesOf(menu).last(), QStringLiteral("Clear Menu"));
    }

    void listsTheWindows() {
        DocumentWindow* first = app_->newDocument();
        DocumentWindow* second = app_->newDocument();
        second->view().actions().addItem();
        QMenu& menu = *MenuTools::menuOf(*first, "Window");
        Q_EMIT menu.aboutToShow();
        QCOMPARE(MenuTools::titlesOf(menu),
                 (QStringList{QStringLiteral("Untitled"), QStringLiteral("Untitled 2*")}));
        QVERIFY(menu.actions().at(0)->isChecked());
        QVERIFY(!menu.actions().at(1)->isChecked());
        first->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(first));
        menu.actions().at(1)->trigger();
        QVERIFY(QTest::qWaitForWindowActive(second));
    }

    void showsKeysThatNoMenuTells() {
        DocumentWindow* window = app_->newDocument();
        QCOMPARE(
            MenuTools::titlesOf(*MenuTools::menuOf(*window, "Help")),
            (QStringList{QStringLiteral("Tabulet Manual"), QStringLiteral("Keyboard Shortcuts"),
                         QStringLiteral("-"), QStringLiteral("About Tabulet")}));
        MenuTools::itemOf(*window, "Keyboard Shortcuts")->trigger();
        auto* dialog = window->findChild<QDialog*>();
        QVERIFY(dialog != nullptr && dialog->isVisible());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Keyboard Shortcuts"));
        QStringList texts;
        for (const QLabel* label : dialog->findChildren<QLabel*>()) {
            texts += label->text();
        }
        QVERIFY(texts.contains(QStringLiteral("Return or F2")));
        QVERIFY(texts.contains(QStringLiteral("Menu or Shift+F10")));
        QVERIFY(texts.contains(QStringLiteral("Ctrl+Shift+Right or Ctrl+Shift+Left")));
        QVERIFY(texts.contains(QStringLiteral("Go to the next or previous match")));
        QTest::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
    }

    void showsTheManual() {
        DocumentWindow* window = app_->newDocument();
        QAction* item = MenuTools::itemOf(*window, "Tabulet Manual");
        QCOMPARE(item->shortcut(), QKeySequence(Qt::Key_F1));
        item->trigger();
        QPointer<ManualWindow> manual = window->findChild<ManualWindow*>();
        QVERIFY(manual != nullptr && manual->isVisible());
        QCOMPARE(manual->windowTitle(), QStringLiteral("Tabulet Manual"));
        QCOMPARE(headingsOf(*manual),
                 (QStringList{QStringLiteral("Tabulet Manual"),
                              QStringLiteral("Opening and saving"), QStringLiteral("Editing"),
                              QStringLiteral("Keys"), QStringLiteral("Searching"),
                              QStringLiteral("Recovery"), QStringLiteral("Where files are"),
                              QStringLiteral("What a form cannot hold")}));
        // There is one for each window.
        item->trigger();
        QCOMPARE(window->findChildren<ManualWindow*>().size(), 1);
        QVERIFY(QTest::qWaitForWindowActive(manual));
        QTest::keyClick(manual, Qt::Key_W, Qt::ControlModifier);
        QTRY_VERIFY(manual == nullptr);
        QVERIFY(window->isVisible());
    }

    void theManualIsWholeInEachLanguage() {
        const QStringList pages = QDir(QStringLiteral(":/")).entryList({QStringLiteral("manual*")});
        QCOMPARE(pages, (QStringList{QStringLiteral("manual.de.md"), QStringLiteral("manual.md")}));
        for (const QString& page : pages) {
            QCOMPARE(shapeOf(page), shapeOf(QStringLiteral("manual.md")));
        }
    }

    void theManualNamesTheKeysOfTheMenus() {
        DocumentWindow* window = app_->newDocument();
        MenuTools::itemOf(*window, "Tabulet Manual")->trigger();
        const QString text = window->findChild<QTextBrowser*>()->toPlainText();
        for (const QAction* item : window->findChildren<QAction*>()) {
            const QString keys = item->shortcuts().value(item->shortcuts().size() - 1).toString();
            QVERIFY2(text.contains(keys), qPrintable(keys));
        }
    }

    void saysWhatItIs() {
        DocumentWindow* window = app_->newDocument();
        MenuTools::itemOf(*window, "About Tabulet")->trigger();
        const auto* box = window->findChild<QMessageBox*>();
        QVERIFY(box != nullptr && box->isVisible());
        QCOMPARE(box->text(), QStringLiteral("Tabulet test"));
        const QRegularExpression text(QStringLiteral(
            R"(^An editor for property lists\.\nFree software under the MIT licence, without any )"
            R"(warranty\.\n\nWith Qt 6[.\d]+, utf8proc [.\d]+, xxHash \d+\.\d+\.\d+\.$)"));
        QVERIFY2(text.match(box->informativeText()).hasMatch(), qPrintable(box->informativeText()));
    }

private:
    /// How the lines begin of a page's headings, rows and points.
    static QStringList shapeOf(const QString& page) {
        QStringList shape;
        for (const QByteArray& line : Samples::readFile(QStringLiteral(":/") + page).split('\n')) {
            if (line.startsWith('#') || line.startsWith('|') || line.startsWith("- ")) {
                shape += QString::fromUtf8(line.split(' ').first());
            }
        }
        return shape;
    }

    static QStringList headingsOf(const ManualWindow& manual) {
        QStringList headings;
        const QTextDocument& document = *manual.findChild<QTextBrowser*>()->document();
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            if (block.blockFormat().headingLevel() > 0) {
                headings += block.text();
            }
        }
        return headings;
    }

    QString fileAt(const QString& name) const {
        const QString path = folder_->filePath(name);
        Samples::writeFile(path, Samples::bytes(Samples::numbers(1), PlistFormat::xml));
        return path;
    }

    void openOne(const QString& path) const {
        app_->open({path});
        QSignalSpy opened(&app_->windows().last()->controller(), &DocumentController::opened);
        QVERIFY(opened.wait());
    }

    QMenu& recentMenu() const {
        return *MenuTools::itemOf(*app_->windows().last(), "Open Recent")->menu();
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<TabuletApp> app_;
};

const RegisteredUiTest<WindowMenusTest> registered;
#include "WindowMenusTest.moc"
