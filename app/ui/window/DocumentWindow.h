#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <optional>
#include <utility>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/document/ExternalChanges.h"
#include "app/desktop/recovery/RecoverableDocument.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/window/KeptPlace.h"

class DocumentView;
class FileMenu;
class NoticeStrip;
class FileNotice;
class ProgressPage;
class SaveProgress;
class QFileDialog;
class QStackedWidget;
class QVBoxLayout;

/// The window of one document: menus, toolbar, the document itself, and the questions about saving
/// it. Deletes itself when it is closed.
class DocumentWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The size of a new window, in device-independent pixels.
    static constexpr QSize defaultSize{760, 560};

    /// A window with a new, empty document. `untitledName` is what the document is called.
    explicit DocumentWindow(const QString& untitledName, QWidget* parent = nullptr);
    ~DocumentWindow() override;

    DocumentController& controller() noexcept { return controller_; }
    DocumentView& view() noexcept { return *view_; }

    /// Reads a file into this window.
    void open(const QString& path);

    /// Brings what a crash left unsaved into this window.
    void recover(const RecoverableDocument& lost);

    /// The document has been kept for a crash: what an earlier one left of it is needed no more.
    void handleKept();

    /// Says as long as it is so that the document cannot be kept for a crash, for this reason.
    void warnThatNothingIsKept(const QString& reason);

    /// Says why the file of this window could not be opened, then closes the window, which has
    /// nothing to show.
    void explainOpenFailure(const FileError& error);

    /// Whether the document is there, nothing is asked over it, and nothing is being typed into it.
    /// Dialogs that ask what to open or to recover do not count.
    bool isUndisturbed() const;

    /// Saves to the file of the document, or asks for one.
    void save();
    void saveAs();

    /// Goes back to what the file holds; can be undone.
    void revert();

    /// Takes over what another program has written to the file; can be undone.
    void reload();

    /// What the Window menu lists; this window alone without it.
    void setWindowList(std::function<QList<QWidget*>()> windows) {
        allWindows_ = std::move(windows);
    }

Q_SIGNALS:
    void newChosen();
    void openChosen();
    void recentChosen(const QString& path);
    void quitChosen();

    /// Local files were dropped on the window, which leaves opening them to its owner.
    void filesDropped(const QStringList& paths);

    /// The user wants to keep the window after all.
    void closeRefused();

    /// The document stands on the screen, complete.
    void documentShown();

    /// A document that a crash left unsaved stands on the screen.
    void recovered();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeMenus();
    void makeLayout();
    void followFile();
    void updateActivity();
    bool hasInput() const;
    void followController();
    void updateTitle();
    void updateFileMenu();
    void showProgress(const QString& title, const QString& text);
    void showDocument();
    void askToSave();
    void handleSaved();
    void saveTo(const QString& path);
    void leaveLostDocument();
    void forgetLostDocument();
    void explainSaveFailure(const FileError& error);
    void saveDespiteChange(MessageDialog::ChangeAnswer answer);
    void refuseClose();

    DocumentController controller_;
    ExternalChanges follower_;
    std::optional<KeptPlace> keptPlace_;
    QStackedWidget* pages_;
    ProgressPage* progress_;
    DocumentView* view_;
    FileMenu* fileMenu_ = nullptr;
    FileNotice* notice_ = nullptr;
    QVBoxLayout* layout_ = nullptr;
    QPointer<NoticeStrip> keepingNotice_;
    SaveProgress* saveProgress_ = nullptr;
    std::function<QList<QWidget*>()> allWindows_;
    std::optional<RecoverableDocument> lost_;
    bool closesWhenSaved_ = false;
    bool closesUnasked_ = false;
    bool isAsking_ = false;
    bool awaitsPaint_ = false;
};
