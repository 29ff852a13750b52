#include "tests/model/support/BrokenRule.h"

#include "app/model/runtime/Plist.h"

BrokenRule::BrokenRule() {
    setPlistCheckHandler(&BrokenRule::fail);
}

BrokenRule::~BrokenRule() {
    setPlistCheckHandler(nullptr);
}

void BrokenRule::fail(const char* rule) {
    throw Failure{rule};
}
