#pragma once

#include <QWidget>

class QLabel;

/// What a document without items shows in place of rows. Mouse events go to the table below it.
class EmptyState : public QWidget {
    Q_OBJECT

public:
    explicit EmptyState(QWidget* parent = nullptr);

    QString text() const;

private:
    QLabel* label_;
};
