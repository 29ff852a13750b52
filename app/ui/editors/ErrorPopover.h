#pragma once

#include <QFrame>
#include <QPointer>

class QLabel;

/// A message next to the widget that it is about: below it, or above where there is no room below.
/// It never takes the keyboard focus, so that the user can go on typing; a click anywhere, turning
/// the wheel or moving the widget dismisses it. (A popup window of the toolkit would swallow what
/// is typed.)
class ErrorPopover : public QFrame {
    Q_OBJECT

public:
    /// The space around the text on all sides.
    static constexpr int padding = 10;

    /// A popover about `anchor`, shown in its window. Deleted with the window or by its owner.
    ErrorPopover(const QString& message, QWidget& anchor);
    ~ErrorPopover() override;

    /// The message, which is plain text whatever it contains.
    QString message() const;

Q_SIGNALS:
    /// The user clicked or scrolled elsewhere; the popover is hidden.
    void dismissed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void placeAtAnchor();
    void dismiss();

    QPointer<QWidget> anchor_;
    QLabel* label_;
};
