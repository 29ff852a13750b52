#include <cstdint>
#include <sstream>
#include <string>

#include "PlistCore/binary/BinaryPlistParser.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "benchmarks/support/ColdRun.h"
#include "benchmarks/support/ProcessMemory.h"
#include "benchmarks/support/TouchedFile.h"
#include "benchmarks/support/Yardstick.h"

using plist::PlistValue;
namespace BinaryPlistParser = plist::detail::BinaryPlistParser;
namespace XMLPlistParser = plist::detail::XMLPlistParser;

namespace {

/// What a reading call adds to the memory of the process.
struct Growth {
    std::int64_t kept = 0;
    std::int64_t atMost = 0;
};

template <typename Call>
Growth growthBy(Call call) {
    const std::int64_t before = ProcessMemory::resident();
    call();
    const std::int64_t peak = ProcessMemory::peak();
    return {ProcessMemory::resident() - before, peak - before};
}

/// Bytes for each value, and bytes at most for each byte of the XML form.
std::string figures(const Growth& growth, const ColdRun::Document& document) {
    const auto values = static_cast<double>(document.census.values());
    const auto xmlBytes = static_cast<double>(std::filesystem::file_size(document.xml));
    std::ostringstream line;
    line << static_cast<double>(growth.kept) / values << ' '
         << static_cast<double>(growth.atMost) / xmlBytes;
    return line.str();
}

std::string readXml(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    PlistValue value;
    const Growth growth =
        growthBy([&value, &file] { value = XMLPlistParser::parse(file.bytes()); });
    ColdRun::check(takeCensus(value) == document.census, "the census differs");
    return figures(growth, document);
}

std::string readBinary(const ColdRun::Document& document) {
    const TouchedFile file(document.binary);
    PlistValue value;
    const Growth growth =
        growthBy([&value, &file] { value = BinaryPlistParser::parse(file.bytes()); });
    ColdRun::check(takeCensus(value) == document.census, "the census differs");
    return figures(growth, document);
}

std::string readWithPugixml(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    pugi::xml_document tree;
    const Growth growth = growthBy([&tree, &file] { Yardstick::load(tree, file.bytes()); });
    ColdRun::check(Yardstick::countElements(tree) == document.census.elements(),
                   "the number of elements differs");
    return figures(growth, document);
}

}  // namespace

/// Prints two figures of reading: the memory that remains in use, in bytes per value; and the most
/// memory while reading, the input not counted, in bytes per byte of the XML form.
int main(int argc, char** argv) {
    return ColdRun::run(argc, argv,
                        {{"xml", readXml}, {"binary", readBinary}, {"pugixml", readWithPugixml}});
}
