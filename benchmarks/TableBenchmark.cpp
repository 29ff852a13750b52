// What the user waits for in a table of a million rows, from the cause until the window is painted:
// scrolling by a page, another value, a new row, also among a million items of one array, and
// expanding a container with 100,000 items. The
// yardstick is the table view as it comes, over a model that knows its texts and nothing else.

#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "app/model/actions/DocumentActions.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/table/PlistTable.h"
#include "benchmarks/support/ShownTree.h"

namespace {

constexpr int rowTotal = 1'000'000;
constexpr int expandedTotal = 100'000;
constexpr int changedRow = rowTotal / 2;
constexpr QSize size(900, 700);

/// Lays out and paints what has changed. One turn of the event loop lays out, the next one paints.
void settle() {
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents();
    }
}

void present(QTableView& view) {
    view.resize(size);
    view.show();
    settle();
    view.scrollTo(view.model()->index(changedRow, 0), QAbstractItemView::PositionAtCenter);
    settle();
}

/// Texts of the same kind and length as those of the outline.
class PlainModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : rows_;
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : 3;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) {
            return {};
        }
        return index.column() == 1 ? QStringLiteral("Integer") : QString::number(index.row());
    }

    void change(int row) { Q_EMIT dataChanged(index(row, 0), index(row, 2)); }
    void insert(int row, int count) {
        beginInsertRows({}, row, row + count - 1);
        rows_ += count;
        endInsertRows();
    }
    void remove(int row, int count) {
        beginRemoveRows({}, row, row + count - 1);
        rows_ -= count;
        endRemoveRows();
    }

private:
    int rows_ = rowTotal;
};

/// The table view as it comes, set up to look alike.
struct Plain {
    Plain() {
        view.setModel(&model);
        view.setShowGrid(false);
        view.setWordWrap(false);
        view.setAlternatingRowColors(true);
        view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view.setSelectionBehavior(QAbstractItemView::SelectRows);
        view.verticalHeader()->hide();
        view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        view.horizontalHeader()->setStretchLastSection(true);
        present(view);
    }

    void change() { model.change(changedRow); }
    void insert() { model.insert(changedRow, 1); }
    void takeBackInsert() { model.remove(changedRow, 1); }
    void expand() { model.insert(changedRow + 1, expandedTotal); }
    void collapse() { model.remove(changedRow + 1, expandedTotal); }

    PlainModel model;
    QTableView view;
};

/// A thousand arrays of a thousand rows each, all expanded, but for one of 100,000 in the middle.
PlistValue groups() {
    constexpr int side = 1000;
    static_assert(side * side == rowTotal);
    std::vector<PlistValue> items(side, ShownTree::numbers(side));
    items[side / 2] = ShownTree::numbers(expandedTotal + 1);
    return PlistValue::array(std::move(items));
}

/// A document in the table of the program.
struct Shown {
    explicit Shown(PlistValue content) {
        document.apply({std::move(content), PlistFormat::xml});
        outline.follow(document);
    }

    /// Once all rows are there.
    void show(const PlistNode& selected) {
        view = std::make_unique<PlistTable>(actions);
        outline.select({selected.id()});
        present(*view);
        const int rows = view->model()->rowCount();
        ShownTree::require(rows > rowTotal - 2000 && rows <= rowTotal, "all rows are shown");
    }

    PlistDocument document;
    OutlineState outline;
    UndoManager undo;
    DocumentActions actions{document, outline, &undo};
    PlistEditor editor{document, &undo};
    std::unique_ptr<PlistTable> view;
};

/// A million numbers in one array.
struct FlatOutline : Shown {
    FlatOutline() : Shown(ShownTree::numbers(rowTotal)) {
        show(*document.root().children()[changedRow]);
    }

    void insert() {
        const PlistNodePtr node = PlistNode::create({}, PlistValue::integer(1));
        editor.add({&node, 1}, document.root(), changedRow);
    }
    void takeBackInsert() { undo.undo(); }
};

/// Many arrays, all expanded.
struct Outline : Shown {
    Outline() : Shown(groups()) {
        const std::span<const PlistNodePtr> children = document.root().children();
        collapsed = children[children.size() / 2];
        changed = children[children.size() / 2 + 1];
        outline.setExpanded(children, OutlineState::Expansion::expand,
                            OutlineState::Reach::nodeAlone);
        collapse();
        show(item());
    }

    /// In the middle of the rows, not far from the collapsed one.
    PlistNode& item() const { return *changed->children()[2]; }

    void change() {
        editor.changeValue(item(), PlistValue::integer(++number));
        undo.clear();
    }
    void insert() {
        const PlistNodePtr node = PlistNode::create({}, PlistValue::integer(1));
        editor.add({&node, 1}, *changed, 2);
    }
    void takeBackInsert() { undo.undo(); }
    void expand() { setExpanded(OutlineState::Expansion::expand); }
    void collapse() { setExpanded(OutlineState::Expansion::collapse); }
    void setExpanded(OutlineState::Expansion expansion) {
        outline.setExpanded(*collapsed, expansion, OutlineState::Reach::nodeAlone);
    }

    PlistNodePtr collapsed;
    PlistNodePtr changed;
    std::int64_t number = 0;
};

QTableView& viewOf(Plain& plain) {
    return plain.view;
}

QTableView& viewOf(Shown& shown) {
    return *shown.view;
}

/// Measures `step` until all is painted, and then `after` without measuring.
template <typename Step, typename After>
void measure(benchmark::State& state, const Step& step, const After& after) {
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        step();
        settle();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        after();
        settle();
        state.SetIterationTime(time.count());
    }
}

template <typename Subject>
void page(benchmark::State& state) {
    Subject subject;
    QScrollBar& bar = *viewOf(subject).verticalScrollBar();
    int direction = 1;
    measure(
        state, [&] { bar.setValue(bar.value() + direction * bar.pageStep()); },
        [&] { direction = -direction; });
}

template <typename Subject>
void change(benchmark::State& state) {
    Subject subject;
    measure(
        state, [&] { subject.change(); }, [] {});
}

template <typename Subject>
void insert(benchmark::State& state) {
    Subject subject;
    measure(
        state, [&] { subject.insert(); }, [&] { subject.takeBackInsert(); });
}

template <typename Subject>
void expand(benchmark::State& state) {
    Subject subject;
    measure(
        state, [&] { subject.expand(); }, [&] { subject.collapse(); });
}

template <void (*measured)(benchmark::State&)>
void registerAs(const char* name) {
    benchmark::RegisterBenchmark(name, measured)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    registerAs<page<Plain>>("page/plain");
    registerAs<page<Outline>>("page/outline");
    registerAs<change<Plain>>("change/plain");
    registerAs<change<Outline>>("change/outline");
    registerAs<insert<Plain>>("insert/plain");
    registerAs<insert<Outline>>("insert/outline");
    registerAs<insert<Plain>>("insertFlat/plain");
    registerAs<insert<FlatOutline>>("insertFlat/outline");
    registerAs<expand<Plain>>("expand/plain");
    registerAs<expand<Outline>>("expand/outline");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
