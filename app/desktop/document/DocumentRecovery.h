#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <optional>

#include "app/desktop/recovery/RecoveryRecord.h"
#include "app/desktop/recovery/RecoveryStore.h"
#include "app/model/editing/UndoManager.h"

class DocumentController;

/// Keeps one document for recovery as long as it is modified: soon after an edit, and now and then
/// while the edits do not stop. When the document is saved, undone to what was saved, or closed,
/// nothing of it is kept any more.
///
/// A child of the controller it watches.
class DocumentRecovery : public QObject {
    Q_OBJECT

public:
    struct Pace {
        std::chrono::milliseconds afterEdit{2'000};      ///< without another edit
        std::chrono::milliseconds whileEditing{15'000};  ///< at the latest
    };

    /// The rest between two writings is at least so many times as long as the one before, so that
    /// large documents do not keep the disk busy.
    static constexpr int restPerWriting = 20;

    /// The store must outlive the controller.
    DocumentRecovery(DocumentController& controller, RecoveryStore& store);
    DocumentRecovery(DocumentController& controller, RecoveryStore& store, Pace pace);
    ~DocumentRecovery() override;

    /// Has the document written without delay, unless what was written last is the same.
    void keepNow();

Q_SIGNALS:
    /// The document is on the disk as it was in the given state of its history.
    void kept(UndoManager::State state);

    /// The document could not be kept, for this reason. It is tried again after the next edit.
    void keepingFailed(const QString& reason);

private:
    void follow();
    void forget();
    RecoveryRecord record() const;
    void finish(UndoManager::State state, const RecoveryStore::Outcome& outcome);

    DocumentController& controller_;
    RecoveryStore& store_;
    Pace pace_;
    QByteArray name_;
    QTimer quietTimer_;
    QTimer busyTimer_;
    QDeadlineTimer rest_;

    int writings_ = 0;  ///< how many are under way

    /// Whether something of this document may lie in the store.
    bool mayBeThere_ = false;

    /// The state that was written last or is being written.
    std::optional<UndoManager::State> keptState_;
};
