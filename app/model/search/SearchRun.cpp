#include "app/model/search/SearchRun.h"

#include <new>
#include <stop_token>
#include <utility>

#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"

SearchRun::SearchRun(PlistValue root, std::string query, QObject* parent) : QObject(parent) {
    MainThread::check();
    // Received by this object itself, so that nothing arrives of a search that was given up.
    connect(this, &SearchRun::done, this, &SearchRun::finish, Qt::QueuedConnection);
    thread_ = std::jthread(
        [this, root = std::move(root), query = std::move(query)](const std::stop_token& stop) {
            try {
                matches_ = PlistSearch::matches(root, query, stop);
            } catch (const std::bad_alloc&) {
                matches_.reset();
            }
            Q_EMIT done({});
        });
}

// Here and not in the member's destructor: the thread still uses the object.
SearchRun::~SearchRun() {
    thread_.request_stop();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void SearchRun::finish() {
    // Joining makes what the thread has written visible here.
    thread_.join();
    Q_EMIT finished();
}
