#pragma once

#include <QPixmap>
#include <QStringList>

class QWidget;

/// The picture at the pointer while rows are dragged.
namespace DragPixmap {

/// How many names are shown at most.
inline constexpr qsizetype longest = 3;

/// The names of the first items, at most `longest`, and a badge with the number of all if there are
/// several. In the font and the colors of `widget`, and at the resolution of its screen.
QPixmap of(const QStringList& names, qsizetype count, const QWidget& widget);

}  // namespace DragPixmap
