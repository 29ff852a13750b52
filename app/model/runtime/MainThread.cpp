#include "app/model/runtime/MainThread.h"

#include <unistd.h>

#include "app/model/runtime/Plist.h"

bool MainThread::isCurrent() noexcept {
    // The first thread of a process has the process's own number.
    static thread_local const bool isMain = ::gettid() == ::getpid();
    return isMain;
}

void MainThread::check() {
    plistCheck(isCurrent(), "the model belongs to the main thread");
}
