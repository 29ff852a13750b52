#include "app/desktop/document/DocumentController.h"

#include <QFileInfo>
#include <QTimer>
#include <new>
#include <optional>
#include <utility>
#include <variant>

#include "app/desktop/files/BackgroundTask.h"
#include "app/desktop/files/FilePath.h"
#include "app/desktop/files/PlistDocumentReader.h"
#include "app/desktop/files/ProgressReporter.h"
#include "app/desktop/files/StateFolder.h"
#include "app/desktop/recovery/RecoverableDocument.h"
#include "app/desktop/saving/PlistDocumentWriter.h"
#include "app/desktop/saving/SafeWriter.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/ChildrenMaker.h"
#include "app/model/tree/PlistNode.h"

namespace {

/// A turn of the event loop with so many takes a few milliseconds.
constexpr std::size_t childrenPerTurn = 20'000;

struct ReadContent {
    PlistFile file;
    ContentDigest digest;
};

using ReadResult = std::variant<ReadContent, FileError>;

struct WriteResult {
    std::optional<ContentDigest> digest;  ///< of what was to be written, if it came to that
    std::optional<FileError> error;
};

FileError outOfMemory(FileError::Code code, const QString& path) {
    return {code, path, DocumentController::tr("There is not enough memory.")};
}

ReadResult read(const QString& path, ProgressReporter& progress) {
    try {
        ReadContent content;
        content.file = PlistDocumentReader::read(path, &progress, &content.digest);
        return content;
    } catch (const FileError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return outOfMemory(FileError::Code::readFailed, path);
    }
}

WriteResult write(const PlistFile& file, const QString& path, const SafeWriter::Consent& mayReplace,
                  ProgressReporter& progress) {
    WriteResult result;
    try {
        PlistDocumentWriter::write(file, path, StateFolder::recoveryPath(), mayReplace, &progress,
                                   &result.digest);
    } catch (const FileError& error) {
        result.error = error;
    } catch (const std::bad_alloc&) {
        result.error = outOfMemory(FileError::Code::writeFailed, path);
    }
    return result;
}

/// What to call a document that comes back without its file. The file's extension would be
/// in the way of the word after it.
QString recoveredName(const QString& title) {
    const QString suffix = DocumentController::tr(" (recovered)");
    if (title.endsWith(suffix)) {
        return title;
    }
    const QString name = QFileInfo(title).completeBaseName();
    return (name.isEmpty() ? title : name) + suffix;
}

}  // namespace

DocumentController::DocumentController(QString untitledName, QObject* parent)
    : QObject(parent),
      untitledName_(std::move(untitledName)),
      savedState_(undoManager_.savedState()) {
    connect(&undoManager_, &UndoManager::isModifiedChanged, this,
            &DocumentController::modifiedChanged);
}

DocumentController::~DocumentController() = default;

/// A root whose children are being made.
struct DocumentController::NewRoot {
    explicit NewRoot(const ReadContent& content)
        : root(PlistNode::create({}, content.file.root)),
          children(*root),
          format(content.file.format),
          digest(content.digest) {}

    const PlistNodePtr root;
    ChildrenMaker children;
    const PlistFormat format;
    const ContentDigest digest;  ///< of the file
};

QString DocumentController::name() const {
    return path_.isEmpty() ? untitledName_ : FilePath::shownName(path_);
}

bool DocumentController::isPristine() const noexcept {
    return path_.isEmpty() && activity_ == Activity::idle && !isModified() &&
           !undoManager_.canUndo() && !undoManager_.canRedo();
}

void DocumentController::open(const QString& path) {
    const QString file = FilePath::absolute(path);
    beginReading(
        file, [this, file](const NewRoot& newRoot) { finishReading(file, newRoot); },
        &DocumentController::openFailed);
}

void DocumentController::recover(const RecoverableDocument& lost) {
    beginReading(
        lost.contentPath(),
        [this, lost](const NewRoot& newRoot) { finishRecovering(lost, newRoot); },
        &DocumentController::openFailed);
    readPath_ = lost.hasFile() ? lost.filePath() : QString();
}

void DocumentController::revert() {
    beginReading(
        path_, [this](const NewRoot& newRoot) { finishReverting(newRoot); },
        &DocumentController::revertFailed);
}

void DocumentController::reload(std::function<bool()> mayReplace) {
    beginReading(
        path_,
        [this, state = undoManager_.state(),
         mayReplace = std::move(mayReplace)](const NewRoot& newRoot) {
            const bool isUnedited = undoManager_.state() == state;
            finishReloading(newRoot, isUnedited && (!mayReplace || mayReplace()));
        },
        &DocumentController::reloadFailed);
}

void DocumentController::beginReading(const QString& path,
                                      std::function<void(const NewRoot&)> finish,
                                      void (DocumentController::*failed)(const FileError&)) {
    begin(Activity::reading, path);
    readPath_ = path;
    BackgroundTask::run(
        *this, [path, progress = progress_] { return read(path, *progress); },
        [this, finish = std::move(finish), failed](const ReadResult& result) {
            if (const auto* error = std::get_if<FileError>(&result)) {
                setActivity(Activity::idle);
                Q_EMIT(this->*failed)(*error);
            } else {
                makeRoot(std::make_shared<NewRoot>(std::get<ReadContent>(result)), finish);
            }
        });
}

void DocumentController::save() {
    beginWriting(
        path_, [file = file_](const ContentDigest& present) { return file.mayOverwrite(present); });
}

void DocumentController::save(const QString& path) {
    beginWriting(FilePath::absolute(path), nullptr);
}

void DocumentController::beginWriting(const QString& path,
                                      std::function<bool(const ContentDigest&)> mayReplace) {
    begin(Activity::writing, path);
    BackgroundTask::run(
        *this,
        [content = document_.snapshot(), path, mayReplace = std::move(mayReplace),
         progress = progress_] { return write(content, path, mayReplace, *progress); },
        [this, path, state = undoManager_.state()](const WriteResult& result) {
            setActivity(Activity::idle);
            if (!result.error) {
                finishWriting(path, state, *result.digest);
                return;
            }
            if (path == path_ && result.digest) {
                file_.attempted = result.digest;
            }
            Q_EMIT saveFailed(*result.error);
        });
}

void DocumentController::begin(Activity activity, const QString& path) {
    plistCheck(activity_ == Activity::idle, "a document does one thing at a time with its file");
    plistCheck(!path.isEmpty(), "a file has a path");
    progress_ = std::make_shared<ProgressReporter>();
    setActivity(activity);
}

void DocumentController::makeRoot(const std::shared_ptr<NewRoot>& newRoot,
                                  const std::function<void(const NewRoot&)>& finish) {
    if (newRoot->children.make(childrenPerTurn)) {
        setActivity(Activity::idle);
        finish(*newRoot);
    } else {
        QTimer::singleShot(0, this, [this, newRoot, finish] { makeRoot(newRoot, finish); });
    }
}

void DocumentController::finishReading(const QString& path, const NewRoot& newRoot) {
    document_.apply(newRoot.root, newRoot.format);
    setPath(path);
    undoManager_.clear();
    setInSync(newRoot.digest, undoManager_.state());
    Q_EMIT opened();
}

void DocumentController::finishRecovering(const RecoverableDocument& lost, const NewRoot& newRoot) {
    const RecoveryRecord& record = lost.record();
    document_.apply(newRoot.root, record.format);
    document_.setWasReadOnlyFormat(record.wasReadOnlyFormat);
    untitledName_ = recoveredName(record.title);
    if (lost.hasFile()) {
        path_ = lost.filePath();
    }
    Q_EMIT pathChanged();
    undoManager_.clear();
    setInSync(lost.hasFile() ? ContentDigest::fromHex(record.baseDigest) : std::nullopt,
              std::nullopt);
    Q_EMIT opened();
}

void DocumentController::finishReverting(const NewRoot& newRoot) {
    replaceContent(newRoot, tr("Revert to Saved"));
    Q_EMIT reverted();
}

void DocumentController::finishReloading(const NewRoot& newRoot, bool mayReplace) {
    if (!mayReplace) {
        Q_EMIT reloadOvertaken();
        return;
    }
    Q_EMIT aboutToReload();
    replaceContent(newRoot, tr("Reload"));
    Q_EMIT reloaded();
}

void DocumentController::replaceContent(const NewRoot& newRoot, const QString& actionName) {
    const PlistEditor editor(document_, &undoManager_);
    editor.replaceContent(newRoot.root, newRoot.format, actionName);
    setInSync(newRoot.digest, undoManager_.state());
}

void DocumentController::finishWriting(const QString& path, UndoManager::State state,
                                       const ContentDigest& digest) {
    setPath(path);
    setInSync(digest, state);
    Q_EMIT saved();
}

// --- What becomes of the file ---

void DocumentController::setInSync(const std::optional<ContentDigest>& base,
                                   std::optional<UndoManager::State> state) {
    savedState_ = state;
    setFile(FileState::inSyncWith(base));
}

void DocumentController::setFile(const FileState& file) {
    file_ = file;
    undoManager_.setSavedState(file_.isLost() ? std::nullopt : savedState_);
}

void DocumentController::updateFileContent(const FileContent& content) {
    FileState file = file_;
    file.update(content);
    setFile(file);
}

void DocumentController::overruleFile() {
    FileState file = file_;
    file.overruled = file.present;
    setFile(file);
}

void DocumentController::setFileUnreadable() {
    FileState file = file_;
    file.unreadable = file.present;
    setFile(file);
}

void DocumentController::setActivity(Activity activity) {
    if (activity_ != activity) {
        activity_ = activity;
        Q_EMIT activityChanged();
    }
}

void DocumentController::setPath(const QString& path) {
    if (path_ != path) {
        path_ = path;
        Q_EMIT pathChanged();
    }
}
