#include "app/ui/editors/ErrorPopover.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "app/ui/look/Colors.h"

namespace {

/// The distance between the popover and its anchor.
constexpr int distance = 4;

constexpr int maximumTextWidth = 360;

/// Labels wrap their text into a narrow column by themselves: this one is as wide as the text, up
/// to the maximum.
int widthOf(const QLabel& label) {
    const QRect bounds = label.fontMetrics().boundingRect(QRect(0, 0, maximumTextWidth, 10'000),
                                                          Qt::TextWordWrap, label.text());
    return bounds.width() + 2;
}

}  // namespace

ErrorPopover::ErrorPopover(const QString& message, QWidget& anchor)
    : QFrame(anchor.window()), anchor_(&anchor), label_(new QLabel(this)) {
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(message);
    label_->setTextFormat(Qt::PlainText);
    label_->setWordWrap(true);
    label_->setText(message);
    label_->setFixedWidth(widthOf(*label_));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->addWidget(label_);
    setBackgroundRole(QPalette::Window);

    placeAtAnchor();
    show();
    raise();
    qApp->installEventFilter(this);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

ErrorPopover::~ErrorPopover() = default;

QString ErrorPopover::message() const {
    return label_->text();
}

void ErrorPopover::placeAtAnchor() {
    resize(sizeHint());
    const QWidget* window = parentWidget();
    const QRect target(anchor_->mapTo(window, QPoint(0, 0)), anchor_->size());
    const int below = target.bottom() + 1 + distance;
    const int above = target.top() - distance - height();
    const bool fitsBelow = below + height() <= window->height();
    const int left = std::clamp(target.left(), 0, std::max(window->width() - width(), 0));
    move(left, fitsBelow || above < 0 ? below : above);
}

bool ErrorPopover::eventFilter(QObject* watched, QEvent* event) {
    const bool endsIt = event->type() == QEvent::MouseButtonPress ||
                        event->type() == QEvent::Wheel ||
                        (watched == anchor_ && event->type() == QEvent::Move);
    if (isVisible() && endsIt && watched->isWidgetType()) {
        dismiss();
    }
    return false;
}

void ErrorPopover::dismiss() {
    hide();
    Q_EMIT dismissed();
}

void ErrorPopover::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(palette().color(QPalette::Window));
    painter.setPen(Colors::error(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
}
