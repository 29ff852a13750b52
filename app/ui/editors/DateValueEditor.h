#pragma once

#include <QDateTimeEdit>
#include <functional>

/// The field in which a date is edited inside its cell: date, hours and minutes in the user's zone
/// and locale, with a calendar to pick from. What it shows it does not change; only another date
/// chosen in it is handed on, in whole seconds.
class DateValueEditor : public QDateTimeEdit {
    Q_OBJECT

public:
    /// Whether a date, in seconds after 2001-01-01T00:00:00Z, lies in the years that the field
    /// knows: 100 to 9999.
    static bool canEdit(double seconds);

    /// Edits `seconds`, for which `canEdit` holds, and calls `change` with each date chosen.
    DateValueEditor(double seconds, std::function<void(double)> change, QWidget* parent);

    /// Hands on what is half typed, as Return does.
    void commit();

    /// Ends the edit without a word: the cell has gone.
    void abandon();

Q_SIGNALS:
    /// The edit has ended: by Return, by Escape, or because the focus went elsewhere. Once.
    void finished();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void end();

    std::function<void(double)> change_;
    bool hasEnded_ = false;
};
