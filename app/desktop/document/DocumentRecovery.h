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

/// Backs up one document for as long as it is modified: soon after an edit, and now and then while
/// the edits do not stop. When the document is saved, undone to what was saved, or closed, the
/// backup is deleted.
///
/// A child of the controller it watches.
class DocumentRecovery : public QObject {
    Q_OBJECT

public:
    struct Pace {
        std::chrono::milliseconds afterEdit{2'000};      ///< without another edit
        std::chrono::milliseconds whileEditing{15'000};  ///< at the latest
    };

    /// The pause after a backup is at least so many times as long as the backup took, so that large
    /// documents do not keep the disk busy.
    static constexpr int pausePerWrite = 20;

    /// The store must outlive the controller.
    DocumentRecovery(DocumentController& controller, RecoveryStore& store);
    DocumentRecovery(DocumentController& controller, RecoveryStore& store, Pace pace);
    ~DocumentRecovery() override;

    /// Backs up the document without delay, unless the last backup is up to date.
    void backUpNow();

Q_SIGNALS:
    /// The document is on the disk as it was in the given state of its history.
    void backedUp(UndoManager::State state);

    /// The document could not be backed up, for this reason. It is tried again after the next
    /// edit.
    void backupFailed(const QString& reason);

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
    QDeadlineTimer pause_;

    int pendingWrites_ = 0;

    /// Whether the store may have a backup of this document.
    bool mayBeInStore_ = false;

    /// The state that was backed up last or is being backed up.
    std::optional<UndoManager::State> backedUpState_;
};
