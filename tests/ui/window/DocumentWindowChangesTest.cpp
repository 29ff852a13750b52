#include <QAbstractButton>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>
#include <string>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/notices/FileNotice.h"
#include "app/ui/notices/SaveProgress.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/model/support/NoMoreDescriptors.h"
#include "tests/ui/support/FocusNames.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

/// Windows whose files are changed by other programs.
class DocumentWindowChangesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        write(Samples::numbers(2));
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
        QSignalSpy opened(&window_->controller(), &DocumentController::opened);
        window_->open(path());
        QVERIFY(opened.wait());
    }

    void cleanup() { delete window_; }

    // --- Saving ---

    void asksBeforeItOverwritesAChange() {
        saveOverAChange();
        QMessageBox* box = message();
        QCOMPARE(box->text(),
                 QStringLiteral("The file “a.plist” has been changed by another program."));
        QCOMPARE(
            box->informativeText(),
            QStringLiteral("It has been left untouched.\n\nOverwrite replaces what is in the file "
                           "now. Reload replaces what is in the window, and can be undone."));
        QStringList buttons;
        for (const QAbstractButton* button : box->buttons()) {
            buttons += button->text().remove(u'&');
        }
        buttons.sort();
        QCOMPARE(buttons, (QStringList{QStringLiteral("Cancel"), QStringLiteral("Overwrite"),
                                       QStringLiteral("Reload"), QStringLiteral("Save As…")}));
        QCOMPARE(box->defaultButton(), box->button(QMessageBox::Cancel));
        QTest::keyClick(box, Qt::Key_Escape);
        QTRY_VERIFY(message() == nullptr);
        QCOMPARE(itemsInFile(), 5);
        QVERIFY(window_->isWindowModified());
    }

    void overwritesWhenToldSo() {
        saveOverAChange();
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        press("Overwrite");
        QTRY_COMPARE(saved.count(), 1);
        QCOMPARE(itemsInFile(), 3);
        QVERIFY(!window_->isWindowModified());
    }

    void savesElsewhereWhenToldSo() {
        saveOverAChange();
        press("Save As…");
        auto* dialog = window_->findChild<QFileDialog*>();
        QVERIFY(dialog != nullptr);
        const QString other = folder_->filePath(QStringLiteral("b.plist"));
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        Q_EMIT dialog->fileSelected(other);
        QTRY_COMPARE(saved.count(), 1);
        QCOMPARE(itemsInFile(), 5);
        QCOMPARE(window_->controller().path(), other);
        delete dialog;
    }

    void reloadsWhenToldSo() {
        saveOverAChange();
        QSignalSpy reloaded(&window_->controller(), &DocumentController::reloaded);
        press("Reload");
        QTRY_COMPARE(reloaded.count(), 1);
        QCOMPARE(itemsShown(), 5);
        QVERIFY(!window_->isWindowModified());
        window_->controller().undoManager().undo();
        QCOMPARE(itemsShown(), 3);
    }

    /// The answer decides about the closing too.
    void closesAfterOverwriting() {
        const QPointer<DocumentWindow> window = window_;
        closeOverAChange();
        press("Overwrite");
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
        QCOMPARE(itemsInFile(), 3);
    }

    void staysOpenAfterEveryOtherAnswer_data() {
        QTest::addColumn<QString>("button");
        QTest::newRow("reload") << QStringLiteral("Reload");
        QTest::newRow("cancel") << QStringLiteral("Cancel");
    }

    void staysOpenAfterEveryOtherAnswer() {
        QFETCH(QString, button);
        closeOverAChange();
        QSignalSpy refused(window_, &DocumentWindow::closeRefused);
        press(button.toUtf8());
        QTRY_COMPARE(refused.count(), 1);
        QVERIFY(window_->isVisible());
        QCOMPARE(itemsInFile(), 5);
    }

    // --- Reloading ---

    void reloadsUnseenChanges() {
        write(Samples::numbers(7));
        QTRY_COMPARE(itemsShown(), 7);
        QVERIFY(!window_->isWindowModified());
        QVERIFY(!notice().isVisible());
        QVERIFY(MenuTools::itemOf(*window_, "Undo Reload") != nullptr);
    }

    /// Expansion, selection, the current cell and what is in sight.
    void keepsThePlace() {
        write(PlistValue::dictionary({{"before", Samples::numbers(200)},
                                      {"list", Samples::numbers(300)},
                                      {"after", Samples::numbers(3)}}));
        QTRY_COMPARE(itemsShown(), 3);
        OutlineState& outline = window_->view().outline();
        PlistTable& table = window_->view().table();
        PlistNode& list = *outline.root()->children()[1];
        outline.setExpanded(list, OutlineState::Expansion::expand, OutlineState::Reach::nodeAlone);
        outline.select({list.children()[100]->id(), list.children()[102]->id()});
        table.setCurrentIndex(table.model()->index(2 + 1 + 100, 2));
        outline.select({list.children()[100]->id(), list.children()[102]->id()});
        table.verticalScrollBar()->setValue(table.verticalScrollBar()->value() + 5);
        const int top = table.visualRect(table.currentIndex()).top();
        QVERIFY(table.viewport()->rect().contains(0, top));

        // One row more above, and another order of what is around.
        write(PlistValue::dictionary({{"new", PlistValue::integer(1)},
                                      {"before", Samples::numbers(200)},
                                      {"list", Samples::numbers(300)}}));
        QTRY_COMPARE(itemsShown(), 3);
        QTRY_COMPARE(
            QString::fromStdString(std::string(outline.root()->children()[0]->key().view())),
            QStringLiteral("new"));
        PlistNode& newList = *outline.root()->children()[2];
        QVERIFY(outline.isExpanded(newList.id()));
        QVERIFY(!outline.isExpanded(outline.root()->children()[1]->id()));
        QCOMPARE(outline.selection(),
                 (NodeIdSet{newList.children()[100]->id(), newList.children()[102]->id()}));
        QCOMPARE(table.selectionModel()->selectedRows().size(), 2);
        QCOMPARE(table.currentIndex().row(), 3 + 1 + 100);
        QCOMPARE(table.currentIndex().column(), 2);
        QCOMPARE(table.visualRect(table.currentIndex()).top(), top);
    }

    /// As with a file on another machine.
    void looksAtTheFileWhenItIsActivated() {
        cleanup();
        {
            const NoMoreDescriptors none;
            window_ = new DocumentWindow(QStringLiteral("Untitled"));
        }
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
        QSignalSpy examined(window_->session().externalChanges().findChild<FileChangeDetector*>(),
                            &FileChangeDetector::examined);
        window_->open(path());
        // The first look needs no reason.
        QVERIFY(examined.wait());

        write(Samples::numbers(7));
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(itemsShown(), 2);
        window_->activateWindow();
        QTRY_COMPARE(itemsShown(), 7);
    }

    void asksAboutAChangeOfAnEditedDocument() {
        window_->view().actions().addItem();
        write(Samples::numbers(7));
        QTRY_VERIFY(notice().isVisible());
        QCOMPARE(notice().accessibleName(),
                 QStringLiteral("The file “a.plist” has been changed by another program."));
        QCOMPARE(notice().findChild<QLabel*>()->text(), notice().accessibleName());
        QCOMPARE(buttons(), (QStringList{QStringLiteral("Keep Mine"), QStringLiteral("Reload")}));
        QCOMPARE(FocusNames::missingIn(*window_), QStringList());
        QCOMPARE(itemsShown(), 3);

        // By keyboard.
        QPushButton* reload = button("Reload");
        reload->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(reload->hasFocus());
        QTest::keyClick(reload, Qt::Key_Space);
        QTRY_COMPARE(itemsShown(), 7);
        QVERIFY(!notice().isVisible());
        QVERIFY(window_->view().table().hasFocus());
        window_->controller().undoManager().undo();
        QCOMPARE(itemsShown(), 3);
    }

    void keepsMineWhenToldSo() {
        window_->view().actions().addItem();
        write(Samples::numbers(7));
        QTRY_VERIFY(notice().isVisible());
        QTest::mouseClick(button("Keep Mine"), Qt::LeftButton);
        QVERIFY(!notice().isVisible());
        QCOMPARE(itemsShown(), 3);
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        window_->save();
        QTRY_COMPARE(saved.count(), 1);
        QCOMPARE(itemsInFile(), 3);
    }

    /// What stands in a field is no edit yet, and not to be lost either.
    void asksWhileAFieldIsOpen() {
        PlistTable& table = window_->view().table();
        table.selectRow(1);
        table.activateCell(table.model()->index(1, 0));
        QTRY_VERIFY(table.isEditing());
        write(Samples::numbers(7));
        QTRY_VERIFY(notice().isVisible());
        QVERIFY(table.isEditing());
        QCOMPARE(itemsShown(), 2);
    }

    void saysWhyAChangeCannotBeRead() {
        Samples::writeFile(path(), "<plist><dict></array></plist>");
        QTRY_VERIFY(notice().isVisible());
        const QString start = QStringLiteral(
            "The file “a.plist” has been changed by another program and can no longer be read. "
            "Line 1, column 14: ");
        QVERIFY2(notice().accessibleName().startsWith(start),
                 qPrintable(notice().accessibleName()));
        QVERIFY(notice().accessibleName().endsWith(u'.'));
        QCOMPARE(buttons(), (QStringList{QStringLiteral("Keep Mine"), QStringLiteral("Reload")}));
        QCOMPARE(itemsShown(), 2);
        write(Samples::numbers(7));
        QTRY_COMPARE(itemsShown(), 7);
        QVERIFY(!notice().isVisible());
    }

    void saysThatAFileIsGone() {
        QVERIFY(QFile::remove(path()));
        QTRY_VERIFY(notice().isVisible());
        QCOMPARE(notice().accessibleName(),
                 QStringLiteral("The file “a.plist” has been deleted or moved. "
                                "Save the document to create it again."));
        QCOMPARE(buttons(), QStringList(QStringLiteral("Save")));
        QVERIFY(window_->isWindowModified());
        QTest::mouseClick(button("Save"), Qt::LeftButton);
        QTRY_VERIFY(!notice().isVisible());
        QCOMPARE(itemsInFile(), 2);
        QVERIFY(!window_->isWindowModified());
    }

    // --- While it is being saved ---

    void saysThatItSavesWhenThatTakesLong() {
        auto* progress = window_->findChild<SaveProgress*>();
        progress->start(QStringLiteral("Saving “a.plist”…"), nullptr);
        QVERIFY(!progress->isVisible());
        QTRY_VERIFY(progress->isVisible());
        QVERIFY(window_->view().isVisible());
        progress->stop();
        QVERIFY(!progress->isVisible());
    }

    void showsThatItWaitsForTheSaving() {
        const QPointer<DocumentWindow> window = window_;
        window_->view().actions().addItem();
        window_->save();
        auto* progress = window_->findChild<SaveProgress*>();
        QVERIFY(!progress->isVisible());
        QCOMPARE(progress->accessibleName(), QStringLiteral("Saving “a.plist”…"));
        QVERIFY(!window_->close());
        QVERIFY(progress->isVisible());
        QCOMPARE(progress->accessibleName(),
                 QStringLiteral("Saving “a.plist”… The window will close when this is done."));
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
        QCOMPARE(itemsInFile(), 3);
    }

private:
    FileNotice& notice() const { return *window_->findChild<FileNotice*>(); }

    QPushButton* button(const QByteArray& text) const {
        for (QPushButton* one : notice().findChildren<QPushButton*>()) {
            if (one->text().remove(u'&') == QString::fromUtf8(text)) {
                return one;
            }
        }
        return nullptr;
    }

    /// The buttons that the notice shows, by name.
    QStringList buttons() const {
        QStringList names;
        for (const QPushButton* one : notice().findChildren<QPushButton*>()) {
            if (one->isVisible()) {
                names += one->text().remove(u'&');
            }
        }
        names.sort();
        return names;
    }

    QString path() const { return folder_->filePath(QStringLiteral("a.plist")); }

    void write(const PlistValue& content) const {
        Samples::writeFile(path(), Samples::bytes(content, PlistFormat::xml));
    }

    qint64 itemsInFile() const {
        return PlistNode::create({}, Samples::valueOf(Samples::readFile(path())))->childCount();
    }

    qint64 itemsShown() { return window_->controller().document().root().childCount(); }

    QMessageBox* message() const {
        const QList<QMessageBox*> boxes = window_->findChildren<QMessageBox*>();
        return boxes.size() == 1 && boxes.first()->isVisible() ? boxes.first() : nullptr;
    }

    void press(const QByteArray& text) const {
        for (QAbstractButton* button : message()->buttons()) {
            if (button->text().remove(u'&') == QString::fromUtf8(text)) {
                button->click();
                return;
            }
        }
        QFAIL("no such button");
    }

    /// Changes the file behind the back of the window, which shows three items then, and has the
    /// window save.
    void saveOverAChange() {
        window_->view().actions().addItem();
        write(Samples::numbers(5));
        window_->save();
        QTRY_VERIFY(message() != nullptr);
    }

    void closeOverAChange() {
        window_->view().actions().addItem();
        write(Samples::numbers(5));
        window_->close();
        message()->button(QMessageBox::Save)->click();
        QTRY_VERIFY(message() != nullptr && message()->button(QMessageBox::Save) == nullptr);
    }

    std::unique_ptr<QTemporaryDir> folder_;
    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<DocumentWindowChangesTest> registered;
#include "DocumentWindowChangesTest.moc"
