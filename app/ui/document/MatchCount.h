#pragma once

#include <QWidget>

class SearchState;
class QLabel;

/// A line below the outline with the number of matches; visible only during a search.
class MatchCount : public QWidget {
    Q_OBJECT

public:
    explicit MatchCount(QWidget* parent = nullptr);

    void show(const SearchState& search);

private:
    QLabel* label_;
};
