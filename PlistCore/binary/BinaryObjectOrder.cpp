#include "PlistCore/binary/BinaryObjectOrder.h"

#include "PlistCore/PlistString.h"

namespace plist::detail {

namespace {

/// The cells of keys or values, which are nothing else.
template <typename Item>
std::span<const PlistCell> cellsOf(std::span<const Item> items) noexcept {
    static_assert(sizeof(Item) == sizeof(PlistCell));
    return {reinterpret_cast<const PlistCell*>(items.data()), items.size()};
}

}  // namespace

void BinaryObjectOrder::open(const PlistCell& container) {
    open_.push_back(cellsOf(container.values()));
    if (container.type() != PlistType::dictionary) {
        return;
    }
    const std::span<const PlistString> keys = container.keys();
    if (!knownKeys_.find(keys)) {
        knownKeys_.remember(keys, 0);
        open_.push_back(cellsOf(keys));
    }
}

BinaryObjectOrder::Counts BinaryObjectOrder::count(const PlistValue& root) {
    Counts counts;
    BinaryObjectOrder order(root);
    while (const PlistCell* cell = order.next()) {
        ++(isContainer(cell->type()) ? counts.containers : counts.scalars);
    }
    return counts;
}

}  // namespace plist::detail
