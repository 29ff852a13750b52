#include <QAbstractItemModelTester>
#include <QIdentityProxyModel>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

using Expansion = OutlineState::Expansion;
using Reach = OutlineState::Reach;

/// An outline with the model under test.
struct Window {
    explicit Window(const PlistValue& value) : root(PlistNode::create({}, value)), model(outline) {
        outline.rebuild(*root);
    }

    QString text(int row, int column, int role = Qt::DisplayRole) const {
        return model.data(model.index(row, column), role).toString();
    }

    PlistNodePtr root;
    OutlineState outline;
    OutlineTableModel model;
};

/// Names each row by its node. The tester compares the texts of neighbours before and after a row
/// comes, and the numbers of array items rightly change then.
class NodeNames : public QIdentityProxyModel {
public:
    explicit NodeNames(OutlineTableModel& model) : model_(model) { setSourceModel(&model); }

    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole && index.isValid()) {
            return model_.row(index.row()).nodeId();
        }
        return QIdentityProxyModel::data(index, role);
    }

private:
    const OutlineTableModel& model_;
};

std::vector<PlistNodePtr> copied(std::span<const PlistNodePtr> nodes) {
    return {nodes.begin(), nodes.end()};
}

}  // namespace

class OutlineTableModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void titlesColumns() {
        const Window window(PlistValue::dictionary());
        QCOMPARE(window.model.columnCount(), 3);
        const QStringList titles{QStringLiteral("Key"), QStringLiteral("Type"),
                                 QStringLiteral("Value")};
        for (int column = 0; column < 3; ++column) {
            QCOMPARE(window.model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(),
                     titles.at(column));
        }
        QVERIFY(!window.model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    }

    void showsAllTypes() {
        const Window window(Samples::allTypes());
        const QStringList expected{
            QStringLiteral("Root|Dictionary|9 items"),
            QStringLiteral("dictionary|Dictionary|1 item"),
            QStringLiteral("array|Array|2 items"),
            QStringLiteral("string|String|North Mole"),
            QStringLiteral("integer|Integer|-27"),
            QStringLiteral("real|Real|0.5"),
            QStringLiteral("boolean|Boolean|true"),
            QStringLiteral("date|Date|1 Jan 2001, 00:00:00"),
            QStringLiteral("data|Data|12 bytes · 00010203 04050607…"),
            QStringLiteral("uid|UID|UID 7"),
        };
        QStringList shown;
        for (int row = 0; row < window.model.rowCount(); ++row) {
            shown +=
                QStringList{window.text(row, 0), window.text(row, 1), window.text(row, 2)}.join(
                    u'|');
        }
        QCOMPARE(shown, expected);
    }

    void showsItemsOfArrays() {
        const Window window(PlistValue::array({PlistValue::boolean(false), PlistValue::array()}));
        QCOMPARE(window.text(1, 0), QStringLiteral("Item 0"));
        QCOMPARE(window.text(1, 2), QStringLiteral("false"));
        QCOMPARE(window.text(2, 0), QStringLiteral("Item 1"));
        QCOMPARE(window.text(2, 2), QStringLiteral("0 items"));
    }

    void showsLargeNumbers() {
        const Window window(PlistValue::array({
            PlistValue::integer(PlistInteger(18446744073709551615ULL)),
            PlistValue::uid(18446744073709551615ULL),
            PlistValue::real(1e300),
        }));
        QCOMPARE(window.text(1, 2), QStringLiteral("18446744073709551615"));
        QCOMPARE(window.text(2, 2), QStringLiteral("UID 18446744073709551615"));
        QCOMPARE(window.text(3, 2), QStringLiteral("1e+300"));
    }

    void cutsHugeStrings() {
        const Window window(PlistValue::string(std::string(10'000'000, 'x')));
        QVERIFY(window.text(0, 2).size() < 5000);
        QVERIFY(window.text(0, 2).endsWith(u'…'));
    }

    void givesTooltipsToLongTexts() {
        const auto tooltipOf = [](const QString& text) {
            const Window window(PlistValue::string(text.toStdString()));
            return window.text(0, 2, Qt::ToolTipRole);
        };
        QCOMPARE(tooltipOf(QString(60, u'x')), QString());
        QCOMPARE(tooltipOf(QString(61, u'x')), QString(61, u'x'));
        // Characters are counted as people see them.
        const QString family = QStringLiteral("👩‍👩‍👦");
        QCOMPARE(tooltipOf(family.repeated(60)), QString());
        QCOMPARE(tooltipOf(family.repeated(61)), family.repeated(61));
    }

    void givesTooltipsToDates() {
        const Window window(PlistValue::date(0));
        QCOMPARE(window.text(0, 2, Qt::ToolTipRole), QStringLiteral("1 Jan 2001, 00:00:00"));
    }

    void tellsScreenReaders() {
        const PlistValue inner =
            PlistValue::dictionary({{"a", PlistValue::boolean(true)}, {"a", PlistValue::array()}});
        const Window window(inner);
        QCOMPARE(window.text(0, 0, Qt::AccessibleTextRole), QStringLiteral("Root"));
        QCOMPARE(window.text(0, 0, Qt::AccessibleDescriptionRole),
                 QStringLiteral("level 0, expanded"));
        QCOMPARE(window.text(2, 0, Qt::AccessibleDescriptionRole),
                 QStringLiteral("level 1, collapsed, Duplicate key: only one of them is used when "
                                "the file is read."));
        QCOMPARE(window.model.data(window.model.index(1, 2), Qt::CheckStateRole).toInt(),
                 static_cast<int>(Qt::Checked));
        QVERIFY(!window.model.data(window.model.index(2, 2), Qt::CheckStateRole).isValid());
    }

    void isNoTree() {
        const Window window(Samples::allTypes());
        QCOMPARE(window.model.rowCount(window.model.index(0, 0)), 0);
        QCOMPARE(window.model.columnCount(window.model.index(0, 0)), 0);
        QTest::ignoreMessage(
            QtWarningMsg,
            "Index QModelIndex(-1,-1,0x0,QObject(0x0)) is not valid (expected valid)");
        QVERIFY(!window.model.data({}, Qt::DisplayRole).isValid());
    }

    void insertsWithOneSignal() {
        Window window(Samples::allTypes());
        const QSignalSpy inserted(&window.model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy changed(&window.model, &QAbstractItemModel::dataChanged);
        const QSignalSpy reset(&window.model, &QAbstractItemModel::modelReset);
        const QSignalSpy layout(&window.model, &QAbstractItemModel::layoutChanged);
        PlistNode& array = *window.root->children()[1];
        window.outline.setExpanded(array, Expansion::expand, Reach::nodeAlone);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(inserted.at(0).at(1).toInt(), 3);
        QCOMPARE(inserted.at(0).at(2).toInt(), 4);
        // The row of the array itself shows another chevron.
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).toModelIndex().row(), 2);
        QCOMPARE(changed.at(0).at(1).toModelIndex().row(), 2);
        QCOMPARE(reset.count() + layout.count(), 0);
    }

    void resetsForAnotherRoot() {
        Window window(Samples::allTypes());
        const QSignalSpy reset(&window.model, &QAbstractItemModel::modelReset);
        const PlistNodePtr other = PlistNode::create({}, PlistValue::integer(3));
        window.outline.rebuild(*other);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(window.model.rowCount(), 1);
        QCOMPARE(window.text(0, 2), QStringLiteral("3"));
    }

    void followsNodesThatChangePlaces() {
        Window window(Samples::allTypes());
        std::map<NodeId, QPersistentModelIndex> kept;
        for (int row = 0; row < window.model.rowCount(); ++row) {
            kept.emplace(window.model.row(row).nodeId(), window.model.index(row, 1));
        }
        std::vector<PlistNodePtr> nodes = copied(window.root->children());
        std::reverse(nodes.begin(), nodes.end());
        window.root->setChildren(nodes);
        window.outline.rebuild(*window.root);
        QCOMPARE(window.text(1, 0), QStringLiteral("uid"));
        for (const auto& [id, index] : kept) {
            QVERIFY(index.isValid());
            QCOMPARE(window.model.row(index.row()).nodeId(), id);
            QCOMPARE(index.column(), 1);
        }
    }

    /// Whatever is expanded, collapsed and edited: the model keeps the rules of models, and a
    /// persistent index keeps its node or, when that has no row any more, becomes invalid.
    void keepsTheRulesOfModels_data() {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 12; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }

    void keepsTheRulesOfModels() {
        QFETCH(unsigned, seed);
        random_.seed(seed);
        Window window(someValue(4));
        NodeNames names(window.model);
        const QAbstractItemModelTester tester(
            &names, QAbstractItemModelTester::FailureReportingMode::QtTest);
        for (int step = 0; step < 60; ++step) {
            std::map<NodeId, QPersistentModelIndex> kept;
            for (int row = 0; row < window.model.rowCount(); row += 1 + below(3)) {
                kept.emplace(window.model.row(row).nodeId(), window.model.index(row, 0));
            }
            changeSomething(window);
            QCOMPARE(window.model.rowCount(), static_cast<int>(window.outline.rows().size()));
            for (const auto& [id, index] : kept) {
                const std::optional<int> row = window.outline.rowForId(id);
                QCOMPARE(index.isValid(), row.has_value());
                if (row) {
                    QCOMPARE(index.row(), *row);
                }
            }
        }
    }

private:
    int below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    PlistValue someValue(int depth) {
        const int kind = depth == 4 ? 2 : below(depth > 0 ? 4 : 2);
        if (kind < 2) {
            return PlistValue::integer(kind);
        }
        std::vector<PlistEntry> entries;
        std::vector<PlistValue> items;
        for (int i = below(6); i >= 0; --i) {
            items.push_back(someValue(depth - 1));
            entries.push_back({std::string(1, static_cast<char>('a' + below(4))), items.back()});
        }
        return kind == 2 ? PlistValue::dictionary(std::move(entries))
                         : PlistValue::array(std::move(items));
    }

    void changeSomething(Window& window) {
        PlistNode& node = window.model.row(below(window.model.rowCount())).node();
        const Expansion expansion = below(3) > 0 ? Expansion::expand : Expansion::collapse;
        switch (below(6)) {
            case 0:
                window.outline.setExpanded(node, expansion, Reach::wholeSubtree);
                return;
            case 1:
            case 2:
                window.outline.setExpanded(node, expansion, Reach::nodeAlone);
                return;
            case 3:
                insertInto(node);
                break;
            case 4:
                removeFrom(node);
                break;
            default:
                shuffle(node);
                break;
        }
        window.outline.rebuild(*window.root);
    }

    void insertInto(PlistNode& node) {
        if (node.isContainer()) {
            const PlistNodePtr added[] = {PlistNode::create("n", someValue(2)),
                                          PlistNode::create("a", PlistValue::boolean(true))};
            node.insertChildren(added, below(static_cast<int>(node.childCount()) + 1));
        } else {
            node.setValue(PlistValue::integer(below(100)));
        }
    }

    void removeFrom(PlistNode& node) {
        if (node.isMaterialized() && node.childCount() > 0) {
            const std::size_t position[] = {
                static_cast<std::size_t>(below(static_cast<int>(node.childCount())))};
            node.removeChildren(position);
        }
    }

    void shuffle(PlistNode& node) {
        if (node.isContainer()) {
            std::vector<PlistNodePtr> nodes = copied(node.children());
            std::shuffle(nodes.begin(), nodes.end(), random_);
            node.setChildren(nodes);
        }
    }

    std::mt19937 random_;
};

const RegisteredUiTest<OutlineTableModelTest> registered;
#include "OutlineTableModelTest.moc"
