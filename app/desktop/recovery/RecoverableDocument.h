#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

#include "app/desktop/recovery/RecoveryFolder.h"
#include "app/desktop/recovery/RecoveryRecord.h"

/// A document with unsaved changes that a program left behind when it ended without warning. As
/// long as a copy of this lives, no other program finds the document.
class RecoverableDocument {
public:
    /// After so many attempts that ended the program, a document is not brought back any more.
    static constexpr int attemptLimit = 2;

    /// All documents in the folders inside of `parentFolder` that no running program uses, the
    /// newest first. Deletes folders in which nothing is. Reads the records only, and the files
    /// that the documents came from, to see whether they have changed; may be called from any
    /// thread.
    static std::vector<RecoverableDocument> find(const QString& parentFolder);

    /// What is known about it; a placeholder where the record cannot be read.
    const RecoveryRecord& record() const noexcept { return record_; }

    /// The path of its file; empty if it was never saved.
    QString filePath() const;

    /// Whether its file is not what it was when the document was read from it or saved to it last,
    /// so that it must not be overwritten. False for a document without a file.
    bool hasFileChanged() const noexcept { return hasFileChanged_; }

    /// Whether it still belongs to its file.
    bool hasFile() const noexcept { return !record_.file.isEmpty() && !hasFileChanged_; }

    /// Whether programs have crashed too often while they brought it back.
    bool hasFailedTooOften() const noexcept { return record_.attempts >= attemptLimit; }

    /// The file with the content.
    QString contentPath() const;

    /// Remembers on the disk that somebody tries to bring it back, until `endAttempt`: a program
    /// that ends in between does not come to that. Does nothing where the record is unreadable,
    /// which stays as it is.
    void beginAttempt();
    void endAttempt();

    /// Deletes it for good.
    void remove() const;

private:
    RecoverableDocument(std::shared_ptr<RecoveryFolder> folder, QByteArray name);

    void writeRecord() const;

    std::shared_ptr<RecoveryFolder> folder_;
    QByteArray name_;
    RecoveryRecord record_;
    bool hasRecord_ = false;
    bool hasFileChanged_ = false;
};
