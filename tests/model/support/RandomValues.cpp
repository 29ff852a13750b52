#include "tests/model/support/RandomValues.h"

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "app/model/runtime/Plist.h"

namespace {

constexpr std::array<std::uint8_t, 3> bytes = {1, 2, 3};

/// An element chosen by a number.
template <typename Range>
const auto& chosen(const Range& range, std::uint32_t choice) {
    return range[choice % std::size(range)];
}

const std::vector<PlistValue>& scalars() {
    static const std::vector<PlistValue> values = {
        PlistValue::string("x"),
        PlistValue::string(""),
        PlistValue::string("12"),
        PlistValue::string("\u00e9"),
        PlistValue::string("e\u0301"),
        PlistValue::string("true"),
        PlistValue::string("2001-01-01T00:00:00Z"),
        PlistValue::string("a text that is too long to be kept within a value"),
        PlistValue::integer(0),
        PlistValue::integer(7),
        PlistValue::integer(std::numeric_limits<std::uint64_t>::max()),
        PlistValue::real(0.0),
        PlistValue::real(-0.0),
        PlistValue::real(1.5),
        PlistValue::real(std::numeric_limits<double>::quiet_NaN()),
        PlistValue::boolean(true),
        PlistValue::boolean(false),
        PlistValue::date(12.5),
        PlistValue::data(bytes),
        PlistValue::uid(5),
    };
    return values;
}

const std::vector<PlistValue>& trees() {
    static const std::vector<PlistValue> values = [] {
        const PlistValue one = PlistValue::integer(1);
        const PlistValue inner =
            PlistValue::dictionary({{"b", one}, {"a", PlistValue::string("x")}, {"b", one}});
        const PlistValue list = PlistValue::array({inner, PlistValue::boolean(true), inner});
        return std::vector<PlistValue>{
            PlistValue(),
            PlistValue::array(),
            inner,
            list,
            PlistValue::dictionary({{"list", list}, {"e\u0301", one}, {"a", inner}}),
            PlistValue::dictionary({{"z", one}, {"\u00e9", one}, {"\u00c5", one}}),
        };
    }();
    return values;
}

}  // namespace

std::string RandomValues::key(std::uint32_t choice) {
    static const std::array<std::string, 12> keys = {
        "a", "b", "z", "", "1", "\u00e9", "e\u0301", "\u00c5", "\u212b", "Item 1", "a 2", "list"};
    return chosen(keys, choice);
}

PlistValue RandomValues::scalar(std::uint32_t choice) {
    return chosen(scalars(), choice);
}

PlistValue RandomValues::value(std::uint32_t choice) {
    return choice % 2 == 0 ? scalar(choice / 2) : chosen(trees(), choice / 2);
}

PlistValue RandomValues::document(std::uint32_t choice) {
    return choice % 8 == 0 ? scalar(choice / 8) : chosen(trees(), choice / 8);
}
