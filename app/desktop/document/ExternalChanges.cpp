#include "app/desktop/document/ExternalChanges.h"

#include "app/desktop/document/DocumentController.h"

ExternalChanges::ExternalChanges(DocumentController& controller, std::chrono::milliseconds quiet,
                                 QObject* parent)
    : QObject(parent), controller_(controller), detector_(quiet, this) {
    connect(&controller, &DocumentController::activityChanged, this,
            &ExternalChanges::followActivity);
    connect(&controller, &DocumentController::opened, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::saved, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::reverted, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::reloaded, this, &ExternalChanges::followFile);
    connect(&controller, &DocumentController::reloadFailed, this, [this](const FileError& error) {
        reason_ = error.failureReason();
        controller_.setFileUnreadable();
        setTrouble(Trouble::unreadable);
    });
    connect(&controller, &DocumentController::reloadOvertaken, this,
            [this] { setTrouble(Trouble::changed); });
    connect(&detector_, &FileChangeDetector::found, this, &ExternalChanges::handleContent);
}

ExternalChanges::~ExternalChanges() = default;

void ExternalChanges::followActivity() {
    if (controller_.activity() == DocumentController::Activity::idle) {
        detector_.resume();
    } else {
        detector_.pause();
    }
}

void ExternalChanges::followFile() {
    setTrouble(Trouble::none);
    if (const auto& base = controller_.fileState().base) {
        detector_.follow(controller_.path(), *base);
    }
}

FileState::Verdict ExternalChanges::verdict() const {
    const bool hasWork = controller_.hasEdits() || (hasInput_ && hasInput_());
    return controller_.fileState().verdict(hasWork);
}

void ExternalChanges::handleContent(const FileContent& content) {
    controller_.updateFileContent(content);
    act();
}

void ExternalChanges::keepMine() {
    controller_.overruleFile();
    act();
}

void ExternalChanges::act() {
    switch (verdict()) {
        case FileState::Verdict::inSync:
        case FileState::Verdict::settled:
            setTrouble(Trouble::none);
            break;
        case FileState::Verdict::reload:
            controller_.reload([this] { return verdict() == FileState::Verdict::reload; });
            break;
        case FileState::Verdict::ask:
            setTrouble(Trouble::changed);
            break;
        case FileState::Verdict::unreadable:
            setTrouble(Trouble::unreadable);
            break;
        case FileState::Verdict::missing:
            setTrouble(Trouble::deleted);
            break;
    }
}

void ExternalChanges::setTrouble(Trouble trouble) {
    if (trouble_ != trouble || trouble == Trouble::unreadable) {
        trouble_ = trouble;
        Q_EMIT troubleChanged();
    }
}
