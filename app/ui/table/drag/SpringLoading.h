#pragma once

#include <chrono>
#include <memory>
#include <utility>

#include "app/model/runtime/DelayTimer.h"
#include "app/model/tree/PlistNodePtr.h"

class OutlineState;
class PlistNode;

/// Expands a collapsed container on which a drag rests, so that something can be dropped into it.
class SpringLoading {
public:
    /// How long a drag rests before that happens; tree views of GTK wait as long.
    static constexpr std::chrono::milliseconds delay{500};

    /// `outline` must outlive this.
    explicit SpringLoading(OutlineState& outline);
    ~SpringLoading();

    /// Takes another timer, for tests.
    void setTimer(std::unique_ptr<DelayTimer> timer) { timer_ = std::move(timer); }

    /// Tells the collapsed container under the pointer, or null for anything else. The delay starts
    /// again with each other container.
    void follow(PlistNode* container);

    /// The drag has left.
    void stop() { follow(nullptr); }

private:
    void expand();

    OutlineState& outline_;
    std::unique_ptr<DelayTimer> timer_;
    PlistNodePtr container_;
};
