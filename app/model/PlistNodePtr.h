#pragma once

#include <utility>

class PlistNode;

/// A strong link to a node: the node lives as long as one of these names it. As small as a pointer;
/// the count is not atomic, because nodes belong to the main thread.
class PlistNodePtr {
public:
    PlistNodePtr() noexcept = default;
    explicit PlistNodePtr(PlistNode* node) noexcept;
    PlistNodePtr(const PlistNodePtr& other) noexcept;
    PlistNodePtr(PlistNodePtr&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
    PlistNodePtr& operator=(PlistNodePtr other) noexcept {
        std::swap(node_, other.node_);
        return *this;
    }
    ~PlistNodePtr();

    PlistNode* get() const noexcept { return node_; }
    PlistNode& operator*() const noexcept { return *node_; }
    PlistNode* operator->() const noexcept { return node_; }
    explicit operator bool() const noexcept { return node_ != nullptr; }

    /// Identity: whether both name the very same node.
    friend bool operator==(const PlistNodePtr&, const PlistNodePtr&) = default;

private:
    PlistNode* node_ = nullptr;
};
