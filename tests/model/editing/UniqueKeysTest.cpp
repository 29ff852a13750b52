#include <QTest>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/editing/UniqueKeys.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

namespace {

UniqueKeys among(const std::vector<std::string>& keys) {
    std::vector<PlistNodePtr> nodes(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        nodes[i] = PlistNode::create(keys[i], PlistValue::integer(0));
    }
    return UniqueKeys(nodes);
}

std::string taken(UniqueKeys& keys, const char* wanted) {
    const PlistString key = keys.take(wanted);
    return std::string(key.view());
}

}  // namespace

class UniqueKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsAFreeKey() {
        UniqueKeys keys = among({"a"});
        QCOMPARE(taken(keys, "b"), "b");
        QVERIFY(keys.isTaken("b"));
        QVERIFY(!keys.isTaken("c"));
    }

    void countsFromTwo() {
        UniqueKeys keys = among({"New Item"});
        QCOMPARE(taken(keys, "New Item"), "New Item 2");
        QCOMPARE(taken(keys, "New Item"), "New Item 3");
    }

    void skipsTakenNumbers() {
        UniqueKeys keys = among({"a", "a 2", "a 4"});
        QCOMPARE(taken(keys, "a"), "a 3");
        QCOMPARE(taken(keys, "a"), "a 5");
        QCOMPARE(taken(keys, "a 2"), "a 2 2");
    }

    void numbersTheEmptyKeyToo() {
        UniqueKeys keys = among({""});
        QCOMPARE(taken(keys, ""), " 2");
        UniqueKeys none;
        QCOMPARE(taken(none, ""), "");
    }

    void takesCanonicallyEquivalentKeysForEqual() {
        UniqueKeys keys = among({"caf\u00e9"});
        QCOMPARE(taken(keys, "cafe\u0301"), "cafe\u0301 2");
        QCOMPARE(taken(keys, "caf\u00e9"), "caf\u00e9 3");
    }

    void doesNotTryNumbersTwice() {
        // One hundred thousand attempts for the last key alone would take minutes in all.
        UniqueKeys keys = among({"n"});
        for (int i = 2; i < 100'000; ++i) {
            keys.take("n");
        }
        QCOMPARE(taken(keys, "n"), "n 100000");
    }
};

const RegisteredTest<UniqueKeysTest> registered;
#include "UniqueKeysTest.moc"
