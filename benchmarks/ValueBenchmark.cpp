#include <benchmark/benchmark.h>

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistType.h"
#include "PlistCore/PlistValue.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "benchmarks/support/GeneratedDocument.h"
#include "benchmarks/support/WarmRun.h"

using plist::greatestPlistInteger;
using plist::PlistEntry;
using plist::PlistType;
using plist::PlistValue;
namespace XMLPlistParser = plist::detail::XMLPlistParser;

namespace {

/// A value of the type that does not fit in place where its type has such values.
PlistValue largeValue(PlistType type) {
    switch (type) {
        case PlistType::dictionary:
            return PlistValue::dictionary(
                std::vector<PlistEntry>(1000, {"an entry", PlistValue::integer(1)}));
        case PlistType::array:
            return PlistValue::array(std::vector<PlistValue>(1000, PlistValue::integer(1)));
        case PlistType::string:
            return PlistValue::string(std::string(1000, 'a'));
        case PlistType::integer:
            return PlistValue::integer(greatestPlistInteger);
        case PlistType::real:
            return PlistValue::real(0.1);
        case PlistType::boolean:
            return PlistValue::boolean(true);
        case PlistType::date:
            return PlistValue::date(1e9);
        case PlistType::data:
            return PlistValue::data(std::vector<std::uint8_t>(1000));
        case PlistType::uid:
            return PlistValue::uid(1000);
    }
    throw std::logic_error("no such type");
}

void copyAndFree(benchmark::State& state, const PlistValue& value) {
    for (auto iteration : state) {
        PlistValue copy(value);
        benchmark::DoNotOptimize(copy);
    }
}

/// Copies a value that was made in the program, and frees the copy.
void copyValue(benchmark::State& state) {
    const auto type = static_cast<PlistType>(state.range(0));
    copyAndFree(state, largeValue(type));
    state.SetLabel(std::string(rawValue(type)));
}

/// Copies a whole document that was read, and frees the copy.
void copyDocument(benchmark::State& state) {
    copyAndFree(state, checkedValue(WarmRun::documentOf(state)));
    state.SetLabel(std::string(nameOf(static_cast<DocumentKind>(state.range(0)))));
}

/// Copies a part of a document that was read, and frees the copy.
void copyPart(benchmark::State& state) {
    const PlistValue value = checkedValue(WarmRun::documentOf(state));
    copyAndFree(state, value.children().back());
    state.SetLabel(std::string(nameOf(static_cast<DocumentKind>(state.range(0)))));
}

/// Compares two equal documents that share nothing.
void compareEqual(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    const PlistValue left = checkedValue(document);
    const PlistValue right = checkedValue(document);
    for (auto iteration : state) {
        if (!(left == right)) {
            throw std::logic_error("equal documents differ");
        }
    }
    WarmRun::report(state, document);
}

/// A plain walk over the same document: what comparing cannot undercut by much.
void walk(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    const PlistValue value = checkedValue(document);
    for (auto iteration : state) {
        Census census = takeCensus(value);
        benchmark::DoNotOptimize(census);
    }
    WarmRun::report(state, document);
}

/// Frees a document that was read; reading is not timed.
void freeDocument(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    checkedValue(document);
    const std::span<const std::uint8_t> xml(
        reinterpret_cast<const std::uint8_t*>(document.xml.data()), document.xml.size());
    for (auto iteration : state) {
        state.PauseTiming();
        PlistValue value = XMLPlistParser::parse(xml);
        state.ResumeTiming();
        value = PlistValue::boolean(false);
        benchmark::DoNotOptimize(value);
    }
    WarmRun::report(state, document);
}

}  // namespace

BENCHMARK(copyValue)->ArgName("type")->DenseRange(0, 8);
BENCHMARK(copyDocument)->Apply(WarmRun::everyTenMegabytes);
BENCHMARK(copyPart)->Apply(WarmRun::everyTenMegabytes);
BENCHMARK(compareEqual)->Apply(WarmRun::everyTenMegabytes);
BENCHMARK(walk)->Apply(WarmRun::everyTenMegabytes);
BENCHMARK(freeDocument)->Apply(WarmRun::everyTenMegabytes);
