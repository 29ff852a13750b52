#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string>

#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "benchmarks/support/ColdRun.h"
#include "benchmarks/support/TouchedFile.h"
#include "benchmarks/support/Yardstick.h"

using plist::PlistValue;
namespace BinaryPlistParser = plist::detail::BinaryPlistParser;
namespace XMLPlistParser = plist::detail::XMLPlistParser;

namespace {

std::string readXml(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    PlistValue value;
    std::string taken =
        ColdRun::nanosecondsOf([&value, &file] { value = XMLPlistParser::parse(file.bytes()); });
    ColdRun::check(takeCensus(value) == document.census, "the census differs");
    return taken;
}

std::string readBinary(const ColdRun::Document& document) {
    const TouchedFile file(document.binary);
    PlistValue value;
    std::string taken =
        ColdRun::nanosecondsOf([&value, &file] { value = BinaryPlistParser::parse(file.bytes()); });
    ColdRun::check(takeCensus(value) == document.census, "the census differs");
    return taken;
}

std::string readWithPugixml(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    pugi::xml_document tree;
    std::string taken =
        ColdRun::nanosecondsOf([&tree, &file] { Yardstick::load(tree, file.bytes()); });
    ColdRun::check(Yardstick::countElements(tree) == document.census.elements(),
                   "the number of elements differs");
    return taken;
}

std::string copyBytes(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    const std::span<const std::uint8_t> bytes = file.bytes();
    std::unique_ptr<void, decltype(&std::free)> copy(nullptr, &std::free);
    std::string taken = ColdRun::nanosecondsOf([&copy, bytes] {
        copy.reset(std::malloc(bytes.size()));
        std::memcpy(copy.get(), bytes.data(), bytes.size());
    });
    ColdRun::check(std::memcmp(copy.get(), bytes.data(), bytes.size()) == 0, "the bytes differ");
    return taken;
}

}  // namespace

/// Prints the nanoseconds of the first reading in this process, page faults included.
int main(int argc, char** argv) {
    return ColdRun::run(argc, argv,
                        {{"xml", readXml},
                         {"binary", readBinary},
                         {"pugixml", readWithPugixml},
                         {"memcpy", copyBytes}});
}
