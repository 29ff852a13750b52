#include "app/desktop/files/BackgroundTask.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <algorithm>

#include "app/model/runtime/MainThread.h"

QThreadPool& BackgroundTask::threads() {
    MainThread::check();
    static QPointer<QThreadPool> pool;
    if (!pool) {
        // Belongs to the application, which at its end waits for what is being done.
        pool = new QThreadPool(QCoreApplication::instance());
        // Waiting for a disk takes no processor.
        constexpr int minimum = 4;
        pool->setMaxThreadCount(std::max(minimum, QThread::idealThreadCount()));
    }
    return *pool;
}
