#include "app/desktop/document/DocumentSession.h"

#include "app/desktop/document/DocumentRecovery.h"

DocumentSession::DocumentSession(const QString& untitledName, QObject* parent)
    : QObject(parent), controller_(untitledName), externalChanges_(controller_) {
    connect(&controller_, &DocumentController::saved, this, &DocumentSession::discardRecovered);
    connect(&controller_, &DocumentController::openFailed, this,
            &DocumentSession::handleOpenFailure);
}

DocumentSession::~DocumentSession() {
    endRecovery();
}

void DocumentSession::backUpTo(RecoveryStore& store) {
    recovery_ = new DocumentRecovery(controller_, store);
    connect(recovery_, &DocumentRecovery::backedUp, this, [this] {
        discardRecovered();
        Q_EMIT backedUp();
    });
    connect(recovery_, &DocumentRecovery::backupFailed, this, &DocumentSession::backupFailed);
}

void DocumentSession::backUpNow() {
    if (recovery_ != nullptr) {
        recovery_->backUpNow();
    }
}

void DocumentSession::recover(const RecoverableDocument& lost) {
    recovered_ = lost;
    recovered_->beginAttempt();
    controller_.recover(lost);
}

void DocumentSession::backUpRecovered() {
    if (recovered_) {
        backUpNow();
    }
}

void DocumentSession::discardRecovered() {
    if (recovered_) {
        recovered_->remove();
        recovered_.reset();
    }
}

void DocumentSession::handleOpenFailure(const FileError& error) {
    if (recovered_) {
        const QString title = recovered_->record().title;
        endRecovery();
        Q_EMIT recoveryFailed(title, error);
    } else {
        Q_EMIT openFailed(error);
    }
}

/// What a crash left has not been brought back, but not by another crash.
void DocumentSession::endRecovery() {
    if (recovered_) {
        recovered_->endAttempt();
        recovered_.reset();
    }
}
