#include "app/ui/app/TabuletApp.h"

#include <QApplication>
#include <QFileDialog>
#include <QSessionManager>
#include <QTimer>
#include <algorithm>
#include <chrono>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/files/StateFolder.h"
#include "app/desktop/session/RecentDocuments.h"
#include "app/desktop/session/RestartCommand.h"
#include "app/ui/app/Language.h"
#include "app/ui/dialogs/FileDialogs.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/window/DocumentWindow.h"

namespace {

/// Whether a window shows its file, and the user has not done anything to it yet.
bool isUntouched(DocumentWindow& window) {
    DocumentController& controller = window.controller();
    return controller.activity() == DocumentController::Activity::idle &&
           !controller.isModified() && !controller.undoManager().canUndo() &&
           !controller.undoManager().canRedo() && window.isUndisturbed();
}

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

}  // namespace

TabuletApp::TabuletApp(QObject* parent)
    : QObject(parent),
      recoveryStore_(StateFolder::recoveryPath()),
      crashRecovery_(StateFolder::recoveryPath()) {
    connect(&colorScheme_, &ColorScheme::preferenceChanged, this,
            [this] { appearance_.follow(colorScheme_.preference()); });
    connect(&crashRecovery_, &CrashRecovery::found, this, &TabuletApp::offerRecovery);
    connect(&crashRecovery_, &CrashRecovery::recoverChosen, this, &TabuletApp::recover);
    connect(&terminationSignals_, &TerminationSignals::received, this,
            &TabuletApp::quitWithoutAsking);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &TabuletApp::backUpAll,
            Qt::DirectConnection);
    connect(qApp, &QGuiApplication::saveStateRequest, this, &TabuletApp::tellHowToRestart,
            Qt::DirectConnection);
    qApp->installEventFilter(this);
}

TabuletApp::~TabuletApp() {
    const QList<DocumentWindow*> remaining = windows_;
    windows_.clear();
    qDeleteAll(remaining);
}

void TabuletApp::setUp(const QString& version) {
    QCoreApplication::setApplicationName(QStringLiteral("tabulet"));
    QCoreApplication::setApplicationVersion(version);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tabulet"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.ventrel.Tabulet"));
    Language::load();
}

void TabuletApp::start(const QStringList& paths) {
    if (paths.isEmpty()) {
        newDocument();
    } else {
        open(paths);
    }
}

void TabuletApp::waitForRequests() {
    constexpr std::chrono::seconds timeout{10};
    QTimer::singleShot(timeout, this, [this] {
        if (windows_.isEmpty()) {
            quit();
        }
    });
}

/// The questions appear over a window, which must be in its place by then.
void TabuletApp::searchAfterCrash(DocumentWindow& window) {
    connect(&window, &DocumentWindow::documentShown, &crashRecovery_, &CrashRecovery::search);
    connect(&window.controller(), &DocumentController::openFailed, &crashRecovery_,
            &CrashRecovery::search);
}

void TabuletApp::offerRecovery() {
    const auto found =
        std::find_if(windows_.begin(), windows_.end(),
                     [](const DocumentWindow* window) { return window->isUndisturbed(); });
    if (found != windows_.end()) {
        crashRecovery_.ask(**found);
        return;
    }
    DocumentWindow* window = newDocument();
    connect(
        window, &DocumentWindow::documentShown, this,
        [this, window] { crashRecovery_.ask(*window); }, Qt::SingleShotConnection);
}

DocumentWindow* TabuletApp::newDocument() {
    DocumentWindow* window = createWindow();
    window->show();
    return window;
}

void TabuletApp::open(const QStringList& paths) {
    for (const QString& path : paths) {
        openOne(path);
    }
}

void TabuletApp::takeOver(const QStringList& paths, const LaunchToken& token) {
    // The user continues to work.
    isQuitting_ = false;
    token.useForNextWindow();
    DocumentWindow* window = nullptr;
    for (const QString& path : paths) {
        window = openOne(path);
    }
    if (window == nullptr) {
        window = pristineWindow();
    }
    bringToFront(window != nullptr ? *window : *newDocument());
    token.endStartup();
}

void TabuletApp::openNewWindow(const LaunchToken& token) {
    isQuitting_ = false;
    token.useForNextWindow();
    bringToFront(*newDocument());
    token.endStartup();
}

DocumentWindow* TabuletApp::openOne(const QString& path) {
    if (DocumentWindow* window = windowShowing(path)) {
        bringToFront(*window);
        return window;
    }
    DocumentWindow* window = pristineWindow();
    if (window == nullptr) {
        window = createWindow();
    }
    window->open(path);
    window->show();
    return window;
}

DocumentWindow* TabuletApp::createWindow() {
    ++untitledCount_;
    const QString name =
        untitledCount_ == 1 ? tr("Untitled") : tr("Untitled %1").arg(untitledCount_);
    auto* window = new DocumentWindow(name);
    windows_ += window;
    if (windows_.size() == 1) {
        searchAfterCrash(*window);
    }
    window->session().backUpTo(recoveryStore_);
    connect(window, &DocumentWindow::newChosen, this, &TabuletApp::newDocument);
    connect(window, &DocumentWindow::openChosen, this, [this, window] { askForFiles(*window); });
    connect(window, &DocumentWindow::recentChosen, this, &TabuletApp::openOne);
    connect(window, &DocumentWindow::filesDropped, this, &TabuletApp::open);
    connect(window, &DocumentWindow::quitChosen, this, &TabuletApp::quit);
    connect(window, &DocumentWindow::closeRefused, this, [this] { isQuitting_ = false; });
    connect(window, &QObject::destroyed, this, &TabuletApp::forget);
    const auto remember = [window] {
        if (const QString& path = window->controller().path(); !path.isEmpty()) {
            RecentDocuments::add(path);
        }
    };
    connect(&window->controller(), &DocumentController::opened, window, remember);
    connect(&window->controller(), &DocumentController::saved, window, remember);
    window->setWindowList([this] { return QList<QWidget*>(windows_.begin(), windows_.end()); });
    return window;
}

DocumentWindow* TabuletApp::windowShowing(const QString& path) const {
    const auto found =
        std::find_if(windows_.begin(), windows_.end(), [&path](DocumentWindow* window) {
            const QString& shown = window->controller().claimedPath();
            return !shown.isEmpty() && FilePath::isSameFile(shown, path);
        });
    return found == windows_.end() ? nullptr : *found;
}

QStringList TabuletApp::openPaths() const {
    QStringList paths;
    for (DocumentWindow* window : windows_) {
        if (const QString& path = window->controller().claimedPath(); !path.isEmpty()) {
            paths += path;
        }
    }
    return paths;
}

DocumentWindow* TabuletApp::pristineWindow() const {
    const auto found = std::find_if(windows_.begin(), windows_.end(), [](DocumentWindow* window) {
        return window->controller().isPristine() && window->isUndisturbed();
    });
    return found == windows_.end() ? nullptr : *found;
}

void TabuletApp::askForFiles(DocumentWindow& window) const {
    const QString& path = window.controller().path();
    QFileDialog* dialog = FileDialogs::opening(
        window, path.isEmpty() ? RecentDocuments::lastFolder() : FilePath::folder(path));
    connect(dialog, &QFileDialog::filesSelected, this, &TabuletApp::open);
    dialog->open();
}

void TabuletApp::recover(const RecoverableDocument& lost) {
    if (DocumentWindow* window = windowReading(lost)) {
        // Its file may have been named at the start: one window shows both, one after the other.
        connect(
            &window->controller(), &DocumentController::activityChanged, this,
            [this, lost] { recover(lost); },
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
        return;
    }
    DocumentWindow* window = windowFor(lost);
    window->recover(lost);
    window->show();
}

/// The window that is about to show its file.
DocumentWindow* TabuletApp::windowReading(const RecoverableDocument& lost) const {
    DocumentWindow* window = lost.hasFile() ? windowShowing(lost.filePath()) : nullptr;
    const bool isReading = window != nullptr &&
                           window->controller().activity() == DocumentController::Activity::reading;
    return isReading ? window : nullptr;
}

/// The window that shows its file without changes, or one that shows nothing yet.
DocumentWindow* TabuletApp::windowFor(const RecoverableDocument& lost) {
    if (lost.hasFile()) {
        DocumentWindow* window = windowShowing(lost.filePath());
        if (window != nullptr && isUntouched(*window)) {
            return window;
        }
    }
    DocumentWindow* window = pristineWindow();
    return window != nullptr ? window : createWindow();
}

// --- The end ---

void TabuletApp::backUpAll() {
    for (DocumentWindow* window : windows_) {
        window->view().commitEditing();
        window->session().backUpNow();
    }
    recoveryStore_.wait();
}

/// Unsaved changes come back as after a crash, in the windows of their files.
void TabuletApp::tellHowToRestart(QSessionManager& manager) const {
    manager.setRestartCommand(
        RestartCommand::showing(openPaths(), manager.sessionId() + u'_' + manager.sessionKey()));
}

void TabuletApp::quitWithoutAsking() {
    backUpAll();
    recoveryStore_.seal();
    QCoreApplication::exit();
}

bool TabuletApp::eventFilter(QObject* watched, QEvent* event) {
    // The desktop's session ends; where the user quits, the questions have been asked already.
    if (watched == qApp && event->type() == QEvent::Quit) {
        quitWithoutAsking();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void TabuletApp::quit() {
    isQuitting_ = true;
    if (windows_.isEmpty()) {
        QCoreApplication::quit();
    } else {
        windows_.last()->close();
    }
}

void TabuletApp::forget(QObject* window) {
    windows_.removeIf([window](const DocumentWindow* one) { return one == window; });
    if (isQuitting_) {
        // Not from within the destructor of the window before.
        QTimer::singleShot(0, this, &TabuletApp::quit);
    }
}
