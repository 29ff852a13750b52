#include "app/ui/editors/LongTextEditor.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QTextDocument>
#include <QVBoxLayout>
#include <utility>

#include "app/ui/editors/ExactTextEdit.h"

namespace {

constexpr int columns = 80;
constexpr int lines = 28;

/// The distance of tab stops.
constexpr int tabColumns = 4;

}  // namespace

LongTextEditor::LongTextEditor(const QString& text, InlineTextField::Owner owner, QWidget* parent)
    : QDialog(parent),
      owner_(std::move(owner)),
      text_(new ExactTextEdit(this)),
      notice_(new QLabel(this)) {
    setWindowModality(Qt::WindowModal);
    setSizeGripEnabled(true);
    createLayout();
    if (!text_->setExactText(text)) {
        showNotice(
            tr("This text is read-only here: it has several kinds of line breaks or special "
               "characters, which editing it here would change."));
    }
}

void LongTextEditor::createLayout() {
    // Otherwise the buttons could not be reached by keyboard.
    text_->setTabChangesFocus(true);
    text_->installEventFilter(this);
    notice_->setTextFormat(Qt::PlainText);
    notice_->setWordWrap(true);
    notice_->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text_);
    layout->addWidget(notice_);
    layout->addWidget(buttons);
    const QFontMetrics metrics = text_->fontMetrics();
    text_->setTabStopDistance(tabColumns * metrics.horizontalAdvance(u' '));
    resize(columns * metrics.averageCharWidth(), lines * metrics.lineSpacing());
}

void LongTextEditor::setNames(const QString& title, const QString& accessibleName) {
    setWindowTitle(title);
    text_->setAccessibleName(accessibleName);
}

bool LongTextEditor::commitNow() {
    if (hasEnded_) {
        return true;
    }
    if (text_->document()->isModified()) {
        if (const std::optional<QString> message = owner_.commit(text_->exactText())) {
            showNotice(*message);
            text_->setFocus(Qt::OtherFocusReason);
            return false;
        }
    }
    end();
    return true;
}

void LongTextEditor::abandon() {
    hasEnded_ = true;
}

void LongTextEditor::end() {
    if (!hasEnded_) {
        abandon();
        owner_.finish();
    }
}

void LongTextEditor::showNotice(const QString& text) {
    notice_->setText(text);
    notice_->show();
    text_->setAccessibleDescription(text);
    QAccessibleEvent alert(notice_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void LongTextEditor::done(int result) {
    if (result == QDialog::Accepted) {
        // The owner closes the window with the edit.
        commitNow();
    } else {
        end();
    }
}

bool LongTextEditor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == text_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (isReturn && (key->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier) {
            accept();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
