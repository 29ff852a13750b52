#include "app/ui/document/MatchCount.h"

#include <QHBoxLayout>
#include <QLocale>
#include <algorithm>
#include <limits>

#include "app/model/search/SearchState.h"
#include "app/ui/look/SecondaryLabel.h"

MatchCount::MatchCount(QWidget* parent) : QWidget(parent), label_(new SecondaryLabel({}, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 10, 4);
    layout->addWidget(label_, 0, Qt::AlignCenter);
    setVisible(false);
}

void MatchCount::show(const SearchState& search) {
    constexpr std::size_t greatest = std::numeric_limits<int>::max();
    const int count = static_cast<int>(std::min(search.matchIDs().size(), greatest));
    label_->setText(search.hasAllMatches()
                        ? tr("%n match(es)", nullptr, count)
                        : tr("More than %1 matches").arg(QLocale().toString(count)));
    setVisible(search.visibleIDs().has_value());
}
