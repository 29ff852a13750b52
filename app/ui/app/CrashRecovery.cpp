#include "app/ui/app/CrashRecovery.h"

#include <QMessageBox>
#include <cstring>
#include <memory>
#include <utility>

#include "app/desktop/files/BackgroundTask.h"
#include "app/desktop/files/FilePath.h"
#include "app/desktop/session/FileManager.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/dialogs/RecoveryDialog.h"

CrashRecovery::CrashRecovery(QString folder, QObject* parent)
    : QObject(parent), folder_(std::move(folder)) {}

void CrashRecovery::search() {
    if (hasSearched_) {
        return;
    }
    hasSearched_ = true;
    BackgroundTask::run(
        *this,
        [folder = folder_] {
            return std::make_shared<Findings>(
                Findings{SafetyCopy::leftBehind(folder), RecoverableDocument::find(folder)});
        },
        [this](const std::shared_ptr<Findings>& findings) {
            findings_ = std::move(*findings);
            if (!findings_.copies.empty() || !findings_.documents.empty()) {
                Q_EMIT found();
            }
        });
}

void CrashRecovery::ask(QWidget& window) {
    window_ = &window;
    askAboutNext();
}

/// Asks about one file after the other, then about all documents.
void CrashRecovery::askAboutNext() {
    if (window_ == nullptr) {
        return;
    }
    if (!findings_.copies.empty()) {
        askAboutCopy();
    } else if (!findings_.documents.empty()) {
        auto* dialog = new RecoveryDialog(std::exchange(findings_.documents, {}), window_);
        connect(dialog, &RecoveryDialog::recoverChosen, this, &CrashRecovery::recoverChosen);
        connect(dialog, &RecoveryDialog::showFolderChosen, this, &CrashRecovery::showFolder);
        dialog->open();
    }
}

void CrashRecovery::askAboutCopy() {
    const auto copy = std::make_shared<SafetyCopy>(std::move(findings_.copies.back()));
    findings_.copies.pop_back();
    const QString name = FilePath::shownName(FilePath::decoded(copy->target()));
    QMessageBox* box = MessageDialog::askToRestore(*window_, name);
    connect(box, &QMessageBox::finished, this, [this, copy](int answer) {
        if (answer == QMessageBox::Yes) {
            restore(*copy);
        } else if (answer == QMessageBox::No) {
            copy->remove();
        } else {
            showFolder(copy->path());
        }
        askAboutNext();
    });
}

void CrashRecovery::restore(const SafetyCopy& copy) {
    const int error = copy.restore();
    if (error == 0) {
        copy.remove();
        return;
    }
    MessageDialog::show(
        *window_,
        tr("The file “%1” could not be restored.")
            .arg(FilePath::shownName(FilePath::decoded(copy.target()))),
        tr("%1.\n\nIts previous contents are in “%2”.")
            .arg(QString::fromLocal8Bit(std::strerror(error)), FilePath::shown(copy.path())));
}

void CrashRecovery::showFolder(const QString& path) {
    FileManager::show(path, *this, [this, path] {
        if (window_ != nullptr) {
            MessageDialog::show(*window_, tr("The folder can't be shown in a file manager."),
                                tr("The backup is in “%1”.").arg(FilePath::shown(path)));
        }
    });
}
