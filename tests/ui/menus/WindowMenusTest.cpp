#include <QAction>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/desktop/session/RecentDocuments.h"
#include "app/ui/app/TabuletApp.h"
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
        QCOMPARE(MenuTools::titlesOf(*MenuTools::menuOf(*window, "Help")),
                 (QStringList{QStringLiteral("Keyboard Shortcuts"), QStringLiteral("-"),
                              QStringLiteral("About Tabulet")}));
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

    void saysWhatItIs() {
        DocumentWindow* window = app_->newDocument();
        MenuTools::itemOf(*window, "About Tabulet")->trigger();
        const auto* box = window->findChild<QMessageBox*>();
        QVERIFY(box != nullptr && box->isVisible());
        QCOMPARE(box->text(), QStringLiteral("Tabulet test"));
        QVERIFY(box->informativeText().contains(QStringLiteral("MIT")));
    }

private:
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
