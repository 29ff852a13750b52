#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/PlistSearch.h"
#include "PlistCore/PlistText.h"
#include "PlistCore/PlistValue.h"
#include "benchmarks/support/GeneratedDocument.h"
#include "benchmarks/support/WarmRun.h"

using plist::PlistMatches;
using plist::PlistString;
using plist::PlistType;
using plist::PlistValue;
namespace PlistSearch = plist::PlistSearch;
namespace PlistText = plist::PlistText;

namespace {

/// Letters that are nowhere, some that are, digits that make every number be formatted, and a query
/// that only texts outside ASCII can match.
constexpr std::array<std::string_view, 4> queries = {"zqx", "st", "17", "字"};

std::string lowerCased(std::string text) {
    std::ranges::transform(text, text.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    return text;
}

bool contains(const std::string& text, std::string_view query) {
    return lowerCased(text).find(query) != std::string::npos;
}

/// How many matches there are, found slowly: none of the queries has a letter with diacritics.
std::size_t matchCount(const PlistValue& root, std::string_view query) {
    std::size_t count = 0;
    std::vector<const PlistValue*> pending = {&root};
    while (!pending.empty()) {
        const PlistValue& value = *pending.back();
        pending.pop_back();
        const std::span<const PlistString> keys = value.keys();
        std::size_t index = 0;
        for (const PlistValue& child : value.children()) {
            const bool isSearched =
                child.type() != PlistType::boolean && child.type() != PlistType::data;
            const bool keyMatches =
                !keys.empty() && contains(std::string(keys[index].view()), query);
            const bool matches =
                keyMatches || (isSearched && contains(PlistText::displayText(child), query));
            count += matches ? 1 : 0;
            pending.push_back(&child);
            ++index;
        }
    }
    return count;
}

/// The yardstick: a plain walk over the same values, which looks at no text.
void walk(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    const PlistValue value = checkedValue(document);
    for (auto iteration : state) {
        Census census = takeCensus(value);
        benchmark::DoNotOptimize(census);
    }
    WarmRun::report(state, document);
}

void search(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    const PlistValue value = checkedValue(document);
    const std::string_view query = queries.at(static_cast<std::size_t>(state.range(2)));
    const std::size_t expected = matchCount(value, query);
    for (auto iteration : state) {
        const PlistMatches matches = PlistSearch::matches(value, query);
        if (matches.size() != expected) {
            throw std::logic_error("the search misses something");
        }
    }
    WarmRun::report(state, document);
    state.SetLabel(std::string(nameOf(static_cast<DocumentKind>(state.range(0)))) + " " +
                   std::string(query) + " " + std::to_string(expected));
}

void everyQuery(benchmark::internal::Benchmark* benchmark) {
    constexpr std::int64_t tenMegabytes = 10'000'000;
    benchmark->ArgNames({"kind", "bytes", "query"});
    for (const DocumentKind kind : allDocumentKinds) {
        for (std::size_t query = 0; query < queries.size(); ++query) {
            benchmark->Args(
                {static_cast<std::int64_t>(kind), tenMegabytes, static_cast<std::int64_t>(query)});
        }
    }
}

}  // namespace

BENCHMARK(walk)->Apply(WarmRun::everyTenMegabytes);
BENCHMARK(search)->Apply(everyQuery);
