#pragma once

#include <QLabel>

/// A label with plain, secondary text (see `Colors`). It follows the palette when the desktop
/// changes it.
class SecondaryLabel : public QLabel {
    Q_OBJECT

public:
    explicit SecondaryLabel(const QString& text, QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;

private:
    void applyColor();

    bool isApplying_ = false;
};
