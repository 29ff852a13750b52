#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "app/desktop/document/FileState.h"
#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileError.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/editing/UndoManager.h"

class ProgressReporter;
class RecoverableDocument;

/// One open document together with its file and its undo history: reads and writes it on worker
/// threads, and knows whether the document differs from what was read or saved last. Belongs to the
/// main thread.
///
/// A controller that is destroyed while it reads drops the result; what it writes is written to
/// the end.
class DocumentController : public QObject {
    Q_OBJECT

public:
    enum class Activity : std::uint8_t { idle, reading, writing };
    Q_ENUM(Activity)

    /// A new document without a file. `untitledName` is what it is called until it has one.
    explicit DocumentController(QString untitledName, QObject* parent = nullptr);
    ~DocumentController() override;

    PlistDocument& document() noexcept { return document_; }
    const PlistDocument& document() const noexcept { return document_; }

    /// The history of the document. What is to count as a modification is registered here.
    UndoManager& undoManager() noexcept { return undoManager_; }

    /// The absolute path of the file; empty for a document that was never saved.
    const QString& path() const noexcept { return path_; }

    /// The file that is being read, or else `path`.
    const QString& claimedPath() const noexcept {
        return activity_ == Activity::reading ? readPath_ : path_;
    }

    /// What is known of the file.
    const FileState& fileState() const noexcept { return file_; }

    /// What to call the document: the last component of the path, or the untitled name.
    QString name() const;

    Activity activity() const noexcept { return activity_; }

    /// How far the reading or writing that is under way has come; a new one for each of them.
    std::shared_ptr<const ProgressReporter> progress() const noexcept { return progress_; }

    /// Whether the document differs from what was read or saved last: not if the edits since then
    /// have been undone.
    bool isModified() const noexcept { return undoManager_.isModified(); }

    /// Whether this is a new document that nobody has touched.
    bool isPristine() const noexcept;

    /// Begins to read the file at `path` and makes it the content of the document. Ends with
    /// `opened` or `openFailed`; after a failure the document is as it was. Only while idle.
    void open(const QString& path);

    /// Begins to make what a crash left unsaved the content of the document, which is modified
    /// then. It has its old file again, or none if that has changed since. Ends like `open`, and
    /// leaves the backup as it is. Only while idle.
    void recover(const RecoverableDocument& lost);

    /// Begins to read the file of the document again and to make it the content, as one step that
    /// can be undone. Ends with `reverted` or `revertFailed`; after a failure the document is as
    /// it was. Only while idle, and for a document that has a file.
    void revert();

    /// As `revert`, for a file that another program has changed. Ends with `reloaded`,
    /// `reloadFailed` or `reloadOvertaken`: if the document is edited while the file is being read,
    /// or if `mayReplace`, where given, says no when the file has been read.
    void reload(std::function<bool()> mayReplace = nullptr);

    /// Begins to write the document as it is now to its file, unless another program has changed
    /// that: then it ends with `saveFailed` and `FileError::Code::changedOnDisk`. A file that has
    /// gone is created again. Only while idle, and for a document that has a file.
    void save();

    /// The file was seen to hold something else than before. Where that means that it is lost to
    /// the document, no state of the document counts as saved.
    void updateFileContent(const FileContent& content);

    /// The user wants the document as it is: no state of it counts as saved, and `save` may write
    /// over what the file has been seen to hold.
    void overruleFile();

    /// What the file has been seen to hold cannot be read. What the document holds may be all that
    /// is left, so that no state of it counts as saved.
    void setFileUnreadable();

    /// Whether there are edits since the document was read or saved, also where the file is lost.
    bool hasEdits() const noexcept { return undoManager_.state() != savedState_; }

    /// Begins to write the document as it is now to `path`, in its format, and makes that its
    /// file, whatever that holds. Ends with `saved` or `saveFailed`; after a failure the document
    /// keeps its file. Edits made while it is being written are not saved by it. Only while idle.
    void save(const QString& path);

Q_SIGNALS:
    void opened();
    void reverted();
    void revertFailed(const FileError& error);

    /// The document has been read again and will now be replaced by what the file holds.
    void aboutToReload();
    void reloaded();
    void reloadFailed(const FileError& error);

    /// The document was to stay as it is by the time the file had been read.
    void reloadOvertaken();
    void openFailed(const FileError& error);
    void saved();
    void saveFailed(const FileError& error);

    void activityChanged();
    void pathChanged();
    void modifiedChanged();

private:
    /// A root whose children are being made.
    struct NewRoot;

    void begin(Activity activity, const QString& path);
    void beginReading(const QString& path, std::function<void(const NewRoot&)> finish,
                      void (DocumentController::*failed)(const FileError&));
    void makeRoot(const std::shared_ptr<NewRoot>& newRoot,
                  const std::function<void(const NewRoot&)>& finish);
    void finishReading(const QString& path, const NewRoot& newRoot);
    void replaceContent(const NewRoot& newRoot, const QString& actionName);
    void finishRecovering(const RecoverableDocument& lost, const NewRoot& newRoot);
    void finishReverting(const NewRoot& newRoot);
    void finishReloading(const NewRoot& newRoot, bool mayReplace);
    void beginWriting(const QString& path, std::function<bool(const ContentDigest&)> mayReplace);
    void setFile(const FileState& file);
    void setInSync(const std::optional<ContentDigest>& base,
                   std::optional<UndoManager::State> state);
    void finishWriting(const QString& path, UndoManager::State state, const ContentDigest& digest);
    void setActivity(Activity activity);
    void setPath(const QString& path);

    PlistDocument document_;
    UndoManager undoManager_;
    QString untitledName_;
    QString path_;
    QString readPath_;
    FileState file_;
    std::optional<UndoManager::State> savedState_;  ///< which the base of the file has
    Activity activity_ = Activity::idle;
    std::shared_ptr<ProgressReporter> progress_;
};
