#pragma once

#include <QString>

/// File names made from the text of documents.
namespace FileName {

/// `text` without what a file name cannot or should not have: slashes, control characters, leading
/// dots, and more than 255 bytes of UTF-8. "Untitled" if nothing is left.
QString safe(const QString& text);

}  // namespace FileName
