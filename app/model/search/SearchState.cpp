#include "app/model/search/SearchState.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <system_error>
#include <utility>

#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/MainThread.h"
#include "app/model/search/MatchResolver.h"
#include "app/model/tree/PlistNode.h"

namespace {

/// A turn of the event loop with so many takes some milliseconds.
constexpr std::size_t stepsPerTurn = 50'000;

bool isSpaceOrTab(QChar character) {
    return character == QLatin1Char(' ') || character == QLatin1Char('\t');
}

}  // namespace

SearchState::SearchState(PlistDocument& document, QObject* parent)
    : SearchState(document, std::make_unique<DelayTimer>(), parent) {}

SearchState::SearchState(PlistDocument& document, std::unique_ptr<DelayTimer> timer,
                         QObject* parent)
    : QObject(parent), document_(document), pauseTimer_(std::move(timer)) {
    MainThread::check();
    nextTurn_.setInterval(0);
    connect(&nextTurn_, &QTimer::timeout, this, &SearchState::resolveSome);
    connect(&document, &PlistDocument::revisionChanged, this, &SearchState::updateActiveSearch);
    connect(&document, &PlistDocument::rootChanged, this, &SearchState::updateActiveSearch);
}

SearchState::~SearchState() = default;

// --- The query ---

void SearchState::setQuery(const QString& query) {
    MainThread::check();
    if (query_ == query) {
        return;
    }
    query_ = query;
    Q_EMIT queryChanged();
    update();
}

// Spaces and tabs alone: line breaks and other whitespace can be meant.
QString SearchState::trimmedQuery() const {
    qsizetype begin = 0;
    qsizetype end = query_.size();
    while (begin < end && isSpaceOrTab(query_[begin])) {
        ++begin;
    }
    while (end > begin && isSpaceOrTab(query_[end - 1])) {
        --end;
    }
    return query_.mid(begin, end - begin);
}

void SearchState::requestFocus() {
    MainThread::check();
    ++focusRequest_;
    Q_EMIT focusRequestChanged();
}

bool SearchState::isUpdating() const {
    return pauseTimer_->isRunning() || run_ || resolver_;
}

// --- The search ---

void SearchState::update() {
    run_.reset();
    stopResolving();
    if (trimmedQuery().isEmpty()) {
        pauseTimer_->stop();
        setResults({});
    } else {
        beginPause();
    }
}

// Without a search there are no results that another document could have changed.
void SearchState::updateActiveSearch() {
    if (!trimmedQuery().isEmpty()) {
        update();
    }
}

void SearchState::beginPause() {
    pauseTimer_->start(pause, [this] { search(); });
}

void SearchState::search() {
    searchedVersion_ = document_.treeVersion();
    try {
        run_ = std::make_unique<SearchRun>(document_.root().value(), trimmedQuery().toStdString(),
                                           this);
    } catch (const std::system_error&) {
        // Without a thread the results before stay, as they do when the memory runs out.
        return;
    }
    connect(run_.get(), &SearchRun::finished, this, &SearchState::finish);
}

void SearchState::finish() {
    std::optional<PlistMatches> found = run_->takeMatches();
    // Not at once: it is the sender. And not later than here: listeners may start the next
    // search.
    run_.release()->deleteLater();
    if (document_.treeVersion() != searchedVersion_) {
        beginPause();
    } else if (found) {
        resolver_ = std::make_unique<MatchResolver>(document_.root(), std::move(*found));
        resolveSome();
    }
}

void SearchState::resolveSome() {
    if (document_.treeVersion() != searchedVersion_) {
        stopResolving();
        beginPause();
    } else if (!resolver_->resolve(stepsPerTurn)) {
        nextTurn_.start();
    } else {
        MatchedNodes nodes = resolver_->take();
        stopResolving();
        setResults({std::move(nodes.matches), std::move(nodes.visible), nodes.areComplete});
    }
}

void SearchState::stopResolving() {
    nextTurn_.stop();
    resolver_.reset();
}

void SearchState::setResults(Results results) {
    std::vector<NodeId> ids;
    ids.reserve(results.matches.size());
    for (const PlistNodePtr& node : results.matches) {
        ids.push_back(node->id());
    }
    const std::optional<NodeId> first =
        ids.empty() ? std::nullopt : std::optional<NodeId>(ids.front());
    const bool hasOtherMatches = ids != matchIDs_;
    const bool hasOtherVisible = results.visible != visibleIDs_;
    const bool hasOtherCurrent = first != currentMatch_;

    matches_ = std::move(results.matches);
    matchIDs_ = std::move(ids);
    visibleIDs_ = std::move(results.visible);
    hasAllMatches_ = results.areComplete;
    currentMatch_ = first;
    if (hasOtherMatches) {
        Q_EMIT matchIDsChanged();
    }
    if (hasOtherVisible) {
        Q_EMIT visibleIDsChanged();
    }
    if (hasOtherCurrent) {
        Q_EMIT currentMatchChanged();
    }
    Q_EMIT updated();
}

// --- The current match ---

void SearchState::setCurrentMatch(std::optional<NodeId> id) {
    MainThread::check();
    if (currentMatch_ != id) {
        currentMatch_ = id;
        Q_EMIT currentMatchChanged();
    }
}

PlistNode* SearchState::currentNode() const {
    MainThread::check();
    const auto found =
        currentMatch_ ? std::ranges::find(matchIDs_, *currentMatch_) : matchIDs_.end();
    if (found == matchIDs_.end()) {
        return nullptr;
    }
    PlistNode* node = matches_[static_cast<std::size_t>(found - matchIDs_.begin())].get();
    return document_.root().contains(*node) ? node : nullptr;
}

void SearchState::step(int direction) {
    MainThread::check();
    if (matchIDs_.empty()) {
        return;
    }
    const auto count = static_cast<qint64>(matchIDs_.size());
    const auto found =
        currentMatch_ ? std::ranges::find(matchIDs_, *currentMatch_) : matchIDs_.end();
    const qint64 position =
        found == matchIDs_.end() ? 0 : (found - matchIDs_.begin() + direction) % count;
    const qint64 wrapped = position < 0 ? position + count : position;
    setCurrentMatch(matchIDs_[static_cast<std::size_t>(wrapped)]);
}
