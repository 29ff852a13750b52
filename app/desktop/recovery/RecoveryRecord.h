#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <optional>

#include "app/model/runtime/Plist.h"

/// What has to be known about a document, besides its content, to bring it back after a crash.
struct RecoveryRecord {
    /// The path of its file, as the system has it; empty for a document that was never saved.
    QByteArray file;

    /// What the document was called.
    QString title;

    /// The digest of what its file held when the document was read from it or saved to it last,
    /// as text; empty if there is none.
    QString baseDigest;

    PlistFormat format = PlistFormat::xml;
    bool wasReadOnlyFormat = false;

    /// When the content was backed up.
    QDateTime backedUpAt;

    /// How often somebody has begun to bring this content back.
    int attempts = 0;

    /// The record as a file, which a person can read too.
    QByteArray toJson() const;

    /// Nothing if `json` is not such a record.
    static std::optional<RecoveryRecord> fromJson(const QByteArray& json);

    bool operator==(const RecoveryRecord& other) const = default;
};
