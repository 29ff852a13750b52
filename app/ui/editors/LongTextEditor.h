#pragma once

#include <QDialog>

#include "app/ui/editors/InlineTextField.h"

class ExactTextEdit;
class QLabel;

/// The window in which a key or a value is edited that is too long for a field in its cell. Return
/// inserts a line break, Ctrl+Return is OK; undo and clipboard apply to the text alone.
///
/// Like the field it never commits twice, and a text that was not edited is not committed at all. A
/// text that could not be returned exactly is read-only.
class LongTextEditor : public QDialog {
    Q_OBJECT

public:
    /// The longest text for a field, in UTF-16 code units.
    static constexpr qsizetype longestInField = 100'000;

    /// Begins an edit of `text`.
    LongTextEditor(const QString& text, InlineTextField::Owner owner, QWidget* parent);

    /// Sets the title of the window, and the name of the text for screen readers.
    void setNames(const QString& title, const QString& accessibleName);

    /// Applies the text as the button OK does. False if it was refused, which the window shows;
    /// then the edit goes on.
    bool commitNow();

    /// Ends the edit without applying the text or telling the owner: the cell is gone.
    void abandon();

    /// Both buttons, Escape and the close button of the window end up here.
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createLayout();
    void showNotice(const QString& text);
    void end();

    InlineTextField::Owner owner_;
    ExactTextEdit* text_;
    QLabel* notice_;
    bool hasEnded_ = false;
};
