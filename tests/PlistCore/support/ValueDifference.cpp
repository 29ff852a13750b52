#include "tests/PlistCore/support/ValueDifference.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

bool areSameBits(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) ||
           (std::isnan(left) && std::isnan(right));
}

/// Whether two scalars of the same type are the same.
bool areSameScalars(const PlistValue& left, const PlistValue& right, double dateTolerance) {
    switch (left.type()) {
        case PlistType::string:
            return left.text() == right.text();
        case PlistType::integer:
            return left.integerValue() == right.integerValue();
        case PlistType::real:
            return areSameBits(left.realValue(), right.realValue());
        case PlistType::boolean:
            return left.booleanValue() == right.booleanValue();
        case PlistType::date:
            return areSameBits(left.dateValue(), right.dateValue()) ||
                   std::abs(left.dateValue() - right.dateValue()) <= dateTolerance;
        case PlistType::data:
            return std::ranges::equal(left.dataValue(), right.dataValue());
        case PlistType::uid:
            return left.uidValue() == right.uidValue();
        case PlistType::dictionary:
        case PlistType::array:
            break;
    }
    return true;
}

std::string brief(const PlistValue& value) {
    if (value.isContainer()) {
        return std::string(rawValue(value.type())) + " of " + std::to_string(value.childCount());
    }
    constexpr std::size_t longest = 200;
    return std::string(rawValue(value.type())) + " " + valueText(value).substr(0, longest);
}

/// What differs between the two themselves, their children left out; empty if nothing does.
std::string ownDifference(const PlistValue& expected, const PlistValue& found,
                          double dateTolerance) {
    const bool isSame = expected.type() == found.type() &&
                        expected.childCount() == found.childCount() &&
                        areSameScalars(expected, found, dateTolerance);
    if (!isSame) {
        return "expected " + brief(expected) + ", found " + brief(found);
    }
    for (std::size_t index = 0; index < expected.keys().size(); ++index) {
        const std::string_view expectedKey = expected.keys()[index].view();
        const std::string_view foundKey = found.keys()[index].view();
        if (expectedKey != foundKey) {
            return "key " + std::to_string(index) + ": expected \"" + std::string(expectedKey) +
                   "\", found \"" + std::string(foundKey) + "\"";
        }
    }
    return {};
}

/// Two containers whose children are being compared.
struct Frame {
    PlistValue expected;
    PlistValue found;
    std::size_t next = 0;
};

std::string pathText(const std::vector<Frame>& frames) {
    std::string path = "root";
    for (const Frame& frame : frames) {
        const std::size_t index = frame.next - 1;
        path += "/";
        path += frame.expected.keys().empty() ? std::to_string(index)
                                              : std::string(frame.expected.keys()[index].view());
    }
    return path;
}

}  // namespace

std::string firstDifference(const PlistValue& expected, const PlistValue& found,
                            double dateTolerance) {
    std::vector<Frame> frames;
    const auto compare = [&frames, dateTolerance](const PlistValue& left,
                                                  const PlistValue& right) -> std::string {
        const std::string difference = ownDifference(left, right, dateTolerance);
        if (!difference.empty()) {
            return pathText(frames) + ": " + difference;
        }
        if (left.childCount() != 0) {
            frames.push_back({left, right});
        }
        return {};
    };
    std::string difference = compare(expected, found);
    while (difference.empty() && !frames.empty()) {
        Frame& frame = frames.back();
        if (frame.next == frame.expected.childCount()) {
            frames.pop_back();
            continue;
        }
        const std::size_t index = frame.next++;
        const PlistValue left = frame.expected.children()[index];
        const PlistValue right = frame.found.children()[index];
        difference = compare(left, right);
    }
    return difference;
}

}  // namespace plist
