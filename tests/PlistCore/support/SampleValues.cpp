#include "tests/PlistCore/support/SampleValues.h"

#include <cstdint>
#include <limits>
#include <utility>

#include "PlistCore/PlistEntry.h"

namespace plist {

namespace {

using Samples = std::vector<SampleValue>;

PlistValue text(const std::string& utf8) {
    return PlistValue::string(utf8);
}

PlistValue bytes(std::size_t count) {
    std::vector<std::uint8_t> content(count);
    for (std::size_t i = 0; i < count; ++i) {
        content[i] = static_cast<std::uint8_t>(i * 37 + 11);
    }
    return PlistValue::data(content);
}

void addTexts(Samples& samples) {
    const std::pair<const char*, std::string> texts[] = {
        {"empty text", ""},
        {"one letter", "a"},
        {"markup", "a & b < c > d \"e\" 'f' ]]> &amp; &#38;"},
        {"whitespace around", "  \t\n padded \r\n "},
        {"NUL inside", std::string("a\0b", 3)},
        {"only NUL", std::string(1, '\0')},
        {"control characters", "\x01\x02\x1f\x7f"},
        {"precomposed letter", "caf\xC3\xA9"},
        {"decomposed letter", "cafe\xCC\x81"},
        {"byte-order mark inside", "\xEF\xBB\xBFtext"},
        {"last code point of the basic plane", "\xEF\xBF\xBF"},
        {"beyond the basic plane", "\xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF"},
        {"replacement character", "\xEF\xBF\xBD"},
    };
    for (const auto& [name, utf8] : texts) {
        samples.push_back({name, text(utf8)});
    }
    for (const std::size_t length : {13U, 14U, 15U, 16U, 17U, 31U, 32U, 33U, 255U, 256U, 1023U,
                                     1024U, 1025U, 4095U, 4096U, 65535U, 65536U}) {
        const std::string count = std::to_string(length);
        samples.push_back({"text of " + count, text(std::string(length, 'x'))});
        samples.push_back({"ampersands, " + count, text(std::string(length, '&'))});
        samples.push_back(
            {"accent at the end of " + count, text(std::string(length - 2, 'x') + "\xC3\xA9")});
    }
}

void addIntegers(Samples& samples) {
    const PlistInteger one = 1;
    for (const int bits : {0, 7, 8, 15, 16, 31, 32, 53, 62, 63}) {
        for (const PlistInteger nearby : {-1, 0, 1}) {
            const PlistInteger number = (one << bits) + nearby;
            samples.push_back({"integer " + decimalText(number), PlistValue::integer(number)});
            if (-number >= leastPlistInteger) {
                samples.push_back(
                    {"integer " + decimalText(-number), PlistValue::integer(-number)});
            }
        }
    }
    samples.push_back({"greatest integer", PlistValue::integer(greatestPlistInteger)});
    samples.push_back({"least integer", PlistValue::integer(leastPlistInteger)});
}

void addReals(Samples& samples) {
    using Limits = std::numeric_limits<double>;
    for (const double number : {0.0,
                                1.0,
                                -1.0,
                                0.1,
                                -0.1,
                                1.5,
                                1e15,
                                1e16,
                                1e17,
                                1e18,
                                1e22,
                                1e23,
                                1e300,
                                1e-5,
                                1e-300,
                                123456789.125,
                                3.141592653589793,
                                Limits::max(),
                                Limits::lowest(),
                                Limits::min(),
                                Limits::denorm_min(),
                                Limits::infinity(),
                                -Limits::infinity()}) {
        samples.push_back({"real " + std::to_string(number), PlistValue::real(number)});
    }
    // Equal by comparison, although the sign is lost in XML.
    samples.push_back({"negative zero", PlistValue::real(-0.0)});
}

void addDates(Samples& samples) {
    for (const double seconds : {0.0, 1.0, -1.0, -978307200.0, -978307201.0, 725846400.0, 1e9,
                                 -63113904000.0, 252423993599.0}) {
        samples.push_back({"date " + std::to_string(seconds), PlistValue::date(seconds)});
    }
    samples.push_back({"date with a fraction", PlistValue::date(0.5), XmlTrip::changed});
    samples.push_back({"date beyond nine year digits", PlistValue::date(1e18), XmlTrip::error});
}

void addOtherScalars(Samples& samples) {
    samples.push_back({"true", PlistValue::boolean(true)});
    samples.push_back({"false", PlistValue::boolean(false)});
    for (const std::size_t count :
         {0U, 1U, 2U, 3U, 14U, 15U, 16U, 51U, 56U, 57U, 58U, 255U, 256U, 4096U, 70000U}) {
        samples.push_back({"data of " + std::to_string(count), bytes(count)});
    }
    for (const std::uint64_t number :
         {std::uint64_t{0}, std::uint64_t{255}, std::uint64_t{256}, std::uint64_t{65535},
          std::uint64_t{65536}, std::uint64_t{0xFFFFFFFF}, std::uint64_t{0x100000000},
          std::numeric_limits<std::uint64_t>::max()}) {
        samples.push_back({"uid " + std::to_string(number), PlistValue::uid(number)});
    }
}

PlistValue oneOfEach() {
    return PlistValue::dictionary({
        {"dictionary", PlistValue::dictionary()},
        {"array", PlistValue::array()},
        {"string", text("text")},
        {"integer", PlistValue::integer(5)},
        {"real", PlistValue::real(5.5)},
        {"boolean", PlistValue::boolean(true)},
        {"date", PlistValue::date(86400.0)},
        {"data", bytes(20)},
        {"uid", PlistValue::uid(5)},
    });
}

PlistValue chain(std::size_t depth) {
    PlistValue value = text("innermost");
    for (std::size_t i = 0; i < depth; ++i) {
        std::vector<PlistValue> items;
        items.push_back(std::move(value));
        value = PlistValue::array(std::move(items));
    }
    return value;
}

PlistValue records(std::int64_t count) {
    std::vector<PlistValue> items;
    for (std::int64_t i = 0; i < count; ++i) {
        items.push_back(PlistValue::dictionary({
            {"identifier", PlistValue::integer(i)},
            {"a name that is longer than in place", text("record " + std::to_string(i))},
            {"enabled", PlistValue::boolean(i % 2 == 0)},
            {"sch\xC3\xB6n", text("caf\xC3\xA9 " + std::to_string(i % 7))},
        }));
    }
    return PlistValue::array(std::move(items));
}

void addContainers(Samples& samples) {
    samples.push_back({"empty dictionary", PlistValue::dictionary()});
    samples.push_back({"empty array", PlistValue::array()});
    samples.push_back({"one of each", oneOfEach()});
    samples.push_back({"empty key", PlistValue::dictionary({{"", text("")}})});
    samples.push_back(
        {"repeated keys",
         PlistValue::dictionary({{"a", text("1")}, {"a", text("2")}, {"a", text("1")}})});
    samples.push_back({"markup in a key", PlistValue::dictionary({{"<&>", text("<&>")}})});
    samples.push_back({"the uid key beside another", PlistValue::dictionary({
                                                         {"CF$UID", PlistValue::integer(1)},
                                                         {"b", PlistValue::integer(2)},
                                                     })});
    samples.push_back({"the uid key with a text", PlistValue::dictionary({
                                                      {"CF$UID", text("1")},
                                                  })});
    samples.push_back({"the uid key alone",
                       PlistValue::dictionary({
                           {"CF$UID", PlistValue::integer(1)},
                       }),
                       XmlTrip::changed});
    for (const std::size_t depth : {1U, 8U, 9U, 16U, 17U, 511U, 512U}) {
        samples.push_back({"chain of " + std::to_string(depth), chain(depth)});
    }
    for (const std::int64_t count : {1, 14, 15, 16, 255, 256, 300, 70000}) {
        samples.push_back({"records, " + std::to_string(count), records(count)});
    }
    const PlistValue shared = oneOfEach();
    samples.push_back({"shared containers", PlistValue::array({shared, shared, shared})});
}

}  // namespace

std::vector<SampleValue> sampleValues() {
    Samples samples;
    addTexts(samples);
    addIntegers(samples);
    addReals(samples);
    addDates(samples);
    addOtherScalars(samples);
    addContainers(samples);
    return samples;
}

}  // namespace plist
