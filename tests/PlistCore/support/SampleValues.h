#pragma once

#include <string>
#include <vector>

#include "PlistCore/PlistValue.h"

/// Whether a value comes back equal from the XML form.
enum class XmlTrip {
    equal,
    changed,
};

/// A named value for round trips: every format writes it and reads it back.
struct SampleValue {
    std::string name;
    PlistValue value;
    XmlTrip xmlTrip = XmlTrip::equal;
};

/// Values of every type, at every boundary of the formats. All of them come back equal from the
/// binary form; those that the XML form changes say so.
std::vector<SampleValue> sampleValues();
