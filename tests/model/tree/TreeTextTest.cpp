#include <QTest>

#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

/// The texts by which tests say what trees they mean.
class TreeTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatItWrites_data() {
        QTest::addColumn<QString>("text");
        for (const char* text :
             {"{}", "[]", "{name: 0, items: [1, [], -2]}", "{a b: {c: \"d, e\"}, é: \"\"}",
              "[1.5, -0.25, true, false, date 5, data 0aff, data , uid 7, inf]"}) {
            QTest::newRow(text) << QString::fromUtf8(text);
        }
    }

    void readsWhatItWrites() {
        QFETCH(const QString, text);
        QCOMPARE(TreeText::whole(tree(text.toStdString())), text);
    }

    void readsTypes_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<PlistType>("type");
        QTest::newRow("1") << QStringLiteral("1") << PlistType::integer;
        QTest::newRow("1.0") << QStringLiteral("1.0") << PlistType::real;
        QTest::newRow("quoted") << QStringLiteral("\"1\"") << PlistType::string;
        QTest::newRow("date") << QStringLiteral("date 1") << PlistType::date;
    }

    void readsTypes() {
        QFETCH(const QString, text);
        QFETCH(const PlistType, type);
        QCOMPARE(tree(text.toStdString()).type(), type);
    }

    void readsQuotedKeysAndIgnoresWhitespace() {
        const PlistValue value = tree("{ \"\": 1,\n  \"a: b\": [ 2 ] }");
        QVERIFY(value.keys()[0].isEmpty());
        QVERIFY(value.keys()[1] == PlistString("a: b"));
        QCOMPARE(TreeText::whole(value.children()[1]), QStringLiteral("[2]"));
    }
};

const RegisteredTest<TreeTextTest> registered;
#include "TreeTextTest.moc"
