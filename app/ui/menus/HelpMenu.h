#pragma once

#include <QMenu>

/// The Help menu of a window: the manual, the keyboard shortcuts that its menus do not show, and
/// the About box.
class HelpMenu : public QMenu {
    Q_OBJECT

public:
    explicit HelpMenu(QWidget* window);

private:
    void showKeys();
};
