#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/support/Census.h"

/// Builds the XML form of a document piece by piece, in exactly the layout that the library's
/// writer gives, but without the library: what is measured must not make its own input.
/// Containers must not be empty; inside a dictionary `key` precedes every value.
class DocumentText {
public:
    /// Begins with the prologue; about `bytes` bytes are expected.
    explicit DocumentText(std::size_t bytes);

    std::size_t size() const noexcept { return text_.size(); }

    /// How many containers are open.
    std::size_t depth() const noexcept { return open_.size(); }

    /// Whether the innermost open container is a dictionary.
    bool isInDictionary() const noexcept {
        return !open_.empty() && open_.back().type == plist::PlistType::dictionary;
    }

    /// How many values the innermost open container has so far.
    std::size_t childCount() const noexcept { return open_.empty() ? 0 : open_.back().children; }

    void open(plist::PlistType container);
    void close();
    void key(std::string_view text);

    void string(std::string_view text);
    void integer(std::int64_t number);
    void real(double number);
    void boolean(bool truth);
    /// `seconds` since 2001-01-01T00:00:00Z, within the years 1000 to 9999.
    void date(std::int64_t seconds);
    void data(std::span<const std::uint8_t> bytes);
    void uid(std::uint64_t number);

    /// Closes what is open and ends the document.
    void finish();

    const std::string& text() const noexcept { return text_; }
    const Census& census() const noexcept { return census_; }

private:
    struct Container {
        plist::PlistType type;
        std::size_t children;
    };

    void count(plist::PlistType type);
    void indent(std::size_t tabs) { text_.append(tabs, '\t'); }
    void line(std::size_t tabs, std::string_view content);
    void element(std::string_view name, std::string_view content);
    void appendEscaped(std::string_view text);

    std::string text_;
    std::vector<Container> open_;
    Census census_;
};
