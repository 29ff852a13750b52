#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "benchmarks/support/GeneratedDocument.h"
#include "benchmarks/support/WarmRun.h"
#include "benchmarks/support/Yardstick.h"

using plist::PlistBytes;
using plist::PlistValue;
namespace BinaryPlistParser = plist::detail::BinaryPlistParser;
namespace BinaryPlistSerializer = plist::detail::BinaryPlistSerializer;
namespace XMLPlistParser = plist::detail::XMLPlistParser;

namespace {

std::span<const std::uint8_t> bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Reads and frees.
void readXml(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    checkedValue(document);
    for (auto iteration : state) {
        PlistValue value = XMLPlistParser::parse(bytesOf(document.xml));
        benchmark::DoNotOptimize(value);
    }
    WarmRun::report(state, document);
}

void readBinary(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    const PlistBytes binary = BinaryPlistSerializer::serialize(checkedValue(document));
    for (auto iteration : state) {
        PlistValue value = BinaryPlistParser::parse(binary.span());
        benchmark::DoNotOptimize(value);
    }
    WarmRun::report(state, document);
}

void readWithPugixml(benchmark::State& state) {
    const GeneratedDocument document = WarmRun::documentOf(state);
    for (auto iteration : state) {
        pugi::xml_document tree;
        Yardstick::load(tree, bytesOf(document.xml));
        benchmark::DoNotOptimize(tree);
    }
    WarmRun::report(state, document);
}

}  // namespace

BENCHMARK(readXml)->Apply(WarmRun::everyDocument);
BENCHMARK(readBinary)->Apply(WarmRun::everyDocument);
BENCHMARK(readWithPugixml)->Apply(WarmRun::everyDocument);
