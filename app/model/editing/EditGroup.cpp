#include "app/model/editing/EditGroup.h"

#include <utility>

#include "app/model/editing/PlistDocument.h"

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
