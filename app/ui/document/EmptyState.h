#pragma once

#include <QWidget>

class QLabel;

/// What a document without items shows in place of rows. Mouse events go to the table below it.
class EmptyState : public QWidget {
    Q_OBJECT

public:
    explicit EmptyState(QWidget* parent = nullptr);

    QString text() const;

    /// Frames it while something is held above it that can be dropped.
    void setDropTarget(bool isDropTarget);
    bool isDropTarget() const noexcept { return isDropTarget_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* label_;
    bool isDropTarget_ = false;
};
