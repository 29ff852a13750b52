#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "PlistCore/PlistValue.h"
#include "PlistCore/value/KeyListMemory.h"
#include "PlistCore/value/PlistCell.h"

namespace plist::detail {

/// Walks a tree in the order in which a binary file numbers its objects: a container, the keys of a
/// dictionary, then each member with everything below it. Keeps a stack of its own, so that any
/// depth will do; keys are its steps like values, which `PlistWalk` does not know.
///
/// The keys of a dictionary are left out if its very list of keys was met not long before: they
/// have their numbers already.
class BinaryObjectOrder {
public:
    /// `root` must stay where it is while its tree is walked.
    explicit BinaryObjectOrder(const PlistValue& root) { open_.emplace_back(&root.cell(), 1); }

    /// The next key or value, or null at the end.
    const PlistCell* next() {
        while (open_.back().empty()) {
            if (open_.size() == 1) {
                return nullptr;
            }
            open_.pop_back();
        }
        std::span<const PlistCell>& rest = open_.back();
        const PlistCell& cell = rest.front();
        rest = rest.subspan(1);
        if (isContainer(cell.type()) && cell.length() != 0) {
            open(cell);
        }
        return &cell;
    }

    /// What a tree holds, before equal scalars become one object.
    struct Counts {
        std::size_t containers = 0;
        std::size_t scalars = 0;

        std::size_t objects() const noexcept { return containers + scalars; }
    };

    /// Walks the whole tree. Keys that are left out are not counted.
    static Counts count(const PlistValue& root);

private:
    void open(const PlistCell& container);

    std::vector<std::span<const PlistCell>> open_;
    KeyListMemory knownKeys_;
};

}  // namespace plist::detail
