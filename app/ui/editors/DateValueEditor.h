#pragma once

#include <QDateTimeEdit>
#include <functional>

/// The field in which a date is edited inside its cell: date, hours and minutes in the user's time
/// zone and locale, with a calendar popup. Opening it changes nothing; only another date chosen in
/// it is reported, in whole seconds.
class DateValueEditor : public QDateTimeEdit {
    Q_OBJECT

public:
    /// Whether a date, in seconds after 2001-01-01T00:00:00Z, is in the range of the field, which
    /// is the years 100 to 9999.
    static bool canEdit(double seconds);

    /// Edits `seconds`, which `canEdit` must allow, and calls `change` with each date chosen.
    DateValueEditor(double seconds, std::function<void(double)> change, QWidget* parent);

    /// Applies what is half typed and ends the edit, as Return does.
    void commit();

    /// Ends the edit silently: the cell is gone.
    void abandon();

Q_SIGNALS:
    /// The edit has ended: by Return, by Escape, or because the focus went elsewhere. Emitted once.
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
