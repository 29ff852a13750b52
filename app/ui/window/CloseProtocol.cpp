#include "app/ui/window/CloseProtocol.h"

#include <QMessageBox>

#include "app/desktop/document/DocumentController.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/document/DocumentView.h"

CloseProtocol::CloseProtocol(DocumentController& controller, DocumentView& view, QWidget& window)
    : QObject(&window), controller_(controller), view_(view), window_(window) {
    connect(&controller, &DocumentController::saved, this, &CloseProtocol::handleSaved);
}

bool CloseProtocol::mayClose() {
    if (!isDiscarded_ && !view_.commitEditing()) {
        refuse();
        return false;
    }
    if (controller_.activity() == DocumentController::Activity::writing) {
        closesWhenSaved_ = true;
        Q_EMIT waitsForSave();
        return false;
    }
    if (!isDiscarded_ && controller_.isModified()) {
        askToSave();
        return false;
    }
    return true;
}

void CloseProtocol::refuse() {
    closesWhenSaved_ = false;
    Q_EMIT refused();
}

void CloseProtocol::askToSave() {
    if (isAsking_) {
        return;
    }
    isAsking_ = true;
    QMessageBox* box = MessageDialog::askToSave(window_, controller_.name());
    connect(box, &QMessageBox::finished, this, &CloseProtocol::handleAnswer);
}

void CloseProtocol::handleAnswer(int answer) {
    isAsking_ = false;
    if (answer == QMessageBox::Save) {
        closesWhenSaved_ = true;
        Q_EMIT saveChosen();
    } else if (answer == QMessageBox::Discard) {
        isDiscarded_ = true;
        Q_EMIT discardChosen();
        window_.close();
    } else {
        refuse();
    }
}

void CloseProtocol::handleSaved() {
    if (closesWhenSaved_) {
        closesWhenSaved_ = false;
        window_.close();
    }
}
