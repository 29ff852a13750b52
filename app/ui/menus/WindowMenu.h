#pragma once

#include <QList>
#include <QMenu>
#include <functional>

/// The menu of all windows of the application, which brings the chosen one to the front.
class WindowMenu : public QMenu {
    Q_OBJECT

public:
    /// `windows` is asked whenever the menu is shown.
    WindowMenu(std::function<QList<QWidget*>()> windows, QWidget* parent);

private:
    void fill();

    std::function<QList<QWidget*>()> windows_;
};
