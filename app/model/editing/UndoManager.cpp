#include "app/model/editing/UndoManager.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/MainThread.h"
#include "app/model/runtime/Plist.h"

UndoManager::UndoManager(QObject* parent) : QObject(parent) {
    MainThread::check();
}

UndoManager::~UndoManager() = default;

// --- Groups ---

void UndoManager::beginGroup() {
    MainThread::check();
    ++depth_;
}

void UndoManager::endGroup() {
    MainThread::check();
    plistCheck(depth_ > 0, "only an open undo group can end");
    if (--depth_ > 0 || isTakingBack_) {
        return;
    }
    Group group = std::exchange(open_, {});
    if (group.registrations.empty()) {
        return;
    }
    const bool wasModified = isModified();
    group.before = state_;
    group.after = ++lastState_;
    undoable_.push_back(std::move(group));
    redoable_.clear();
    moveTo(lastState_, wasModified);
}

void UndoManager::registerUndo(PlistDocument& document, Handler handler) {
    MainThread::check();
    plistCheck(depth_ > 0 || isTakingBack_, "undo is registered inside a group");
    open_.registrations.push_back({&document, std::move(handler)});
}

void UndoManager::setActionName(const QString& name) {
    MainThread::check();
    plistCheck(depth_ > 0 || isTakingBack_, "only an open undo group has a name to set");
    if (!isTakingBack_) {
        open_.name = name;
    }
}

QString UndoManager::undoActionName() const {
    return undoable_.empty() ? QString() : undoable_.back().name;
}

QString UndoManager::redoActionName() const {
    return redoable_.empty() ? QString() : redoable_.back().name;
}

// --- Back and forth ---

/// The documents of some registrations while they are edited: each reports one change when this
/// ends, however many handlers ran.
class UndoManager::EditedDocuments {
public:
    explicit EditedDocuments(const std::vector<Registration>& registrations) {
        for (const Registration& registration : registrations) {
            if (registration.document && !std::ranges::count(documents_, registration.document)) {
                documents_.push_back(registration.document);
                registration.document->beginEditing();
            }
        }
    }
    EditedDocuments(const EditedDocuments&) = delete;
    EditedDocuments& operator=(const EditedDocuments&) = delete;
    ~EditedDocuments() {
        for (const auto& document : documents_) {
            if (document) {
                document->endEditing();
            }
        }
    }

private:
    std::vector<QPointer<PlistDocument>> documents_;
};

void UndoManager::undo() {
    takeBack(undoable_, redoable_);
}

void UndoManager::redo() {
    takeBack(redoable_, undoable_);
}

void UndoManager::takeBack(std::vector<Group>& from, std::vector<Group>& to) {
    MainThread::check();
    plistCheck(depth_ == 0 && !isTakingBack_, "nothing is undone or redone inside a group");
    if (from.empty()) {
        return;
    }
    const bool wasModified = isModified();
    Group group = std::move(from.back());
    from.pop_back();
    // Listeners may edit at once: by then everything is in its place.
    const EditedDocuments documents(group.registrations);
    isTakingBack_ = true;
    try {
        runHandlers(group);
    } catch (...) {
        isTakingBack_ = false;
        abandonHistory();
        throw;
    }
    isTakingBack_ = false;
    keepAnswer(group, to);
    moveTo(group.before, wasModified);
}

void UndoManager::runHandlers(const Group& group) {
    for (std::size_t i = group.registrations.size(); i > 0; --i) {
        const Registration& registration = group.registrations[i - 1];
        if (registration.document) {
            registration.handler();
        }
    }
}

/// Makes an entry of what was registered while `group` was taken back.
void UndoManager::keepAnswer(const Group& group, std::vector<Group>& to) {
    Group answer = std::exchange(open_, {});
    answer.name = group.name;
    answer.before = group.after;
    answer.after = group.before;
    if (!answer.registrations.empty()) {
        to.push_back(std::move(answer));
    }
}

void UndoManager::abandonHistory() {
    const bool wasModified = isModified();
    open_ = {};
    depth_ = 0;
    undoable_.clear();
    redoable_.clear();
    moveTo(++lastState_, wasModified);
}

void UndoManager::clear() {
    MainThread::check();
    plistCheck(depth_ == 0 && !isTakingBack_, "the history is not emptied inside a group");
    if (canUndo() || canRedo()) {
        undoable_.clear();
        redoable_.clear();
        Q_EMIT historyChanged();
    }
}

// --- What is saved ---

void UndoManager::setSavedState(std::optional<State> state) {
    MainThread::check();
    const bool wasModified = isModified();
    savedState_ = state;
    if (isModified() != wasModified) {
        Q_EMIT isModifiedChanged();
    }
}

void UndoManager::moveTo(State state, bool wasModified) {
    state_ = state;
    Q_EMIT historyChanged();
    if (isModified() != wasModified) {
        Q_EMIT isModifiedChanged();
    }
}

// --- Groups of edits ---

EditGroup::EditGroup(PlistDocument& document, UndoManager* undoManager, QString name)
    : document_(document), undoManager_(undoManager), name_(std::move(name)) {
    document_.beginEditing();
    if (undoManager_) {
        undoManager_->beginGroup();
    }
}

EditGroup::~EditGroup() {
    if (undoManager_) {
        if (!name_.isEmpty()) {
            undoManager_->setActionName(name_);
        }
        undoManager_->endGroup();
    }
    document_.endEditing();
}
