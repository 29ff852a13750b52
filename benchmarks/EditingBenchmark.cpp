// What edits, undoing and searching cost with all rows on show, each with the rows made anew as the
// user waits for it. Every figure has three companions: a plain walk over the same nodes, making
// the rows anew alone, and the same edit while nobody shows rows.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <thread>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/search/MatchResolver.h"
#include "app/model/search/SearchRun.h"
#include "app/model/tree/PlistNode.h"
#include "benchmarks/support/ShownTree.h"

namespace {

enum class Rows : std::uint8_t { shown, none };

/// The value that a run measures with.
PlistValue content(const benchmark::State& state) {
    constexpr ShownTree::Shape shapes[] = {ShownTree::records, ShownTree::keys};
    return shapes[state.range(0)](state.range(1));
}

/// A document in a window, or in none, and an item in the middle of it.
struct Window {
    Window(const benchmark::State& state, Rows shows) : editor(document, &undo) {
        document.apply({content(state), PlistFormat::xml});
        if (shows == Rows::shown) {
            outline.follow(document);
        } else {
            outline.rebuild(document.root());
        }
        ShownTree::expandAll(outline, document.root());
        const auto items = document.root().children();
        item = items[items.size() / 2];
        const bool isRecord = item->isContainer();
        parent = isRecord ? item : PlistNodePtr(&document.root());
        leaf = isRecord ? item->children().front() : item;
    }

    /// A new item for the middle of the document.
    void add(const PlistNodePtr& node) const {
        editor.add({&node, 1}, *parent, *leaf->indexInParent());
    }

    PlistDocument document;
    OutlineState outline;
    UndoManager undo;
    PlistEditor editor;
    PlistNodePtr item;
    PlistNodePtr parent;  ///< of the leaf
    PlistNodePtr leaf;
};

/// Measures `step`, with what comes before and after it left out.
template <typename Before, typename Step, typename After>
void measure(benchmark::State& state, const Before& before, const Step& step, const After& after) {
    for (auto _ : state) {
        before();
        const auto begin = std::chrono::steady_clock::now();
        step();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        after();
        state.SetIterationTime(time.count());
    }
}

void nothing() {}

void plainWalk(benchmark::State& state) {
    const Window window(state, Rows::none);
    measure(
        state, nothing, [&] { benchmark::DoNotOptimize(ShownTree::walk(window.document.root())); },
        nothing);
}

void rebuildRows(benchmark::State& state) {
    Window window(state, Rows::none);
    measure(
        state, nothing, [&] { window.outline.rebuild(window.document.root()); }, nothing);
}

void rename(benchmark::State& state, Rows rows) {
    Window window(state, rows);
    std::int64_t number = 0;
    PlistString key;
    measure(
        state, [&] { key = "renamed " + std::to_string(++number); },
        [&] { window.editor.rename(*window.leaf, key); }, [&] { window.undo.clear(); });
    ShownTree::require(window.leaf->key() == key, "the key is another");
}

void changeValue(benchmark::State& state, Rows rows) {
    Window window(state, rows);
    std::int64_t number = 0;
    measure(
        state, [&] { --number; },
        [&] { window.editor.changeValue(*window.leaf, PlistValue::integer(number)); },
        [&] { window.undo.clear(); });
    ShownTree::require(window.leaf->scalar() == PlistValue::integer(number), "a new value");
}

void add(benchmark::State& state, Rows rows) {
    Window window(state, rows);
    const qint64 count = window.parent->childCount();
    const PlistNodePtr node = PlistNode::create("added", PlistValue::integer(1));
    measure(
        state, nothing, [&] { window.add(node); },
        [&] {
            ShownTree::require(window.parent->childCount() == count + 1, "one item more");
            window.undo.undo();
        });
}

void remove(benchmark::State& state, Rows rows) {
    Window window(state, rows);
    const qint64 count = window.parent->childCount();
    measure(
        state, nothing,
        [&] {
            window.editor.remove({&window.leaf, 1});
        },
        [&] {
            ShownTree::require(window.parent->childCount() == count - 1, "one item less");
            window.undo.undo();
        });
}

void undoRemove(benchmark::State& state, Rows rows) {
    Window window(state, rows);
    const qint64 count = window.parent->childCount();
    measure(
        state,
        [&] {
            window.editor.remove({&window.leaf, 1});
        },
        [&] { window.undo.undo(); },
        [&] { ShownTree::require(window.parent->childCount() == count, "all items again"); });
}

/// A search as the user waits for it after an edit: the snapshot, the search itself, the nodes and
/// the rows.
void search(benchmark::State& state, const char* query) {
    Window window(state, Rows::none);
    std::int64_t number = 0;
    std::size_t count = 0;
    measure(
        state,
        [&] {
            window.outline.setFilter(std::nullopt);
            window.editor.changeValue(*window.leaf, PlistValue::integer(--number));
            window.undo.clear();
        },
        [&] {
            PlistNode& root = window.document.root();
            const PlistMatches found = PlistSearch::matches(root.value(), query);
            MatchResolver resolver(root, found);
            while (!resolver.resolve(std::numeric_limits<std::uint32_t>::max())) {
            }
            MatchedNodes nodes = resolver.take();
            count = nodes.matches.size();
            window.outline.setFilter(std::move(nodes.visible));
        },
        nothing);
    state.counters["matches"] = static_cast<double>(count);
}

/// From the wish to end a search that runs until it has ended.
void cancelSearch(benchmark::State& state) {
    const PlistValue value = content(state);
    std::optional<SearchRun> run;
    measure(
        state,
        [&] {
            run.emplace(value, "1", nullptr);
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        },
        [&] { run.reset(); }, nothing);
}

void shapesAndSizes(benchmark::internal::Benchmark* run) {
    run->ArgsProduct({{0, 1}, {10'000, 100'000, 1'000'000}})->ArgNames({"shape", "rows"});
    run->Unit(benchmark::kMicrosecond)->UseManualTime();
}

BENCHMARK(plainWalk)->Apply(shapesAndSizes);
BENCHMARK(rebuildRows)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(rename, shown, Rows::shown)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(rename, alone, Rows::none)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(changeValue, shown, Rows::shown)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(changeValue, alone, Rows::none)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(add, shown, Rows::shown)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(add, alone, Rows::none)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(remove, shown, Rows::shown)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(remove, alone, Rows::none)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(undoRemove, shown, Rows::shown)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(undoRemove, alone, Rows::none)->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(search, nothing, "zqx")->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(search, some, "77")->Apply(shapesAndSizes);
BENCHMARK_CAPTURE(search, most, "e")->Apply(shapesAndSizes);
BENCHMARK(cancelSearch)->Apply(shapesAndSizes);

}  // namespace
