#pragma once

#include <QByteArray>
#include <optional>

/// What readers of small files have in common.
namespace FileInput {

/// All bytes of the file at `path`, which may not be a link and is never waited for; nothing if it
/// cannot be read.
std::optional<QByteArray> readAll(const QByteArray& path);

}  // namespace FileInput
