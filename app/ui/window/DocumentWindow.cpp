#include "app/ui/window/DocumentWindow.h"

#include <QCloseEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStackedWidget>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "app/desktop/files/FilePath.h"
#include "app/ui/dialogs/FileDialogs.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/dialogs/RecoveryDialog.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/editors/DataPopover.h"
#include "app/ui/menus/EditMenu.h"
#include "app/ui/menus/FileMenu.h"
#include "app/ui/menus/HelpMenu.h"
#include "app/ui/menus/PlistCommands.h"
#include "app/ui/menus/WindowMenu.h"
#include "app/ui/notices/FileNotice.h"
#include "app/ui/notices/NoticeStrip.h"
#include "app/ui/notices/ProgressPage.h"
#include "app/ui/notices/SaveProgress.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/CloseProtocol.h"

namespace {

/// A name for the title bar, where "[*]" stands for the mark of unsaved changes.
QString titleFor(QString name) {
    return name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")) + QStringLiteral("[*]");
}

QStringList localFilesOf(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (const std::optional<QString> path = FilePath::fromUri(url)) {
            paths.append(*path);
        }
    }
    return paths;
}

/// Whether a dialog is open that is about the document below it: one that asks what to open or to
/// recover is not.
bool isAboutThisDocument(const QDialog* dialog) {
    const auto* files = qobject_cast<const QFileDialog*>(dialog);
    const bool isOpening = files != nullptr && files->acceptMode() == QFileDialog::AcceptOpen;
    return dialog->isVisible() && !isOpening &&
           qobject_cast<const RecoveryDialog*>(dialog) == nullptr;
}

}  // namespace

DocumentWindow::DocumentWindow(const QString& untitledName, QWidget* parent)
    : QMainWindow(parent),
      session_(untitledName),
      pages_(new QStackedWidget(this)),
      progress_(new ProgressPage(pages_)),
      view_(new DocumentView(controller().document(), &controller().undoManager(), pages_)),
      closing_(new CloseProtocol(controller(), *view_, *this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAcceptDrops(true);
    createMenus();
    addToolBar(view_->toolBar());
    createLayout();
    resize(defaultSize);
    followController();
    followSession();
    followFile();
    followClosing();
    updateTitle();
    updateFileMenu();
    showDocument();
}

DocumentWindow::~DocumentWindow() {
    // The view looks at the document until it is gone, and the document is a member of this.
    delete pages_;
}

void DocumentWindow::createLayout() {
    pages_->addWidget(view_);
    pages_->addWidget(progress_);
    auto* content = new QWidget(this);
    notice_ = new FileNotice(session_.externalChanges(), content);
    saveProgress_ = new SaveProgress(content);
    layout_ = new QVBoxLayout(content);
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(0);
    layout_->addWidget(notice_);
    layout_->addWidget(pages_, 1);
    layout_->addWidget(saveProgress_);
    setCentralWidget(content);
}

void DocumentWindow::createMenus() {
    fileMenu_ = new FileMenu(this);
    menuBar()->addMenu(fileMenu_);
    connect(fileMenu_, &FileMenu::newChosen, this, &DocumentWindow::newChosen);
    connect(fileMenu_, &FileMenu::openChosen, this, &DocumentWindow::openChosen);
    connect(fileMenu_, &FileMenu::closeChosen, this, &QWidget::close);
    connect(fileMenu_, &FileMenu::saveChosen, this, &DocumentWindow::save);
    connect(fileMenu_, &FileMenu::saveAsChosen, this, &DocumentWindow::saveAs);
    connect(fileMenu_, &FileMenu::recentChosen, this, &DocumentWindow::recentChosen);
    connect(fileMenu_, &FileMenu::revertChosen, this, &DocumentWindow::revert);
    connect(fileMenu_, &FileMenu::quitChosen, this, &DocumentWindow::quitChosen);
    auto* commands = new PlistCommands(*view_, this);
    menuBar()->addMenu(new EditMenu(*view_, controller().undoManager(), *commands, this));
    commands->addEditorItems(*menuBar()->addMenu(tr("Edi&tor")));
    menuBar()->addMenu(new WindowMenu(
        [this] { return allWindows_ ? allWindows_() : QList<QWidget*>{this}; }, this));
    menuBar()->addMenu(new HelpMenu(this));
}

void DocumentWindow::followController() {
    connect(&controller(), &DocumentController::pathChanged, this, &DocumentWindow::updateTitle);
    connect(&controller(), &DocumentController::modifiedChanged, this, [this] {
        setWindowModified(controller().isModified());
        updateFileMenu();
    });
    connect(&controller(), &DocumentController::activityChanged, this,
            &DocumentWindow::updateActivity);
    connect(&controller(), &DocumentController::opened, this, &DocumentWindow::showDocument);
    connect(&controller(), &DocumentController::revertFailed, this,
            [this](const FileError& error) { MessageDialog::show(*this, error); });
    connect(&controller(), &DocumentController::saveFailed, this,
            &DocumentWindow::explainSaveFailure);
    connect(progress_, &ProgressPage::cancelled, this, &QWidget::close);
}

void DocumentWindow::followSession() {
    connect(&session_, &DocumentSession::openFailed, this, &DocumentWindow::explainOpenFailure);
    connect(&session_, &DocumentSession::recoveryFailed, this,
            &DocumentWindow::explainRecoveryFailure);
    connect(&session_, &DocumentSession::backupFailed, this, &DocumentWindow::warnThatBackupFails);
    connect(&session_, &DocumentSession::backedUp, this, [this] { delete backupWarning_; });
    connect(this, &DocumentWindow::documentShown, &session_, &DocumentSession::backUpRecovered);
}

void DocumentWindow::followFile() {
    ExternalChanges& changes = session_.externalChanges();
    changes.setInputCheck([this] { return hasInput(); });
    connect(&changes, &ExternalChanges::troubleChanged, this, [this] {
        if (notice_->isAncestorOf(focusWidget())) {
            view_->setFocus();
        }
        notice_->showTrouble(controller().name());
    });
    connect(notice_, &FileNotice::reloadChosen, this, &DocumentWindow::reload);
    connect(notice_, &FileNotice::keepChosen, &changes, &ExternalChanges::keepMine);
    connect(notice_, &FileNotice::saveChosen, this, &DocumentWindow::save);
    connect(&controller(), &DocumentController::aboutToReload, this,
            [this] { viewPosition_.emplace(view_->table()); });
    connect(&controller(), &DocumentController::reloaded, this, [this] {
        viewPosition_->restore(view_->table());
        viewPosition_.reset();
    });
}

/// Whether the user has begun something that is not an edit of the document yet.
bool DocumentWindow::hasInput() const {
    return view_->table().isEditing() || findChild<DataPopover*>() != nullptr;
}

void DocumentWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        session_.externalChanges().check();
    }
}

void DocumentWindow::updateActivity() {
    updateFileMenu();
    notice_->setEnabled(controller().activity() == DocumentController::Activity::idle);
    if (controller().activity() == DocumentController::Activity::writing) {
        saveProgress_->start(tr("Saving “%1”…").arg(controller().name()), controller().progress());
    } else {
        saveProgress_->stop();
    }
}

void DocumentWindow::updateTitle() {
    setWindowTitle(titleFor(controller().name()));
    setWindowFilePath(FilePath::shown(controller().path()));
}

void DocumentWindow::updateFileMenu() {
    const bool isIdle = controller().activity() == DocumentController::Activity::idle;
    fileMenu_->setSavingEnabled(isIdle);
    fileMenu_->setRevertEnabled(isIdle && controller().isModified() &&
                                !controller().path().isEmpty());
}

// --- Opening ---

void DocumentWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!localFilesOf(*event->mimeData()).isEmpty()) {
        // Never a move: the file manager would delete the file after it.
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

void DocumentWindow::dropEvent(QDropEvent* event) {
    const QStringList paths = localFilesOf(*event->mimeData());
    if (!paths.isEmpty()) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
        Q_EMIT filesDropped(paths);
    }
}

void DocumentWindow::open(const QString& path) {
    const QString name = FilePath::shownName(path);
    controller().open(path);
    showProgress(name, tr("Opening “%1”\u2026").arg(name));
}

void DocumentWindow::recover(const RecoverableDocument& lost) {
    const QString& name = lost.record().title;
    session_.recover(lost);
    showProgress(name, tr("Recovering “%1”\u2026").arg(name));
}

void DocumentWindow::warnThatBackupFails(const QString& reason) {
    delete backupWarning_;
    backupWarning_ = new NoticeStrip(
        tr("Unsaved changes can't be backed up: %1. Save often.").arg(reason), centralWidget());
    backupWarning_->setObjectName(QStringLiteral("backupWarning"));
    layout_->insertWidget(0, backupWarning_);
}

void DocumentWindow::showProgress(const QString& title, const QString& text) {
    setWindowTitle(titleFor(title));
    progress_->start(text, controller().progress());
    pages_->setCurrentWidget(progress_);
    // Until the document is there, nothing can be done to it.
    view_->setEnabled(false);
    view_->toolBar()->setEnabled(false);
}

void DocumentWindow::showDocument() {
    progress_->stop();
    pages_->setCurrentWidget(view_);
    view_->setEnabled(true);
    view_->toolBar()->setEnabled(true);
    view_->setFocus();
    if (!awaitsPaint_) {
        awaitsPaint_ = true;
        for (QWidget* painted : view_->paintedWidgets()) {
            painted->installEventFilter(this);
        }
    }
}

bool DocumentWindow::eventFilter(QObject* watched, QEvent* event) {
    // The document is being painted now: tell when that is done.
    if (awaitsPaint_ && event->type() == QEvent::Paint && pages_->currentWidget() == view_ &&
        controller().activity() != DocumentController::Activity::reading) {
        awaitsPaint_ = false;
        for (QWidget* painted : view_->paintedWidgets()) {
            painted->removeEventFilter(this);
        }
        QTimer::singleShot(0, this, &DocumentWindow::documentShown);
    }
    return QMainWindow::eventFilter(watched, event);
}

/// Then closes the window, which has nothing to show.
void DocumentWindow::explainOpenFailure(const FileError& error) {
    progress_->stop();
    const QMessageBox* box = MessageDialog::show(*this, error);
    connect(box, &QMessageBox::finished, this, &QWidget::close);
}

void DocumentWindow::explainRecoveryFailure(const QString& title, const FileError& error) {
    progress_->stop();
    const QMessageBox* box = MessageDialog::show(
        *this, tr("“%1” could not be recovered.").arg(title),
        tr("%1\n\nThe backup is in “%2”.").arg(error.failureReason(), error.path()));
    connect(box, &QMessageBox::finished, this, &QWidget::close);
}

bool DocumentWindow::isUndisturbed() const {
    const QList<QDialog*> dialogs = findChildren<QDialog*>();
    return std::none_of(dialogs.begin(), dialogs.end(), isAboutThisDocument) &&
           pages_->currentWidget() == view_ && !hasInput();
}

// --- Saving ---

void DocumentWindow::save() {
    if (controller().activity() != DocumentController::Activity::idle || !view_->commitEditing()) {
        closing_->refuse();
        return;
    }
    if (controller().path().isEmpty()) {
        saveAs();
    } else {
        controller().save();
    }
}

void DocumentWindow::saveAs() {
    if (!view_->commitEditing()) {
        closing_->refuse();
        return;
    }
    QFileDialog* dialog = FileDialogs::saving(*this, controller().path(), controller().name());
    connect(dialog, &QFileDialog::fileSelected, this, &DocumentWindow::saveTo);
    connect(dialog, &QFileDialog::rejected, closing_, &CloseProtocol::refuse);
    dialog->open();
}

/// Saves under this name, unless something else has begun while the user was asked for it.
void DocumentWindow::saveTo(const QString& path) {
    if (controller().activity() == DocumentController::Activity::idle) {
        controller().save(path);
    } else {
        closing_->refuse();
    }
}

void DocumentWindow::explainSaveFailure(const FileError& error) {
    if (error.code() == FileError::Code::changedOnDisk) {
        MessageDialog::askAboutChange(*this, error, [this](MessageDialog::ChangeAnswer answer) {
            saveDespiteChange(answer);
        });
        return;
    }
    closing_->refuse();
    MessageDialog::show(*this, error);
}

void DocumentWindow::saveDespiteChange(MessageDialog::ChangeAnswer answer) {
    switch (answer) {
        case MessageDialog::ChangeAnswer::overwrite:
            saveTo(controller().path());
            return;
        case MessageDialog::ChangeAnswer::saveAs:
            saveAs();
            return;
        case MessageDialog::ChangeAnswer::reload:
            reload();
            break;
        case MessageDialog::ChangeAnswer::cancel:
            break;
    }
    closing_->refuse();
}

void DocumentWindow::reload() {
    if (controller().activity() == DocumentController::Activity::idle) {
        view_->endEditing();
        controller().reload();
    }
}

void DocumentWindow::revert() {
    if (controller().activity() == DocumentController::Activity::idle) {
        view_->endEditing();
        controller().revert();
    }
}

// --- Closing ---

void DocumentWindow::followClosing() {
    connect(closing_, &CloseProtocol::refused, this, &DocumentWindow::closeRefused);
    connect(closing_, &CloseProtocol::saveChosen, this, &DocumentWindow::save);
    connect(closing_, &CloseProtocol::discardChosen, &session_, &DocumentSession::discardRecovered);
    connect(closing_, &CloseProtocol::waitsForSave, this, [this] {
        saveProgress_->showNow(
            tr("Saving “%1”… The window will close when this is done.").arg(controller().name()));
    });
}

void DocumentWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(closing_->mayClose());
}
