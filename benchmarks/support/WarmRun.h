#pragma once

#include <benchmark/benchmark.h>

#include "benchmarks/support/GeneratedDocument.h"

/// What the Google Benchmark programs have in common: the documents are arguments of a benchmark,
/// its kind the first and its size in bytes the second.
namespace WarmRun {

/// Registers a benchmark for documents of every kind and of 4 KB, 1 MB and 10 MB.
void everyDocument(benchmark::internal::Benchmark* benchmark);

/// The same for one size.
void everyTenMegabytes(benchmark::internal::Benchmark* benchmark);

GeneratedDocument documentOf(const benchmark::State& state);

/// Adds the throughput in bytes of XML, and the name of the kind as the label.
void report(benchmark::State& state, const GeneratedDocument& document);

}  // namespace WarmRun
