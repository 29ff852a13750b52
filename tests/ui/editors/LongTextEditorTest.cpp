#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <memory>
#include <optional>

#include "app/ui/editors/LongTextEditor.h"
#include "tests/ui/support/ByName.h"
#include "tests/ui/support/UiTest.h"

class LongTextEditorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        committed_.clear();
        refusal_.reset();
        endings_ = 0;
        open(QStringLiteral("one\ntwo"));
    }

    void cleanup() { editor_.reset(); }

    void isNamed() {
        QCOMPARE(editor_->windowTitle(), QStringLiteral("Story"));
        QCOMPARE(text().accessibleName(), QStringLiteral("Value of Story"));
        QCOMPARE(editor_->windowModality(), Qt::WindowModal);
        QVERIFY(editor_->isSizeGripEnabled());
        QVERIFY(text().accessibleDescription().isEmpty());
        QVERIFY(button(QDialogButtonBox::Ok)->isVisible());
        QVERIFY(button(QDialogButtonBox::Cancel)->isVisible());
    }

    void returnBreaksTheLine() {
        text().moveCursor(QTextCursor::End);
        QTest::keyClick(&text(), Qt::Key_Return);
        QCOMPARE(endings_, 0);
        QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
        QCOMPARE(committed_, QStringList{QStringLiteral("one\ntwo\n")});
        QCOMPARE(endings_, 1);
    }

    void controlReturnCommits() {
        QTest::keyClicks(&text(), QStringLiteral("x"));
        QTest::keyClick(&text(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(committed_, QStringList{QStringLiteral("xone\ntwo")});
    }

    void leavesATextAloneThatIsNotEdited() {
        QVERIFY(editor_->commitNow());
        QVERIFY(committed_.isEmpty());
        QCOMPARE(endings_, 1);
    }

    void leavesATextAloneThatIsAgainWhatItWas() {
        QTest::keyClicks(&text(), QStringLiteral("x"));
        QTest::keyClick(&text(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(editor_->commitNow());
        QVERIFY(committed_.isEmpty());
    }

    void cancelsWithoutCommitting_data() {
        QTest::addColumn<bool>("isByKey");
        QTest::newRow("button") << false;
        QTest::newRow("key") << true;
    }

    void cancelsWithoutCommitting() {
        QFETCH(bool, isByKey);
        QTest::keyClicks(&text(), QStringLiteral("x"));
        if (isByKey) {
            QTest::keyClick(&text(), Qt::Key_Escape);
        } else {
            QTest::mouseClick(button(QDialogButtonBox::Cancel), Qt::LeftButton);
        }
        QCOMPARE(endings_, 1);
        editor_->commitNow();
        QVERIFY(committed_.isEmpty());
        QCOMPARE(endings_, 1);
    }

    void showsARefusal() {
        refusal_ = QStringLiteral("The key already exists.");
        QTest::keyClicks(&text(), QStringLiteral("x"));
        QVERIFY(!editor_->commitNow());
        QVERIFY(ByName::find<QLabel>(*editor_, qUtf8Printable(*refusal_)) != nullptr);
        QCOMPARE(text().accessibleDescription(), *refusal_);
        QCOMPARE(endings_, 0);
        refusal_.reset();
        QVERIFY(editor_->commitNow());
        QCOMPARE(committed_.size(), 2);
        QCOMPARE(endings_, 1);
    }

    void commitsNothingOnceAbandoned() {
        QTest::keyClicks(&text(), QStringLiteral("x"));
        editor_->abandon();
        QVERIFY(editor_->commitNow());
        editor_->close();
        QVERIFY(committed_.isEmpty());
        QCOMPARE(endings_, 0);
    }

    void onlyShowsWhatCannotBeKept() {
        open(QStringLiteral("one\r\ntwo\nthree"));
        QVERIFY(text().isReadOnly());
        const QString notice = QStringLiteral(
            "This text is read-only here: it has several kinds of line breaks "
            "or special characters, which editing it here would change.");
        QCOMPARE(text().accessibleDescription(), notice);
        QVERIFY(ByName::find<QLabel>(*editor_, qUtf8Printable(notice)) != nullptr);
        QTest::keyClicks(&text(), QStringLiteral("x"));
        QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
        QVERIFY(committed_.isEmpty());
        QCOMPARE(endings_, 1);
    }

private:
    void open(const QString& text) {
        const InlineTextField::Owner owner{[this](const QString& committed) {
                                               committed_ += committed;
                                               return refusal_;
                                           },
                                           [this] { ++endings_; },
                                           {}};
        editor_ = std::make_unique<LongTextEditor>(text, owner, nullptr);
        editor_->setNames(QStringLiteral("Story"), QStringLiteral("Value of Story"));
        editor_->show();
        QVERIFY(QTest::qWaitForWindowActive(editor_.get()));
    }

    QPlainTextEdit& text() const {
        return *ByName::find<QPlainTextEdit>(*editor_, "Value of Story");
    }

    QPushButton* button(QDialogButtonBox::StandardButton which) const {
        return editor_->findChild<QDialogButtonBox*>()->button(which);
    }

    std::unique_ptr<LongTextEditor> editor_;
    QStringList committed_;
    std::optional<QString> refusal_;
    int endings_ = 0;
};

const RegisteredUiTest<LongTextEditorTest> registered;
#include "LongTextEditorTest.moc"
