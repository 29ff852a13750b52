#include "PlistCore/openstep/OpenStepPlistParser.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "PlistCore/PlistError.h"
#include "PlistCore/openstep/OpenStepScanner.h"
#include "PlistCore/text/UnicodeText.h"
#include "PlistCore/value/PlistBuilder.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

namespace {

/// The order of a dictionary's entries: by key, and only the last of those with equal keys.
///
/// The order of keys is that of their canonical compositions. Each key is composed once here, not
/// once for each comparison.
class KeyOrder {
public:
    /// The positions of the entries to keep, in order. Valid until the next call.
    const std::vector<std::size_t>& sort(std::span<const PlistCell> keys) {
        composed_.clear();
        order_.clear();
        for (std::size_t index = 0; index < keys.size(); ++index) {
            compose(keys[index]);
            order_.push_back(index);
        }
        const auto text = [this, keys](std::size_t index) {
            return keys[index].has(PlistCell::ascii) ? keys[index].bytes()
                                                     : std::string_view(composed_[index]);
        };
        std::stable_sort(
            order_.begin(), order_.end(),
            [&text](std::size_t left, std::size_t right) { return text(left) < text(right); });
        // Equal keys stand beside each other in the order of the file: going backwards, the last
        // one comes first and is kept.
        const auto kept = std::unique(
            order_.rbegin(), order_.rend(),
            [&text](std::size_t left, std::size_t right) { return text(left) == text(right); });
        order_.erase(order_.begin(), kept.base());
        return order_;
    }

private:
    void compose(const PlistCell& key) {
        composed_.push_back(key.has(PlistCell::ascii) ? std::string()
                                                      : UnicodeText::composed(key.bytes()));
    }

    std::vector<std::string> composed_;
    std::vector<std::size_t> order_;
};

/// Puts the parts that the scanner reads together, with a stack of open containers instead of
/// recursion.
class Reader {
public:
    explicit Reader(std::string_view text) : scanner_(text), builder_(text.size()) {}

    PlistValue read();

private:
    enum class Kind : std::uint8_t {
        array,
        dictionary,
        entriesOfFile,  ///< a dictionary without braces: it ends where the file ends
    };

    /// An open container: its finished items, or entries, are those from these positions on.
    struct Frame {
        Kind kind;
        std::size_t firstKey;
        std::size_t firstValue;
    };

    void readRoot();
    PlistCell readString();
    PlistCell readBrackets();
    bool isAtEntry();
    void readValue();
    void continueArray();
    void continueDictionary();
    void readEntry();

    void open(Kind kind);
    void closeArray();
    void closeDictionary();

    bool hasItems() const { return values_.size() > frames_.back().firstValue; }
    bool acceptEndOfDictionary();

    OpenStepScanner scanner_;
    std::vector<Frame> frames_;
    PlistBuilder builder_;
    std::vector<PlistCell> keys_;    ///< of the open dictionaries
    std::vector<PlistCell> values_;  ///< of all open containers; in the end the root
    KeyOrder keyOrder_;
    std::vector<PlistCell> sorted_;  ///< the keys, then the values of the dictionary being closed
};

PlistValue Reader::read() {
    scanner_.skipBlanks();
    if (scanner_.isAtEnd()) {
        // A file of strings that has none.
        return PlistValue::dictionary();
    }
    readRoot();
    while (!frames_.empty()) {
        if (frames_.back().kind == Kind::array) {
            continueArray();
        } else {
            continueDictionary();
        }
    }
    scanner_.skipBlanks();
    if (!scanner_.isAtEnd()) {
        scanner_.fail("Unexpected content after the root value");
    }
    return builder_.finish(values_.front());
}

void Reader::readRoot() {
    if (isAtEntry()) {
        open(Kind::entriesOfFile);
    } else {
        readValue();
    }
}

/// Whether a key is next, and not a string that is a value of its own. Steps over nothing.
bool Reader::isAtEntry() {
    if (!scanner_.isAtString()) {
        return false;
    }
    const std::size_t start = scanner_.position();
    scanner_.readString();
    scanner_.skipBlanks();
    const bool isKey = scanner_.isAt('=') || scanner_.isAt(';');
    scanner_.rewind(start);
    return isKey;
}

PlistCell Reader::readString() {
    const std::string_view text = scanner_.readString();
    const std::uint8_t flags = UnicodeText::isAscii(text) ? std::uint8_t{PlistCell::ascii} : 0;
    return builder_.string(text, flags);
}

PlistCell Reader::readBrackets() {
    const PlistValue value = scanner_.readBrackets();
    // Data may own what it holds; the other types are numbers and hold nothing.
    return value.type() == PlistType::data ? builder_.data(value.cell().bytes()) : value.cell();
}

/// Reads a scalar, or opens a container.
void Reader::readValue() {
    if (scanner_.accept('{')) {
        open(Kind::dictionary);
    } else if (scanner_.accept('(')) {
        open(Kind::array);
    } else if (scanner_.isAt('<')) {
        values_.push_back(readBrackets());
    } else if (scanner_.isAtString()) {
        values_.push_back(readString());
    } else {
        scanner_.fail("Expected a value");
    }
}

/// Reads the next item, or the end of the array, which a last "," may precede.
void Reader::continueArray() {
    scanner_.skipBlanks();
    if (hasItems() && !scanner_.isAt(')')) {
        if (!scanner_.accept(',')) {
            scanner_.fail("Expected “,” or “)”");
        }
        scanner_.skipBlanks();
    }
    if (scanner_.accept(')')) {
        closeArray();
    } else {
        readValue();
    }
}

/// Reads the next entry, or the end of the dictionary, before which the ";" may be missing.
void Reader::continueDictionary() {
    scanner_.skipBlanks();
    const bool isSeparated = !hasItems() || scanner_.accept(';');
    scanner_.skipBlanks();
    if (acceptEndOfDictionary()) {
        closeDictionary();
    } else if (isSeparated) {
        readEntry();
    } else {
        scanner_.fail("Expected “;”");
    }
}

bool Reader::acceptEndOfDictionary() {
    return frames_.back().kind == Kind::entriesOfFile ? scanner_.isAtEnd() : scanner_.accept('}');
}

/// "key = value", or "key" alone, which stands for its own value.
void Reader::readEntry() {
    if (!scanner_.isAtString()) {
        scanner_.fail(frames_.back().kind == Kind::entriesOfFile ? "Expected a key"
                                                                 : "Expected a key or “}”");
    }
    keys_.push_back(readString());
    scanner_.skipBlanks();
    if (scanner_.isAt(';')) {
        values_.push_back(keys_.back());
    } else if (scanner_.accept('=')) {
        scanner_.skipBlanks();
        readValue();
    } else {
        scanner_.fail("Expected “=”");
    }
}

void Reader::open(Kind kind) {
    if (frames_.size() == OpenStepPlistParser::nestingLimit) {
        throw PlistError(PlistError::NestingTooDeep{OpenStepPlistParser::nestingLimit});
    }
    frames_.push_back({kind, keys_.size(), values_.size()});
}

void Reader::closeArray() {
    const std::size_t first = frames_.back().firstValue;
    const PlistCell array = builder_.array(std::span(values_).subspan(first));
    values_.resize(first);
    frames_.pop_back();
    values_.push_back(array);
}

void Reader::closeDictionary() {
    const Frame frame = frames_.back();
    const std::vector<std::size_t>& order =
        keyOrder_.sort(std::span(keys_).subspan(frame.firstKey));
    sorted_.clear();
    for (const std::size_t index : order) {
        sorted_.push_back(keys_[frame.firstKey + index]);
    }
    for (const std::size_t index : order) {
        sorted_.push_back(values_[frame.firstValue + index]);
    }
    const std::span<const PlistCell> keys = std::span(sorted_).first(order.size());
    const std::span<const PlistCell> values = std::span(sorted_).subspan(order.size());
    const PlistCell dictionary =
        builder_.dictionary(keys.empty() ? nullptr : builder_.keyList(keys), values);
    keys_.resize(frame.firstKey);
    values_.resize(frame.firstValue);
    frames_.pop_back();
    values_.push_back(dictionary);
}

}  // namespace

PlistValue OpenStepPlistParser::parse(std::string_view text) {
    return Reader(text).read();
}

}  // namespace plist::detail
