#include <memory>
#include <optional>
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

/// How long the last owner of a value takes to let go of it.
std::string nanosecondsOfFreeing(PlistValue value, const ColdRun::Document& document) {
    ColdRun::check(takeCensus(value) == document.census, "the census differs");
    return ColdRun::nanosecondsOf([&value] { value = PlistValue::integer(0); });
}

std::string freeXml(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    return nanosecondsOfFreeing(XMLPlistParser::parse(file.bytes()), document);
}

std::string freeBinary(const ColdRun::Document& document) {
    const TouchedFile file(document.binary);
    return nanosecondsOfFreeing(BinaryPlistParser::parse(file.bytes()), document);
}

std::string freePugixml(const ColdRun::Document& document) {
    const TouchedFile file(document.xml);
    pugi::xml_document tree;
    Yardstick::load(tree, file.bytes());
    return ColdRun::nanosecondsOf([&tree] { tree.reset(); });
}

}  // namespace

/// Prints the nanoseconds of freeing a document that was read in this process.
int main(int argc, char** argv) {
    return ColdRun::run(argc, argv,
                        {{"xml", freeXml}, {"binary", freeBinary}, {"pugixml", freePugixml}});
}
