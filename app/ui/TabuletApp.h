#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

#include "app/desktop/ColorScheme.h"
#include "app/desktop/LaunchToken.h"
#include "app/ui/Appearance.h"

class DocumentWindow;
class FileError;

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

    /// Closes all windows, asking about unsaved changes, until the user refuses.
    void quit();

    /// In the order in which they were made.
    const QList<DocumentWindow*>& windows() const noexcept { return windows_; }

private:
    DocumentWindow* makeWindow();
    DocumentWindow* windowShowing(const QString& path) const;
    DocumentWindow* pristineWindow() const;
    DocumentWindow* openOne(const QString& path);
    void askForFiles(DocumentWindow& window) const;
    void forget(QObject* window);

    ColorScheme colorScheme_;
    Appearance appearance_;
    QList<DocumentWindow*> windows_;
    int untitledCount_ = 0;
    bool isQuitting_ = false;
};
