#pragma once

#include <utility>

class PlistNode;

/// A strong link to a node: the node lives as long as one of these names it. As small as a pointer;
/// the count is not atomic, because nodes belong to the main thread.
class PlistNodePtr {
public:
    PlistNodePtr() noexcept = default;
    explicit PlistNodePtr(PlistNode* node) noexcept : node_(node) { retain(); }
    PlistNodePtr(const PlistNodePtr& other) noexcept : PlistNodePtr(other.node_) {}
    PlistNodePtr(PlistNodePtr&& other) noexcept : node_(other.surrender()) {}
    PlistNodePtr& operator=(const PlistNodePtr& other) noexcept {
        PlistNodePtr copy(other);
        std::swap(node_, copy.node_);
        return *this;
    }
    PlistNodePtr& operator=(PlistNodePtr&& other) noexcept {
        PlistNodePtr taken(std::move(other));
        std::swap(node_, taken.node_);
        return *this;
    }
    ~PlistNodePtr() {
        if (node_ != nullptr) {
            release();
        }
    }

    PlistNode* get() const noexcept { return node_; }
    PlistNode& operator*() const noexcept { return *node_; }
    PlistNode* operator->() const noexcept { return node_; }
    explicit operator bool() const noexcept { return node_ != nullptr; }

    /// Identity: whether both name the very same node.
    friend bool operator==(const PlistNodePtr&, const PlistNodePtr&) = default;

private:
    friend class PlistNode;

    void retain() const noexcept;
    void release() const noexcept;

    /// Gives the share away with the node.
    PlistNode* surrender() noexcept { return std::exchange(node_, nullptr); }

    PlistNode* node_ = nullptr;
};
