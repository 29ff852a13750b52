#pragma once

#include <QLineEdit>

/// The search field of a window. Return goes to the next match, with Shift to the previous one;
/// Escape clears the field, or leaves it when it is empty.
class SearchField : public QLineEdit {
    Q_OBJECT

public:
    explicit SearchField(QWidget* parent = nullptr);

    /// Takes the focus with all text selected, ready for another query.
    void activate();

Q_SIGNALS:
    /// The user wants to go to the next (1) or the previous (-1) match.
    void stepWanted(int direction);

    /// The user leaves the field for the table.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
