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

/// The application: opens and creates documents, each in a window of its own, and ends when the
/// last of them is closed.
class TabuletApp : public QObject {
    Q_OBJECT

public:
    explicit TabuletApp(QObject* parent = nullptr);
    ~TabuletApp() override;

    /// Names the application, which has the given version, and loads its texts; once, before
    /// anything is shown.
    static void setUp(const QString& version);

    /// Opens the files, or a new document if there are none.
    void start(const QStringList& paths);

    DocumentWindow* newDocument();

    /// Opens each file in a window of its own, or brings the window up that shows it already. A
    /// window whose new document nobody has touched is used for the first.
    void open(const QStringList& paths);

    /// Does what another start of the program has handed over, and brings the last window of that
    /// to the front. Without files that is a new document that nobody has touched.
    void takeOver(const QStringList& paths, const LaunchToken& token);

    /// Keeps all unsaved documents for the next start and ends, all without a question: the system
    /// wants the process to go.
    void endWithoutAsking();

    /// Closes all windows, asking about unsaved changes, until the user refuses.
    void quit();

    /// In the order in which they were made.
    const QList<DocumentWindow*>& windows() const noexcept { return windows_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keepAll();
    void askAboutLost();
    void recover(const RecoverableDocument& lost);
    DocumentWindow* windowFor(const RecoverableDocument& lost);
    DocumentWindow* makeWindow();
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
