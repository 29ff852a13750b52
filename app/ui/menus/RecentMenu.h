#pragma once

#include <QMenu>

/// The submenu of the files that were used last. It only says what was chosen.
class RecentMenu : public QMenu {
    Q_OBJECT

public:
    explicit RecentMenu(QWidget* parent);

Q_SIGNALS:
    void pathChosen(const QString& path);

private:
    void fill();
};
