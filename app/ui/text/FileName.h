#pragma once

#include <QString>

/// Names of files made from texts of documents.
namespace FileName {

/// `text` without what a name of a file cannot or should not have: "/", control characters, dots in
/// front, and more than 255 bytes of UTF-8. "Untitled" if nothing is left.
QString safe(const QString& text);

}  // namespace FileName
