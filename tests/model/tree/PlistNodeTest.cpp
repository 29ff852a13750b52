#include <QTest>
#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/model/tree/PlistNodeBlock.h"
#include "tests/model/support/BrokenRule.h"
#include "tests/model/support/ChangeRecorder.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

const double notANumber = std::numeric_limits<double>::quiet_NaN();

PlistValue number(int value) {
    return PlistValue::integer(value);
}

PlistValue numbers(int count) {
    std::vector<PlistValue> items;
    items.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        items.push_back(number(i));
    }
    return PlistValue::array(std::move(items));
}

PlistValue sample() {
    return tree(R"({name: "Ada", tags: ["x", "y"], inner: {a: 1, b: 2}})");
}

PlistNodePtr rootOf(const PlistValue& value) {
    return PlistNode::create({}, value);
}

PlistNode& child(const PlistNodePtr& node, std::size_t index) {
    return *node->children()[index];
}

std::vector<PlistNodePtr> listOf(std::span<const PlistNodePtr> nodes) {
    return {nodes.begin(), nodes.end()};
}

std::vector<NodeId> idsOf(PlistNode& node) {
    std::vector<NodeId> ids;
    for (const PlistNodePtr& item : node.children()) {
        ids.push_back(item->id());
    }
    return ids;
}

/// An array in an array in an array ... around 7.
PlistValue chain(int depth) {
    PlistValue value = number(7);
    for (int i = 0; i < depth; ++i) {
        std::vector<PlistValue> items;
        items.push_back(std::move(value));
        value = PlistValue::array(std::move(items));
    }
    return value;
}

}  // namespace

class PlistNodeTest : public QObject {
    Q_OBJECT

private:
    NodeId firstId_ = 0;

private Q_SLOTS:
    void initTestCase() { firstId_ = PlistNode::create({}, PlistValue())->id(); }

    // --- Identity ---

    void startsIdsAtOne() const { QCOMPARE(firstId_, 1); }

    void neverReusesIds() {
        const NodeId gone = PlistNode::create({}, PlistValue())->id();
        QCOMPARE(PlistNode::create({}, PlistValue())->id(), gone + 1);
    }

    void numbersSiblingsConsecutively() {
        const int count = static_cast<int>(PlistNodeBlock::capacity) * 2 + 10;
        const PlistNodePtr root = rootOf(numbers(count));
        NodeId expected = root->id();
        for (const NodeId id : idsOf(*root)) {
            QCOMPARE(id, ++expected);
        }
        QCOMPARE(expected, root->id() + count);
    }

    void staysSmall() { QVERIFY(sizeof(PlistNode) + sizeof(PlistNodePtr) <= 96); }

    // --- Creation and materialising ---

    void holdsAScalar() {
        const PlistNodePtr node = PlistNode::create("k", PlistValue::string("text"));
        QCOMPARE(TreeText::ofTree(*node), QStringLiteral("k: \"text\""));
        QVERIFY(!node->isContainer());
        QVERIFY(!node->isMaterialized());
        QCOMPARE(node->childCount(), 0);
        QVERIFY(node->children().empty());
        QVERIFY(node->parent() == nullptr);
        QVERIFY(node->value() == PlistValue::string("text"));
    }

    void countsChildrenWithoutMakingThem() {
        const PlistNodePtr root = rootOf(sample());
        QCOMPARE(root->childCount(), 3);
        QVERIFY(root->scalar() == PlistValue());
        const NodeId next = PlistNode::create({}, PlistValue())->id();
        QCOMPARE(next, root->id() + 1);
        QVERIFY(root->value().isIdenticalTo(root->value()));
        QCOMPARE(TreeText::ofTree(*root), QStringLiteral(": dictionary 3 ..."));
    }

    void givesBackTheVeryValue() {
        const PlistValue value = sample();
        const PlistNodePtr root = rootOf(value);
        QVERIFY(root->value().isIdenticalTo(value));
        root->children();
        QVERIFY(root->value().isIdenticalTo(value));
    }

    void makesOneLevelOfChildren() {
        const PlistNodePtr root = rootOf(sample());
        root->children();
        QCOMPARE(TreeText::ofTree(*root), QStringLiteral(": dictionary 3\n"
                                                         "  name: \"Ada\"\n"
                                                         "  tags: array 2 ...\n"
                                                         "  inner: dictionary 2 ..."));
        child(root, 1).children();
        QCOMPARE(TreeText::ofTree(*root), QStringLiteral(": dictionary 3\n"
                                                         "  name: \"Ada\"\n"
                                                         "  tags: array 2\n"
                                                         "    : \"x\"\n"
                                                         "    : \"y\"\n"
                                                         "  inner: dictionary 2 ..."));
    }

    void returnsTheSameChildrenTwice() {
        const PlistNodePtr root = rootOf(sample());
        const std::vector<NodeId> ids = idsOf(*root);
        QCOMPARE(idsOf(*root), ids);
    }

    void keepsRepeatedKeys() {
        const PlistValue value = tree("{a: 1, a: 2}");
        const PlistNodePtr root = rootOf(value);
        child(root, 0).setValue(number(3));
        QCOMPARE(TreeText::whole(root->value()), QStringLiteral("{a: 3, a: 2}"));
    }

    void knowsPositions() {
        const PlistNodePtr root = rootOf(numbers(50));
        const auto children = listOf(root->children());
        for (qint64 i = 0; i < 50; ++i) {
            QCOMPARE(children[static_cast<std::size_t>(i)]->indexInParent(), std::optional(i));
        }
        QCOMPARE(root->indexInParent(), std::nullopt);

        std::vector<PlistNodePtr> reversed(children.rbegin(), children.rend());
        root->setChildren(reversed);
        QCOMPARE(children[0]->indexInParent(), std::optional<qint64>(49));
        const std::size_t front[] = {0, 1};
        root->removeChildren(front);
        QCOMPARE(children[0]->indexInParent(), std::optional<qint64>(47));
        QCOMPARE(children[49]->indexInParent(), std::nullopt);
        root->insertChildren(std::span(&children[49], 1), 10);
        QCOMPARE(children[49]->indexInParent(), std::optional<qint64>(10));
        QCOMPARE(children[0]->indexInParent(), std::optional<qint64>(48));
        QCOMPARE(children[47]->indexInParent(), std::optional<qint64>(0));
    }

    // --- Snapshots ---

    void rebuildsOnlyTheChangedPath() {
        const PlistValue value = sample();
        const PlistNodePtr root = rootOf(value);
        PlistNode& inner = child(root, 2);
        inner.children()[0]->setKey("renamed");
        const PlistValue now = root->value();
        QCOMPARE(
            TreeText::whole(now),
            QStringLiteral("{name: \"Ada\", tags: [\"x\", \"y\"], inner: {renamed: 1, b: 2}}"));
        QVERIFY(now.children()[1].isIdenticalTo(value.children()[1]));
        QVERIFY(root->value().isIdenticalTo(now));
        QCOMPARE(TreeText::whole(value),
                 QStringLiteral("{name: \"Ada\", tags: [\"x\", \"y\"], inner: {a: 1, b: 2}}"));
    }

    void keepsValuesOfMaterialisedSiblings() {
        const PlistNodePtr root = rootOf(sample());
        PlistNode& tags = child(root, 1);
        tags.children();
        const PlistValue before = tags.value();
        child(root, 0).setValue(number(1));
        const PlistValue after = root->value();
        QVERIFY(after.children()[1].isIdenticalTo(before));
    }

    void sharesTheKeysOfADictionaryThatKeptThem() {
        const PlistValue value = sample();
        const PlistNodePtr root = rootOf(value);
        child(root, 0).setValue(number(1));
        const PlistValue changed = root->value();
        QCOMPARE(changed.keys().data(), value.keys().data());
        child(root, 0).setValue(number(2));
        child(root, 1).setKey("other");
        const PlistValue renamed = root->value();
        QVERIFY(renamed.keys().data() != value.keys().data());
        QCOMPARE(TreeText::whole(renamed),
                 QStringLiteral("{name: 2, other: [\"x\", \"y\"], inner: {a: 1, b: 2}}"));
    }

    void forgetsOldKeysOnEveryChangeOfTheList() {
        const PlistNodePtr root = rootOf(sample());
        const auto children = listOf(root->children());
        children[0]->setValue(number(1));
        const std::vector<PlistNodePtr> reversed(children.rbegin(), children.rend());
        root->setChildren(reversed);
        QCOMPARE(TreeText::whole(root->value()),
                 QStringLiteral("{inner: {a: 1, b: 2}, tags: [\"x\", \"y\"], name: 1}"));
        const std::size_t middle[] = {1};
        children[0]->setValue(number(2));
        root->removeChildren(middle);
        QCOMPARE(TreeText::whole(root->value()), QStringLiteral("{inner: {a: 1, b: 2}, name: 2}"));
    }

    void givesEmptyContainersTheirKind() {
        const PlistNodePtr dictionary = rootOf(PlistValue());
        const PlistNodePtr array = rootOf(PlistValue::array());
        for (const PlistNodePtr& node : {dictionary, array}) {
            const std::vector<PlistNodePtr> one{PlistNode::create("k", number(1))};
            node->insertChildren(one, 0);
            node->setChildren({});
        }
        QVERIFY(dictionary->value() == PlistValue());
        QVERIFY(array->value() == PlistValue::array());
    }

    // --- Setters ---

    void reportsAKeyOnlyIfItDiffers() {
        const PlistNodePtr root = rootOf(sample());
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        child(root, 0).setKey("name");
        QCOMPARE(recorder.take(), QStringList());
        child(root, 0).setKey("caf\u00e9");
        QCOMPARE(recorder.take(), QStringList{QStringLiteral("caf\u00e9: key")});
        child(root, 0).setKey("cafe\u0301");
        QCOMPARE(recorder.take(), QStringList());
        QVERIFY(child(root, 0).key().view() == std::string_view("caf\u00e9"));
    }

    void reportsAScalarOnlyIfItDiffers() {
        const PlistNodePtr node = rootOf(PlistValue::real(0.0));
        ChangeRecorder recorder;
        node->setObserver(&recorder);
        node->setScalar(PlistValue::real(-0.0));
        QCOMPARE(recorder.take(), QStringList());
        node->setScalar(PlistValue::real(notANumber));
        node->setScalar(PlistValue::real(notANumber));
        const QString change = QStringLiteral(": scalar");
        QCOMPARE(recorder.take(), QStringList({change, change}));
    }

    void replacesAScalarByAnything() {
        const PlistNodePtr root = rootOf(sample());
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        PlistNode& name = child(root, 0);
        name.setValue(PlistValue::string("Ada"));
        QCOMPARE(recorder.take(), QStringList());
        name.setValue(PlistValue::string("Bob"));
        QCOMPARE(recorder.take(), QStringList{QStringLiteral("name: scalar")});
        name.setValue(number(1));
        QCOMPARE(recorder.take(), QStringList{QStringLiteral("name: type|scalar")});
        name.setValue(numbers(3));
        QCOMPARE(recorder.take(),
                 QStringList{QStringLiteral("name: type|scalar|childCount|children")});
        name.setValue(numbers(3));
        QCOMPARE(recorder.take(), QStringList{QStringLiteral("name: children")});
        QCOMPARE(TreeText::whole(root->value()),
                 QStringLiteral("{name: [0, 1, 2], tags: [\"x\", \"y\"], inner: {a: 1, b: 2}}"));
    }

    void detachesTheChildrenOfAReplacedContainer() {
        const PlistNodePtr root = rootOf(sample());
        PlistNode& tags = child(root, 1);
        const std::vector<PlistNodePtr> old = listOf(tags.children());
        tags.setValue(PlistValue::boolean(true));
        QCOMPARE(TreeText::ofTree(*root), QStringLiteral(": dictionary 3\n"
                                                         "  name: \"Ada\"\n"
                                                         "  tags: true\n"
                                                         "  inner: dictionary 2 ..."));
        QCOMPARE(tags.childCount(), 0);
        for (const PlistNodePtr& node : old) {
            QVERIFY(node->parent() == nullptr);
        }
        QCOMPARE(TreeText::ofTree(*old[1]), QStringLiteral(": \"y\""));
    }

    void leavesChildrenThatMovedOnAlone() {
        const PlistNodePtr from = rootOf(numbers(2));
        const PlistNodePtr to = rootOf(PlistValue::array());
        const std::vector<PlistNodePtr> moved{from->children()[0]};
        to->insertChildren(moved, 0);
        from->setValue(number(1));
        QVERIFY(moved[0]->parent() == to.get());
    }

    // --- Children ---

    void insertsInOneStep() {
        const PlistNodePtr root = rootOf(sample());
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        const std::vector<PlistNodePtr> added{PlistNode::create("p", number(1)),
                                              PlistNode::create("q", number(2))};
        child(root, 2).insertChildren(added, 1);
        QCOMPARE(recorder.take(),
                 QStringList{QStringLiteral("inner: childCount|children +2 at 1")});
        QCOMPARE(TreeText::ofTree(*root), QStringLiteral(": dictionary 3\n"
                                                         "  name: \"Ada\"\n"
                                                         "  tags: array 2 ...\n"
                                                         "  inner: dictionary 4\n"
                                                         "    a: 1\n"
                                                         "    p: 1\n"
                                                         "    q: 2\n"
                                                         "    b: 2"));
        const PlistValue whole = root->value();
        QCOMPARE(TreeText::whole(whole.children()[2]), QStringLiteral("{a: 1, p: 1, q: 2, b: 2}"));
    }

    void insertsNothingSilently() {
        const PlistNodePtr root = rootOf(sample());
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        root->insertChildren({}, 0);
        root->removeChildren({});
        QCOMPARE(recorder.take(), QStringList());
        QVERIFY(!root->isMaterialized());
    }

    void removesInOneStep() {
        const PlistNodePtr root = rootOf(numbers(6));
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        const std::vector<PlistNodePtr> before = listOf(root->children());
        const std::size_t positions[] = {0, 2, 3, 5};
        root->removeChildren(positions);
        QCOMPARE(recorder.take(), QStringList{QStringLiteral(": childCount|children")});
        QCOMPARE(TreeText::whole(root->value()), QStringLiteral("[1, 4]"));
        QVERIFY(before[0]->parent() == nullptr);
        QVERIFY(before[1]->parent() == root.get());
    }

    void tellsOfRemovedNeighbours() {
        const PlistNodePtr root = rootOf(numbers(6));
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        const std::size_t positions[] = {2, 3, 4};
        QCOMPARE(root->children().size(), std::size_t{6});
        root->removeChildren(positions);
        QCOMPARE(recorder.take(), QStringList{QStringLiteral(": childCount|children -3 at 2")});
    }

    void replacesTheListKeepingIds() {
        const PlistNodePtr root = rootOf(numbers(3));
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        const std::vector<PlistNodePtr> before = listOf(root->children());
        const std::vector<PlistNodePtr> after{before[2], before[0]};
        root->setChildren(after);
        QCOMPARE(recorder.take(), QStringList{QStringLiteral(": childCount|children")});
        QCOMPARE(idsOf(*root), std::vector<NodeId>({before[2]->id(), before[0]->id()}));
        QVERIFY(before[1]->parent() == nullptr);
        root->setChildren(std::vector<PlistNodePtr>{before[0], before[2]});
        QCOMPARE(recorder.take(), QStringList{QStringLiteral(": children")});
    }

    void checksWhatCallersOwe() {
        const PlistNodePtr scalar = rootOf(number(1));
        const PlistNodePtr array = rootOf(numbers(3));
        const std::vector<PlistNodePtr> one{PlistNode::create({}, number(1))};
        const BrokenRule broken;
        QVERIFY(broken.of([&] { scalar->insertChildren(one, 0); }));
        QVERIFY(broken.of([&] { scalar->setChildren(one); }));
        QVERIFY(broken.of([&] { scalar->convertContainer(PlistType::array); }));
        QVERIFY(broken.of([&] { array->convertContainer(PlistType::string); }));
        QVERIFY(broken.of([&] { array->insertChildren(one, 4); }));
        QVERIFY(broken.of([&] { array->insertChildren(one, -1); }));
        QVERIFY(broken.of([&] { array->setScalar(number(1)); }));
        QVERIFY(broken.of([&] { scalar->setScalar(PlistValue()); }));
        array->children();
        const std::size_t beyond[] = {3};
        const std::size_t twice[] = {1, 1};
        QVERIFY(broken.of([&] { array->removeChildren(beyond); }));
        QVERIFY(broken.of([&] { array->removeChildren(twice); }));
        QVERIFY(broken.of([&] { child(array, 0).setObserver(nullptr); }));
        QCOMPARE(TreeText::whole(array->value()), QStringLiteral("[0, 1, 2]"));
    }

    // --- Converting ---

    void convertsBetweenContainersKeepingNodes() {
        const PlistValue strings = tree(R"(["x", "y", "z"])");
        const PlistNodePtr root = rootOf(strings);
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        const std::vector<NodeId> ids = idsOf(*root);
        root->convertContainer(PlistType::dictionary);
        QCOMPARE(recorder.take(), QStringList{QStringLiteral(": type|scalar")});
        QCOMPARE(TreeText::whole(root->value()), QStringLiteral("{: \"x\", : \"y\", : \"z\"}"));
        child(root, 1).setKey("hidden");
        root->convertContainer(PlistType::array);
        QVERIFY(root->value() == strings);
        QVERIFY(child(root, 1).key() == "hidden");
        QCOMPARE(idsOf(*root), ids);
        root->convertContainer(PlistType::dictionary);
        QCOMPARE(TreeText::whole(root->value()),
                 QStringLiteral("{: \"x\", hidden: \"y\", : \"z\"}"));
    }

    void convertsWithoutHavingMadeChildren() {
        const PlistNodePtr root = rootOf(sample());
        child(root, 2).convertContainer(PlistType::array);
        QCOMPARE(TreeText::whole(root->value()),
                 QStringLiteral("{name: \"Ada\", tags: [\"x\", \"y\"], inner: [1, 2]}"));
    }

    // --- Representations ---

    void restoresTheVeryNodes() {
        const PlistNodePtr root = rootOf(sample());
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        PlistNode& inner = child(root, 2);
        const std::vector<NodeId> ids = idsOf(inner);
        const PlistNode::Representation old = inner.representation();
        inner.setValue(PlistValue::string("gone"));
        QCOMPARE(recorder.take(),
                 QStringList{QStringLiteral("inner: type|scalar|childCount|children")});
        const PlistNode::Representation changed = inner.representation();
        inner.restore(old);
        QCOMPARE(recorder.take(),
                 QStringList{QStringLiteral("inner: type|scalar|childCount|children")});
        QCOMPARE(idsOf(inner), ids);
        QVERIFY(root->value() == sample());
        inner.restore(changed);
        QCOMPARE(TreeText::ofTree(inner), QStringLiteral("inner: \"gone\""));
        QVERIFY(inner.value() == PlistValue::string("gone"));
        inner.restore(old);
        QCOMPARE(TreeText::ofTree(*root), QStringLiteral(": dictionary 3\n"
                                                         "  name: \"Ada\"\n"
                                                         "  tags: array 2 ...\n"
                                                         "  inner: dictionary 2\n"
                                                         "    a: 1\n"
                                                         "    b: 2"));
    }

    void restoresWhatWasNeverMade() {
        const PlistNodePtr root = rootOf(sample());
        PlistNode& inner = child(root, 2);
        const PlistNode::Representation old = inner.representation();
        inner.setValue(number(1));
        inner.restore(old);
        QCOMPARE(TreeText::ofTree(inner), QStringLiteral("inner: dictionary 2 ..."));
        QVERIFY(root->value() == sample());
    }

    void keepsARepresentationAsItWas() {
        const PlistNodePtr root = rootOf(numbers(3));
        root->children();
        const PlistNode::Representation old = root->representation();
        const std::size_t first[] = {0};
        root->removeChildren(first);
        root->insertChildren(std::vector<PlistNodePtr>{PlistNode::create({}, number(9))}, 0);
        QCOMPARE(TreeText::whole(root->value()), QStringLiteral("[9, 1, 2]"));
        root->restore(old);
        QCOMPARE(TreeText::whole(root->value()), QStringLiteral("[0, 1, 2]"));
        QCOMPARE(TreeText::ofTree(*root), QStringLiteral(": array 3\n  : 0\n  : 1\n  : 2"));
    }

    void restoresIntoTheRightKeysAfterRenaming() {
        const PlistNodePtr root = rootOf(sample());
        PlistNode& inner = child(root, 2);
        const std::vector<PlistNodePtr> children = listOf(inner.children());
        children[0]->setValue(number(5));
        const PlistNode::Representation old = inner.representation();
        inner.setValue(number(1));
        children[0]->setKey("renamed meanwhile");
        inner.restore(old);
        const PlistValue whole = root->value();
        QCOMPARE(TreeText::whole(whole.children()[2]),
                 QStringLiteral("{renamed meanwhile: 5, b: 2}"));
    }

    // --- Repeated keys ---

    void marksRepeatedKeys() {
        for (const std::size_t more : {std::size_t{0}, std::size_t{100}}) {
            std::vector<PlistEntry> entries{{"a", number(1)}, {"b", number(2)}, {"a", number(3)}};
            for (std::size_t i = 0; i < more; ++i) {
                entries.push_back({"k" + std::to_string(i), number(0)});
            }
            const PlistNodePtr root = rootOf(PlistValue::dictionary(std::move(entries)));
            const QString others(static_cast<qsizetype>(more), u'.');
            QCOMPARE(TreeText::repeatedKeys(*root), QStringLiteral("x.x") + others);
            child(root, 1).setKey("a");
            QCOMPARE(TreeText::repeatedKeys(*root), QStringLiteral("xxx") + others);
            child(root, 0).setKey("c");
            QCOMPARE(TreeText::repeatedKeys(*root), QStringLiteral(".xx") + others);
            const std::size_t third[] = {2};
            root->removeChildren(third);
            QCOMPARE(TreeText::repeatedKeys(*root), QStringLiteral("..") + others);
            root->convertContainer(PlistType::array);
            child(root, 0).setKey("a");
            QCOMPARE(TreeText::repeatedKeys(*root), QStringLiteral("..") + others);
            root->convertContainer(PlistType::dictionary);
            QCOMPARE(TreeText::repeatedKeys(*root), QStringLiteral("xx") + others);
        }
    }

    // --- Observers ---

    void reportsToTheRootAboveOnly() {
        const PlistNodePtr root = rootOf(sample());
        ChangeRecorder recorder;
        root->setObserver(&recorder);
        const PlistNodePtr taken = root->children()[0];
        const std::size_t first[] = {0};
        root->removeChildren(first);
        recorder.take();
        taken->setKey("nobody hears");
        QCOMPARE(recorder.take(), QStringList());
        root->insertChildren(std::span(&taken, 1), 0);
        recorder.take();
        taken->setKey("heard");
        QCOMPARE(recorder.take(), QStringList{QStringLiteral("heard: key")});
        root->setObserver(nullptr);
        taken->setKey("nobody again");
        QCOMPARE(recorder.take(), QStringList());
    }

    void losesItsObserverUnderAParent() {
        const PlistNodePtr root = rootOf(sample());
        const PlistNodePtr added = PlistNode::create("added", number(1));
        ChangeRecorder recorder;
        added->setObserver(&recorder);
        root->insertChildren(std::span(&added, 1), 0);
        QVERIFY(added->parent() == root.get());
        added->setValue(number(2));
        const std::size_t first[] = {0};
        root->removeChildren(first);
        added->setValue(number(3));
        QCOMPARE(recorder.take(), QStringList());
    }

    // --- Life ---

    void outlivesItsParentAndSiblings() {
        PlistNodePtr root = rootOf(sample());
        const PlistNodePtr inner = root->children()[2];
        const PlistNodePtr leaf = inner->children()[1];
        root = {};
        QVERIFY(inner->parent() == nullptr);
        QVERIFY(leaf->parent() == inner.get());
        QCOMPARE(TreeText::ofTree(*inner), QStringLiteral("inner: dictionary 2\n"
                                                          "  a: 1\n"
                                                          "  b: 2"));
        leaf->setValue(number(8));
        QCOMPARE(TreeText::whole(inner->value()), QStringLiteral("{a: 1, b: 8}"));
    }

    void isOrphanedThoughARepresentationHoldsIt() {
        PlistNodePtr root = rootOf(numbers(2));
        root->children();
        const PlistNode::Representation held = root->representation();
        const PlistNodePtr first = root->children()[0];
        root = {};
        QVERIFY(first->parent() == nullptr);
        const PlistNodePtr other = rootOf(number(0));
        other->restore(held);
        QVERIFY(first->parent() == other.get());
        QCOMPARE(TreeText::ofTree(*other), QStringLiteral(": array 2\n  : 0\n  : 1"));
    }

    void copesWithAnyDepth() {
        constexpr int depth = 300'000;
        PlistNodePtr root = rootOf(chain(depth));
        PlistNode* node = root.get();
        for (int i = 0; i < depth; ++i) {
            node = node->children()[0].get();
        }
        node->setValue(number(8));
        QVERIFY(root->value() == [] {
            PlistValue value = number(8);
            for (int i = 0; i < depth; ++i) {
                value = PlistValue::array({value});
            }
            return value;
        }());
        const PlistNode::Representation held = root->representation();
        root->setValue(number(1));
        root = {};
    }
};

const RegisteredTest<PlistNodeTest> registered;
#include "PlistNodeTest.moc"
