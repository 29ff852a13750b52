#include "app/model/runtime/MainThread.h"

#include <unistd.h>

#include "app/model/runtime/Plist.h"

void MainThread::check() {
    // The first thread of a process has the process's own number.
    static thread_local const bool isMain = ::gettid() == ::getpid();
    plistCheck(isMain, "the model belongs to the main thread");
}
