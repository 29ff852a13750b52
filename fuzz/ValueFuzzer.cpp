#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "PlistCore/PlistCore.h"
#include "PlistCore/binary/BigEndian.h"
#include "fuzz/support/RoundTrip.h"

namespace plist::detail {

namespace {

/// Takes the input apart, from the front; at its end come zeros.
class Input {
public:
    explicit Input(std::string_view bytes) : rest_(bytes) {}

    bool isAtEnd() const { return rest_.empty(); }

    std::string_view bytes(std::size_t count) {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::uint8_t byte() {
        const std::string_view taken = bytes(1);
        return taken.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(taken.front());
    }

    std::uint64_t word() {
        char padded[8] = {};
        std::ranges::copy(bytes(sizeof padded), padded);
        return BigEndian::load<std::uint64_t>(padded);
    }

private:
    std::string_view rest_;
};

/// Any bytes that are text, else none.
PlistString text(Input& input) {
    return PlistString::fromUtf8(input.bytes(input.byte())).value_or(PlistString());
}

PlistValue scalar(PlistType type, Input& input) {
    switch (type) {
        case PlistType::integer:
            return PlistValue::integer(static_cast<std::int64_t>(input.word()));
        case PlistType::real:
            return PlistValue::real(std::bit_cast<double>(input.word()));
        case PlistType::boolean:
            return PlistValue::boolean(input.byte() % 2 == 1);
        case PlistType::date:
            return PlistValue::date(std::bit_cast<double>(input.word()));
        case PlistType::data: {
            const std::string_view bytes = input.bytes(input.byte());
            return PlistValue::data(
                {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        }
        case PlistType::uid:
            return PlistValue::uid(input.word());
        default:
            return PlistValue::string(text(input));
    }
}

/// The last values made, at most as many as there are.
std::vector<PlistValue> lastOf(const std::vector<PlistValue>& made, std::size_t count) {
    return {made.end() - static_cast<std::ptrdiff_t>(std::min(count, made.size())), made.end()};
}

PlistValue dictionaryOf(std::vector<PlistValue> values, Input& input) {
    std::vector<PlistEntry> entries;
    for (PlistValue& value : values) {
        entries.push_back({text(input), std::move(value)});
    }
    return PlistValue::dictionary(std::move(entries));
}

/// A value after the other, each container of values made before it, which they share.
PlistValue valueOf(Input& input) {
    std::vector<PlistValue> made;
    while (!input.isAtEnd() && made.size() < 200) {
        const std::uint8_t order = input.byte();
        const auto type = static_cast<PlistType>(order % allPlistTypes.size());
        const std::size_t count = order / allPlistTypes.size();
        if (type == PlistType::dictionary) {
            made.push_back(dictionaryOf(lastOf(made, count), input));
        } else if (type == PlistType::array) {
            made.push_back(PlistValue::array(lastOf(made, count)));
        } else {
            made.push_back(scalar(type, input));
        }
    }
    return made.empty() ? PlistValue() : made.back();
}

}  // namespace

/// A value put together as a program does, of any bytes: it comes back from both forms.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input({reinterpret_cast<const char*>(data), size});
    checkRoundTrips(valueOf(input));
    return 0;
}

}  // namespace plist::detail
