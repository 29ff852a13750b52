#pragma once

#include <QWidget>

#include "app/model/runtime/Plist.h"

class QButtonGroup;

/// The formats that a document can be saved in, side by side; one of them is chosen.
class FormatPicker : public QWidget {
    Q_OBJECT

public:
    explicit FormatPicker(QWidget* parent = nullptr);

    PlistFormat format() const;

    /// Shows another choice, without a signal.
    void setFormat(PlistFormat format);

Q_SIGNALS:
    /// The user has chosen a format.
    void formatPicked(PlistFormat format);

private:
    void addSegment(PlistFormat format, const QString& title);

    QButtonGroup* group_;
};
