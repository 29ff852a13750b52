#include "PlistCore/value/PlistCell.h"

#include "PlistCore/memory/PlistArena.h"
#include "PlistCore/value/PlistBlock.h"

namespace plist::detail {

void PlistCell::retainShare() const noexcept {
    if (has(inArena)) {
        PlistArena::of(pointer())->retain();
    } else {
        PlistBlock::of(pointer())->shares.fetch_add(1, std::memory_order_relaxed);
    }
}

void PlistCell::releaseShare() const noexcept {
    if (has(inArena)) {
        PlistArena::of(pointer())->release();
    } else {
        PlistBlock::release(*this);
    }
}

}  // namespace plist::detail
