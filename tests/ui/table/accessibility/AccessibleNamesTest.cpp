#include <QDialog>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTest>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/editors/DataPopover.h"
#include "app/ui/editors/DateValueEditor.h"
#include "app/ui/editors/InlineTextField.h"
#include "app/ui/editors/LongTextEditor.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/FocusNames.h"
#include "tests/ui/support/MenuTools.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

/// Whatever can have the keyboard says what it is, with each of the editors open.
class AccessibleNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        window_ = new DocumentWindow(QStringLiteral("Untitled"));
        window_->controller().document().apply({Samples::allTypes(), PlistFormat::xml});
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
    }

    void cleanup() { delete window_; }

    void namesTheControlsOfTheWindow() {
        const QStringList names = FocusNames::in(*window_);
        for (const char* name : {"Property list", "XML", "Binary", "Search"}) {
            QVERIFY2(names.contains(QString::fromUtf8(name)), qPrintable(names.join(u'|')));
        }
        QCOMPARE(FocusNames::missingIn(*window_), QStringList());
    }

    void namesTextFields_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("isKey");
        QTest::addColumn<QString>("name");
        QTest::newRow("key") << QStringLiteral("string") << true << QStringLiteral("Key");
        for (const char* type : {"string", "integer", "real"}) {
            QTest::newRow(type) << QString::fromUtf8(type) << false
                                << QStringLiteral("Value of %1").arg(QLatin1String(type));
        }
    }

    void namesTextFields() {
        QFETCH(QString, key);
        QFETCH(bool, isKey);
        QFETCH(QString, name);
        makeCurrent(key);
        window_->view().actions().beginEditing(isKey ? OutlineState::Column::key
                                                     : OutlineState::Column::value);
        QTRY_VERIFY(window_->findChild<InlineTextField*>() != nullptr);
        QVERIFY(FocusNames::in(*window_).contains(name));
        QCOMPARE(FocusNames::missingIn(*window_), QStringList());
    }

    void describesWhatIsWrongInAField() {
        makeCurrent(QStringLiteral("integer"));
        window_->view().actions().beginEditing(OutlineState::Column::value);
        QTRY_VERIFY(window_->findChild<InlineTextField*>() != nullptr);
        auto* field = window_->findChild<InlineTextField*>();
        field->setText(QStringLiteral("abc"));
        QVERIFY(!window_->view().commitEditing());
        QCOMPARE(field->accessibleDescription(), QStringLiteral("“abc” is not a valid Integer."));
        QCOMPARE(FocusNames::missingIn(*window_), QStringList());
    }

    void namesTheFieldOfADate() {
        makeCurrent(QStringLiteral("date"));
        QTest::keyClick(&table(), Qt::Key_Space);
        QVERIFY(window_->findChild<DateValueEditor*>() != nullptr);
        QVERIFY(FocusNames::in(*window_).contains(QStringLiteral("Date")));
        QCOMPARE(FocusNames::missingIn(*window_), QStringList());
    }

    void namesTheEditorOfBytes() {
        makeCurrent(QStringLiteral("data"));
        QTest::keyClick(&table(), Qt::Key_Space);
        const auto* popover = window_->findChild<DataPopover*>();
        QVERIFY(popover != nullptr && popover->isVisible());
        const QStringList names = FocusNames::in(*popover);
        for (const char* name : {"Bytes", "Base64", "Import…", "Export…", "Apply"}) {
            QVERIFY2(names.contains(QString::fromUtf8(name)), qPrintable(names.join(u'|')));
        }
        QCOMPARE(FocusNames::missingIn(*popover), QStringList());
    }

    void namesTheEditorOfALongText() {
        const PlistValue text = PlistValue::string(
            std::string(static_cast<std::size_t>(LongTextEditor::longestInField) + 1, 'x'));
        window_->controller().document().apply(
            {PlistValue::dictionary({{"text", text}}), PlistFormat::xml});
        makeCurrent(QStringLiteral("text"));
        window_->view().actions().beginEditing(OutlineState::Column::value);
        QTRY_VERIFY(window_->findChild<LongTextEditor*>() != nullptr);
        const auto* editor = window_->findChild<LongTextEditor*>();
        QVERIFY(editor->isVisible());
        QCOMPARE(FocusNames::missingIn(*editor), QStringList());
    }

    void namesTheControlsOfDialogs_data() {
        QTest::addColumn<QString>("item");
        QTest::newRow("keys") << QStringLiteral("Keyboard Shortcuts");
        QTest::newRow("about") << QStringLiteral("About Tabulet");
    }

    void namesTheControlsOfDialogs() {
        QFETCH(QString, item);
        MenuTools::itemOf(*window_, item.toUtf8())->trigger();
        const auto* dialog = window_->findChild<QDialog*>();
        QVERIFY(dialog != nullptr && dialog->isVisible());
        QVERIFY(!FocusNames::in(*dialog).isEmpty());
        QCOMPARE(FocusNames::missingIn(*dialog), QStringList());
    }

    void namesTheButtonsAboutUnsavedChanges() {
        window_->view().actions().addItem();
        QVERIFY(!window_->close());
        const auto* dialog = window_->findChild<QDialog*>();
        QVERIFY(dialog != nullptr);
        QCOMPARE(FocusNames::missingIn(*dialog), QStringList());
    }

private:
    PlistTable& table() const { return window_->view().table(); }

    void makeCurrent(const QString& key) const {
        const QAbstractItemModel& model = *table().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.index(row, OutlineTableModel::keyColumn).data().toString() == key) {
                table().setCurrentIndex(model.index(row, OutlineTableModel::keyColumn));
                return;
            }
        }
        QFAIL("there is no such item");
    }

    DocumentWindow* window_ = nullptr;
};

const RegisteredUiTest<AccessibleNamesTest> registered;
#include "AccessibleNamesTest.moc"
