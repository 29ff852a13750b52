#pragma once

#include <string>
#include <vector>

#include "PlistCore/PlistValue.h"

namespace plist {

/// What comes back from the XML form of a value.
enum class XmlTrip {
    equal,
    changed,
    error,
};

/// A named value for round trips: every format writes it and reads it back.
struct SampleValue {
    std::string name;
    PlistValue value;
    XmlTrip xmlTrip = XmlTrip::equal;
};

/// Values of every type, at every boundary of the formats. All of them come back equal from the
/// binary form; those that the XML form cannot hold say so.
std::vector<SampleValue> sampleValues();

}  // namespace plist
