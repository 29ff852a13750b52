#pragma once

#include <QPoint>
#include <QRect>
#include <QString>

class QWidget;

/// Tooltips with text from documents: never taken for markup, broken into lines, and truncated to
/// what a person reads in passing.
namespace PlainToolTip {

/// The longest line in characters, and the most lines.
inline constexpr int lineLength = 80;
inline constexpr int lineLimit = 20;

/// Shows `text` near `position` (on the screen) until the pointer leaves `rect` of `widget`.
void show(const QPoint& position, const QString& text, const QWidget* widget, const QRect& rect);

/// The text broken into lines, as it is shown.
QString wrapped(const QString& text);

/// The markup that shows `text` literally.
QString markup(const QString& text);

}  // namespace PlainToolTip
