#include <QAbstractItemModelTester>
#include <QTest>
#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/RowMirror.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

/// The same choices for the same seed, on every platform.
class Chance {
public:
    explicit Chance(unsigned seed) : generator_(seed) {}

    std::size_t below(std::size_t count) { return generator_() % count; }
    bool once(std::size_t in) { return below(in) == 0; }

private:
    std::mt19937 generator_;
};

PlistValue randomValue(Chance& chance, int depth) {
    const std::size_t kind = chance.below(depth > 0 ? 4 : 2);
    if (kind == 0) {
        return PlistValue::integer(static_cast<int>(chance.below(10)));
    }
    if (kind == 1) {
        return PlistValue::string(chance.once(2) ? "x" : "y");
    }
    std::vector<PlistEntry> entries;
    std::vector<PlistValue> items;
    for (std::size_t i = chance.below(5); i > 0; --i) {
        const std::string key(1, static_cast<char>('a' + chance.below(4)));
        entries.push_back({key, randomValue(chance, depth - 1)});
        items.push_back(entries.back().value);
    }
    return kind == 2 ? PlistValue::array(std::move(items))
                     : PlistValue::dictionary(std::move(entries));
}

/// The rows by the plain rules, slowly: what the outline must show.
class PlainRows {
public:
    PlainRows(const std::set<NodeId>& expanded, const std::optional<NodeIdSet>& filter)
        : expanded_(expanded), filter_(filter) {}

    QString of(PlistNode& root) {
        walk(root, 0, {}, std::nullopt, false);
        return lines_.join(QLatin1Char('\n'));
    }

private:
    void walk(PlistNode& node, int depth, std::size_t index, std::optional<PlistType> parentType,
              bool isDuplicate) {
        if (filter_ && !filter_->contains(node.id())) {
            return;
        }
        const bool isExpanded = node.isContainer() && (filter_ || expanded_.contains(node.id()));
        QString line(qsizetype{2} * depth, QLatin1Char(' '));
        if (parentType) {
            line += QStringLiteral("%1 ").arg(index);
        }
        if (parentType != PlistType::array) {
            line += QString::fromStdString(std::string(node.key().view())) + QStringLiteral(": ");
        }
        line += TreeText::ofValue(node.scalar());
        if (node.isContainer()) {
            line += QLatin1String(isExpanded ? " [-]" : " [+]");
        }
        lines_ += line + QLatin1String(isDuplicate ? " (duplicate)" : "");
        if (!isExpanded) {
            return;
        }
        for (std::size_t i = 0; i < node.children().size(); ++i) {
            PlistNode& child = *node.children()[i];
            walk(child, depth + 1, i, node.type(), isRepeated(node, child));
        }
    }

    static bool isRepeated(PlistNode& parent, const PlistNode& child) {
        const auto children = parent.children();
        return parent.type() == PlistType::dictionary &&
               std::count_if(children.begin(), children.end(), [&child](const auto& other) {
                   return other->key() == child.key();
               }) > 1;
    }

    const std::set<NodeId>& expanded_;
    const std::optional<NodeIdSet>& filter_;
    QStringList lines_;
};

/// An outline, the expansion as a plain set beside it, and random things that happen to both.
class Run {
public:
    explicit Run(unsigned seed) : chance_(seed), root_(PlistNode::create({}, freshValue())) {
        outline_.rebuild(*root_);
        expanded_.insert(root_->id());
        mirror_ = std::make_unique<RowMirror>(outline_);
        tester_ = std::make_unique<QAbstractItemModelTester>(mirror_.get());
    }

    void step() {
        changesTree_ = false;
        done_.clear();
        doSomething();
        // Several changes of the tree before one rebuild, as compound edits make them.
        while (changesTree_ && chance_.once(3)) {
            doSomething();
        }
        if (changesTree_) {
            outline_.rebuild(*root_);
        }
    }

    /// Nothing, or what is wrong.
    QString complaint() {
        const QString expected = PlainRows(expanded_, filter_).of(*root_);
        const QString shown = TreeText::ofRows(outline_);
        const QStringList heard = mirror_->takeSignals();
        if (shown != expected) {
            return describe(QStringLiteral("rows"), expected, shown);
        }
        if (mirror_->text() != shown) {
            return describe(QStringLiteral("the listener"), shown, mirror_->text()) +
                   heard.join(QStringLiteral(", "));
        }
        if (heard.size() > 3 * done_.size() || heard.contains(QStringLiteral("reset"))) {
            return QStringLiteral("Too many signals: ") + heard.join(QStringLiteral(", "));
        }
        for (const NodeId id : outline_.selection()) {
            if (!outline_.rowForId(id)) {
                return QStringLiteral("A selected node has no row.");
            }
        }
        for (std::size_t i = 0; i < outline_.rows().size(); ++i) {
            if (outline_.rowOf(outline_.rows()[i].node()) != static_cast<int>(i)) {
                return QStringLiteral("Row %1 is not found by its node.").arg(i);
            }
        }
        return {};
    }

private:
    PlistValue freshValue() {
        std::vector<PlistValue> items(6);
        for (PlistValue& item : items) {
            item = randomValue(chance_, 3);
        }
        return PlistValue::array(std::move(items));
    }

    QString describe(const QString& what, const QString& expected, const QString& actual) const {
        return QStringLiteral("After %1, %2 should be\n%3\nbut are\n%4\n")
            .arg(done_.join(QStringLiteral(", ")), what, expected, actual);
    }

    PlistNode& anyRow() {
        if (outline_.rows().empty()) {
            return *root_;
        }
        return outline_.rows()[chance_.below(outline_.rows().size())].node();
    }

    /// A node that is in the tree; rows may show nodes that have left it.
    PlistNode& anyNode() {
        PlistNode* node = root_.get();
        while (node->childCount() > 0 && !chance_.once(4)) {
            node = node->children()[chance_.below(node->children().size())].get();
        }
        return *node;
    }

    PlistNode* anyContainer() {
        PlistNode& node = anyNode();
        return node.isContainer() ? &node : node.parent();
    }

    void doSomething() {
        switch (chance_.below(changesTree_ ? 6 : 10)) {
            case 0:
                rename();
                break;
            case 1:
                replaceValue();
                break;
            case 2:
                insert();
                break;
            case 3:
                remove();
                break;
            case 4:
                shuffle();
                break;
            case 5:
                convert();
                break;
            case 6:
                expandOrCollapse();
                break;
            case 7:
                filter();
                break;
            case 8:
                reveal();
                break;
            default:
                select();
        }
    }

    void rename() {
        anyNode().setKey(std::string(1, static_cast<char>('a' + chance_.below(4))));
        edited(QStringLiteral("rename"));
    }

    void replaceValue() {
        PlistNode& node = anyNode();
        if (&node != root_.get()) {
            node.setValue(randomValue(chance_, 2));
            edited(QStringLiteral("replace"));
        }
    }

    void insert() {
        if (PlistNode* container = anyContainer()) {
            std::vector<PlistNodePtr> nodes;
            for (std::size_t i = chance_.below(3); i > 0; --i) {
                nodes.push_back(PlistNode::create("n", randomValue(chance_, 2)));
            }
            const auto places = static_cast<std::size_t>(container->childCount()) + 1;
            container->insertChildren(nodes, static_cast<qint64>(chance_.below(places)));
            edited(QStringLiteral("insert"));
        }
    }

    void remove() {
        PlistNode* container = anyContainer();
        if (container == nullptr) {
            return;
        }
        std::vector<std::size_t> positions;
        for (std::size_t i = 0; i < container->children().size(); ++i) {
            if (chance_.once(3)) {
                positions.push_back(i);
            }
        }
        container->removeChildren(positions);
        edited(QStringLiteral("remove"));
    }

    void shuffle() {
        if (PlistNode* container = anyContainer()) {
            const auto children = container->children();
            std::vector<PlistNodePtr> nodes(children.begin(), children.end());
            for (std::size_t i = nodes.size(); i > 1; --i) {
                std::swap(nodes[i - 1], nodes[chance_.below(i)]);
            }
            container->setChildren(nodes);
            edited(QStringLiteral("shuffle"));
        }
    }

    void convert() {
        if (PlistNode* container = anyContainer()) {
            container->convertContainer(
                container->type() == PlistType::array ? PlistType::dictionary : PlistType::array);
            edited(QStringLiteral("convert"));
        }
    }

    void expandOrCollapse() {
        PlistNode& node = anyRow();
        const auto expansion =
            chance_.once(3) ? OutlineState::Expansion::collapse : OutlineState::Expansion::expand;
        const auto reach =
            chance_.once(4) ? OutlineState::Reach::wholeSubtree : OutlineState::Reach::nodeAlone;
        outline_.setExpanded(node, expansion, reach);
        expandPlainly(node, expansion, reach);
        done_ += QStringLiteral("expand or collapse");
    }

    void expandPlainly(PlistNode& node, OutlineState::Expansion expansion,
                       OutlineState::Reach reach) {
        if (!node.isContainer()) {
            return;
        }
        if (expansion == OutlineState::Expansion::expand) {
            expanded_.insert(node.id());
        } else {
            expanded_.erase(node.id());
        }
        if (reach == OutlineState::Reach::wholeSubtree) {
            for (const PlistNodePtr& child : node.children()) {
                expandPlainly(*child, expansion, reach);
            }
        }
    }

    void filter() {
        filter_.reset();
        if (chance_.once(2)) {
            filter_.emplace();
            for (int i = 0; i < 5; ++i) {
                for (const PlistNode* node = &anyNode(); node != nullptr; node = node->parent()) {
                    filter_->insert(node->id());
                }
            }
        }
        outline_.setFilter(filter_);
        done_ += QStringLiteral("filter");
    }

    void reveal() {
        PlistNode& node = anyNode();
        outline_.reveal(node);
        for (const PlistNode* above = node.parent(); above != nullptr; above = above->parent()) {
            expanded_.insert(above->id());
        }
        done_ += QStringLiteral("reveal");
    }

    void select() {
        NodeIdSet ids;
        for (std::size_t i = chance_.below(4); i > 0 && !outline_.rows().empty(); --i) {
            ids.insert(anyRow().id());
        }
        outline_.select(ids);
        done_ += QStringLiteral("select");
    }

    void edited(const QString& what) {
        done_ += what;
        changesTree_ = true;
    }

    Chance chance_;
    PlistNodePtr root_;
    OutlineState outline_;
    std::unique_ptr<RowMirror> mirror_;
    std::unique_ptr<QAbstractItemModelTester> tester_;
    std::set<NodeId> expanded_;
    std::optional<NodeIdSet> filter_;
    QStringList done_;
    bool changesTree_ = false;
};

}  // namespace

/// Random edits of trees and outlines against plain rules and a listener to the signals.
class OutlineRandomTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agreesWithPlainRules() {
        constexpr unsigned runs = 60;
        constexpr int steps = 150;
        for (unsigned seed = 1; seed <= runs; ++seed) {
            Run run(seed);
            for (int step = 0; step < steps; ++step) {
                run.step();
                const QString complaint = run.complaint();
                QVERIFY2(
                    complaint.isEmpty(),
                    qPrintable(
                        QStringLiteral("Seed %1, step %2. %3").arg(seed).arg(step).arg(complaint)));
            }
        }
    }
};

const RegisteredTest<OutlineRandomTest> registered;
#include "OutlineRandomTest.moc"
