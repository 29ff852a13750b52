#include <QStringList>
#include <QTest>

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/text/RowText.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

class RowTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Only what the file holds word for word, and what works like a link, stands out.
    void dimsWhatIsNotInTheFile() {
        const PlistNodePtr root = PlistNode::create({}, Samples::allTypes());
        OutlineState outline;
        outline.rebuild(*root);
        QStringList dimmed;
        for (const OutlineRow& row : outline.rows()) {
            QVERIFY(!RowText::isKeySecondary(row));
            if (RowText::isValueSecondary(row)) {
                dimmed += RowText::key(row);
            }
        }
        QCOMPARE(dimmed.join(u' '), QStringLiteral("Root dictionary array boolean uid"));
    }

    void dimsThePlacesInArrays() {
        const PlistNodePtr root =
            PlistNode::create({}, PlistValue::array({PlistValue::integer(1)}));
        OutlineState outline;
        outline.rebuild(*root);
        QVERIFY(!RowText::isKeySecondary(outline.rows()[0]));
        QVERIFY(RowText::isKeySecondary(outline.rows()[1]));
    }
};

const RegisteredUiTest<RowTextTest> registered;
#include "RowTextTest.moc"
