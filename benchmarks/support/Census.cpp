#include "benchmarks/support/Census.h"

#include <bit>
#include <cstddef>
#include <istream>
#include <iterator>
#include <numeric>
#include <ostream>
#include <span>
#include <vector>

using plist::PlistString;
using plist::PlistType;
using plist::PlistValue;

namespace {

void countKeys(Census& census, std::span<const PlistString> keys) {
    census.keys += keys.size();
    for (const PlistString& key : keys) {
        census.keyBytes += key.size();
    }
}

void countOne(Census& census, const PlistValue& value) {
    ++census[value.type()];
    switch (value.type()) {
        case PlistType::dictionary:
            countKeys(census, value.keys());
            break;
        case PlistType::array:
            break;
        case PlistType::string:
            census.stringBytes += value.text().size();
            break;
        case PlistType::integer:
            census.addNumber(static_cast<std::uint64_t>(value.integerValue()));
            break;
        case PlistType::real:
            census.addNumber(std::bit_cast<std::uint64_t>(value.realValue()));
            break;
        case PlistType::boolean:
            census.addNumber(value.booleanValue() ? 1 : 0);
            break;
        case PlistType::date:
            census.addNumber(std::bit_cast<std::uint64_t>(value.dateValue()));
            break;
        case PlistType::data:
            census.dataBytes += value.dataValue().size();
            break;
        case PlistType::uid:
            census.addNumber(value.uidValue());
            break;
    }
}

}  // namespace

std::uint64_t Census::values() const {
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

std::uint64_t Census::elements() const {
    return 1 + values() + keys + 2 * (*this)[PlistType::uid];
}

Census takeCensus(const PlistValue& root) {
    Census census;
    std::vector<const PlistValue*> pending = {&root};
    while (!pending.empty()) {
        const PlistValue& value = *pending.back();
        pending.pop_back();
        countOne(census, value);
        const std::span<const PlistValue> children = value.children();
        for (std::size_t left = children.size(); left > 0; --left) {
            pending.push_back(&children[left - 1]);
        }
    }
    return census;
}

std::ostream& operator<<(std::ostream& stream, const Census& census) {
    for (const std::uint64_t count : census.counts) {
        stream << count << ' ';
    }
    return stream << census.keys << ' ' << census.keyBytes << ' ' << census.stringBytes << ' '
                  << census.dataBytes << ' ' << census.numbers;
}

std::istream& operator>>(std::istream& stream, Census& census) {
    for (std::uint64_t& count : census.counts) {
        stream >> count;
    }
    return stream >> census.keys >> census.keyBytes >> census.stringBytes >> census.dataBytes >>
           census.numbers;
}
