#pragma once

#include <cstddef>

#include "PlistCore/value/PlistCell.h"
#include "PlistCore/xml/XMLScanner.h"
#include "PlistCore/xml/XMLTreeBuilder.h"

namespace plist::detail {

/// Reads what nearly all of nearly all files consists of: tags without whitespace, texts without
/// references, short numbers, full dates. It takes only what it fully understands; at anything else
/// it stops in front of it, and the plain path of the parser reads that or reports it.
class XMLFastPath {
public:
    XMLFastPath(XMLScanner& scanner, XMLTreeBuilder& tree);

    /// Reads on from the scanner's position, inside an open container, for as long as it can.
    void run();

private:
    /// The steps start at a place of which at least `margin` bytes are left, and return where they
    /// ended, or null if the place is not for them.
    const char* skipBlanks(const char* at) const;
    const char* readKeyOrEnd(const char* at);
    const char* readValueOrEnd(const char* at);
    const char* readKey(const char* content);
    const char* readExpectedKey(const char* content);
    const char* readString(const char* content);
    const char* readInteger(const char* content);
    const char* readReal(const char* content);
    const char* readDate(const char* content);
    const char* openContainer(const char* at);
    const char* add(const PlistCell& value, const char* next);

    struct Text {
        const char* end;
        bool isAscii;
    };
    Text findTextEnd(const char* content) const;

    XMLScanner& scanner_;
    XMLTreeBuilder& tree_;
    const char* start_;
    /// From here on fewer than `margin` bytes are left.
    const char* limit_;
};

}  // namespace plist::detail
