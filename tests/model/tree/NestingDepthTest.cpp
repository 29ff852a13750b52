#include <QTest>
#include <utility>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/NestingDepth.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

namespace {

/// So many arrays in each other, the innermost with a number.
PlistValue nested(int depth) {
    PlistValue value = PlistValue::integer(1);
    for (int i = 0; i < depth; ++i) {
        value = PlistValue::array({std::move(value)});
    }
    return value;
}

QString complaint(const std::vector<PlistEntry>& entries, const PlistNode& container) {
    try {
        NestingDepth::check(entries, container);
    } catch (const PlistError& error) {
        return QString::fromStdString(error.errorDescription());
    }
    return {};
}

}  // namespace

class NestingDepthTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void allowsWhatCanBeRead() {
        const PlistNodePtr root = PlistNode::create({}, PlistValue::array({}));
        const QString tooDeep = QStringLiteral("The file nests more than 512 levels deep.");
        QCOMPARE(complaint({}, *root), QString());
        QCOMPARE(complaint({{"a", nested(PlistCodec::maximumDepth - 1)}}, *root), QString());
        QCOMPARE(complaint({{"a", nested(PlistCodec::maximumDepth)}}, *root), tooDeep);
        QCOMPARE(complaint({{"a", nested(1)}, {"b", nested(PlistCodec::maximumDepth)}}, *root),
                 tooDeep);
    }

    void countsTheContainersAbove() {
        const PlistNodePtr root = PlistNode::create({}, nested(3));
        const PlistNode& inner = *root->children()[0]->children()[0];
        QCOMPARE(complaint({{"a", nested(PlistCodec::maximumDepth - 3)}}, inner), QString());
        QVERIFY(!complaint({{"a", nested(PlistCodec::maximumDepth - 2)}}, inner).isEmpty());
    }

    /// As readers do.
    void doesNotCountEmptyContainers() {
        PlistValue value = PlistValue::array({});
        for (int i = 1; i < PlistCodec::maximumDepth; ++i) {
            value = PlistValue::array({std::move(value)});
        }
        const PlistNodePtr root = PlistNode::create({}, PlistValue::array({}));
        QCOMPARE(complaint({{"a", value}}, *root), QString());
    }

    /// 2^300 values, by sharing.
    void visitsSharedContainersOnce() {
        PlistValue value = PlistValue::integer(1);
        for (int i = 0; i < 300; ++i) {
            value = PlistValue::array({value, value});
        }
        const PlistNodePtr root = PlistNode::create({}, PlistValue::array({}));
        QCOMPARE(complaint({{"a", value}}, *root), QString());
    }
};

const RegisteredTest<NestingDepthTest> registered;
#include "NestingDepthTest.moc"
