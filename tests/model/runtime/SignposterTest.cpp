#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTest>

#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Signposter.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

class SignposterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QLoggingCategory::setFilterRules({}); }

    void isOffByDefault() {
        QCOMPARE(QLatin1String(Signposter::category().categoryName()),
                 QLatin1String("com.ventrel.Tabulet"));
        QVERIFY(!Signposter::category().isDebugEnabled());
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        const Signposter::Interval interval("Quiet");
    }

    void writesOneLineForEachInterval() {
        QLoggingCategory::setFilterRules(QStringLiteral("com.ventrel.Tabulet.debug=true"));
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression(QStringLiteral("^Read: \\d+\\.\\d{3} ms$")));
        { const Signposter::Interval interval("Read"); }
    }

    void bracketsTheRows() {
        const PlistNodePtr root = PlistNode::create({}, PlistValue());
        OutlineState outline;
        QLoggingCategory::setFilterRules(QStringLiteral("com.ventrel.Tabulet.debug=true"));
        const QRegularExpression rows(QStringLiteral("^Rows: "));
        QTest::ignoreMessage(QtDebugMsg, rows);
        QTest::ignoreMessage(QtDebugMsg, rows);
        outline.rebuild(*root);
        outline.rebuild(*root);
    }
};

const RegisteredTest<SignposterTest> registered;
#include "SignposterTest.moc"
