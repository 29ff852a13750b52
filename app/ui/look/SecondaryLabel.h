#pragma once

#include <QLabel>

/// A label whose text stands back (see `Colors`) and is always plain. It follows the
/// palette when the desktop changes it.
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
