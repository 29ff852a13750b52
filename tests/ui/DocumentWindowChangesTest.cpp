#include <QAbstractButton>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/model/PlistNode.h"
#include "app/ui/DocumentView.h"
#include "app/ui/DocumentWindow.h"
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
        QCOMPARE(box->informativeText(),
                 QStringLiteral("It does not hold what was read from it or saved in it last.\n\n"
                                "Overwrite replaces what the file holds now. Reload replaces what "
                                "is in the window, which can be undone."));
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

private:
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

int main(int argc, char** argv) {
    return runUiTest<DocumentWindowChangesTest>(argc, argv);
}
#include "DocumentWindowChangesTest.moc"
