#include "PlistCore/PlistCheck.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace plist {

namespace {

constinit std::atomic<PlistCheckHandler> currentHandler = nullptr;

}  // namespace

PlistCheckHandler setPlistCheckHandler(PlistCheckHandler handler) noexcept {
    return currentHandler.exchange(handler);
}

void plistCheckFailed(const char* message) {
    if (const PlistCheckHandler handler = currentHandler.load()) {
        handler(message);
    }
    std::fprintf(stderr, "Broken rule: %s\n", message);
    std::abort();
}

}  // namespace plist
