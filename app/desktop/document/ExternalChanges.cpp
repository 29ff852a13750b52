#include "app/desktop/document/ExternalChanges.h"

#include "app/desktop/document/DocumentController.h"

ExternalChanges::ExternalChanges(DocumentController& controller, std::chrono::milliseconds rest,
                                 QObject* parent)
    : QObject(parent), controller_(controller), monitor_(rest, this) {
    connect(&controller, &DocumentController::activityChanged, this,
            &ExternalChanges::followActivity);
    connect(&controller, &DocumentController::opened, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::saved, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::reverted, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::reloaded, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::reloadFailed, this, [this](const FileError& error) {
        setTrouble(Trouble::unreadable, error.failureReason());
        // What the document holds may be all that is left of the content.
        controller_.loseFile();
    });
    connect(&controller, &DocumentController::reloadOvertaken, this,
            [this] { setTrouble(Trouble::changed); });
    connect(&monitor_, &FileChangeDetector::changed, this, &ExternalChanges::handleChange);
    connect(&monitor_, &FileChangeDetector::deleted, this, &ExternalChanges::handleDeletion);
    connect(&monitor_, &FileChangeDetector::restored, this, &ExternalChanges::handleReturn);
}

ExternalChanges::~ExternalChanges() = default;

void ExternalChanges::followActivity() {
    if (controller_.activity() == DocumentController::Activity::idle) {
        monitor_.resume();
    } else {
        monitor_.pause();
    }
}

void ExternalChanges::followFile() {
    present_.reset();
    keepsMine_ = false;
    setTrouble(Trouble::none);
    if (controller_.baseDigest()) {
        monitor_.follow(controller_.path(), *controller_.baseDigest());
    }
}

bool ExternalChanges::mayReload() const {
    return !keepsMine_ && !controller_.hasEdits() && !(hasInput_ && hasInput_());
}

void ExternalChanges::handleChange(const ContentDigest& content) {
    present_ = content;
    if (content == controller_.attemptedDigest()) {
        // No other program's, but no state of the document counts as saved either.
        controller_.loseFile();
        setTrouble(Trouble::none);
        return;
    }
    if (trouble_ == Trouble::deleted && !keepsMine_) {
        controller_.regainFile();
    }
    if (mayReload()) {
        controller_.reload([this] { return mayReload(); });
    } else {
        setTrouble(Trouble::changed);
    }
}

void ExternalChanges::handleDeletion() {
    present_.reset();
    controller_.loseFile();
    setTrouble(Trouble::deleted);
}

void ExternalChanges::handleReturn() {
    present_.reset();
    keepsMine_ = false;
    controller_.regainFile();
    setTrouble(Trouble::none);
}

void ExternalChanges::keepMine() {
    if (present_) {
        controller_.allowOverwriting(*present_);
    }
    keepsMine_ = true;
    controller_.loseFile();
    setTrouble(Trouble::none);
}

void ExternalChanges::setTrouble(Trouble trouble, const QString& reason) {
    if (trouble_ != trouble || reason_ != reason) {
        trouble_ = trouble;
        reason_ = reason;
        Q_EMIT troubleChanged();
    }
}
