#pragma once

#include <QStringList>

class QAction;
class QMainWindow;
class QMenu;

/// Looks into the menus of a window.
namespace MenuTools {

/// The titles of the items as they are read, "-" for a separator.
QStringList titlesOf(const QMenu& menu);

/// The menu, or the first item in any menu, with this title; null if there is none.
QMenu* menuOf(const QMainWindow& window, const char* title);
QAction* itemOf(const QMainWindow& window, const char* title);

/// The item of this menu with the title; null if there is none.
QAction* itemOf(const QMenu& menu, const char* title);

/// The titles of the items that can be chosen when the menu is shown.
QStringList enabledIn(QMenu& menu);

}  // namespace MenuTools
