#include "app/ui/dialogs/ManualWindow.h"

#include <QFile>
#include <QFont>
#include <QKeySequence>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QVBoxLayout>

namespace {

constexpr QSize sizeAtFirst{720, 640};
constexpr int pageMargin = 28;
constexpr int cellPadding = 3;
constexpr int lineHeight = 130;

/// In the language of the other texts, whose catalogue names the page; in English if there is none.
QString manual() {
    QFile page(QStringLiteral(":/") + ManualWindow::tr("manual.md"));
    if (!page.exists()) {
        page.setFileName(QStringLiteral(":/manual.md"));
    }
    return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

/// Tables are told by their columns, not by lines.
void setTables(QTextDocument& document) {
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame)) {
            QTextTableFormat format = table->format();
            format.setBorderStyle(QTextFrameFormat::BorderStyle_None);
            format.setBorder(0);
            format.setCellSpacing(0);
            format.setCellPadding(cellPadding);
            format.setBottomMargin(document.defaultFont().pointSizeF());
            table->setFormat(format);
        }
    }
}

/// Gives the lines room, and headings room from what stands above them.
void setParagraphs(QTextDocument& document) {
    const QFont& font = document.defaultFont();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        format.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
        if (format.headingLevel() > 1) {
            format.setTopMargin(1.5 * font.pointSizeF());
        }
        QTextCursor(block).setBlockFormat(format);
    }
}

void fill(QTextBrowser& page) {
    QTextDocument& document = *page.document();
    document.setDefaultFont(page.font());
    page.setMarkdown(manual());
    document.setDocumentMargin(pageMargin);
    setTables(document);
    setParagraphs(document);
    page.moveCursor(QTextCursor::Start);
}

}  // namespace

void ManualWindow::showFor(QWidget& window) {
    auto* manual = window.findChild<ManualWindow*>();
    if (manual == nullptr) {
        manual = new ManualWindow(window);
    }
    manual->show();
    manual->raise();
    manual->activateWindow();
}

ManualWindow::ManualWindow(QWidget& window) : QWidget(&window, Qt::Window) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Tabulet Manual"));
    auto* page = new QTextBrowser(this);
    page->setFrameShape(QFrame::NoFrame);
    page->setAccessibleName(windowTitle());
    fill(*page);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(page);
    for (const QKeySequence& keys :
         {QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
    }
    resize(sizeAtFirst);
}
