#include "tests/model/support/SearchDesk.h"

#include <QMap>
#include <QStringList>
#include <QTest>
#include <optional>
#include <string>
#include <utility>

#include "app/model/tree/PlistNode.h"

SearchDesk::SearchDesk(const PlistValue& value) : editor(document, undo.get()) {
    document.apply({value, PlistFormat::xml});
    auto ownTimer = std::make_unique<ManualTimer>();
    timer = ownTimer.get();
    search = std::make_unique<SearchState>(document, std::move(ownTimer));
    matchesSpy = std::make_unique<QSignalSpy>(search.get(), &SearchState::matchIDsChanged);
    visibleSpy = std::make_unique<QSignalSpy>(search.get(), &SearchState::visibleIDsChanged);
    currentSpy = std::make_unique<QSignalSpy>(search.get(), &SearchState::currentMatchChanged);
    updatedSpy = std::make_unique<QSignalSpy>(search.get(), &SearchState::updated);
}

QString SearchDesk::textOf(const std::vector<NodeId>& ids, PlistNode& root) {
    QMap<NodeId, QString> paths;
    std::vector<std::pair<PlistNode*, QString>> waiting{{&root, QString()}};
    while (!waiting.empty()) {
        const auto [node, path] = waiting.back();
        waiting.pop_back();
        paths.insert(node->id(), path.isEmpty() ? QStringLiteral("/") : path);
        if (!node->isMaterialized()) {
            continue;
        }
        qint64 index = 0;
        for (const PlistNodePtr& child : node->children()) {
            const std::string key(child->key().view());
            const QString step = key.empty() ? QString::number(index) : QString::fromStdString(key);
            waiting.emplace_back(child.get(), path + QLatin1Char('/') + step);
            ++index;
        }
    }
    QStringList texts;
    for (const NodeId id : ids) {
        texts += paths.value(id, QStringLiteral("?"));
    }
    return texts.join(QLatin1Char(' '));
}

PlistNode& SearchDesk::at(std::initializer_list<std::size_t> path) const {
    PlistNode* node = &document.root();
    for (const std::size_t position : path) {
        node = node->children()[position].get();
    }
    return *node;
}

bool SearchDesk::isDone() const {
    constexpr int patience = 120'000;
    return QTest::qWaitFor([this] { return !search->isUpdating() || timer->isRunning(); },
                           patience) &&
           !search->isUpdating();
}

bool SearchDesk::find(const char* query) const {
    type(query);
    begin();
    return isDone();
}

QString SearchDesk::visible() const {
    const std::optional<NodeIdSet>& ids = search->visibleIDs();
    return ids ? textOf({ids->begin(), ids->end()}, document.root()) : QStringLiteral("all");
}

QString SearchDesk::current() const {
    const std::optional<NodeId> id = search->currentMatch();
    return id ? textOf({*id}, document.root()) : QStringLiteral("none");
}

QString SearchDesk::signalCounts() const {
    QString counts = QStringLiteral("matches %1, visible %2, current %3, updated %4")
                         .arg(matchesSpy->count())
                         .arg(visibleSpy->count())
                         .arg(currentSpy->count())
                         .arg(updatedSpy->count());
    for (QSignalSpy* spy :
         {matchesSpy.get(), visibleSpy.get(), currentSpy.get(), updatedSpy.get()}) {
        spy->clear();
    }
    return counts;
}
