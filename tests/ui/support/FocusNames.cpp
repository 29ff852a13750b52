#include "tests/ui/support/FocusNames.h"

#include <QAccessible>
#include <QWidget>

namespace {

bool takesFocus(const QWidget& widget) {
    return widget.isVisible() && widget.focusPolicy() != Qt::NoFocus &&
           widget.focusProxy() == nullptr;
}

QString nameOf(QWidget& widget) {
    const QAccessibleInterface* object = QAccessible::queryAccessibleInterface(&widget);
    const QString name = object != nullptr ? object->text(QAccessible::Name) : QString();
    return name.isEmpty()
               ? QStringLiteral("[%1 %2]").arg(QLatin1String(widget.metaObject()->className()),
                                               widget.objectName())
               : name;
}

}  // namespace

QStringList FocusNames::in(const QWidget& window) {
    QStringList names;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (takesFocus(*widget)) {
            names += nameOf(*widget);
        }
    }
    return names;
}

QStringList FocusNames::missingIn(const QWidget& window) {
    QStringList missing = in(window);
    missing.removeIf([](const QString& name) { return !name.startsWith(u'['); });
    return missing;
}
