#include "app/ui/document/FormatPicker.h"

#include <QButtonGroup>
#include <QHBoxLayout>

#include "app/ui/document/FormatSegment.h"

FormatPicker::FormatPicker(QWidget* parent) : QWidget(parent), group_(new QButtonGroup(this)) {
    setAccessibleName(tr("Format"));
    setToolTip(tr("The format used when saving"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    addSegment(PlistFormat::xml, tr("XML"));
    addSegment(PlistFormat::binary, tr("Binary"));
    connect(group_, &QButtonGroup::idClicked, this,
            [this](int id) { Q_EMIT formatPicked(static_cast<PlistFormat>(id)); });
}

void FormatPicker::addSegment(PlistFormat format, const QString& title) {
    auto* segment = new FormatSegment(title, this);
    segment->setToolTip(toolTip());
    segment->setAccessibleDescription(toolTip());
    group_->addButton(segment, static_cast<int>(format));
    layout()->addWidget(segment);
}

PlistFormat FormatPicker::format() const {
    return static_cast<PlistFormat>(group_->checkedId());
}

void FormatPicker::setFormat(PlistFormat format) {
    if (QAbstractButton* segment = group_->button(static_cast<int>(format))) {
        segment->setChecked(true);
    }
}
