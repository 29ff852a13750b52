#pragma once

#include <QLineEdit>
#include <QPointer>
#include <functional>
#include <optional>

class ErrorPopover;

/// The field in which a key or a value is edited inside its cell. It shows why a text is refused
/// and tells its owner when the edit has ended; it never commits twice.
///
/// An edit ends by Return, Escape, Tab or by the focus going elsewhere in the window. It does not
/// end when the window is deactivated or a menu or popup opens. (The stock editor of item views
/// commits on deactivation and keeps Tab for itself.)
class InlineTextField : public QLineEdit {
    Q_OBJECT

public:
    /// What the field calls back. `finish` may delete the field later, but not at once.
    struct Owner {
        /// Applies a text; returns what to tell the user if it is refused.
        std::function<std::optional<QString>(const QString&)> commit;
        /// Called when the edit has ended.
        std::function<void()> finish;
        /// Called after `finish` if the text was applied and Tab ended the edit. May be empty.
        std::function<void()> onTab;
    };

    /// Begins an edit of `text`, all of it selected. The field takes the focus one turn of the
    /// event loop later, when it has been placed.
    InlineTextField(const QString& text, Owner owner, QWidget* parent);
    ~InlineTextField() override;

    /// Applies the text as Return does. False if it was refused, which the field shows; then the
    /// edit goes on. For what needs the document complete, such as saving.
    bool commitNow();

    /// Ends the edit without applying the text or telling the owner: the cell is gone.
    void abandon();

    /// Why the text was refused last; empty once it is edited or the message dismissed.
    QString error() const;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void leave(Qt::FocusReason reason);
    void end();
    void showError(const QString& message);
    void clearError();

    Owner owner_;
    QPointer<ErrorPopover> popover_;
    bool hasEnded_ = false;
};
