#include "benchmarks/support/WarmRun.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t tenMegabytes = 10'000'000;

void everyKind(benchmark::internal::Benchmark* benchmark, const std::vector<std::int64_t>& sizes) {
    benchmark->ArgNames({"kind", "bytes"});
    for (const DocumentKind kind : allDocumentKinds) {
        for (const std::int64_t size : sizes) {
            benchmark->Args({static_cast<std::int64_t>(kind), size});
        }
    }
}

}  // namespace

void WarmRun::everyDocument(benchmark::internal::Benchmark* benchmark) {
    everyKind(benchmark, {4096, 1'000'000, tenMegabytes});
}

void WarmRun::everyTenMegabytes(benchmark::internal::Benchmark* benchmark) {
    everyKind(benchmark, {tenMegabytes});
}

GeneratedDocument WarmRun::documentOf(const benchmark::State& state) {
    return generateDocument(static_cast<DocumentKind>(state.range(0)),
                            static_cast<std::size_t>(state.range(1)));
}

void WarmRun::report(benchmark::State& state, const GeneratedDocument& document) {
    state.SetBytesProcessed(static_cast<std::int64_t>(document.xml.size()) *
                            static_cast<std::int64_t>(state.iterations()));
    state.SetLabel(std::string(nameOf(static_cast<DocumentKind>(state.range(0)))));
}
