#pragma once

#include <QWidget>

/// A window with the manual, which comes with the program and needs no network.
class ManualWindow : public QWidget {
    Q_OBJECT

public:
    /// Shows the manual that belongs to `window`, which has at most one. It goes when it is closed,
    /// or with `window`.
    static void showFor(QWidget& window);

private:
    explicit ManualWindow(QWidget& window);
};
