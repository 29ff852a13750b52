// The rows of an outline: made for the first time, after one edit, and by looking one up. The
// yardstick is a plain walk over the same nodes.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistValue.h"
#include "app/model/OutlineState.h"
#include "app/model/PlistNode.h"

namespace {

constexpr std::int64_t fieldsPerRecord = 4;

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "wrong answer: %s\n", what);
        std::abort();
    }
}

PlistValue numbers(std::int64_t rows) {
    std::vector<PlistValue> items;
    for (std::int64_t i = 1; i < rows; ++i) {
        items.push_back(PlistValue::integer(i));
    }
    return PlistValue::array(std::move(items));
}

/// One dictionary with as many keys as there are rows.
PlistValue keys(std::int64_t rows) {
    std::vector<PlistEntry> entries;
    for (std::int64_t i = 1; i < rows; ++i) {
        entries.push_back({"a key with number " + std::to_string(i), PlistValue::integer(i)});
    }
    return PlistValue::dictionary(std::move(entries));
}

/// An array of dictionaries with four fields each.
PlistValue records(std::int64_t rows) {
    std::vector<PlistValue> items;
    for (std::int64_t i = 0; i < rows / (fieldsPerRecord + 1); ++i) {
        items.push_back(PlistValue::dictionary({{"name", PlistValue::string(std::to_string(i))},
                                                {"identifier", PlistValue::integer(i)},
                                                {"weight", PlistValue::real(0.5)},
                                                {"active", PlistValue::boolean(true)}}));
    }
    return PlistValue::array(std::move(items));
}

using Shape = PlistValue (*)(std::int64_t rows);

/// A tree with all its rows on show.
struct Shown {
    Shown(Shape shape, std::int64_t rows) : root(PlistNode::create({}, shape(rows))) {
        outline.rebuild(*root);
        outline.setExpanded(*root, OutlineState::Expansion::expand,
                            OutlineState::Reach::wholeSubtree);
        require(static_cast<std::int64_t>(outline.rows().size()) >= rows, "all rows are shown");
    }

    PlistNodePtr root;
    OutlineState outline;
};

std::int64_t walk(PlistNode& root) {
    std::int64_t sum = 0;
    std::vector<PlistNode*> waiting{&root};
    while (!waiting.empty()) {
        PlistNode* node = waiting.back();
        waiting.pop_back();
        sum += node->id();
        for (const PlistNodePtr& child : node->children()) {
            waiting.push_back(child.get());
        }
    }
    return sum;
}

void plainWalk(benchmark::State& state, Shape shape) {
    const Shown shown(shape, state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(walk(*shown.root));
    }
    state.SetComplexityN(state.range(0));
}

/// Nodes and rows from nothing but the value.
void openAll(benchmark::State& state, Shape shape) {
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

void rebuildUnchanged(benchmark::State& state, Shape shape) {
    Shown shown(shape, state.range(0));
    for (auto _ : state) {
        shown.outline.rebuild(*shown.root);
    }
    state.SetComplexityN(state.range(0));
}

/// One item comes in the middle and goes again: two edits, two rebuilds.
void insertAndRemove(benchmark::State& state, Shape shape) {
    Shown shown(shape, state.range(0));
    const PlistNodePtr added = PlistNode::create("added", PlistValue::integer(0));
    const std::size_t middle[] = {static_cast<std::size_t>(shown.root->childCount() / 2)};
    const std::size_t rows = shown.outline.rows().size();
    shown.outline.select({shown.outline.rows().back().nodeId()});
    for (auto _ : state) {
        shown.root->insertChildren({&added, 1}, static_cast<qint64>(middle[0]));
        shown.outline.rebuild(*shown.root);
        require(shown.outline.rows().size() == rows + 1, "one row more");
        shown.root->removeChildren(middle);
        shown.outline.rebuild(*shown.root);
    }
    require(shown.outline.rows().size() == rows, "as many rows as before");
    state.SetComplexityN(state.range(0));
}

/// The value of the root after a change in one item.
void snapshotAfterAnEdit(benchmark::State& state, Shape shape) {
    const Shown shown(shape, state.range(0));
    PlistNode& last = shown.outline.rows().back().node();
    std::int64_t number = 0;
    shown.root->value();
    for (auto _ : state) {
        last.setValue(PlistValue::integer(++number));
        benchmark::DoNotOptimize(shown.root->value());
    }
    state.SetComplexityN(state.range(0));
}

void findByNode(benchmark::State& state, Shape shape) {
    const Shown shown(shape, state.range(0));
    const PlistNode& last = shown.outline.rows().back().node();
    for (auto _ : state) {
        benchmark::DoNotOptimize(shown.outline.rowOf(last));
    }
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark* run) {
    run->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK_CAPTURE(plainWalk, records, records)->Apply(sizes);
BENCHMARK_CAPTURE(openAll, records, records)->Apply(sizes);
BENCHMARK_CAPTURE(rebuildUnchanged, records, records)->Apply(sizes);
BENCHMARK_CAPTURE(rebuildUnchanged, numbers, numbers)->Apply(sizes);
BENCHMARK_CAPTURE(rebuildUnchanged, keys, keys)->Apply(sizes);
BENCHMARK_CAPTURE(openAll, keys, keys)->Apply(sizes);
BENCHMARK_CAPTURE(insertAndRemove, records, records)->Apply(sizes);
BENCHMARK_CAPTURE(insertAndRemove, numbers, numbers)->Apply(sizes);
BENCHMARK_CAPTURE(insertAndRemove, keys, keys)->Apply(sizes);
BENCHMARK_CAPTURE(snapshotAfterAnEdit, records, records)->Apply(sizes);
BENCHMARK_CAPTURE(snapshotAfterAnEdit, keys, keys)->Apply(sizes);
BENCHMARK_CAPTURE(findByNode, records, records)->Apply(sizes);

}  // namespace
