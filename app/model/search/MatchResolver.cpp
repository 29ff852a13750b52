#include "app/model/search/MatchResolver.h"

#include <algorithm>
#include <utility>

#include "app/model/runtime/MainThread.h"
#include "app/model/tree/PlistNode.h"

MatchResolver::MatchResolver(PlistNode& root, PlistMatches found, std::int64_t limit)
    : found_(std::move(found)), limit_(limit), root_(&root) {
    nodes_.reserve(found_.places().size());
    nodes_.push_back(&root);
    result_.matches.reserve(found_.size());
}

bool MatchResolver::resolve(std::size_t count) {
    MainThread::check();
    return findNodes(count) && collectMatches(count) && collectVisible(count);
}

MatchedNodes MatchResolver::take() {
    result_.areComplete = found_.outcome() == PlistMatches::Outcome::complete && !isLimitReached_;
    return std::move(result_);
}

bool MatchResolver::findNodes(std::size_t count) {
    const std::span<const PlistMatches::Place> places = found_.places();
    const std::size_t end = std::min(places.size(), nodes_.size() + count);
    while (nodes_.size() < end && !isLimitReached_) {
        const PlistMatches::Place& place = places[nodes_.size()];
        PlistNode& container = *nodes_[place.container];
        if (&container != container_) {
            if (!container.isMaterialized()) {
                limit_ -= container.childCount();
                isLimitReached_ = limit_ < 0;
            }
            if (isLimitReached_) {
                return true;
            }
            container_ = &container;
            children_ = container.children();
        }
        nodes_.push_back(children_[place.position].get());
    }
    return isLimitReached_ || nodes_.size() == places.size();
}

bool MatchResolver::collectMatches(std::size_t count) {
    const auto matches = found_.matches();
    const std::size_t end = std::min<std::size_t>(matches.size(), nextMatch_ + count);
    for (; nextMatch_ < end; ++nextMatch_) {
        const std::size_t place = matches[nextMatch_];
        if (place >= nodes_.size()) {
            nextMatch_ = matches.size();
            return true;
        }
        result_.matches.emplace_back(nodes_[place]);
        visibleCount_ = place + 1;
    }
    return nextMatch_ == matches.size();
}

/// Every place leads to the next match, so those up to the last match are what is to be seen.
bool MatchResolver::collectVisible(std::size_t count) {
    const std::size_t end = std::min(visibleCount_, nextVisible_ + count);
    for (; nextVisible_ < end; ++nextVisible_) {
        result_.visible.insert(nodes_[nextVisible_]->id());
    }
    return nextVisible_ == visibleCount_;
}
