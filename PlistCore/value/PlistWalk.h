#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "PlistCore/PlistValue.h"

namespace plist::detail {

/// A walk over a value, container by container: `next` gives the members of the innermost container
/// that was entered, and whoever walks says which of them to enter. Keeps a stack of its own, so
/// that any depth will do, with a note of the walker's on each container; stop asking to stop.
///
///     walk.enter(root, {});
///     while (!walk.isAtEnd()) {
///         if (const PlistValue* member = walk.next()) {
///             … walk.enter(*member, {}) …
///         } else {
///             walk.leave();
///         }
///     }
template <typename Note>
class PlistWalk {
public:
    /// Whether no container is open.
    bool isAtEnd() const noexcept { return open_.empty(); }

    /// How many containers are open.
    std::size_t depth() const noexcept { return open_.size(); }

    /// The innermost open container. There is one, here and in what follows.
    const PlistValue& container() const noexcept { return *open_.back().container; }
    Note& note() noexcept { return open_.back().note; }

    /// The next member of the innermost container, or null behind its last one.
    const PlistValue* next() noexcept {
        Open& innermost = open_.back();
        return innermost.next == innermost.end ? nullptr : innermost.next++;
    }

    /// Opens a container, which must stay where it is.
    void enter(const PlistValue& container, Note note) {
        const std::span<const PlistValue> members = container.children();
        open_.push_back(
            {&container, members.data(), members.data() + members.size(), std::move(note)});
    }

    /// Closes the innermost container and gives the note on it.
    Note leave() noexcept {
        Note note = std::move(open_.back().note);
        open_.pop_back();
        return note;
    }

private:
    struct Open {
        const PlistValue* container;
        const PlistValue* next;
        const PlistValue* end;
        Note note;
    };

    std::vector<Open> open_;
};

}  // namespace plist::detail
