#include "app/ui/document/DocumentView.h"

#include <QLocale>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "app/model/editing/PlistDocument.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/dialogs/MessageDialog.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/EmptyState.h"
#include "app/ui/document/FormatPicker.h"
#include "app/ui/document/MatchCount.h"
#include "app/ui/document/SearchField.h"
#include "app/ui/notices/NoticeStrip.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/drag/RowDropping.h"

DocumentView::DocumentView(PlistDocument& document, UndoManager* undoManager, QWidget* parent)
    : QWidget(parent),
      document_(document),
      undoManager_(undoManager),
      search_(document),
      banner_(new NoticeStrip(tr("This file uses the old OpenStep format, which can only be read. "
                                 "It will be saved as XML."),
                              this)),
      table_(new PlistTable(actions(), this)),
      emptyState_(new EmptyState(this)),
      matchCount_(new MatchCount(this)),
      toolBar_(new DocumentToolBar(this)) {
    setFocusProxy(table_);
    createLayout();
    followToolBar();
    followDocument();
    followSearch();
}

DocumentView::~DocumentView() {
    // The table looks at the outline until it is gone, and the outline is a member of this.
    delete table_;
}

void DocumentView::createLayout() {
    // Both are visible together, the empty state on top: the table keeps the focus, and takes what
    // is pasted and dropped.
    auto* content = new QStackedLayout;
    content->setStackingMode(QStackedLayout::StackAll);
    content->addWidget(emptyState_);
    content->addWidget(table_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(banner_);
    layout->addLayout(content, 1);
    layout->addWidget(matchCount_);
}

void DocumentView::followToolBar() {
    connect(toolBar_, &DocumentToolBar::addChosen, this, [this] {
        endEditing();
        actions().addItem();
    });
    connect(toolBar_, &DocumentToolBar::deleteChosen, this, [this] {
        endEditing();
        actions().deleteSelected();
    });
    connect(&toolBar_->formatPicker(), &FormatPicker::formatPicked, this,
            [this](PlistFormat format) { actions().changeFormat(format); });
    connect(&toolBar_->searchField(), &SearchField::textChanged, &search_, &SearchState::setQuery);
    connect(&toolBar_->searchField(), &SearchField::stepWanted, &search_, &SearchState::step);
    connect(&toolBar_->searchField(), &SearchField::left, table_, qOverload<>(&QWidget::setFocus));
}

void DocumentView::followDocument() {
    connect(&document_, &PlistDocument::wasReadOnlyFormatChanged, this,
            [this] { banner_->setVisible(document_.wasReadOnlyFormat()); });
    connect(&document_, &PlistDocument::formatChanged, this,
            [this] { toolBar_->formatPicker().setFormat(document_.format()); });
    connect(&outline_, &OutlineState::rowsChanged, this, &DocumentView::updateEmptyState);
    connect(&outline_, &OutlineState::rowsChanged, this, &DocumentView::updateButtons);
    connect(&outline_, &OutlineState::selectionChanged, this, &DocumentView::updateButtons);
    connect(table_, &PlistTable::expansionRefused, this, &DocumentView::explainRefusedExpansion);
    connect(&table_->dropping(), &RowDropping::hoveredChanged, emptyState_,
            &EmptyState::setDropTarget);

    banner_->setVisible(document_.wasReadOnlyFormat());
    toolBar_->formatPicker().setFormat(document_.format());
    outline_.follow(document_);
    updateButtons();
}

void DocumentView::followSearch() {
    connect(&search_, &SearchState::matchIDsChanged, this,
            [this] { table_->setMatchIDs(search_.matchIDs()); });
    connect(&search_, &SearchState::visibleIDsChanged, this, [this] {
        outline_.setFilter(search_.visibleIDs());
        // The rows of an empty document are the same with and without a search.
        updateEmptyState();
    });
    connect(&search_, &SearchState::updated, this, [this] { matchCount_->show(search_); });
    connect(&search_, &SearchState::currentMatchChanged, this, &DocumentView::showCurrentMatch);
    connect(&search_, &SearchState::focusRequestChanged, &toolBar_->searchField(),
            &SearchField::activate);
}

void DocumentView::updateButtons() {
    toolBar_->setAddEnabled(actions().canAddItem());
    toolBar_->setDeleteEnabled(actions().hasSelectedTopLevelNodes());
}

void DocumentView::showCurrentMatch() {
    if (const PlistNode* node = search_.currentNode()) {
        outline_.reveal(*node);
        outline_.select({node->id()});
    }
}

void DocumentView::updateEmptyState() {
    const PlistNode& root = document_.root();
    const bool isEmpty =
        root.isContainer() && root.childCount() == 0 && !outline_.filter().has_value();
    emptyState_->setVisible(isEmpty);
    emptyState_->raise();
}

QList<QWidget*> DocumentView::paintedWidgets() const {
    return {table_->viewport(), emptyState_};
}

bool DocumentView::commitEditing() {
    return table_->commitEditing();
}

void DocumentView::endEditing() {
    table_->endEditing();
}

void DocumentView::expandAll() {
    if (actions().expandAll() == OutlineState::ExpandResult::tooManyRows) {
        explainRefusedExpansion();
    }
}

void DocumentView::explainRefusedExpansion() {
    const QString limit = QLocale().toString(qulonglong(OutlineState::expandedValueLimit));
    MessageDialog::show(*window(), tr("There are too many items to show at once."),
                        tr("More than %1 items would appear, because parts of this document are "
                           "used in many places. Expand smaller parts instead.")
                            .arg(limit));
}
