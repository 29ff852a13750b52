#include "app/ui/table/drag/SpringLoading.h"

#include "app/model/outline/OutlineState.h"
#include "app/model/tree/PlistNode.h"

SpringLoading::SpringLoading(OutlineState& outline)
    : outline_(outline), timer_(std::make_unique<DelayTimer>()) {}

SpringLoading::~SpringLoading() = default;

void SpringLoading::follow(PlistNode* container) {
    if (container == container_.get()) {
        return;
    }
    container_ = PlistNodePtr(container);
    if (container == nullptr) {
        timer_->stop();
    } else {
        timer_->start(delay, [this] { expand(); });
    }
}

void SpringLoading::expand() {
    // First, because expanding adds rows, and then `follow` is told what is under the pointer.
    const PlistNodePtr container = std::exchange(container_, PlistNodePtr());
    if (outline_.rowOf(*container)) {
        outline_.setExpanded(*container, OutlineState::Expansion::expand,
                             OutlineState::Reach::nodeAlone);
    }
}
