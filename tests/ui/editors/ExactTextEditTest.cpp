#include <QClipboard>
#include <QTextBlock>
#include <algorithm>

#include "app/ui/editors/ExactTextEdit.h"
#include "tests/ui/support/UiTest.h"

namespace {

/// Several sections without a place to cut them at.
QString longLine() {
    QString line;
    for (int i = 0; line.size() < LongLines::longest * 3; ++i) {
        line += QString::number(i);
    }
    return line;
}

void putCursor(ExactTextEdit& edit, int position) {
    QTextCursor cursor = edit.textCursor();
    cursor.setPosition(position);
    edit.setTextCursor(cursor);
}

int endOfFirstSection(const ExactTextEdit& edit) {
    return edit.document()->firstBlock().length() - 1;
}

/// As text documents give their text back.
QString ofDocument(QString sections) {
    return sections.replace(u'\n', QChar::ParagraphSeparator);
}

QString thereAndBack(const QString& text) {
    return LongLines::joined(ofDocument(LongLines::inSections(text)), QStringLiteral("\n"));
}

}  // namespace

class ExactTextEditTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- Long lines ---

    void leavesShortLinesAlone() {
        for (const char* text : {"", "\n", "one", "one\n\ntwo\n"}) {
            const QString line = QString::fromLatin1(text);
            QCOMPARE(LongLines::inSections(line), line);
            QCOMPARE(thereAndBack(line), line);
        }
        const QString longest(LongLines::longest, u'x');
        QCOMPARE(LongLines::inSections(longest), longest);
    }

    void cutsLongLinesIntoSections() {
        const QString text = QString(LongLines::longest * 2 + 1, u'x') + QStringLiteral("\nend");
        const QStringList sections = LongLines::inSections(text).split(u'\n');
        QCOMPARE(sections.size(), 4);
        QCOMPARE(sections[0].size(), LongLines::longest);
        QCOMPARE(sections[1], LongLines::mark + QString(LongLines::longest, u'x'));
        QCOMPARE(sections[2], LongLines::mark + QStringLiteral("x"));
        QCOMPARE(sections[3], QStringLiteral("end"));
        QCOMPARE(thereAndBack(text), text);
    }

    void cutsAfterSpaces() {
        const QString text = QString(4000, u'x') + u' ' + QString(4000, u'y');
        const QStringList sections = LongLines::inSections(text).split(u'\n');
        QCOMPARE(sections.size(), 2);
        QCOMPARE(sections[0], QString(4000, u'x') + u' ');
        QCOMPARE(thereAndBack(text), text);
    }

    void doesNotCutCharacters() {
        QString text(1, u'x');
        for (int i = 0; i < 10'000; ++i) {
            text += QStringLiteral("\U0001F600");
        }
        for (const QString& section : LongLines::inSections(text).split(u'\n')) {
            QVERIFY(!section.back().isHighSurrogate());
        }
        QCOMPARE(thereAndBack(text), text);
    }

    void joinsWhereverTheMarkStands() {
        const QString mark(LongLines::mark);
        const QString sections = QStringLiteral("one\u2029t%1wo\u2029three%1\u2029four").arg(mark);
        QCOMPARE(LongLines::joined(sections, QStringLiteral("\r\n")),
                 QStringLiteral("onetwothree\r\nfour"));
        QCOMPARE(LongLines::joined(mark + QStringLiteral("x"), QStringLiteral("\n")),
                 QStringLiteral("x"));
    }

    // --- The editor ---

    void keepsTexts_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("lines") << QStringLiteral("one\ntwo\n\n");
        QTest::newRow("carriage returns") << QStringLiteral("one\rtwo\r\r");
        QTest::newRow("both together") << QStringLiteral("one\r\ntwo\r\n");
        QTest::newRow("paragraphs") << QStringLiteral("one\u2029two");
        QTest::newRow("line separators") << QStringLiteral("one\u2028two\nthree");
        QTest::newRow("NUL") << QStringLiteral("one") + QChar(0) + QStringLiteral("two\n");
        QTest::newRow("whitespace") << QStringLiteral("\t one\u00A0two\u3000 \n ");
        QTest::newRow("objects") << QStringLiteral("one\uFFFCtwo\uFEFF");
        QTest::newRow("a long line") << longLine();
        QTest::newRow("long lines") << longLine() + QStringLiteral("\r\n") + longLine();
    }

    void keepsTexts() {
        QFETCH(QString, text);
        ExactTextEdit edit;
        QVERIFY(edit.setExactText(text));
        QVERIFY(!edit.isReadOnly());
        QCOMPARE(edit.exactText(), text);
        edit.moveCursor(QTextCursor::Start);
        QTest::keyClicks(&edit, QStringLiteral("new "));
        QCOMPARE(edit.exactText(), QStringLiteral("new ") + text);
        edit.undo();
        QCOMPARE(edit.exactText(), text);
    }

    void onlyShowsWhatItCannotKeep_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("a lone return") << QStringLiteral("one\ntwo\rthree");
        QTest::newRow("several kinds") << QStringLiteral("one\r\ntwo\nthree");
        QTest::newRow("a lone paragraph") << QStringLiteral("one\ntwo\u2029three");
        QTest::newRow("a noncharacter") << QStringLiteral("one\uFDD0two");
        QTest::newRow("the mark") << QStringLiteral("one\n%1two").arg(LongLines::mark);
    }

    void onlyShowsWhatItCannotKeep() {
        QFETCH(QString, text);
        ExactTextEdit edit;
        QVERIFY(!edit.setExactText(text));
        QVERIFY(edit.isReadOnly());
        QTest::keyClick(&edit, Qt::Key_Backspace);
        QTest::keyClicks(&edit, QStringLiteral("x"));
        QVERIFY(!edit.document()->isModified());
        QVERIFY(edit.setExactText(QStringLiteral("another")));
        QVERIFY(!edit.isReadOnly());
    }

    void returnInsertsTheKindThatIsThere() {
        ExactTextEdit edit;
        edit.setExactText(QStringLiteral("one\rtwo"));
        edit.moveCursor(QTextCursor::End);
        QTest::keyClick(&edit, Qt::Key_Return);
        QCOMPARE(edit.exactText(), QStringLiteral("one\rtwo\r"));
        edit.setExactText(QStringLiteral("one"));
        edit.moveCursor(QTextCursor::End);
        QTest::keyClick(&edit, Qt::Key_Return);
        QCOMPARE(edit.exactText(), QStringLiteral("one\n"));
    }

    /// The toolkit would insert U+2028, which nobody sees and few programs expect in a file.
    void returnInsertsNothingElseWithShift() {
        ExactTextEdit edit;
        edit.setExactText(QStringLiteral("one\r\ntwo"));
        edit.moveCursor(QTextCursor::End);
        QTest::keyClick(&edit, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClick(&edit, Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier);
        QCOMPARE(edit.exactText(), QStringLiteral("one\r\ntwo\r\n\r\n"));
        edit.setReadOnly(true);
        QTest::keyClick(&edit, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(edit.exactText(), QStringLiteral("one\r\ntwo\r\n\r\n"));
    }

    void copiesTheExactText() {
        const QString text = longLine() + QStringLiteral("\r\nnext\u00A0line");
        ExactTextEdit edit;
        edit.setExactText(text);
        edit.selectAll();
        edit.copy();
        QCOMPARE(QApplication::clipboard()->text(), text);
        edit.cut();
        QCOMPARE(edit.exactText(), QString());
        edit.paste();
        QVERIFY(edit.exactText().startsWith(longLine()));
    }

    // --- Across the sections of a long line ---

    void showsLongLinesInSections() {
        ExactTextEdit edit;
        edit.setExactText(longLine());
        QVERIFY(edit.document()->blockCount() > 2);
        for (QTextBlock each = edit.document()->begin(); each.isValid(); each = each.next()) {
            QVERIFY(each.length() <= LongLines::longest + 2);
        }
    }

    void deletesWhatIsSeen_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("behind");
        QTest::addColumn<int>("removed");
        QTest::newRow("back, behind the seam") << Qt::Key_Backspace << 2 << -1;
        QTest::newRow("back, before the seam") << Qt::Key_Backspace << 0 << -1;
        QTest::newRow("forward, before the seam") << Qt::Key_Delete << 0 << 0;
        QTest::newRow("forward, behind the seam") << Qt::Key_Delete << 2 << 0;
        QTest::newRow("forward, at the seam") << Qt::Key_Delete << 1 << 0;
    }

    void deletesWhatIsSeen() {
        QFETCH(Qt::Key, key);
        QFETCH(int, behind);
        QFETCH(int, removed);
        ExactTextEdit edit;
        edit.setExactText(longLine());
        const int end = endOfFirstSection(edit);
        putCursor(edit, end + behind);
        QTest::keyClick(&edit, key);
        QCOMPARE(edit.exactText(), longLine().remove(end + removed, 1));
        while (edit.document()->isUndoAvailable()) {
            edit.undo();
        }
        QCOMPARE(edit.exactText(), longLine());
    }

    void deletesWords() {
        ExactTextEdit edit;
        edit.setExactText(longLine());
        const int end = endOfFirstSection(edit);
        putCursor(edit, end + 5);
        QTest::keyClick(&edit, Qt::Key_Backspace, Qt::ControlModifier);
        QVERIFY(!edit.exactText().contains(u'\n'));
        QVERIFY(edit.exactText().endsWith(longLine().mid(end + 3)));
        QVERIFY(edit.exactText().size() <= longLine().size() - 3);
    }

    void deletesSelections() {
        ExactTextEdit edit;
        edit.setExactText(longLine());
        const int end = endOfFirstSection(edit);
        // To the beginning of the line on the screen, and a character farther.
        putCursor(edit, end + 5);
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(&edit, Qt::Key_Left, Qt::ShiftModifier);
        }
        QTest::keyClick(&edit, Qt::Key_Home, Qt::ShiftModifier);
        QTest::keyClick(&edit, Qt::Key_Delete);
        QCOMPARE(edit.exactText(), longLine().remove(end, 3));
    }

    /// Three clicks select a section as if it were a line, from before its mark on.
    void deletesWhatThreeClicksSelect_data() {
        QTest::addColumn<int>("section");
        QTest::newRow("first") << 0;
        QTest::newRow("middle") << 1;
        QTest::newRow("last") << 3;
    }

    void deletesWhatThreeClicksSelect() {
        QFETCH(int, section);
        const QString text = longLine().replace(u'5', u' ');
        ExactTextEdit edit;
        edit.setExactText(text);
        QCOMPARE(edit.document()->blockCount(), 4);
        const QTextBlock block = edit.document()->findBlockByNumber(section);
        const QString shown = block.text().remove(LongLines::mark);
        QString others;
        for (QTextBlock each = edit.document()->begin(); each.isValid(); each = each.next()) {
            others += each == block ? QString() : each.text().remove(LongLines::mark);
        }
        edit.show();
        putCursor(edit, block.position() + 2);
        edit.centerCursor();
        const QPoint place = edit.cursorRect().center();
        QTest::mouseDClick(edit.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseClick(edit.viewport(), Qt::LeftButton, {}, place);
        QVERIFY(edit.textCursor().selectedText().contains(shown));
        QTest::keyClick(&edit, Qt::Key_Delete);
        QCOMPARE(edit.exactText(), others);
    }

    void stepsOverTheSeam() {
        ExactTextEdit edit;
        edit.setExactText(longLine());
        const int end = endOfFirstSection(edit);
        putCursor(edit, end);
        QTest::keyClick(&edit, Qt::Key_Right);
        QCOMPARE(edit.textCursor().position(), end + 2);
        QTest::keyClick(&edit, Qt::Key_Left);
        QCOMPARE(edit.textCursor().position(), end);
    }

    void insertsAtTheSeam_data() {
        QTest::addColumn<int>("behind");
        QTest::newRow("before") << 0;
        QTest::newRow("at") << 1;
        QTest::newRow("behind") << 2;
    }

    void insertsAtTheSeam() {
        QFETCH(int, behind);
        ExactTextEdit edit;
        edit.setExactText(longLine());
        const int end = endOfFirstSection(edit);
        putCursor(edit, end + behind);
        QTest::keyClicks(&edit, QStringLiteral("ab"));
        QTest::keyClick(&edit, Qt::Key_Return);
        QCOMPARE(edit.exactText(), longLine().insert(end, QStringLiteral("ab\n")));
    }
};

const RegisteredUiTest<ExactTextEditTest> registered;
#include "ExactTextEditTest.moc"
