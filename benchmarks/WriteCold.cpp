#include <algorithm>
#include <span>
#include <string>

#include "PlistCore/PlistBytes.h"
#include "PlistCore/binary/BinaryPlistSerializer.h"
#include "PlistCore/xml/XMLPlistParser.h"
#include "PlistCore/xml/XMLPlistSerializer.h"
#include "benchmarks/support/ColdRun.h"
#include "benchmarks/support/TouchedFile.h"
#include "benchmarks/support/Yardstick.h"

using plist::PlistBytes;
using plist::PlistValue;
namespace BinaryPlistSerializer = plist::detail::BinaryPlistSerializer;
namespace XMLPlistParser = plist::detail::XMLPlistParser;
namespace XMLPlistSerializer = plist::detail::XMLPlistSerializer;

namespace {

PlistValue valueOf(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    return XMLPlistParser::parse(file.bytes());
}

void checkSame(const PlistBytes& written, const std::filesystem::path& expected) {
    const TouchedFile file(expected);
    ColdRun::check(std::ranges::equal(written.span(), file.bytes()), "the bytes differ");
}

std::string writeXml(const ColdRun::Document& document) {
    const PlistValue value = valueOf(document);
    PlistBytes bytes;
    std::string taken =
        ColdRun::nanosecondsOf([&bytes, &value] { bytes = XMLPlistSerializer::serialize(value); });
    checkSame(bytes, document.xml);
    return taken;
}

std::string writeBinary(const ColdRun::Document& document) {
    const PlistValue value = valueOf(document);
    PlistBytes bytes;
    std::string taken = ColdRun::nanosecondsOf(
        [&bytes, &value] { bytes = BinaryPlistSerializer::serialize(value); });
    checkSame(bytes, document.binary);
    return taken;
}

std::string writeWithPugixml(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    pugi::xml_document tree;
    Yardstick::load(tree, file.bytes());
    std::string text;
    std::string taken = ColdRun::nanosecondsOf([&text, &tree] { text = Yardstick::save(tree); });
    pugi::xml_document again;
    Yardstick::load(again, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    ColdRun::check(Yardstick::countElements(again) == document.census.elements(),
                   "the number of elements differs");
    return taken;
}

}  // namespace

/// Prints the nanoseconds of the first writing in this process, of a value that was read from XML.
int main(int argc, char** argv) {
    return ColdRun::run(
        argc, argv, {{"xml", writeXml}, {"binary", writeBinary}, {"pugixml", writeWithPugixml}});
}
