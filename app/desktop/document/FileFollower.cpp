#include "app/desktop/document/FileFollower.h"

#include "app/desktop/document/DocumentController.h"

FileFollower::FileFollower(DocumentController& controller, std::chrono::milliseconds rest,
                           QObject* parent)
    : QObject(parent), controller_(controller), monitor_(rest, this) {
    connect(&controller, &DocumentController::activityChanged, this, &FileFollower::followActivity);
    connect(&controller, &DocumentController::opened, this, &FileFollower::followFile);
    connect(&controller, &DocumentController::saved, this, &FileFollower::followFile);
    connect(&controller, &DocumentController::reverted, this, &FileFollower::followFile);
    connect(&controller, &DocumentController::reloaded, this, &FileFollower::followFile);
    connect(&controller, &DocumentController::reloadFailed, this, [this](const FileError& error) {
        setTrouble(Trouble::unreadable, error.failureReason());
        // What the document holds may be all that is left of the content.
        controller_.loseFile();
    });
    connect(&controller, &DocumentController::reloadOvertaken, this,
            [this] { setTrouble(Trouble::changed); });
    connect(&monitor_, &FileMonitor::changed, this, &FileFollower::handleChange);
    connect(&monitor_, &FileMonitor::deleted, this, &FileFollower::handleDeletion);
    connect(&monitor_, &FileMonitor::restored, this, &FileFollower::handleReturn);
}

FileFollower::~FileFollower() = default;

void FileFollower::followActivity() {
    if (controller_.activity() == DocumentController::Activity::idle) {
        monitor_.resume();
    } else {
        monitor_.pause();
    }
}

void FileFollower::followFile() {
    present_.reset();
    keepsMine_ = false;
    setTrouble(Trouble::none);
    if (controller_.baseDigest()) {
        monitor_.follow(controller_.path(), *controller_.baseDigest());
    }
}

bool FileFollower::mayReload() const {
    return !keepsMine_ && !controller_.hasEdits() && !(hasInput_ && hasInput_());
}

void FileFollower::handleChange(const ContentDigest& content) {
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

void FileFollower::handleDeletion() {
    present_.reset();
    controller_.loseFile();
    setTrouble(Trouble::deleted);
}

void FileFollower::handleReturn() {
    present_.reset();
    keepsMine_ = false;
    controller_.regainFile();
    setTrouble(Trouble::none);
}

void FileFollower::keepMine() {
    if (present_) {
        controller_.allowOverwriting(*present_);
    }
    keepsMine_ = true;
    controller_.loseFile();
    setTrouble(Trouble::none);
}

void FileFollower::setTrouble(Trouble trouble, const QString& reason) {
    if (trouble_ != trouble || reason_ != reason) {
        trouble_ = trouble;
        reason_ = reason;
        Q_EMIT troubleChanged();
    }
}
