#include "tests/ui/support/PseudoLanguage.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QTableView>
#include <QWidget>

namespace {

constexpr char16_t beginMark = u'\u27E6';
constexpr char16_t endMark = u'\u27E7';

QString marked(const QString& text) {
    return QChar(beginMark) + text + QString(text.size() / 2, u'~') + QChar(endMark);
}

QStringList textsOfActions(const QWidget& widget) {
    QStringList texts;
    for (QAction* action : widget.actions()) {
        if (!action->isSeparator()) {
            texts << action->text() << action->toolTip();
        }
        if (QMenu* menu = action->menu()) {
            Q_EMIT menu->aboutToShow();
            texts += textsOfActions(*menu);
            Q_EMIT menu->aboutToHide();
        }
    }
    return texts;
}

QStringList textsOfHeader(const QTableView& table) {
    QStringList texts;
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        texts += table.model()->headerData(column, Qt::Horizontal).toString();
    }
    return texts;
}

QStringList textsOfWidget(QWidget& widget) {
    QStringList texts{widget.toolTip(), widget.accessibleName(), widget.accessibleDescription()};
    texts += textsOfActions(widget);
    if (const auto* label = qobject_cast<QLabel*>(&widget)) {
        texts += label->text();
    } else if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        texts += button->text();
    } else if (const auto* field = qobject_cast<QLineEdit*>(&widget)) {
        texts += field->placeholderText();
    } else if (const auto* table = qobject_cast<QTableView*>(&widget)) {
        texts += textsOfHeader(*table);
    }
    return texts;
}

}  // namespace

PseudoLanguage::PseudoLanguage() {
    QCoreApplication::installTranslator(this);
}

PseudoLanguage::~PseudoLanguage() {
    QCoreApplication::removeTranslator(this);
}

QString PseudoLanguage::translate(const char*, const char* source, const char*, int) const {
    const QString text = QString::fromUtf8(source);
    // The patterns of a file filter stand behind its name.
    const qsizetype patterns = text.indexOf(QStringLiteral(" (*"));
    return patterns < 0 ? marked(text) : marked(text.left(patterns)) + text.mid(patterns);
}

QString PseudoLanguage::unmarkedIn(QString text) {
    static const QRegularExpression innermost(QStringLiteral("\u27E6[^\u27E6\u27E7]*\u27E7"));
    static const QRegularExpression letter(QStringLiteral("\\p{L}"));
    while (text.contains(innermost)) {
        text.remove(innermost);
    }
    return text.contains(letter) ? text : QString();
}

QStringList PseudoLanguage::textsOf(QWidget& window) {
    QStringList texts = textsOfWidget(window) << window.windowTitle();
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->isVisibleTo(&window) && widget->window() == &window) {
            texts += textsOfWidget(*widget);
        }
    }
    return texts;
}
