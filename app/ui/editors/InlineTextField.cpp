#include "app/ui/editors/InlineTextField.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <limits>
#include <utility>

#include "app/ui/editors/CellField.h"
#include "app/ui/editors/ErrorPopover.h"
#include "app/ui/look/Colors.h"

namespace {

constexpr qreal cornerRadius = 3;

}  // namespace

InlineTextField::InlineTextField(const QString& text, Owner owner, QWidget* parent)
    : QLineEdit(parent), owner_(std::move(owner)) {
    setFrame(false);
    setAutoFillBackground(true);
    // The default would cut long texts.
    setMaxLength(std::numeric_limits<int>::max());
    setText(text);
    connect(this, &QLineEdit::textEdited, this, &InlineTextField::clearError);
    QTimer::singleShot(0, this, [this] {
        if (!hasEnded_) {
            setFocus(Qt::OtherFocusReason);
            selectAll();
        }
    });
}

InlineTextField::~InlineTextField() {
    delete popover_;
}

QString InlineTextField::error() const {
    return popover_ ? popover_->message() : QString();
}

bool InlineTextField::commitNow() {
    if (hasEnded_) {
        return true;
    }
    if (const std::optional<QString> message = owner_.commit(text())) {
        showError(*message);
        setFocus(Qt::OtherFocusReason);
        return false;
    }
    end();
    return true;
}

void InlineTextField::abandon() {
    hasEnded_ = true;
    clearError();
}

bool InlineTextField::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            leave(key == Qt::Key_Tab ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return QLineEdit::event(event);
}

void InlineTextField::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            commitNow();
            break;
        case Qt::Key_Escape:
            end();
            break;
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            // Not for the table behind the field, whose current row would wander off.
            break;
        default:
            QLineEdit::keyPressEvent(event);
    }
}

void InlineTextField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (CellField::endsEdit(event->reason())) {
        leave(event->reason());
    }
}

/// The focus leaves the field: a text that is refused is dropped in silence.
void InlineTextField::leave(Qt::FocusReason reason) {
    if (hasEnded_) {
        return;
    }
    // Nothing that committing brings about may come back here.
    hasEnded_ = true;
    const bool isCommitted = !owner_.commit(text()).has_value();
    hasEnded_ = false;
    const std::function<void()> onTab = owner_.onTab;
    end();
    if (isCommitted && reason == Qt::TabFocusReason && onTab) {
        onTab();
    }
}

void InlineTextField::end() {
    if (!hasEnded_) {
        abandon();
        owner_.finish();
    }
}

void InlineTextField::showError(const QString& message) {
    clearError();
    popover_ = new ErrorPopover(message, *this);
    connect(popover_, &ErrorPopover::dismissed, this, &InlineTextField::clearError);
    setAccessibleDescription(message);
    update();
}

void InlineTextField::clearError() {
    if (popover_) {
        popover_->hide();
        popover_->deleteLater();
        popover_ = nullptr;
        setAccessibleDescription(QString());
        update();
    }
}

void InlineTextField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(popover_ ? Colors::error(palette()) : palette().color(QPalette::Highlight));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                            cornerRadius);
}
