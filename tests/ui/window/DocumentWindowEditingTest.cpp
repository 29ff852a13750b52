#include <QAbstractButton>
#include <QAction>
#include <QMessageBox>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/editors/InlineTextField.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

/// What a window does while a text field is open in its table.
class DocumentWindowEditingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(QStringLiteral("numbers.plist"));
        Samples::writeFile(path_, Samples::bytes(Samples::numbers(2), PlistFormat::xml));
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
        QSignalSpy opened(&window_->controller(), &DocumentController::opened);
        window_->open(path_);
        QVERIFY(opened.wait());
    }

    void cleanup() { delete window_; }

    void savesWhatIsBeingTyped() {
        QTest::keyClicks(openValue(), QStringLiteral("42"));
        QSignalSpy saved(&window_->controller(), &DocumentController::saved);
        item("Save")->trigger();
        QVERIFY(saved.wait());
        QVERIFY(Samples::readFile(path_).contains("<integer>42</integer>"));
        QVERIFY(!window_->isWindowModified());
        QVERIFY(!window_->view().outline().editing());
    }

    void doesNotSaveWhatIsWrong() {
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("abc"));
        item("Save")->trigger();
        QCOMPARE(window_->controller().activity(), DocumentController::Activity::idle);
        QCOMPARE(field->error(), QStringLiteral("“abc” is not a valid Integer."));
        QVERIFY(field->hasFocus());
    }

    void asksAboutWhatIsBeingTyped() {
        QTest::keyClicks(openValue(), QStringLiteral("42"));
        QVERIFY(!window_->close());
        auto* box = window_->findChild<QMessageBox*>();
        QVERIFY(box != nullptr);
        const QPointer<DocumentWindow> window = window_;
        box->button(QMessageBox::Save)->click();
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
        QVERIFY(Samples::readFile(path_).contains("<integer>42</integer>"));
    }

    /// The buttons of the toolbar take no focus, which would end the edit.
    void theButtonsKeepWhatIsBeingTyped() {
        const QList<QAction*> buttons = window_->view().toolBar()->actions();
        QTest::keyClicks(openValue(), QStringLiteral("42"));
        buttons[0]->trigger();
        const PlistNode& root = window_->controller().document().root();
        QCOMPARE(root.childCount(), 3);
        QVERIFY(first().value() == PlistValue::integer(42));
        // Taken over before its item goes, so that it is there again when that comes back.
        QTest::keyClicks(openValue(), QStringLiteral("43"));
        buttons[1]->trigger();
        QCOMPARE(root.childCount(), 2);
        window_->controller().undoManager().undo();
        QVERIFY(first().value() == PlistValue::integer(43));
    }

    void staysOpenWithWhatIsWrong() {
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("abc"));
        const QSignalSpy refused(window_, &DocumentWindow::closeRefused);
        QVERIFY(!window_->close());
        QCOMPARE(refused.count(), 1);
        QVERIFY(window_->findChild<QMessageBox*>() == nullptr);
        QVERIFY(!field->error().isEmpty());
        // Without an edit there is nothing to keep it.
        QTest::keyClick(field, Qt::Key_Escape);
        const QPointer<DocumentWindow> window = window_;
        QVERIFY(window_->close());
        QTRY_VERIFY(window.isNull());
        window_ = nullptr;
    }

    void takesBackWhatIsBeingTypedFirst() {
        view().actions().changeFormat(PlistFormat::binary);
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("42"));
        item("Undo Change Format")->trigger();
        QCOMPARE(field->text(), QStringLiteral("0"));
        QVERIFY(field->hasFocus());
        // Then there is nothing of the field's own any more.
        item("Undo Change Format")->trigger();
        QVERIFY(!view().outline().editing());
        QCOMPARE(window_->controller().document().format(), PlistFormat::xml);
    }

    void doesAgainWhatWasTakenBackInTheField() {
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("42"));
        item("Undo")->trigger();
        item("Redo")->trigger();
        QCOMPARE(field->text(), QStringLiteral("42"));
    }

    /// The text becomes an edit of its own, behind which there is nothing to be done again.
    void appliesTheTextBeforeTheDocumentDoesAnythingAgain() {
        view().actions().changeFormat(PlistFormat::binary);
        window_->controller().undoManager().undo();
        QTest::keyClicks(openValue(), QStringLiteral("42"));
        item("Redo Change Format")->trigger();
        QVERIFY(first().value() == PlistValue::integer(42));
        QCOMPARE(window_->controller().document().format(), PlistFormat::xml);
    }

    void doesNothingAgainBehindWhatIsWrong() {
        view().actions().changeFormat(PlistFormat::binary);
        window_->controller().undoManager().undo();
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("abc"));
        item("Redo Change Format")->trigger();
        QCOMPARE(window_->controller().document().format(), PlistFormat::xml);
        QVERIFY(!field->error().isEmpty());
    }

    void keysOfTheFieldTakeBackItsText() {
        view().actions().changeFormat(PlistFormat::binary);
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("42"));
        QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(field->text(), QStringLiteral("0"));
        QCOMPARE(window_->controller().document().format(), PlistFormat::binary);
    }

    void appliesTheTextBeforeOtherCommands() {
        QTest::keyClicks(openValue(), QStringLiteral("42"));
        item("Duplicate")->trigger();
        QVERIFY(first().value() == PlistValue::integer(42));
        QVERIFY(window_->controller().document().root().children()[1]->value() ==
                PlistValue::integer(42));
    }

    void commandsStopAtWhatIsWrong_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::newRow("add") << static_cast<int>(Qt::Key_N)
                             << (Qt::ControlModifier | Qt::ShiftModifier);
        QTest::newRow("duplicate")
            << static_cast<int>(Qt::Key_D) << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("move") << static_cast<int>(Qt::Key_Down)
                              << Qt::KeyboardModifiers(Qt::AltModifier);
        QTest::newRow("find") << static_cast<int>(Qt::Key_F)
                              << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("save") << static_cast<int>(Qt::Key_S)
                              << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("close") << static_cast<int>(Qt::Key_W)
                               << Qt::KeyboardModifiers(Qt::ControlModifier);
    }

    void commandsStopAtWhatIsWrong() {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("abc"));
        QTest::keyClick(field, static_cast<Qt::Key>(key), modifiers);
        QCOMPARE(field->error(), QStringLiteral("“abc” is not a valid Integer."));
        QVERIFY(field->hasFocus());
        QVERIFY(window_->isVisible());
        QVERIFY(!window_->isWindowModified());
        QCOMPARE(window_->controller().document().root().childCount(), 2);
    }

    /// A key that opens fields of the table does nothing to one that is open.
    void keepsTheTextWhenAnEditIsBegunAgain() {
        InlineTextField* field = openValue();
        QTest::keyClicks(field, QStringLiteral("42"));
        QTest::keyClick(field, Qt::Key_F2);
        QCoreApplication::processEvents();
        QVERIFY(field->isVisible() && field->hasFocus());
        QCOMPARE(field->text(), QStringLiteral("42"));
    }

private:
    DocumentView& view() const { return window_->view(); }
    PlistNode& first() const { return *window_->controller().document().root().children()[0]; }
    QAction* item(const char* title) const { return MenuTools::itemOf(*window_, title); }

    /// Begins to edit the first number.
    InlineTextField* openValue() const {
        view().outline().select({first().id()});
        view().actions().beginEditing(OutlineState::Column::value);
        InlineTextField* field = nullptr;
        const bool isOpen = QTest::qWaitFor([this, &field] {
            field = view().table().findChild<InlineTextField*>();
            return field != nullptr && field->hasFocus();
        });
        return isOpen ? field : nullptr;
    }

    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<DocumentWindowEditingTest> registered;
#include "DocumentWindowEditingTest.moc"
