#include "tests/ui/support/MenuTools.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace {

QString titleOf(const QAction& action) {
    return action.isSeparator() ? QStringLiteral("-") : action.text().remove(u'&');
}

}  // namespace

QStringList MenuTools::titlesOf(const QMenu& menu) {
    QStringList titles;
    for (const QAction* action : menu.actions()) {
        titles += titleOf(*action);
    }
    return titles;
}

QMenu* MenuTools::menuOf(const QMainWindow& window, const char* title) {
    for (const QAction* menu : window.menuBar()->actions()) {
        if (titleOf(*menu) == QString::fromUtf8(title)) {
            return menu->menu();
        }
    }
    return nullptr;
}

QAction* MenuTools::itemOf(const QMainWindow& window, const char* title) {
    for (const QAction* menu : window.menuBar()->actions()) {
        if (QAction* item = itemOf(*menu->menu(), title)) {
            return item;
        }
    }
    return nullptr;
}

QAction* MenuTools::itemOf(const QMenu& menu, const char* title) {
    for (QAction* action : menu.actions()) {
        if (titleOf(*action) == QString::fromUtf8(title)) {
            return action;
        }
    }
    return nullptr;
}

QStringList MenuTools::enabledIn(QMenu& menu) {
    QStringList titles;
    Q_EMIT menu.aboutToShow();
    for (const QAction* action : menu.actions()) {
        if (action->isEnabled() && !action->isSeparator()) {
            titles += titleOf(*action);
        }
    }
    Q_EMIT menu.aboutToHide();
    return titles;
}
