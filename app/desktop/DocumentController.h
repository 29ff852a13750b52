#pragma once

#include <QObject>
#include <QString>
#include <cstdint>

#include "PlistCore/PlistFormat.h"
#include "app/model/FileError.h"
#include "app/model/PlistDocument.h"

struct PlistFile;

/// One open document together with its file: reads and writes it on worker threads, and knows
/// whether the document differs from what was read or saved last. Belongs to the main thread.
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

    /// The absolute path of the file; empty for a document that was never saved.
    const QString& path() const noexcept { return path_; }

    /// What to call the document: the last component of the path, or the untitled name.
    QString name() const;

    Activity activity() const noexcept { return activity_; }

    /// Whether the document differs from what was read or saved last.
    bool isModified() const noexcept { return isModified_; }

    /// Whether this is a new document that nobody has touched.
    bool isPristine() const noexcept;

    /// Begins to read the file at `path` and makes it the content of the document. Ends with
    /// `opened` or `openFailed`; after a failure the document is as it was. Only while idle.
    void open(const QString& path);

    /// Begins to write the document as it is now to `path`, in its format, and makes that its
    /// file. Ends with `saved` or `saveFailed`; after a failure the document keeps its file. Edits
    /// made while it is being written are not saved by it. Only while idle.
    void save(const QString& path);

Q_SIGNALS:
    void opened();
    void openFailed(const FileError& error);
    void saved();
    void saveFailed(const FileError& error);

    void activityChanged();
    void pathChanged();
    void modifiedChanged();

private:
    /// What tells one state of the document from another.
    struct State {
        quint64 treeVersion = 0;
        PlistFormat format = PlistFormat::xml;
        friend bool operator==(const State&, const State&) = default;
    };

    State currentState() const noexcept;
    void begin(Activity activity, const QString& path);
    void finishReading(const QString& path, const PlistFile& file);
    void finishWriting(const QString& path, const State& state);
    void setActivity(Activity activity);
    void setPath(const QString& path);
    void updateModified();

    PlistDocument document_;
    QString untitledName_;
    QString path_;
    State savedState_;
    Activity activity_ = Activity::idle;
    bool isModified_ = false;
};
