#pragma once

#include <QObject>
#include <QString>
#include <optional>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/document/ExternalChanges.h"
#include "app/desktop/recovery/RecoverableDocument.h"

class DocumentRecovery;
class RecoveryStore;

/// An open document with everything that serves it while it is open: the controller of its file,
/// what other programs do to that file, and its backups, of now and of before a crash. Belongs to
/// the main thread.
class DocumentSession : public QObject {
    Q_OBJECT

public:
    /// A new document. `untitledName` is what it is called until it has a file.
    explicit DocumentSession(const QString& untitledName, QObject* parent = nullptr);
    ~DocumentSession() override;

    DocumentController& controller() noexcept { return controller_; }
    ExternalChanges& externalChanges() noexcept { return externalChanges_; }

    /// From now on backs up the document for as long as it is modified. The store must outlive
    /// this.
    void backUpTo(RecoveryStore& store);

    /// Backs up the document without delay.
    void backUpNow();

    /// Begins to bring back what a crash left. Ends with `DocumentController::opened`, or with
    /// `recoveryFailed`, after which it is offered again at the next start. What the crash left is
    /// deleted when the document has been saved or backed up again.
    void recover(const RecoverableDocument& lost);

    /// Backs up again what was brought back, so that what the crash left is no longer needed.
    void backUpRecovered();

    /// Deletes what the crash left: the user does not want it any more.
    void discardRecovered();

Q_SIGNALS:
    /// The document is backed up.
    void backedUp();

    /// The document cannot be backed up, for this reason, until `backedUp`.
    void backupFailed(const QString& reason);

    /// The file could not be opened.
    void openFailed(const FileError& error);

    /// What a crash left of the document `title` could not be brought back.
    void recoveryFailed(const QString& title, const FileError& error);

private:
    void handleOpenFailure(const FileError& error);
    void endRecovery();

    DocumentController controller_;
    ExternalChanges externalChanges_;
    DocumentRecovery* recovery_ = nullptr;
    std::optional<RecoverableDocument> recovered_;
};
