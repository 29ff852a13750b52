#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/xml/XMLPlistSerializer.h"
#include "benchmarks/support/GeneratedDocument.h"
#include "benchmarks/support/WarmRun.h"
#include "benchmarks/support/Yardstick.h"

using plist::PlistBytes;
using plist::PlistValue;
namespace BinaryPlistSerializer = plist::detail::BinaryPlistSerializer;
namespace XMLPlistSerializer = plist::detail::XMLPlistSerializer;

namespace {

/// Writes and frees what was written.
void writeXml(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    const PlistValue value = checkedValue(document);
    for (auto iteration : state) {
        PlistBytes bytes = XMLPlistSerializer::serialize(value);
        benchmark::DoNotOptimize(bytes);
    }
    WarmRun::report(state, document);
}

void writeBinary(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    const PlistValue value = checkedValue(document);
    for (auto iteration : state) {
        PlistBytes bytes = BinaryPlistSerializer::serialize(value);
        benchmark::DoNotOptimize(bytes);
    }
    WarmRun::report(state, document);
}

void writeWithPugixml(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    pugi::xml_document tree;
    Yardstick::load(
        tree, {reinterpret_cast<const std::uint8_t*>(document.xml.data()), document.xml.size()});
    for (auto iteration : state) {
        std::string text = Yardstick::save(tree);
        benchmark::DoNotOptimize(text);
    }
    WarmRun::report(state, document);
}

}  // namespace

BENCHMARK(writeXml)->Apply(WarmRun::everyDocument);
BENCHMARK(writeBinary)->Apply(WarmRun::everyDocument);
BENCHMARK(writeWithPugixml)->Apply(WarmRun::everyDocument);
