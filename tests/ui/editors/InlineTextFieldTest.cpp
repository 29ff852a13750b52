#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "app/ui/editors/ErrorPopover.h"
#include "app/ui/editors/InlineTextField.h"
#include "app/ui/look/Colors.h"
#include "tests/ui/support/UiTest.h"

namespace {

const QString refusal = QStringLiteral("“abc” is not a valid <b>Integer</b>.");

/// A window with a field whose owner writes down what it is told, and a button beside it.
struct Window {
    explicit Window(const QString& text = QStringLiteral("12")) {
        auto* layout = new QHBoxLayout(&widget);
        button = new QPushButton(QStringLiteral("elsewhere"), &widget);
        layout->addWidget(button);
        field = new InlineTextField(text, owner(), &widget);
        layout->addWidget(field);
        widget.resize(500, 300);
        widget.show();
        QVERIFY(QTest::qWaitForWindowActive(&widget));
        QTRY_VERIFY(field->hasFocus());
    }

    InlineTextField::Owner owner() {
        return {[this](const QString& text) -> std::optional<QString> {
                    note("commit " + text.toUtf8());
                    return text == QStringLiteral("abc") ? std::optional(refusal) : std::nullopt;
                },
                [this] {
                    note("finish");
                    // As the table does.
                    button->setFocus();
                },
                [this] { note("tab"); }};
    }

    void note(const QByteArray& call) { calls += calls.isEmpty() ? call : "; " + call; }

    void type(const QString& text) const {
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(field, key, modifiers);
    }
    ErrorPopover* popover() const { return widget.findChild<ErrorPopover*>(); }
    bool isPopoverShown() const { return popover() != nullptr && popover()->isVisible(); }

    QWidget widget;
    QPushButton* button = nullptr;
    InlineTextField* field = nullptr;
    QByteArray calls;
};

}  // namespace

class InlineTextFieldTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beginsWithAllTextSelected() {
        const Window window;
        QCOMPARE(window.field->text(), QStringLiteral("12"));
        QCOMPARE(window.field->selectedText(), QStringLiteral("12"));
        QCOMPARE(window.field->error(), QString());
        QVERIFY(!window.isPopoverShown());
    }

    void keepsLongTextsAndLineBreaks() {
        const QString text = QString(100'000, u'x') + QStringLiteral("\nü\t") + QChar(u'\0');
        const Window window(text);
        QCOMPARE(window.field->text(), text);
        window.press(Qt::Key_Return);
        QCOMPARE(window.calls, QByteArray("commit " + text.toUtf8() + "; finish"));
    }

    void returnCommits_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }

    void returnCommits() {
        QFETCH(Qt::Key, key);
        const Window window;
        window.type(QStringLiteral("34"));
        window.press(key);
        QCOMPARE(window.calls, QByteArray("commit 34; finish"));
    }

    void returnShowsWhatIsWrong() {
        const Window window;
        window.type(QStringLiteral("abc"));
        window.press(Qt::Key_Return);
        QCOMPARE(window.calls, QByteArray("commit abc"));
        QCOMPARE(window.field->error(), refusal);
        QVERIFY(window.field->hasFocus());
        QVERIFY(window.isPopoverShown());
        QCOMPARE(window.popover()->message(), refusal);
        QCOMPARE(window.popover()->findChild<QLabel*>()->textFormat(), Qt::PlainText);
        QCOMPARE(window.field->accessibleDescription(), refusal);
        // Correcting the text takes the message away; then it can be committed.
        window.type(QStringLiteral("5"));
        QVERIFY(!window.isPopoverShown());
        QCOMPARE(window.field->error(), QString());
        QCOMPARE(window.field->accessibleDescription(), QString());
        window.press(Qt::Key_Return);
        QCOMPARE(window.calls, QByteArray("commit abc; commit 5; finish"));
    }

    void escapeEndsWithoutCommitting() {
        const Window window;
        window.type(QStringLiteral("34"));
        window.press(Qt::Key_Escape);
        QCOMPARE(window.calls, QByteArray("finish"));
        QVERIFY(!window.field->hasFocus());
    }

    void escapeEndsAnEditWithAnError() {
        const Window window;
        window.type(QStringLiteral("abc"));
        window.press(Qt::Key_Return);
        window.press(Qt::Key_Escape);
        QCOMPARE(window.calls, QByteArray("commit abc; finish"));
        QVERIFY(!window.isPopoverShown());
    }

    void losingTheFocusCommits() {
        const Window window;
        window.type(QStringLiteral("34"));
        window.button->setFocus(Qt::MouseFocusReason);
        QCOMPARE(window.calls, QByteArray("commit 34; finish"));
    }

    void losingTheFocusDropsWhatIsRefused() {
        const Window window;
        window.type(QStringLiteral("abc"));
        window.button->setFocus(Qt::MouseFocusReason);
        QCOMPARE(window.calls, QByteArray("commit abc; finish"));
        QVERIFY(!window.isPopoverShown());
    }

    void tabGoesOnAfterCommitting() {
        const Window window;
        window.type(QStringLiteral("34"));
        window.press(Qt::Key_Tab);
        QCOMPARE(window.calls, QByteArray("commit 34; finish; tab"));
    }

    void tabDoesNotGoOnFromWhatIsRefused() {
        const Window window;
        window.type(QStringLiteral("abc"));
        window.press(Qt::Key_Tab);
        QCOMPARE(window.calls, QByteArray("commit abc; finish"));
    }

    void shiftTabOnlyCommits() {
        const Window window;
        window.type(QStringLiteral("34"));
        window.press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(window.calls, QByteArray("commit 34; finish"));
    }

    void someReasonsDoNotEndTheEdit_data() {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::newRow("window") << Qt::ActiveWindowFocusReason;
        QTest::newRow("popup") << Qt::PopupFocusReason;
        QTest::newRow("menu bar") << Qt::MenuBarFocusReason;
    }

    void someReasonsDoNotEndTheEdit() {
        QFETCH(Qt::FocusReason, reason);
        const Window window;
        window.type(QStringLiteral("34"));
        QFocusEvent event(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(window.field, &event);
        QCOMPARE(window.calls, QByteArray(""));
    }

    void anotherWindowDoesNotEndTheEdit() {
        const Window window;
        window.type(QStringLiteral("34"));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(window.calls, QByteArray(""));
    }

    void commitsForOthersOnRequest() {
        const Window window;
        window.type(QStringLiteral("abc"));
        QVERIFY(!window.field->commitNow());
        QVERIFY(window.isPopoverShown());
        window.type(QStringLiteral("6"));
        QVERIFY(window.field->commitNow());
        QVERIFY(window.field->commitNow());
        QCOMPARE(window.calls, QByteArray("commit abc; commit 6; finish"));
    }

    void anAbandonedFieldSaysNothing() {
        const Window window;
        window.type(QStringLiteral("34"));
        window.field->abandon();
        window.button->setFocus(Qt::MouseFocusReason);
        QCOMPARE(window.calls, QByteArray(""));
    }

    void aClickDismissesTheMessage() {
        const Window window;
        window.type(QStringLiteral("abc"));
        window.press(Qt::Key_Return);
        QTest::mouseClick(window.popover(), Qt::LeftButton);
        QVERIFY(!window.isPopoverShown());
        QCOMPARE(window.field->error(), QString());
        QCOMPARE(window.calls, QByteArray("commit abc"));
        QVERIFY(window.field->hasFocus());
    }

    void theMessageStaysInTheWindow_data() {
        QTest::addColumn<QRect>("field");
        QTest::addColumn<bool>("isBelow");
        QTest::newRow("top") << QRect(10, 10, 200, 24) << true;
        QTest::newRow("bottom") << QRect(10, 270, 200, 24) << false;
        QTest::newRow("right") << QRect(480, 100, 200, 24) << true;
    }

    void theMessageStaysInTheWindow() {
        QFETCH(QRect, field);
        QFETCH(bool, isBelow);
        const Window window;
        delete window.widget.layout();
        window.field->setGeometry(field);
        window.type(QStringLiteral("abc"));
        window.press(Qt::Key_Return);
        const QRect popover = window.popover()->geometry();
        QVERIFY(window.widget.rect().contains(popover));
        QCOMPARE(popover.top() > field.bottom(), isBelow);
        QVERIFY(!popover.intersects(field));
        const QMargins margins = window.popover()->layout()->contentsMargins();
        QCOMPARE(margins, QMargins(10, 10, 10, 10));
    }

    void theFrameTellsErrors() {
        const Window window;
        const auto frameColor = [&window] {
            const QImage image = window.field->grab().toImage();
            return image.pixelColor(image.width() / 2, 0);
        };
        const auto isNear = [](const QColor& one, const QColor& other) {
            return qAbs(one.red() - other.red()) + qAbs(one.green() - other.green()) +
                       qAbs(one.blue() - other.blue()) <
                   24;
        };
        const QPalette palette = window.field->palette();
        QVERIFY(isNear(frameColor(), palette.color(QPalette::Highlight)));
        window.type(QStringLiteral("abc"));
        window.press(Qt::Key_Return);
        QVERIFY(isNear(frameColor(), Colors::error(palette)));
    }

    void theErrorColorIsReadable() {
        QPalette light;
        light.setColor(QPalette::Base, Qt::white);
        QVERIFY(Colors::contrast(Colors::error(light), Qt::white) >= 4.5);
        QPalette dark;
        const QColor ground(0x2D, 0x2D, 0x2D);
        dark.setColor(QPalette::Base, ground);
        QVERIFY(Colors::contrast(Colors::error(dark), ground) >= 4.5);
    }
};

const RegisteredUiTest<InlineTextFieldTest> registered;
#include "InlineTextFieldTest.moc"
