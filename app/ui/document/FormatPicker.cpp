#include "app/ui/document/FormatPicker.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPalette>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <QToolButton>

namespace {

/// The colour of selections, further away from that of selected text: styles lighten and grey
/// what they paint buttons with.
QColor chosenColor(const QPalette& palette) {
    const QColor background = palette.color(QPalette::Highlight);
    const bool isTextLight =
        palette.color(QPalette::HighlightedText).lightness() > background.lightness();
    return isTextLight ? background.darker(150) : background.lighter(120);
}

/// One of the buttons side by side of which one is chosen. The chosen one has the colours of a
/// selection: in dark palettes a pressed button hardly differs from the others.
class FormatSegment : public QToolButton {
public:
    explicit FormatSegment(const QString& title, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QPalette& chosenPalette();

    QPalette chosen_;
    qint64 chosenFor_ = 0;  ///< the key of the palette that `chosen_` was made from
};

FormatSegment::FormatSegment(const QString& title, QWidget* parent) : QToolButton(parent) {
    setText(title);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

/// Created again only for other colors: styles keep an image for each palette that they meet.
const QPalette& FormatSegment::chosenPalette() {
    if (chosenFor_ != palette().cacheKey() ||
        chosen_.currentColorGroup() != palette().currentColorGroup()) {
        chosenFor_ = palette().cacheKey();
        chosen_ = palette();
        chosen_.setColor(QPalette::Button, chosenColor(palette()));
        chosen_.setBrush(QPalette::ButtonText, palette().highlightedText());
    }
    return chosen_;
}

void FormatSegment::paintEvent(QPaintEvent*) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    if (isChecked()) {
        option.palette = chosenPalette();
    }
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
}

}  // namespace

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
