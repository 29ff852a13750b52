#pragma once

#include <QString>

/// Keeps texts that are not the program's own in their own direction, whatever the direction of
/// what is around them: names, paths and values fall apart otherwise.
namespace OwnDirection {

/// That of its first letter; a text without letters, as a number, runs from left to right.
Qt::LayoutDirection of(const QString& text);

/// The text between Unicode's marks that isolate it, where windows are laid out from right to left;
/// elsewhere it needs none.
QString isolated(const QString& text);

}  // namespace OwnDirection
