#pragma once

#include <QMenu>

/// The Help menu of a window: the keys that its menus do not show, and what this program is.
class HelpMenu : public QMenu {
    Q_OBJECT

public:
    explicit HelpMenu(QWidget* window);

private:
    void showKeys();
    void showAbout();
};
