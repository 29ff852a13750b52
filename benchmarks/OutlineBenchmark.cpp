// The rows of an outline: made for the first time, after one edit, and by looking one up. The
// yardstick is a plain walk over the same nodes.

#include <benchmark/benchmark.h>

#include <cstddef>

#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "benchmarks/support/ShownTree.h"

namespace {

void plainWalk(benchmark::State& state, ShownTree::Shape shape) {
    const ShownTree shown(shape, state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(shown.walk());
    }
    state.SetComplexityN(state.range(0));
}

/// Nodes and rows from nothing but the value.
void openAll(benchmark::State& state, ShownTree::Shape shape) {
    const PlistValue value = shape(state.range(0));
    for (auto _ : state) {
        const PlistNodePtr root = PlistNode::create({}, value);
        OutlineState outline;
        outline.rebuild(*root);
        outline.setExpanded(*root, OutlineState::Expansion::expand,
                            OutlineState::Reach::wholeSubtree);
        benchmark::DoNotOptimize(outline.rows().data());
    }
    state.SetComplexityN(state.range(0));
}

void rebuildUnchanged(benchmark::State& state, ShownTree::Shape shape) {
    ShownTree shown(shape, state.range(0));
    for (auto _ : state) {
        shown.outline.rebuild(*shown.root);
    }
    state.SetComplexityN(state.range(0));
}

/// One item comes in the middle and goes again: two edits, two rebuilds.
void insertAndRemove(benchmark::State& state, ShownTree::Shape shape) {
    ShownTree shown(shape, state.range(0));
    const PlistNodePtr added = PlistNode::create("added", PlistValue::integer(0));
    const std::size_t middle[] = {static_cast<std::size_t>(shown.root->childCount() / 2)};
    const std::size_t rows = shown.outline.rows().size();
    shown.outline.select({shown.outline.rows().back().nodeId()});
    for (auto _ : state) {
        shown.root->insertChildren({&added, 1}, static_cast<qint64>(middle[0]));
        shown.outline.rebuild(*shown.root);
        ShownTree::require(shown.outline.rows().size() == rows + 1, "one row more");
        shown.root->removeChildren(middle);
        shown.outline.rebuild(*shown.root);
    }
    ShownTree::require(shown.outline.rows().size() == rows, "as many rows as before");
    state.SetComplexityN(state.range(0));
}

/// The value of the root after a change in one item.
void snapshotAfterAnEdit(benchmark::State& state, ShownTree::Shape shape) {
    const ShownTree shown(shape, state.range(0));
    PlistNode& last = shown.outline.rows().back().node();
    std::int64_t number = 0;
    shown.root->value();
    for (auto _ : state) {
        last.setValue(PlistValue::integer(++number));
        benchmark::DoNotOptimize(shown.root->value());
    }
    state.SetComplexityN(state.range(0));
}

void findByNode(benchmark::State& state, ShownTree::Shape shape) {
    const ShownTree shown(shape, state.range(0));
    const PlistNode& last = shown.outline.rows().back().node();
    for (auto _ : state) {
        benchmark::DoNotOptimize(shown.outline.rowOf(last));
    }
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark* run) {
    run->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK_CAPTURE(plainWalk, records, ShownTree::records)->Apply(sizes);
BENCHMARK_CAPTURE(openAll, records, ShownTree::records)->Apply(sizes);
BENCHMARK_CAPTURE(rebuildUnchanged, records, ShownTree::records)->Apply(sizes);
BENCHMARK_CAPTURE(rebuildUnchanged, numbers, ShownTree::numbers)->Apply(sizes);
BENCHMARK_CAPTURE(rebuildUnchanged, keys, ShownTree::keys)->Apply(sizes);
BENCHMARK_CAPTURE(openAll, keys, ShownTree::keys)->Apply(sizes);
BENCHMARK_CAPTURE(insertAndRemove, records, ShownTree::records)->Apply(sizes);
BENCHMARK_CAPTURE(insertAndRemove, numbers, ShownTree::numbers)->Apply(sizes);
BENCHMARK_CAPTURE(insertAndRemove, keys, ShownTree::keys)->Apply(sizes);
BENCHMARK_CAPTURE(snapshotAfterAnEdit, records, ShownTree::records)->Apply(sizes);
BENCHMARK_CAPTURE(snapshotAfterAnEdit, keys, ShownTree::keys)->Apply(sizes);
BENCHMARK_CAPTURE(findByNode, records, ShownTree::records)->Apply(sizes);

}  // namespace
