#pragma once

#include <QWidget>

/// What a document without items shows instead of rows. Mouse events go to the table below it.
class EmptyState : public QWidget {
    Q_OBJECT

public:
    explicit EmptyState(QWidget* parent = nullptr);

    /// Draws a frame while something that can be dropped is dragged over it.
    void setDropTarget(bool isDropTarget);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isDropTarget_ = false;
};
