#include <QTest>
#include <QTextDocument>

#include "app/ui/text/PlainToolTip.h"
#include "tests/ui/support/UiTest.h"

class PlainToolTipTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsShortTexts() {
        const QString text(PlainToolTip::lineLength, u'x');
        QCOMPARE(PlainToolTip::wrapped(text), text);
    }

    void breaksAfterSpaces() {
        const QString start(PlainToolTip::lineLength - 5, u'x');
        QCOMPARE(PlainToolTip::wrapped(start + QStringLiteral(" longword")),
                 start + QStringLiteral(" \nlongword"));
    }

    void breaksLongWords() {
        const QString text(2 * PlainToolTip::lineLength + 1, u'x');
        const QStringList lines = PlainToolTip::wrapped(text).split(u'\n');
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0).size(), PlainToolTip::lineLength);
        QCOMPARE(lines.at(2).size(), 1);
        QCOMPARE(lines.join(QString()), text);
    }

    void doesNotBreakWithinCharacters() {
        const QString flag = QStringLiteral("🇩🇰");
        const QString text = flag.repeated(PlainToolTip::lineLength + 1);
        const QStringList lines = PlainToolTip::wrapped(text).split(u'\n');
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(1), flag);
    }

    void cutsHugeTexts() {
        const QString shown = PlainToolTip::wrapped(QString(100'000, u'x'));
        QCOMPARE(shown.count(u'\n'), PlainToolTip::lineLimit - 1);
        QVERIFY(shown.endsWith(u'…'));
    }

    void isNeverMarkup() {
        const QString text = QStringLiteral("<b>bold</b> & <img src=\"x\">\nnext   line");
        QTextDocument document;
        document.setHtml(PlainToolTip::markup(text));
        QCOMPARE(document.toPlainText(), text);
    }
};

const RegisteredUiTest<PlainToolTipTest> registered;
#include "PlainToolTipTest.moc"
