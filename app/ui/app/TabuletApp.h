#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

#include "app/desktop/recovery/RecoveryStore.h"
#include "app/desktop/session/ColorScheme.h"
#include "app/desktop/session/LaunchToken.h"
#include "app/desktop/session/TerminationSignals.h"
#include "app/ui/app/CrashRecovery.h"
#include "app/ui/look/Appearance.h"

class DocumentWindow;
class QSessionManager;

/// The application: opens and creates documents, each in a window of its own, and ends when the
/// last of them is closed.
class TabuletApp : public QObject {
    Q_OBJECT

public:
    explicit TabuletApp(QObject* parent = nullptr);
    ~TabuletApp() override;

    /// Sets the name and the version of the application and loads its texts; once, before anything
    /// is shown.
    static void setUp(const QString& version);

    /// Opens the files, or a new document if there are none.
    void start(const QStringList& paths);

    /// Opens nothing yet: another program will say what to open. Quits if it does not.
    void waitForRequests();

    DocumentWindow* newDocument();

    /// Opens each file in a window of its own, or brings the window that shows it already to the
    /// front. A window with an untouched new document is used for the first.
    void open(const QStringList& paths);

    /// Opens what another start of the program has handed over, and brings the last window of it to
    /// the front. Without files that is an untouched new document.
    void takeOver(const QStringList& paths, const LaunchToken& token);

    /// Shows a new document, whatever is open.
    void openNewWindow(const LaunchToken& token);

    /// Backs up all unsaved documents for the next start and quits without asking: the system wants
    /// the process to end.
    void quitWithoutAsking();

    /// Closes all windows, asking about unsaved changes, until the user refuses.
    void quit();

    /// In the order in which they were created.
    const QList<DocumentWindow*>& windows() const noexcept { return windows_; }

    /// The files of the documents that are open or being read, in the order of their windows.
    QStringList openPaths() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void backUpAll();
    void tellHowToRestart(QSessionManager& manager) const;
    void offerRecovery();
    void recover(const RecoverableDocument& lost);
    DocumentWindow* windowReading(const RecoverableDocument& lost) const;
    DocumentWindow* windowFor(const RecoverableDocument& lost);
    DocumentWindow* createWindow();
    void searchAfterCrash(DocumentWindow& window);
    DocumentWindow* windowShowing(const QString& path) const;
    DocumentWindow* pristineWindow() const;
    DocumentWindow* openOne(const QString& path);
    void askForFiles(DocumentWindow& window) const;
    void forget(QObject* window);

    ColorScheme colorScheme_;
    Appearance appearance_;
    TerminationSignals terminationSignals_;
    RecoveryStore recoveryStore_;
    CrashRecovery crashRecovery_;
    QList<DocumentWindow*> windows_;
    int untitledCount_ = 0;
    bool isQuitting_ = false;
};
