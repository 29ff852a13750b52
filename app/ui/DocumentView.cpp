#include "app/ui/DocumentView.h"

#include <QLocale>
#include <QStackedLayout>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/model/PlistDocument.h"
#include "app/model/PlistNode.h"
#include "app/ui/EmptyState.h"
#include "app/ui/FormatPicker.h"
#include "app/ui/MessageDialog.h"
#include "app/ui/NoticeBanner.h"
#include "app/ui/PlistTable.h"

DocumentView::DocumentView(PlistDocument& document, UndoManager* undoManager, QWidget* parent)
    : QWidget(parent),
      document_(document),
      undoManager_(undoManager),
      banner_(new NoticeBanner(tr("This file uses the old OpenStep format, which can only be read. "
                                  "It will be saved as XML."),
                               this)),
      table_(new PlistTable(actions(), this)),
      emptyState_(new EmptyState(this)),
      toolBar_(new QToolBar(tr("Document"), this)),
      formatPicker_(new FormatPicker(toolBar_)) {
    setFocusProxy(table_);
    makeToolBar();
    makeLayout();
    followDocument();
}

DocumentView::~DocumentView() {
    // The table looks at the outline until it is gone, and the outline is a member of this.
    delete table_;
}

void DocumentView::makeToolBar() {
    toolBar_->setMovable(false);
    toolBar_->setContextMenuPolicy(Qt::PreventContextMenu);
    toolBar_->addWidget(formatPicker_);
    connect(formatPicker_, &FormatPicker::formatPicked, this,
            [this](PlistFormat format) { actions().changeFormat(format); });
}

void DocumentView::makeLayout() {
    // Both are there together, the empty state above: the table keeps the keyboard, and takes what
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
}

void DocumentView::followDocument() {
    connect(&document_, &PlistDocument::wasReadOnlyFormatChanged, this,
            [this] { banner_->setVisible(document_.wasReadOnlyFormat()); });
    connect(&document_, &PlistDocument::formatChanged, this,
            [this] { formatPicker_->setFormat(document_.format()); });
    connect(&outline_, &OutlineState::rowsChanged, this, &DocumentView::updateEmptyState);
    connect(table_, &PlistTable::expansionRefused, this, &DocumentView::explainRefusedExpansion);

    banner_->setVisible(document_.wasReadOnlyFormat());
    formatPicker_->setFormat(document_.format());
    outline_.follow(document_);
}

void DocumentView::updateEmptyState() {
    const PlistNode& root = document_.root();
    const bool isEmpty =
        root.isContainer() && root.childCount() == 0 && !outline_.filter().has_value();
    emptyState_->setVisible(isEmpty);
    emptyState_->raise();
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
    const QString limit =
        QLocale(QLocale::English).toString(qulonglong(OutlineState::expandedValueLimit));
    MessageDialog::show(*window(), tr("There are too many items to show at once."),
                        tr("More than %1 items would appear, because parts of this document are "
                           "used in many places. Expand smaller parts of it.")
                            .arg(limit));
}
