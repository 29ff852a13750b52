#pragma once

#include <QPixmap>
#include <QStringList>

class QWidget;

/// What the pointer carries while rows are dragged.
namespace DragPixmap {

/// The most names that are shown.
inline constexpr qsizetype longest = 3;

/// A sheet with the names of the first items, at most `longest`, and the number of all if there are
/// several. In the font and the colors of `widget`, and sharp on its screen.
QPixmap of(const QStringList& names, qsizetype count, const QWidget& widget);

}  // namespace DragPixmap
