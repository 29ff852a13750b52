#pragma once

#include <QWidget>

class QLabel;

/// What a document without items shows instead of rows. Mouse events go to the table below it.
class EmptyState : public QWidget {
    Q_OBJECT

public:
    explicit EmptyState(QWidget* parent = nullptr);

    QString text() const;

    /// Draws a frame while something that can be dropped is dragged over it.
    void setDropTarget(bool isDropTarget);
    bool isDropTarget() const noexcept { return isDropTarget_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* label_;
    bool isDropTarget_ = false;
};
