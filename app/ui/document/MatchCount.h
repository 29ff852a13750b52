#pragma once

#include <QWidget>

class SearchState;
class QLabel;

/// A line below the outline that tells how many matches a search has; only there during a search.
class MatchCount : public QWidget {
    Q_OBJECT

public:
    explicit MatchCount(QWidget* parent = nullptr);

    void show(const SearchState& search);

    QString text() const;

private:
    QLabel* label_;
};
