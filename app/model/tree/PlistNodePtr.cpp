#include "app/model/tree/PlistNodePtr.h"

#include "app/model/tree/PlistNode.h"

void PlistNodePtr::retain() const noexcept {
    if (node_ != nullptr) {
        node_->retain();
    }
}

void PlistNodePtr::release() const noexcept {
    node_->release();
}
