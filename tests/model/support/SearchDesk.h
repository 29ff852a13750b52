#pragma once

#include <QSignalSpy>
#include <QString>
#include <initializer_list>
#include <memory>
#include <vector>

#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/editing/UndoManager.h"
#include "app/model/runtime/Plist.h"
#include "app/model/search/SearchState.h"
#include "app/model/tree/NodeId.h"
#include "tests/model/support/ManualTimer.h"

class PlistNode;

/// A document and its search, with a clock that the test moves.
struct SearchDesk {
    explicit SearchDesk(const PlistValue& value);

    /// The paths of nodes, "/list/0/name", separated by spaces; "?" for those that are not there.
    static QString textOf(const std::vector<NodeId>& ids, PlistNode& root);

    PlistNode& at(std::initializer_list<std::size_t> path) const;

    /// Enters a query (UTF-8).
    void type(const char* query) const { search->setQuery(QString::fromUtf8(query)); }

    /// Lets the pause pass: the search runs, but nothing is heard of it yet.
    void begin() const { timer->advance(SearchState::pause); }

    /// Waits for the search to come to its end. False if there are no results, because it has to
    /// start over.
    bool isDone() const;

    /// All of the above.
    bool find(const char* query) const;

    QString matches() const { return textOf(search->matchIDs(), document.root()); }
    QString visible() const;
    QString current() const;

    /// How often each signal came since the last call.
    QString signalCounts() const;

    PlistDocument document;
    std::unique_ptr<UndoManager> undo = std::make_unique<UndoManager>();
    PlistEditor editor;
    ManualTimer* timer = nullptr;
    std::unique_ptr<SearchState> search;
    std::unique_ptr<QSignalSpy> matchesSpy;
    std::unique_ptr<QSignalSpy> visibleSpy;
    std::unique_ptr<QSignalSpy> currentSpy;
    std::unique_ptr<QSignalSpy> updatedSpy;
};
