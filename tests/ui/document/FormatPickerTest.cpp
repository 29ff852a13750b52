#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "app/ui/document/FormatPicker.h"
#include "tests/ui/support/UiTest.h"

class FormatPickerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void offersTheWritableFormatsInOrder() {
        const FormatPicker picker;
        QCOMPARE(picker.accessibleName(), QStringLiteral("Format"));
        QStringList titles;
        for (const QToolButton* segment : picker.findChildren<QToolButton*>()) {
            titles += segment->text();
            QVERIFY(segment->isCheckable());
            QCOMPARE(segment->toolTip(), QStringLiteral("The format used when saving"));
            QCOMPARE(segment->focusPolicy(), Qt::StrongFocus);
        }
        QCOMPARE(titles, (QStringList{QStringLiteral("XML"), QStringLiteral("Binary")}));
    }

    void showsOneChoice() {
        FormatPicker picker;
        const QSignalSpy picked(&picker, &FormatPicker::formatPicked);
        picker.setFormat(PlistFormat::binary);
        QCOMPARE(picker.format(), PlistFormat::binary);
        picker.setFormat(PlistFormat::xml);
        QCOMPARE(picker.format(), PlistFormat::xml);
        QVERIFY(!segment(picker, 1)->isChecked());
        QCOMPARE(picked.count(), 0);
    }

    void tellsWhatWasPickedByMouse() {
        FormatPicker picker;
        picker.setFormat(PlistFormat::xml);
        PlistFormat picked = PlistFormat::openStep;
        connect(&picker, &FormatPicker::formatPicked, this,
                [&picked](PlistFormat format) { picked = format; });
        QTest::mouseClick(segment(picker, 1), Qt::LeftButton);
        QCOMPARE(picked, PlistFormat::binary);
        QCOMPARE(picker.format(), PlistFormat::binary);
    }

    void tellsWhatWasPickedByKey() {
        FormatPicker picker;
        picker.setFormat(PlistFormat::xml);
        picker.show();
        segment(picker, 0)->setFocus();
        QTRY_VERIFY(segment(picker, 0)->hasFocus());
        PlistFormat picked = PlistFormat::openStep;
        connect(&picker, &FormatPicker::formatPicked, this,
                [&picked](PlistFormat format) { picked = format; });
        QTest::keyClick(segment(picker, 0), Qt::Key_Right);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(picked, PlistFormat::binary);
    }

private:
    static QToolButton* segment(const FormatPicker& picker, qsizetype number) {
        return picker.findChildren<QToolButton*>().at(number);
    }
};

const RegisteredUiTest<FormatPickerTest> registered;
#include "FormatPickerTest.moc"
