#pragma once

#include <cstdint>
#include <optional>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/watching/FileContent.h"

/// What a document knows of its file: what both had in common last, what the file has been seen to
/// hold since, and what was decided about that.
struct FileState {
    /// What is to become of document and file.
    enum class Verdict : std::uint8_t {
        inSync,      ///< nothing: the file holds what the document knows
        settled,     ///< nothing, but only a save makes them the same again
        reload,      ///< the document can follow the file: nothing of the user's is lost
        ask,         ///< the user is to choose, as both have been changed
        unreadable,  ///< the user is to know that the file holds what cannot be read
        missing,     ///< the user is to know that the file is gone
    };

    /// What the file held when it was read or written last, whichever was later. Nothing for a
    /// document without a file.
    std::optional<ContentDigest> base;

    /// What the last save was to put into the file, if it failed. It may be there nevertheless: a
    /// system can fail when the content is in place.
    std::optional<ContentDigest> attempted;

    /// What the file has been seen to hold last.
    FileContent present;

    /// What the file held when the user wanted the document as it is.
    std::optional<FileContent> overruled;

    /// What could not be read.
    std::optional<FileContent> unreadable;

    /// A file that was just read or written.
    static FileState inSyncWith(const std::optional<ContentDigest>& base);

    /// The file was seen to hold something else than before.
    void update(const FileContent& content);

    /// `hasWork` tells whether the user has done anything that the file does not know.
    Verdict verdict(bool hasWork) const;

    /// Whether no state of the document counts as saved.
    bool isLost() const;

    /// Whether a save may replace what the file holds then, without a question.
    bool mayOverwrite(const ContentDigest& content) const;
};
