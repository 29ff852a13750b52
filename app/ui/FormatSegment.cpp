#include "app/ui/FormatSegment.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

FormatSegment::FormatSegment(const QString& title, QWidget* parent) : QToolButton(parent) {
    setText(title);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void FormatSegment::paintEvent(QPaintEvent*) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    if (isChecked()) {
        option.palette.setBrush(QPalette::Button, palette().highlight());
        option.palette.setBrush(QPalette::ButtonText, palette().highlightedText());
    }
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
}
