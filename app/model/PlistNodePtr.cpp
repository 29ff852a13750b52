#include "app/model/PlistNodePtr.h"

#include "app/model/PlistNode.h"

void PlistNodePtr::retain() const noexcept {
    if (node_ != nullptr) {
        node_->retain();
    }
}

void PlistNodePtr::release() const noexcept {
    node_->release();
}
