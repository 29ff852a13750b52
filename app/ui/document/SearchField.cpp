#include "app/ui/document/SearchField.h"

#include <QKeyEvent>
#include <algorithm>

namespace {

/// Room for a few words, also where the window is narrow.
constexpr int leastCharacters = 14;
constexpr int mostCharacters = 30;

}  // namespace

SearchField::SearchField(QWidget* parent) : QLineEdit(parent) {
    setPlaceholderText(tr("Search keys and values"));
    setAccessibleName(tr("Search"));
    setClearButtonEnabled(true);
    const int character = fontMetrics().averageCharWidth();
    // The prompt is longer in other languages, and has room at its side for the clear button.
    const int prompt = fontMetrics().horizontalAdvance(placeholderText()) + 4 * character;
    setMinimumWidth(std::max(leastCharacters * character, prompt));
    setMaximumWidth(std::max(mostCharacters * character, prompt));
}

void SearchField::activate() {
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT stepWanted(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
            break;
        case Qt::Key_Escape:
            if (text().isEmpty()) {
                Q_EMIT left();
            } else {
                clear();
            }
            break;
        case Qt::Key_Down:
            Q_EMIT left();
            break;
        default:
            QLineEdit::keyPressEvent(event);
    }
}
