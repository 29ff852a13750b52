#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QThreadPool>
#include <memory>
#include <type_traits>
#include <utility>

/// Work on other threads, so that the windows go on responding.
namespace BackgroundTask {

/// The threads that do the work, for callers on the main thread. Not the
/// global pool of Qt: Qt also uses that for painting, which would wait while files are read or
/// written.
QThreadPool& threads();

/// Runs `work` on a worker thread, then hands its result to `done` on the thread of `receiver`,
/// which must be the caller's. If `receiver` is destroyed before, the result is dropped; the work
/// itself always runs to its end. `work` must not throw.
template <typename Work, typename Done>
void run(QObject& receiver, Work work, Done done, QThreadPool& workers = threads()) {
    using Result = std::invoke_result_t<Work&>;
    auto* watcher = new QFutureWatcher<Result>(&receiver);
    QObject::connect(watcher, &QFutureWatcher<Result>::finished, &receiver,
                     [watcher, done = std::move(done)]() mutable {
                         watcher->deleteLater();
                         done(watcher->future().takeResult());
                     });
    // Shared because the pool copies what it runs, and a promise cannot be copied.
    const auto promise = std::make_shared<QPromise<Result>>();
    watcher->setFuture(promise->future());
    workers.start([promise, work = std::move(work)]() mutable {
        promise->start();
        promise->addResult(work());
        promise->finish();
    });
}

}  // namespace BackgroundTask
