#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <optional>
#include <utility>

#include "app/desktop/document/DocumentSession.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/table/view/ViewPosition.h"

class CloseProtocol;
class DocumentView;
class FileMenu;
class NoticeStrip;
class FileNotice;
class ProgressPage;
class SaveProgress;
class QFileDialog;
class QStackedWidget;
class QVBoxLayout;

/// The window of one document: menus, toolbar, the document itself, and the dialogs about saving
/// it. Deletes itself when it is closed.
class DocumentWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The size of a new window, in device-independent pixels.
    static constexpr QSize defaultSize{760, 560};

    /// A window with a new, empty document. `untitledName` is what the document is called.
    explicit DocumentWindow(const QString& untitledName, QWidget* parent = nullptr);
    ~DocumentWindow() override;

    DocumentSession& session() noexcept { return session_; }
    DocumentController& controller() noexcept { return session_.controller(); }
    DocumentView& view() noexcept { return *view_; }

    /// Reads a file into this window.
    void open(const QString& path);

    /// Recovers what a crash left unsaved in this window.
    void recover(const RecoverableDocument& lost);

    /// Whether the document is shown, no dialog is open over it, and nothing is being typed.
    /// Dialogs that ask what to open or to recover do not count.
    bool isUndisturbed() const;

    /// Saves to the file of the document, or asks for one.
    void save();
    void saveAs();

    /// Goes back to what is in the file; can be undone.
    void revert();

    /// Loads what another program has written to the file; can be undone.
    void reload();

    /// What the Window menu lists; by default this window alone.
    void setWindowList(std::function<QList<QWidget*>()> windows) {
        allWindows_ = std::move(windows);
    }

Q_SIGNALS:
    void newChosen();
    void openChosen();
    void recentChosen(const QString& path);
    void quitChosen();

    /// Local files were dropped on the window; its owner opens them.
    void filesDropped(const QStringList& paths);

    /// The user wants to keep the window after all.
    void closeRefused();

    /// The document has been painted on the screen, completely.
    void documentShown();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createMenus();
    void createLayout();
    void followFile();
    void updateActivity();
    bool hasInput() const;
    void followController();
    void followSession();
    void followClosing();
    void updateTitle();
    void updateFileMenu();
    void showProgress(const QString& title, const QString& text);
    void showDocument();
    void explainOpenFailure(const FileError& error);
    void explainRecoveryFailure(const QString& title, const FileError& error);
    void warnThatBackupFails(const QString& reason);
    void saveTo(const QString& path);
    void explainSaveFailure(const FileError& error);
    void saveDespiteChange(MessageDialog::ChangeAnswer answer);

    DocumentSession session_;
    std::optional<ViewPosition> viewPosition_;
    QStackedWidget* pages_;
    ProgressPage* progress_;
    DocumentView* view_;
    CloseProtocol* closing_;
    FileMenu* fileMenu_ = nullptr;
    FileNotice* notice_ = nullptr;
    QVBoxLayout* layout_ = nullptr;
    QPointer<NoticeStrip> backupWarning_;
    SaveProgress* saveProgress_ = nullptr;
    std::function<QList<QWidget*>()> allWindows_;
    bool awaitsPaint_ = false;
};
