#include "app/ui/look/SecondaryLabel.h"

#include <QEvent>
#include <QScopedValueRollback>

#include "app/ui/look/Colors.h"

SecondaryLabel::SecondaryLabel(const QString& text, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setText(text);
    applyColor();
}

bool SecondaryLabel::event(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ParentChange ||
        event->type() == QEvent::Polish) {
        applyColor();
    }
    return QLabel::event(event);
}

void SecondaryLabel::applyColor() {
    // Setting the colour is a change of the palette too.
    if (isApplying_ || parentWidget() == nullptr) {
        return;
    }
    const QScopedValueRollback applying(isApplying_, true);
    const QPalette surroundings = parentWidget()->palette();
    QPalette own;
    for (const QPalette::ColorGroup group :
         {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        own.setColor(group, foregroundRole(),
                     Colors::secondary(surroundings, group, foregroundRole(), backgroundRole()));
    }
    setPalette(own);
}
