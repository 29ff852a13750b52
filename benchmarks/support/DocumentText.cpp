#include "benchmarks/support/DocumentText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <chrono>
#include <cstdio>

namespace {

constexpr std::string_view prologue =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

constexpr std::string_view nameOf(plist::PlistType container) {
    return container == plist::PlistType::dictionary ? "dict" : "array";
}

std::string realText(double number) {
    if (number == 0) {
        return "0.0";
    }
    std::array<char, 32> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::general, 17);
    return {digits.data(), end.ptr};
}

std::string dateText(std::int64_t seconds) {
    using std::chrono::days;
    const std::chrono::sys_seconds reference =
        std::chrono::sys_days(std::chrono::year(2001) / 1 / 1);
    const std::chrono::sys_seconds instant = reference + std::chrono::seconds(seconds);
    const auto midnight = std::chrono::floor<days>(instant);
    const std::chrono::year_month_day date(midnight);
    const std::chrono::hh_mm_ss time(instant - midnight);
    std::array<char, 64> text = {};
    const int length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string base64(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t taken = std::min<std::size_t>(3, bytes.size() - at);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            bits = (bits << 8) | (i < taken ? bytes[at + i] : 0u);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text.push_back(i <= taken ? alphabet[(bits >> (18 - 6 * i)) & 63] : '=');
        }
    }
    return text;
}

}  // namespace

DocumentText::DocumentText(std::size_t bytes) {
    text_.reserve(bytes + bytes / 8 + 4096);
    text_.append(prologue);
}

void DocumentText::open(plist::PlistType container) {
    count(container);
    indent(depth());
    text_.append("<").append(nameOf(container)).append(">\n");
    open_.push_back({container, 0});
}

void DocumentText::close() {
    const plist::PlistType container = open_.back().type;
    open_.pop_back();
    indent(depth());
    text_.append("</").append(nameOf(container)).append(">\n");
}

void DocumentText::key(std::string_view text) {
    ++census_.keys;
    census_.keyBytes += text.size();
    indent(depth());
    text_.append("<key>");
    appendEscaped(text);
    text_.append("</key>\n");
}

void DocumentText::string(std::string_view text) {
    count(plist::PlistType::string);
    census_.stringBytes += text.size();
    indent(depth());
    text_.append("<string>");
    appendEscaped(text);
    text_.append("</string>\n");
}

void DocumentText::integer(std::int64_t number) {
    count(plist::PlistType::integer);
    census_.addNumber(static_cast<std::uint64_t>(number));
    element("integer", std::to_string(number));
}

void DocumentText::real(double number) {
    count(plist::PlistType::real);
    census_.addNumber(std::bit_cast<std::uint64_t>(number));
    element("real", realText(number));
}

void DocumentText::boolean(bool truth) {
    count(plist::PlistType::boolean);
    census_.addNumber(truth ? 1 : 0);
    line(depth(), truth ? "<true/>" : "<false/>");
}

void DocumentText::date(std::int64_t seconds) {
    count(plist::PlistType::date);
    census_.addNumber(std::bit_cast<std::uint64_t>(static_cast<double>(seconds)));
    element("date", dateText(seconds));
}

void DocumentText::data(std::span<const std::uint8_t> bytes) {
    count(plist::PlistType::data);
    census_.dataBytes += bytes.size();
    line(depth(), "<data>");
    const std::size_t tabs = std::min<std::size_t>(depth(), 8);
    const std::size_t width = 76 - 8 * tabs;
    const std::string digits = base64(bytes);
    for (std::size_t at = 0; at < digits.size(); at += width) {
        line(tabs, std::string_view(digits).substr(at, width));
    }
    line(depth(), "</data>");
}

void DocumentText::uid(std::uint64_t number) {
    count(plist::PlistType::uid);
    census_.addNumber(number);
    line(depth(), "<dict>");
    line(depth() + 1, "<key>CF$UID</key>");
    line(depth() + 1, "<integer>" + std::to_string(number) + "</integer>");
    line(depth(), "</dict>");
}

void DocumentText::finish() {
    while (depth() > 0) {
        close();
    }
    text_.append("</plist>\n");
}

void DocumentText::count(plist::PlistType type) {
    ++census_[type];
    if (!open_.empty()) {
        ++open_.back().children;
    }
}

void DocumentText::line(std::size_t tabs, std::string_view content) {
    indent(tabs);
    text_.append(content).append("\n");
}

void DocumentText::element(std::string_view name, std::string_view content) {
    indent(depth());
    text_.append("<").append(name).append(">").append(content);
    text_.append("</").append(name).append(">\n");
}

void DocumentText::appendEscaped(std::string_view text) {
    for (const char byte : text) {
        switch (byte) {
            case '&':
                text_.append("&amp;");
                break;
            case '<':
                text_.append("&lt;");
                break;
            case '>':
                text_.append("&gt;");
                break;
            default:
                text_.push_back(byte);
        }
    }
}
