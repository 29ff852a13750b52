#pragma once

#include <QToolButton>

/// One of the buttons side by side of which one is chosen. The chosen one has the colours of a
/// selection: in dark palettes a pressed button hardly differs from the others.
class FormatSegment : public QToolButton {
    Q_OBJECT

public:
    explicit FormatSegment(const QString& title, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
