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
        connect(timer, &QTimer::timeout, this, &DocumentRecovery::keepNow);
    }
    UndoManager& history = controller.undoManager();
    connect(&history, &UndoManager::historyChanged, this, &DocumentRecovery::follow);
    connect(&history, &UndoManager::isModifiedChanged, this, &DocumentRecovery::follow);
    // Another file or another name for it: what was kept with the old one is out of date.
    connect(&controller, &DocumentController::saved, this, [this] {
        keptState_.reset();
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
    // While one writing is under way, the next one is not planned.
    if (writings_ > 0 || keptState_ == controller_.undoManager().state()) {
        return;
    }
    const auto rest = std::chrono::duration_cast<milliseconds>(rest_.remainingTimeAsDuration());
    quietTimer_.start(std::max(pace_.afterEdit, rest));
    if (!busyTimer_.isActive()) {
        busyTimer_.start(std::max(pace_.whileEditing, rest));
    }
}

void DocumentRecovery::forget() {
    quietTimer_.stop();
    busyTimer_.stop();
    keptState_.reset();
    if (mayBeThere_) {
        mayBeThere_ = false;
        store_.remove(name_);
    }
}

void DocumentRecovery::keepNow() {
    quietTimer_.stop();
    busyTimer_.stop();
    const UndoManager::State state = controller_.undoManager().state();
    if (!controller_.isModified() || keptState_ == state) {
        return;
    }
    keptState_ = state;
    mayBeThere_ = true;
    ++writings_;
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
    record.keptAt = QDateTime::currentDateTimeUtc();
    return record;
}

void DocumentRecovery::finish(UndoManager::State state, const RecoveryStore::Outcome& outcome) {
    --writings_;
    rest_ =
        QDeadlineTimer(std::chrono::duration_cast<milliseconds>(outcome.duration * restPerWriting));
    if (outcome.error == 0) {
        Q_EMIT kept(state);
    } else {
        Q_EMIT keepingFailed(QString::fromLocal8Bit(std::strerror(outcome.error)));
    }
    // The document may have been edited, saved or undone to clean meanwhile.
    if (keptState_ != controller_.undoManager().state()) {
        follow();
    } else if (outcome.error != 0) {
        keptState_.reset();
    }
}
