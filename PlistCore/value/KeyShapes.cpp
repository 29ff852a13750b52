#include "PlistCore/value/KeyShapes.h"

namespace plist::detail {

namespace {

/// Longer dictionaries are rarely alike, and following them would fill the tree.
constexpr std::size_t greatestLength = 64;

/// How many keys are looked at after one shape before it counts as one whose keys do not repeat.
constexpr int greatestBreadth = 16;

/// The shapes that are made on trust; beyond them the tree grows only as fast as it proves useful.
constexpr std::size_t trustedShapes = 512;

}  // namespace

KeyShapes::KeyShapes(PlistBuilder& builder) : builder_(builder) {
    nodes_.reserve(32);
    nodes_.emplace_back();
}

KeyShapes::Shape KeyShapes::follow(Shape shape, std::string_view key, std::uint8_t flags) {
    const Shape child = findChild(shape, key);
    return child != none ? child : addChild(shape, key, flags);
}

/// Looks through the first children and moves the one that is found to the front.
KeyShapes::Shape KeyShapes::findChild(Shape shape, std::string_view key) {
    Shape* link = &nodes_[shape].firstChild;
    for (int looked = 0; *link != none && looked < greatestBreadth; ++looked) {
        const Shape child = *link;
        if (nodes_[child].key.bytes() == key) {
            *link = nodes_[child].nextSibling;
            nodes_[child].nextSibling = nodes_[shape].firstChild;
            nodes_[shape].firstChild = child;
            return child;
        }
        link = &nodes_[child].nextSibling;
    }
    return none;
}

KeyShapes::Shape KeyShapes::addChild(Shape shape, std::string_view key, std::uint8_t flags) {
    const std::size_t length = nodes_[shape].length + std::size_t{1};
    if (length > greatestLength || nodes_.size() >= trustedShapes + reuses_) {
        return none;
    }
    Node node;
    node.key = builder_.string(key, flags);
    node.parent = shape;
    node.nextSibling = nodes_[shape].firstChild;
    node.length = static_cast<std::uint32_t>(length) & 0x7FFFFFFF;
    node.isPlain = key.find_first_of("&<") == std::string_view::npos;
    const auto child = static_cast<Shape>(nodes_.size());
    nodes_.push_back(node);
    nodes_[shape].firstChild = child;
    return child;
}

const PlistString* KeyShapes::keyList(Shape shape) {
    if (nodes_[shape].list == nullptr) {
        nodes_[shape].list = builder_.keyList(keysOf(shape));
    } else {
        ++reuses_;
    }
    return nodes_[shape].list;
}

void KeyShapes::pushKeys(Shape shape, PlistCellStack& stack) const {
    std::vector<Shape> path;
    for (Shape step = shape; step != root; step = nodes_[step].parent) {
        path.push_back(step);
    }
    for (auto step = path.rbegin(); step != path.rend(); ++step) {
        stack.push(nodes_[*step].key);
    }
}

std::span<const PlistCell> KeyShapes::keysOf(Shape shape) {
    keys_.resize(nodes_[shape].length);
    for (Shape step = shape; step != root; step = nodes_[step].parent) {
        keys_[nodes_[step].length - 1] = nodes_[step].key;
    }
    return keys_;
}

}  // namespace plist::detail
