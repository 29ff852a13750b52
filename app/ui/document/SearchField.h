#pragma once

#include <QLineEdit>

/// The search field of a window. Return goes to the next match, with Shift to the one before;
/// Escape empties the field, and leaves it when it is empty.
class SearchField : public QLineEdit {
    Q_OBJECT

public:
    explicit SearchField(QWidget* parent = nullptr);

    /// Takes the focus with all text selected, ready for another query.
    void activate();

Q_SIGNALS:
    /// The user wants to see the match after (1) or before (-1) the current one.
    void stepWanted(int direction);

    /// The user is done here.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
