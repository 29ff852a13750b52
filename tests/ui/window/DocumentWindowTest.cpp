#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <functional>
#include <memory>

#include "app/model/editing/PlistEditor.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/notices/NoticeStrip.h"
#include "app/ui/notices/ProgressPage.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

/// The only message on top of a window.
QMessageBox* messageOf(const DocumentWindow& window) {
    const QList<QMessageBox*> boxes = window.findChildren<QMessageBox*>();
    return boxes.size() == 1 && boxes.first()->isVisible() ? boxes.first() : nullptr;
}

void press(const QMessageBox& box, QMessageBox::StandardButton button) {
    box.button(button)->click();
}

}  // namespace

using Edit = std::function<void(const PlistEditor&, PlistNode&)>;
Q_DECLARE_METATYPE(Edit)

class DocumentWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
    }

    void cleanup() { delete window_; }

    void hasTheSizeOfADocument() { QCOMPARE(window_->size(), QSize(760, 560)); }

    void hasAFileMenu() {
        const QAction* menu = window_->menuBar()->actions().first();
        QCOMPARE(menu->text().remove(u'&'), QStringLiteral("File"));
        QCOMPARE(MenuTools::titlesOf(*menu->menu()),
                 (QStringList{QStringLiteral("New"), QStringLiteral("Open…"),
                              QStringLiteral("Open Recent"), QStringLiteral("-"),
                              QStringLiteral("Close"), QStringLiteral("Save"),
                              QStringLiteral("Save As…"), QStringLiteral("Revert to Saved"),
                              QStringLiteral("-"), QStringLiteral("Quit")}));
    }

    void hasTheUsualMenus() {
        QStringList titles;
        for (const QAction* menu : window_->menuBar()->actions()) {
            titles += menu->text().remove(u'&');
        }
        QCOMPARE(titles.join(u' '), QStringLiteral("File Edit Editor Window Help"));
    }

    void revertsToWhatTheFileHolds() {
        const QString path = folder_->filePath(QStringLiteral("a.plist"));
        Samples::writeFile(path, Samples::bytes(Samples::numbers(2), PlistFormat::xml));
        QAction* revert = MenuTools::itemOf(*window_, "Revert to Saved");
        QVERIFY(!revert->isEnabled());
        QSignalSpy opened(&window_->controller(), &DocumentController::opened);
        window_->open(path);
        QVERIFY(opened.wait());
        QVERIFY(!revert->isEnabled());
        window_->view().actions().addItem();
        QVERIFY(revert->isEnabled());

        QSignalSpy reverted(&window_->controller(), &DocumentController::reverted);
        revert->trigger();
        QVERIFY(reverted.wait());
        PlistDocument& document = window_->controller().document();
        QCOMPARE(document.root().childCount(), 2);
        QVERIFY(!window_->isWindowModified());
        QVERIFY(!revert->isEnabled());
        QAction* undo = MenuTools::itemOf(*window_, "Undo Revert to Saved");
        QVERIFY(undo != nullptr);
        undo->trigger();
        QCOMPARE(document.root().childCount(), 3);
        QVERIFY(window_->isWindowModified());

        // A file that cannot be read any more changes nothing.
        Samples::writeFile(path, "<plist>");
        revert->trigger();
        QTRY_VERIFY(messageOf(*window_) != nullptr);
        QCOMPARE(messageOf(*window_)->text(),
                 QStringLiteral("The file “a.plist” is not a readable property list."));
        QCOMPARE(document.root().childCount(), 3);
        messageOf(*window_)->close();
        QVERIFY(window_->isVisible());
    }

    void hasTheUsualKeys_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("key");
        QTest::newRow("new") << QStringLiteral("New") << QStringLiteral("Ctrl+N");
        QTest::newRow("open") << QStringLiteral("Open…") << QStringLiteral("Ctrl+O");
        QTest::newRow("close") << QStringLiteral("Close") << QStringLiteral("Ctrl+W");
        QTest::newRow("save") << QStringLiteral("Save") << QStringLiteral("Ctrl+S");
        QTest::newRow("save as") << QStringLiteral("Save As…") << QStringLiteral("Ctrl+Shift+S");
        QTest::newRow("quit") << QStringLiteral("Quit") << QStringLiteral("Ctrl+Q");
    }

    void hasTheUsualKeys() {
        QFETCH(QString, text);
        const QAction* action = MenuTools::itemOf(*window_, text.toUtf8());
        QVERIFY(action != nullptr);
        QTEST(action->shortcut().toString(QKeySequence::PortableText), "key");
    }

    void passesOnWhatTheApplicationDoes() {
        const QSignalSpy fresh(window_, &DocumentWindow::newChosen);
        const QSignalSpy open(window_, &DocumentWindow::openChosen);
        const QSignalSpy quit(window_, &DocumentWindow::quitChosen);
        QTest::keyClick(window_, Qt::Key_N, Qt::ControlModifier);
        QTest::keyClick(window_, Qt::Key_O, Qt::ControlModifier);
        QTest::keyClick(window_, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(fresh.count(), 1);
        QCOMPARE(open.count(), 1);
        QCOMPARE(quit.count(), 1);
    }

    // --- Opening ---

    /// What is saved is XML; but until it is opened again, it is the file that it was.
    void theBannerGoesWithTheOldFormat() {
        const QString path = file("old.plist", "{ship = Vesta;}");
        openIn(*window_, path);
        QVERIFY(window_->view().findChild<NoticeStrip*>()->isVisible());
        QVERIFY(!window_->isWindowModified());
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        window_->save();
        QVERIFY(saved.wait());
        QVERIFY(Samples::readFile(path).startsWith("<?xml"));
        DocumentWindow again(QStringLiteral("Untitled"));
        again.setAttribute(Qt::WA_DeleteOnClose, false);
        again.show();
        openIn(again, path);
        QVERIFY(!again.view().findChild<NoticeStrip*>()->isVisible());
    }

    void opensFiles() {
        const QString path =
            file("a[*]b.plist", Samples::bytes(Samples::allTypes(), PlistFormat::binary));
        QSignalSpy opened(&window_->controller(), &DocumentController::opened);
        window_->open(path);
        QVERIFY(opened.wait());
        QSignalSpy shown(window_, &DocumentWindow::documentShown);
        QTRY_COMPARE(shown.count(), 1);
        QCOMPARE(window_->view().table().model()->rowCount(), 10);
        QCOMPARE(window_->windowTitle(), QStringLiteral("a[*][*]b.plist[*]"));
        QVERIFY(!window_->isWindowModified());
        QTRY_VERIFY(window_->view().table().hasFocus());
    }

    void tellsOfEmptyDocumentsToo() {
        DocumentWindow fresh(QStringLiteral("Untitled"));
        fresh.setAttribute(Qt::WA_DeleteOnClose, false);
        QSignalSpy shown(&fresh, &DocumentWindow::documentShown);
        fresh.show();
        QTRY_COMPARE(shown.count(), 1);
        fresh.open(file("empty.plist", "<plist><dict/></plist>"));
        QTRY_COMPARE(shown.count(), 2);
    }

    void savesNothingWhileItReads() {
        const QString target = folder_->filePath(QStringLiteral("target.plist"));
        window_->saveAs();
        auto* dialog = window_->findChild<QFileDialog*>();
        QVERIFY(dialog != nullptr);
        window_->open(file("a.plist", Samples::bytes(Samples::allTypes(), PlistFormat::xml)));
        QSignalSpy refused(window_, &DocumentWindow::closeRefused);
        Q_EMIT dialog->fileSelected(target);
        QCOMPARE(refused.count(), 1);
        QTRY_COMPARE(window_->view().table().model()->rowCount(), 10);
        QVERIFY(!QFile::exists(target));
    }

    void saysWhyAFileCannotBeOpened() {
        const QString path = file("<b>x<b>.plist", "<plist><dict></array></plist>");
        const QPointer<DocumentWindow> window = window_;
        window_->open(path);
        QTRY_VERIFY(messageOf(*window_) != nullptr);
        QMessageBox* box = messageOf(*window_);
        QCOMPARE(box->text(),
                 QStringLiteral("The file “<b>x<b>.plist” is not a readable property list."));
        const QStringList explanation = box->informativeText().split(QStringLiteral("\n\n"));
        QCOMPARE(explanation.size(), 2);
        QVERIFY2(explanation.at(0).startsWith(QStringLiteral("Line 1, column 14: ")),
                 qPrintable(explanation.at(0)));
        QCOMPARE(explanation.at(1), QStringLiteral("Fix the file in a text editor, or open another "
                                                   "copy of it. The file has not been changed."));
        for (const QLabel* label : box->findChildren<QLabel*>()) {
            QCOMPARE(label->textFormat(), Qt::PlainText);
        }
        press(*box, QMessageBox::Ok);
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
    }

    void saysThatAFileIsMissing() {
        const QPointer<DocumentWindow> window = window_;
        window_->open(folder_->filePath(QStringLiteral("gone.plist")));
        QTRY_VERIFY(messageOf(*window_) != nullptr);
        QCOMPARE(messageOf(*window_)->text(),
                 QStringLiteral("The file “gone.plist” could not be read."));
        QCOMPARE(messageOf(*window_)->informativeText(),
                 QStringLiteral("No such file or directory.\n\nCheck that the file exists and that "
                                "you have permission to read it."));
        QTest::keyClick(messageOf(*window_), Qt::Key_Escape);
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
    }

    // --- Saving ---

    void savesWhatItOpened_data() {
        QTest::addColumn<bool>("isBinary");
        QTest::newRow("XML") << false;
        QTest::newRow("binary") << true;
    }

    void savesWhatItOpened() {
        QFETCH(bool, isBinary);
        const PlistFormat format = isBinary ? PlistFormat::binary : PlistFormat::xml;
        const QByteArray bytes = Samples::bytes(Samples::allTypes(), format);
        const QString path = file("same.plist", bytes);
        open(path);
        QVERIFY(QFile::remove(path));
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        QTest::keyClick(window_, Qt::Key_S, Qt::ControlModifier);
        QTRY_COMPARE(saved.count(), 1);
        QCOMPARE(Samples::readFile(path), bytes);
    }

    void savesInThePickedFormat() {
        const QString path =
            file("pick.plist", Samples::bytes(Samples::allTypes(), PlistFormat::xml));
        open(path);
        QTest::mouseClick(segment(QStringLiteral("Binary")), Qt::LeftButton);
        QVERIFY(window_->isWindowModified());
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        QTest::keyClick(window_, Qt::Key_S, Qt::ControlModifier);
        QTRY_COMPARE(saved.count(), 1);
        QVERIFY(!window_->isWindowModified());
        QVERIFY(Samples::readFile(path).startsWith("bplist00"));
        QVERIFY(Samples::valueOf(Samples::readFile(path)) == Samples::allTypes());
    }

    void asksWhereToSaveANewDocument() {
        QTest::keyClick(window_, Qt::Key_S, Qt::ControlModifier);
        auto* dialog = window_->findChild<QFileDialog*>();
        QVERIFY(dialog != nullptr);
        QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(dialog->defaultSuffix(), QStringLiteral("plist"));
        QCOMPARE(dialog->nameFilters(),
                 (QStringList{QStringLiteral("Property lists (*.plist *.entitlements *.xcprivacy "
                                             "*.stringsdict)"),
                              QStringLiteral("All files (*)")}));
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        const QString path = folder_->filePath(QStringLiteral("new.plist"));
        Q_EMIT dialog->fileSelected(path);
        QTRY_COMPARE(saved.count(), 1);
        QCOMPARE(window_->windowTitle(), QStringLiteral("new.plist[*]"));
        QVERIFY(Samples::readFile(path).contains("<dict/>"));
        delete dialog;
    }

    void saysWhyAFileCannotBeSaved() {
        window_->controller().save(folder_->filePath(QStringLiteral("missing/x.plist")));
        QTRY_VERIFY(messageOf(*window_) != nullptr);
        QCOMPARE(messageOf(*window_)->text(),
                 QStringLiteral("The file “x.plist” could not be written."));
        QCOMPARE(messageOf(*window_)->informativeText(),
                 QStringLiteral("No such file or directory.\n\nYour changes are still in the "
                                "window. Use File > Save As… to save them somewhere else."));
        press(*messageOf(*window_), QMessageBox::Ok);
        QVERIFY(window_->isVisible());
    }

    void doesNotSaveTwiceAtOnce() {
        const QString path = folder_->filePath(QStringLiteral("once.plist"));
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        window_->controller().save(path);
        QVERIFY(!MenuTools::itemOf(*window_, "Save")->isEnabled());
        window_->save();
        QTRY_COMPARE(saved.count(), 1);
        QVERIFY(MenuTools::itemOf(*window_, "Save")->isEnabled());
    }

    /// Whatever is done to the document: the title and the close button tell of it.
    void showsWhetherThereIsSomethingToSave_data() {
        QTest::addColumn<Edit>("edit");
        QTest::newRow("Rename") << Edit([](const PlistEditor& editor, PlistNode& root) {
            editor.rename(*root.children()[0], "z");
        });
        QTest::newRow("Change Value") << Edit([](const PlistEditor& editor, PlistNode& root) {
            editor.changeValue(*root.children()[0], PlistValue::integer(9));
        });
        QTest::newRow("Change Type") << Edit([](const PlistEditor& editor, PlistNode& root) {
            editor.changeType(*root.children()[0], PlistType::string);
        });
        QTest::newRow("Change Format") << Edit([](const PlistEditor& editor, PlistNode&) {
            editor.changeFormat(PlistFormat::binary);
        });
        QTest::newRow("Add Item") << Edit([](const PlistEditor& editor, PlistNode& root) {
            const PlistNodePtr node = PlistNode::create("z", PlistValue::integer(9));
            editor.add({&node, 1}, root, 0);
        });
        QTest::newRow("Delete") << Edit([](const PlistEditor& editor, PlistNode& root) {
            editor.remove(root.children().first(1));
        });
        QTest::newRow("Move") << Edit([](const PlistEditor& editor, PlistNode& root) {
            editor.move(root.children().first(1), root, 3);
        });
        QTest::newRow("Sort Keys")
            << Edit([](const PlistEditor& editor, PlistNode& root) { editor.sortKeys(root); });
    }

    void showsWhetherThereIsSomethingToSave() {
        QFETCH(Edit, edit);
        const QString path = file(
            "edit.plist", Samples::bytes(PlistValue::dictionary({{"b", PlistValue::integer(1)},
                                                                 {"a", PlistValue::integer(2)},
                                                                 {"c", PlistValue::integer(3)}}),
                                         PlistFormat::xml));
        open(path);
        DocumentController& controller = window_->controller();
        QCOMPARE(window_->windowTitle(), QStringLiteral("edit.plist[*]"));
        QVERIFY(!window_->isWindowModified());
        edit(PlistEditor(controller.document(), &controller.undoManager()),
             controller.document().root());
        QCOMPARE(controller.undoManager().undoActionName(),
                 QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(window_->isWindowModified());
        controller.undoManager().undo();
        QVERIFY(!window_->isWindowModified());

        controller.undoManager().redo();
        QSignalSpy saved(&controller, &DocumentController::saved);
        window_->save();
        QTRY_COMPARE(saved.count(), 1);
        QVERIFY(!window_->isWindowModified());
        controller.undoManager().undo();
        QVERIFY(window_->isWindowModified());
        controller.undoManager().redo();
        QVERIFY(!window_->isWindowModified());
    }

    // --- Closing ---

    void closesUnmodifiedDocumentsAtOnce() {
        const QPointer<DocumentWindow> window = window_;
        QTest::keyClick(window_, Qt::Key_W, Qt::ControlModifier);
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
    }

    void asksBeforeItClosesAModifiedDocument() {
        window_->view().actions().changeFormat(PlistFormat::binary);
        QSignalSpy refused(window_, &DocumentWindow::closeRefused);
        QVERIFY(!window_->close());
        QMessageBox* box = messageOf(*window_);
        QVERIFY(box != nullptr);
        QCOMPARE(box->text(), QStringLiteral("Do you want to save the changes to “Untitled”?"));
        QCOMPARE(box->informativeText(),
                 QStringLiteral("Your changes will be lost if you don't save them."));
        QCOMPARE(box->defaultButton(), box->button(QMessageBox::Save));
        // Asked once, however often the user tries.
        QVERIFY(!window_->close());
        QVERIFY(messageOf(*window_) != nullptr);
        press(*box, QMessageBox::Cancel);
        QCOMPARE(refused.count(), 1);
        QVERIFY(window_->isVisible());
    }

    void discardsChanges() {
        const QPointer<DocumentWindow> window = window_;
        window_->view().actions().changeFormat(PlistFormat::binary);
        window_->close();
        press(*messageOf(*window_), QMessageBox::Discard);
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
    }

    void savesAndCloses() {
        const QPointer<DocumentWindow> window = window_;
        const QString path = file("c.plist", Samples::bytes(Samples::numbers(2), PlistFormat::xml));
        open(path);
        window_->view().actions().changeFormat(PlistFormat::binary);
        window_->close();
        press(*messageOf(*window_), QMessageBox::Save);
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
        QVERIFY(Samples::readFile(path).startsWith("bplist00"));
    }

    void staysOpenWhenSavingFails() {
        const QString path = file("d.plist", Samples::bytes(Samples::numbers(2), PlistFormat::xml));
        open(path);
        QVERIFY(QFile::remove(path) && QDir(folder_->path()).mkdir(QStringLiteral("d.plist")));
        window_->view().actions().changeFormat(PlistFormat::binary);
        QSignalSpy refused(window_, &DocumentWindow::closeRefused);
        window_->close();
        press(*messageOf(*window_), QMessageBox::Save);
        QTRY_COMPARE(refused.count(), 1);
        QVERIFY(window_->isVisible());
        QVERIFY(window_->isWindowModified());
    }

    void waitsForTheWritingToEnd() {
        const QPointer<DocumentWindow> window = window_;
        const QString path = folder_->filePath(QStringLiteral("last.plist"));
        window_->controller().save(path);
        QVERIFY(!window_->close());
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
        QVERIFY(Samples::readFile(path).contains("<dict/>"));
    }

    void cancelClosesAWindowThatStillReads() {
        const QPointer<DocumentWindow> window = window_;
        const QString path = file("e.plist", Samples::bytes(Samples::numbers(2), PlistFormat::xml));
        window_->open(path);
        auto* page = window_->findChild<ProgressPage*>();
        QVERIFY(page->isVisible());
        QCOMPARE(page->findChild<QLabel*>()->text(), QStringLiteral("Opening “e.plist”…"));
        QVERIFY(!page->findChild<QPushButton*>()->isVisible());
        page->findChild<QPushButton*>()->click();
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
    }

private:
    static void openIn(DocumentWindow& window, const QString& path) {
        QSignalSpy opened(&window.controller(), &DocumentController::opened);
        window.open(path);
        QVERIFY(opened.wait());
    }

    QString file(const char* name, const QByteArray& bytes) {
        QString path = folder_->filePath(QString::fromLatin1(name));
        Samples::writeFile(path, bytes);
        return path;
    }

    void open(const QString& path) {
        QSignalSpy opened(&window_->controller(), &DocumentController::opened);
        window_->open(path);
        QTRY_COMPARE(opened.count(), 1);
    }

    QToolButton* segment(const QString& title) {
        for (QToolButton* button : window_->view().toolBar()->findChildren<QToolButton*>()) {
            if (button->text() == title) {
                return button;
            }
        }
        return nullptr;
    }

    std::unique_ptr<QTemporaryDir> folder_;
    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<DocumentWindowTest> registered;
#include "DocumentWindowTest.moc"
