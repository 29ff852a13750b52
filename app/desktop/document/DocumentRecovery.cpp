#include "app/desktop/document/DocumentRecovery.h"

#include <QUuid>
#include <algorithm>
#include <cstring>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/files/FilePath.h"

using std::chrono::milliseconds;

DocumentRecovery::DocumentRecovery(DocumentController& controller, RecoveryStore& store)
    : DocumentRecovery(controller, store, Pace()) {}

DocumentRecovery::DocumentRecovery(DocumentController& controller, RecoveryStore& store, Pace pace)
    : QObject(&controller),
      controller_(controller),
      store_(store),
      pace_(pace),
      name_(QUuid::createUuid().toByteArray(QUuid::WithoutBraces)) {
    for (QTimer* timer : {&quietTimer_, &busyTimer_}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &DocumentRecovery::backUpNow);
    }
    UndoManager& history = controller.undoManager();
    connect(&history, &UndoManager::historyChanged, this, &DocumentRecovery::follow);
    connect(&history, &UndoManager::isModifiedChanged, this, &DocumentRecovery::follow);
    // It has another file now, or the file other content: the backup is out of date.
    connect(&controller, &DocumentController::saved, this, [this] {
        backedUpState_.reset();
        follow();
    });
}

DocumentRecovery::~DocumentRecovery() {
    store_.remove(name_);
}

void DocumentRecovery::follow() {
    if (!controller_.isModified()) {
        forget();
        return;
    }
    // The next backup is not scheduled while one is being written.
    if (pendingWrites_ > 0 || backedUpState_ == controller_.undoManager().state()) {
        return;
    }
    const auto pause = std::chrono::duration_cast<milliseconds>(pause_.remainingTimeAsDuration());
    quietTimer_.start(std::max(pace_.afterEdit, pause));
    if (!busyTimer_.isActive()) {
        busyTimer_.start(std::max(pace_.whileEditing, pause));
    }
}

void DocumentRecovery::forget() {
    quietTimer_.stop();
    busyTimer_.stop();
    backedUpState_.reset();
    if (mayBeInStore_) {
        mayBeInStore_ = false;
        store_.remove(name_);
    }
}

void DocumentRecovery::backUpNow() {
    quietTimer_.stop();
    busyTimer_.stop();
    const UndoManager::State state = controller_.undoManager().state();
    if (!controller_.isModified() || backedUpState_ == state) {
        return;
    }
    backedUpState_ = state;
    mayBeInStore_ = true;
    ++pendingWrites_;
    store_.write(*this, name_, controller_.document().snapshot(), record(),
                 [this, state](const RecoveryStore::Outcome& outcome) { finish(state, outcome); });
}

RecoveryRecord DocumentRecovery::record() const {
    RecoveryRecord record;
    record.file = FilePath::encoded(controller_.path());
    record.title = controller_.name();
    if (const auto& digest = controller_.fileState().base) {
        record.baseDigest = digest->hex();
    }
    record.format = controller_.document().format();
    record.wasReadOnlyFormat = controller_.document().wasReadOnlyFormat();
    record.backedUpAt = QDateTime::currentDateTimeUtc();
    return record;
}

void DocumentRecovery::finish(UndoManager::State state, const RecoveryStore::Outcome& outcome) {
    --pendingWrites_;
    pause_ =
        QDeadlineTimer(std::chrono::duration_cast<milliseconds>(outcome.duration * pausePerWrite));
    if (outcome.error == 0) {
        Q_EMIT backedUp(state);
    } else {
        Q_EMIT backupFailed(QString::fromLocal8Bit(std::strerror(outcome.error)));
    }
    // The document may have been edited, saved or undone to what was saved meanwhile.
    if (backedUpState_ != controller_.undoManager().state()) {
        follow();
    } else if (outcome.error != 0) {
        backedUpState_.reset();
    }
}
