#pragma once

#include <QPalette>
#include <QToolButton>

/// One of the buttons side by side of which one is chosen. The chosen one has the colours of a
/// selection: in dark palettes a pressed button hardly differs from the others.
class FormatSegment : public QToolButton {
    Q_OBJECT

public:
    explicit FormatSegment(const QString& title, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QPalette& chosenPalette();

    QPalette chosen_;
    qint64 chosenFor_ = 0;  ///< the key of the palette that `chosen_` was made from
};
