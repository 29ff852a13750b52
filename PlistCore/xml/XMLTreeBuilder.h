#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "PlistCore/PlistValue.h"
#include "PlistCore/value/KeyShapes.h"
#include "PlistCore/value/PlistBuilder.h"
#include "PlistCore/value/PlistCell.h"
#include "PlistCore/value/PlistCellStack.h"

namespace plist::detail {

/// Puts the values of an XML property list together, one container inside the other.
///
/// Children wait on one stack, whatever their container, and are stored once when it closes. The
/// keys of a dictionary are followed through `KeyShapes` for as long as that pays; where it does
/// not, they wait on a stack of their own.
class XMLTreeBuilder {
public:
    /// The most containers that may be open inside each other.
    static constexpr std::size_t depthLimit = 512;

    /// For an input of `inputSize` bytes, which is about what its values and texts will take.
    explicit XMLTreeBuilder(std::size_t inputSize)
        : builder_(inputSize),
          shapes_(builder_),
          values_(inputSize / leastValueSize + 1),
          keys_(inputSize / leastKeySize + 1) {}

    /// Creates the scalars that are added here.
    PlistBuilder& scalars() noexcept { return builder_; }

    /// Whether a container is open. If none is, `finish` takes the value that was added.
    bool isOpen() const noexcept { return depth_ != 0; }
    bool canOpen() const noexcept { return depth_ < depthLimit; }

    /// The rest asks about, and adds to, the innermost open container.
    bool isInDictionary() const noexcept { return top().isDictionary; }
    bool awaitsKey() const noexcept { return top().awaitsKey; }

    void openDictionary() noexcept {
        frames_[depth_++] = {true, true, KeyShapes::root, values_.size(), keys_.size()};
    }
    void openArray() noexcept {
        frames_[depth_++] = {false, false, KeyShapes::none, values_.size(), keys_.size()};
    }

    /// Adds the next key, valid UTF-8. Only while the dictionary awaits one. `flags` is
    /// `PlistCell::ascii` or 0.
    void addKey(std::string_view key, std::uint8_t flags);

    /// The key that the dictionary had at this place the last time its keys went like this. Absent
    /// if there is none or a file may spell it in more than one way.
    const PlistCell* expectedKey() const noexcept {
        const KeyShapes::Shape shape = top().shape;
        if (shape == KeyShapes::none) {
            return nullptr;
        }
        const KeyShapes::Shape expected = shapes_.expected(shape);
        const bool isUsable = expected != KeyShapes::none && shapes_.isPlain(expected);
        return isUsable ? &shapes_.lastKey(expected) : nullptr;
    }
    /// Adds that key.
    void addExpectedKey() noexcept {
        Frame& frame = top();
        frame.shape = shapes_.expected(frame.shape);
        frame.awaitsKey = false;
    }

    /// The key whose value has not been added yet.
    std::string_view pendingKey() const noexcept;

    /// Adds a value: the next item, or what belongs to the pending key.
    void add(const PlistCell& value) {
        values_.push(value);
        if (depth_ != 0) {
            top().awaitsKey = top().isDictionary;
        }
    }

    /// Closes the innermost container and adds it to the one around it. A dictionary must not have
    /// a pending key; one that has the form of a uid becomes one.
    void closeDictionary();
    void closeArray();

    /// The one value that was added outside of all containers. Ends the building.
    PlistValue finish() noexcept { return builder_.finish(values_.back()); }

private:
    /// The bytes of "<true/>" and of "<key/>", than which no value and no key is shorter.
    static constexpr std::size_t leastValueSize = 7;
    static constexpr std::size_t leastKeySize = 6;

    struct Frame {
        bool isDictionary;
        bool awaitsKey;
        KeyShapes::Shape shape;
        std::size_t firstValue;
        std::size_t firstKey;
    };

    Frame& top() noexcept { return frames_[depth_ - 1]; }
    const Frame& top() const noexcept { return frames_[depth_ - 1]; }
    std::optional<PlistCell> uidOf(const Frame& frame) const noexcept;
    void replaceTop(const PlistCell& container);

    PlistBuilder builder_;
    KeyShapes shapes_;
    PlistCellStack values_;
    PlistCellStack keys_;
    std::size_t depth_ = 0;
    std::array<Frame, depthLimit> frames_;
};

}  // namespace plist::detail
