#pragma once

#include <QObject>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "app/model/runtime/Plist.h"

/// One search through a value, on a thread of its own. It begins at once and ends soon after this
/// object is destroyed, which waits for it: a search checks for a stop request at every value.
/// Belongs to the main thread.
class SearchRun : public QObject {
    Q_OBJECT

public:
    /// Searches `root` for `query` (UTF-8). Throws `std::system_error` if there can be no more
    /// threads.
    SearchRun(PlistValue root, std::string query, QObject* parent);
    ~SearchRun() override;

    /// What was found, once the search has finished; nothing if the memory ran out.
    std::optional<PlistMatches> takeMatches() { return std::move(matches_); }

Q_SIGNALS:
    /// The thread has ended. Comes from the event loop of the main thread.
    void finished();

    /// For this object alone: the search is done. Comes from the thread of the search.
    void done(QPrivateSignal);

private:
    void finish();

    std::optional<PlistMatches> matches_;
    std::jthread thread_;
};
