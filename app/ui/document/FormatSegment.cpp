#include "app/ui/document/FormatSegment.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

/// The colour of selections, further away from that of selected text: styles lighten and grey
/// what they paint buttons with.
QColor chosenColor(const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Highlight);
    const bool isTextLight =
        palette.color(QPalette::HighlightedText).lightness() > ground.lightness();
    return isTextLight ? ground.darker(150) : ground.lighter(120);
}

}  // namespace

FormatSegment::FormatSegment(const QString& title, QWidget* parent) : QToolButton(parent) {
    setText(title);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

/// Made anew only for other colours: styles keep a picture for each palette that they meet.
const QPalette& FormatSegment::chosenPalette() {
    if (chosenFor_ != palette().cacheKey() ||
        chosen_.currentColorGroup() != palette().currentColorGroup()) {
        chosenFor_ = palette().cacheKey();
        chosen_ = palette();
        chosen_.setColor(QPalette::Button, chosenColor(palette()));
        chosen_.setBrush(QPalette::ButtonText, palette().highlightedText());
    }
    return chosen_;
}

void FormatSegment::paintEvent(QPaintEvent*) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    if (isChecked()) {
        option.palette = chosenPalette();
    }
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
}
