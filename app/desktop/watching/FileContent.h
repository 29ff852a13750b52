#pragma once

#include <optional>

#include "app/desktop/files/ContentDigest.h"

/// What is at a path: a file that holds this, or no file.
struct FileContent {
    std::optional<ContentDigest> digest;

    bool isMissing() const noexcept { return !digest.has_value(); }

    friend bool operator==(const FileContent&, const FileContent&) = default;
};
