#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "app/model/runtime/DelayTimer.h"
#include "app/model/search/SearchRun.h"
#include "app/model/tree/NodeId.h"
#include "app/model/tree/NodeIdSet.h"
#include "app/model/tree/PlistNodePtr.h"

class MatchResolver;
class PlistDocument;
class PlistNode;

/// The search of one window: the query, the nodes that match, the nodes that stay visible, and the
/// current match. Belongs to the main thread.
///
/// Keeps itself up to date: the search runs again whenever the query or the content of the document
/// changes, after a pause in which typing may go on, and on a thread of its own. Until it has
/// finished, and if it never does, the previous results stay. A rename or an undone
/// sort alone does not start a search, but one that runs meanwhile starts over, because its places
/// may name other nodes by now.
///
/// Each signal of a property fires only when the property is set to a different value, and when all
/// of them have been set; `visibleIDsChanged` comes before `currentMatchChanged`, so that a
/// listener that reveals the current match finds its row.
class SearchState : public QObject {
    Q_OBJECT

public:
    /// How long the query and the document have to rest before the search begins.
    static constexpr std::chrono::milliseconds pause{150};

    /// The document must outlive this object. The second form takes the timer of the pause.
    explicit SearchState(PlistDocument& document, QObject* parent = nullptr);
    SearchState(PlistDocument& document, std::unique_ptr<DelayTimer> timer,
                QObject* parent = nullptr);

    /// A search that runs is stopped, which takes some milliseconds at most.
    ~SearchState() override;

    /// The text in the search field.
    const QString& query() const noexcept { return query_; }

    /// A query of nothing but spaces and tabs ends the search at once.
    void setQuery(const QString& query);

    /// The nodes that match, in the order of the document when it was searched.
    const std::vector<NodeId>& matchIDs() const noexcept { return matchIDs_; }

    /// Whether there are no more matches than `matchIDs`: of the extremely many that a small file
    /// can describe by sharing, only the first ones are kept.
    bool hasAllMatches() const noexcept { return hasAllMatches_; }

    /// What an outline should show: the matches and all above them, or the root alone if nothing
    /// matches. Nothing while no search is active.
    const std::optional<NodeIdSet>& visibleIDs() const noexcept { return visibleIDs_; }

    std::optional<NodeId> currentMatch() const noexcept { return currentMatch_; }
    void setCurrentMatch(std::optional<NodeId> id);

    /// The node of the current match; null if there is none or it is no longer in the document.
    /// Found whether it has a row or not.
    PlistNode* currentNode() const;

    /// Moves the current match forwards (1) or backwards (-1), around the ends; to the first match
    /// if there was no current match or it has vanished.
    void step(int direction);

    /// Grows whenever the search field should get the keyboard focus.
    qint64 focusRequest() const noexcept { return focusRequest_; }
    void requestFocus();

    /// Whether new results are pending: the pause or the search is under way.
    bool isUpdating() const;

Q_SIGNALS:
    void queryChanged();
    void matchIDsChanged();
    void visibleIDsChanged();
    void currentMatchChanged();
    void focusRequestChanged();

    /// The results are those of the query and the document as they are now, whether they differ
    /// from those before or not. After all other signals.
    void updated();

private:
    /// All that an update changes.
    struct Results {
        std::vector<PlistNodePtr> matches;
        std::optional<NodeIdSet> visible;
        bool areComplete = true;
    };

    void update();
    void updateActiveSearch();
    void beginPause();
    void search();
    void finish();
    void resolveSome();
    void stopResolving();
    void setResults(Results results);
    QString trimmedQuery() const;

    PlistDocument& document_;
    std::unique_ptr<DelayTimer> pauseTimer_;
    std::unique_ptr<SearchRun> run_;
    std::unique_ptr<MatchResolver> resolver_;  ///< once the search is done
    QTimer nextTurn_;                          ///< of `resolver_`
    quint64 searchedVersion_ = 0;              ///< the version of the tree that is searched

    QString query_;
    std::vector<PlistNodePtr> matches_;
    std::vector<NodeId> matchIDs_;  ///< of `matches_`
    std::optional<NodeIdSet> visibleIDs_;
    std::optional<NodeId> currentMatch_;
    qint64 focusRequest_ = 0;
    bool hasAllMatches_ = true;
};
