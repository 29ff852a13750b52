#include "app/desktop/DocumentController.h"

#include <QDir>
#include <QFileInfo>
#include <new>
#include <optional>
#include <utility>
#include <variant>

#include "PlistCore/PlistCheck.h"
#include "PlistCore/PlistFile.h"
#include "app/desktop/BackgroundTask.h"
#include "app/model/PlistDocumentReader.h"
#include "app/model/PlistDocumentWriter.h"
#include "app/model/PlistEditor.h"
#include "app/model/PlistNode.h"

namespace {

using ReadResult = std::variant<PlistFile, FileError>;

FileError outOfMemory(FileError::Code code, const QString& path) {
    return {code, path, DocumentController::tr("There is not enough memory.")};
}

ReadResult read(const QString& path) {
    try {
        return PlistDocumentReader::read(path);
    } catch (const FileError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return outOfMemory(FileError::Code::readFailed, path);
    }
}

std::optional<FileError> write(const PlistFile& file, const QString& path) {
    try {
        PlistDocumentWriter::write(file, path);
        return std::nullopt;
    } catch (const FileError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return outOfMemory(FileError::Code::writeFailed, path);
    }
}

QString absolutePath(const QString& path) {
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

}  // namespace

DocumentController::DocumentController(QString untitledName, QObject* parent)
    : QObject(parent), untitledName_(std::move(untitledName)) {
    connect(&undoManager_, &UndoManager::isModifiedChanged, this,
            &DocumentController::modifiedChanged);
}

DocumentController::~DocumentController() = default;

QString DocumentController::name() const {
    return path_.isEmpty() ? untitledName_ : QFileInfo(path_).fileName();
}

bool DocumentController::isPristine() const noexcept {
    return path_.isEmpty() && activity_ == Activity::idle && !undoManager_.canUndo() &&
           !undoManager_.canRedo();
}

void DocumentController::open(const QString& path) {
    const QString file = absolutePath(path);
    beginReading(
        file, [this, file](const PlistFile& content) { finishReading(file, content); },
        &DocumentController::openFailed);
}

void DocumentController::revert() {
    beginReading(
        path_, [this](const PlistFile& content) { finishReverting(content); },
        &DocumentController::revertFailed);
}

void DocumentController::beginReading(const QString& path,
                                      std::function<void(const PlistFile&)> finish,
                                      void (DocumentController::*failed)(const FileError&)) {
    begin(Activity::reading, path);
    BackgroundTask::run(
        *this, [path] { return read(path); },
        [this, finish = std::move(finish), failed](const ReadResult& result) {
            setActivity(Activity::idle);
            if (const auto* error = std::get_if<FileError>(&result)) {
                Q_EMIT(this->*failed)(*error);
            } else {
                finish(std::get<PlistFile>(result));
            }
        });
}

void DocumentController::save(const QString& path) {
    const QString file = absolutePath(path);
    begin(Activity::writing, file);
    BackgroundTask::run(
        *this, [content = document_.snapshot(), file] { return write(content, file); },
        [this, file, state = undoManager_.state()](const std::optional<FileError>& error) {
            setActivity(Activity::idle);
            if (error) {
                Q_EMIT saveFailed(*error);
            } else {
                finishWriting(file, state);
            }
        });
}

void DocumentController::begin(Activity activity, const QString& path) {
    plistCheck(activity_ == Activity::idle, "a document does one thing at a time with its file");
    plistCheck(!path.isEmpty(), "a file has a path");
    setActivity(activity);
}

void DocumentController::finishReading(const QString& path, const PlistFile& file) {
    document_.apply(file);
    setPath(path);
    undoManager_.clear();
    undoManager_.setSavedState(undoManager_.state());
    Q_EMIT opened();
}

void DocumentController::finishReverting(const PlistFile& file) {
    const PlistEditor editor(document_, &undoManager_);
    editor.replaceContent(file, tr("Revert to Saved"));
    undoManager_.setSavedState(undoManager_.state());
    Q_EMIT reverted();
}

void DocumentController::finishWriting(const QString& path, UndoManager::State state) {
    setPath(path);
    undoManager_.setSavedState(state);
    Q_EMIT saved();
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
