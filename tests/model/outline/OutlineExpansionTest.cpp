#include <QTest>

#include "app/model/outline/OutlineExpansion.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/support/TestProgram.h"

namespace {

PlistValue list(int count) {
    std::vector<PlistValue> values;
    for (int i = 0; i < count; ++i) {
        values.push_back(PlistValue::integer(i));
    }
    return PlistValue::array(values);
}

PlistNodePtr tree(const PlistValue& a, const PlistValue& b) {
    return PlistNode::create({}, PlistValue::dictionary({{"a", a}, {"b", b}}));
}

/// The same with the entries in the other order.
PlistNodePtr turned(const PlistValue& a, const PlistValue& b) {
    return PlistNode::create({}, PlistValue::dictionary({{"b", b}, {"a", a}}));
}

PlistNode& child(PlistNode& node, std::size_t index) {
    return *node.children()[index];
}

}  // namespace

/// Finding the same places in another tree. What becomes of the expansion of an outline is tested
/// with the outline.
class OutlineExpansionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void carriesTheSelectionByKeysAndPositions() {
        const PlistNodePtr before = tree(list(3), PlistValue::integer(1));
        const PlistNodePtr after = turned(list(5), PlistValue::integer(2));
        PlistNode& a = child(*before, 0);
        const NodeIdSet expanded{before->id(), a.id()};
        const NodeIdSet selection{before->id(), child(*before, 1).id(), child(a, 2).id()};
        const NodeIdSet carried =
            OutlineExpansion::carriedSelection(*before, *after, expanded, selection);
        QCOMPARE(carried,
                 (NodeIdSet{after->id(), child(*after, 0).id(), child(child(*after, 1), 2).id()}));
    }

    void leavesOutWhatHasNoCounterpart() {
        const PlistNodePtr before = tree(list(3), list(2));
        const PlistNodePtr after = tree(list(1), PlistValue::integer(2));
        PlistNode& a = child(*before, 0);
        PlistNode& b = child(*before, 1);
        const NodeIdSet expanded{before->id(), a.id(), b.id()};
        const NodeIdSet selection{child(a, 0).id(), child(a, 2).id(), child(b, 1).id()};
        QCOMPARE(OutlineExpansion::carriedSelection(*before, *after, expanded, selection),
                 NodeIdSet{child(child(*after, 0), 0).id()});
    }

    void leavesOutWhatIsNotExpanded() {
        const PlistNodePtr before = tree(list(3), list(2));
        const PlistNodePtr after = tree(list(3), list(2));
        const NodeIdSet selection{child(child(*before, 0), 0).id()};
        QCOMPARE(OutlineExpansion::carriedSelection(*before, *after, {before->id()}, selection),
                 NodeIdSet());
    }

    void findsCounterparts() {
        const PlistNodePtr before = tree(list(3), list(4));
        const PlistNodePtr after = turned(list(2), list(4));
        QCOMPARE(OutlineExpansion::counterpart(*before, *after), after.get());
        QCOMPARE(OutlineExpansion::counterpart(child(child(*before, 1), 3), *after),
                 &child(child(*after, 0), 3));
        QVERIFY(OutlineExpansion::counterpart(child(child(*before, 0), 2), *after) == nullptr);
        const PlistNodePtr scalar = PlistNode::create({}, PlistValue::integer(1));
        QVERIFY(OutlineExpansion::counterpart(child(*before, 0), *scalar) == nullptr);
    }
};

const RegisteredTest<OutlineExpansionTest> registered;
#include "OutlineExpansionTest.moc"
