#include "app/ui/CrashRecovery.h"

#include <QMessageBox>
#include <cstring>
#include <memory>
#include <utility>

#include "app/desktop/BackgroundTask.h"
#include "app/desktop/FileManager.h"
#include "app/model/FilePath.h"
#include "app/ui/MessageDialog.h"
#include "app/ui/RecoveryDialog.h"

CrashRecovery::CrashRecovery(QString place, QObject* parent)
    : QObject(parent), place_(std::move(place)) {}

void CrashRecovery::begin(QWidget& window) {
    window_ = &window;
    BackgroundTask::run(
        *this,
        [place = place_] {
            return std::make_shared<Findings>(
                Findings{SafetyCopy::leftBehind(place), LostDocument::find(place)});
        },
        [this](const std::shared_ptr<Findings>& findings) { ask(findings); });
}

void CrashRecovery::ask(const std::shared_ptr<Findings>& findings) {
    if (window_ == nullptr) {
        return;
    }
    if (!findings->copies.empty()) {
        askAboutCopy(findings);
    } else if (!findings->documents.empty()) {
        auto* dialog = new RecoveryDialog(std::move(findings->documents), window_);
        connect(dialog, &RecoveryDialog::recoverChosen, this, &CrashRecovery::recoverChosen);
        connect(dialog, &RecoveryDialog::showFolderChosen, this, &CrashRecovery::showFolder);
        dialog->open();
    }
}

/// Asks about one file after the other.
void CrashRecovery::askAboutCopy(const std::shared_ptr<Findings>& findings) {
    const auto copy = std::make_shared<SafetyCopy>(std::move(findings->copies.back()));
    findings->copies.pop_back();
    const QString name = FilePath::shownName(FilePath::decoded(copy->target()));
    QMessageBox* box = MessageDialog::askToRestore(*window_, name);
    connect(box, &QMessageBox::finished, this, [this, findings, copy](int answer) {
        if (answer == QMessageBox::Yes) {
            restore(*copy);
        } else if (answer == QMessageBox::No) {
            copy->remove();
        } else {
            showFolder(copy->path());
        }
        ask(findings);
    });
}

void CrashRecovery::restore(const SafetyCopy& copy) {
    const int error = copy.restore();
    if (error == 0) {
        copy.remove();
        return;
    }
    MessageDialog::show(*window_,
                        tr("The file “%1” could not be restored.")
                            .arg(FilePath::shownName(FilePath::decoded(copy.target()))),
                        tr("%1.\n\nWhat it held before is kept in “%2”.")
                            .arg(QString::fromLocal8Bit(std::strerror(error)), copy.path()));
}

void CrashRecovery::showFolder(const QString& path) {
    FileManager::show(path, *this, [this, path] {
        if (window_ != nullptr) {
            MessageDialog::show(*window_, tr("No file manager shows the folder."),
                                tr("What was kept is in “%1”.").arg(path));
        }
    });
}
