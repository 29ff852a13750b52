#include "app/ui/editors/Base64Filling.h"

#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>

#include "app/model/runtime/Plist.h"

namespace {

/// Their Base64 is 76 characters, the longest line of mail (RFC 2045, section 6.8).
constexpr std::size_t bytesPerLine = 57;
static_assert(Base64Filling::bytesPerTurn % bytesPerLine == 0);

}  // namespace

Base64Filling::Base64Filling(QPlainTextEdit& editor, QObject* parent)
    : QObject(parent), editor_(editor) {
    next_.setInterval(0);
    connect(&next_, &QTimer::timeout, this, &Base64Filling::addSome);
}

void Base64Filling::start(std::span<const std::uint8_t> bytes) {
    next_.stop();
    rest_ = bytes;
    const bool isLong = bytes.size() > bytesPerTurn;
    // Wrapped, all lines would be laid out whenever the window gets another size.
    editor_.setLineWrapMode(isLong ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
    editor_.setReadOnly(isLong);
    editor_.setPlainText(takeLines());
    if (isLong) {
        editor_.setUndoRedoEnabled(false);
        next_.start();
    }
}

void Base64Filling::addSome() {
    QTextCursor end(editor_.document());
    end.movePosition(QTextCursor::End);
    end.insertText(u'\n' + takeLines());
    if (isDone()) {
        next_.stop();
        editor_.setUndoRedoEnabled(true);
        editor_.setReadOnly(false);
        Q_EMIT done();
    }
}

QString Base64Filling::takeLines() {
    const std::span<const std::uint8_t> taken = rest_.first(std::min(rest_.size(), bytesPerTurn));
    rest_ = rest_.subspan(taken.size());
    QString lines;
    for (std::size_t at = 0; at < taken.size(); at += bytesPerLine) {
        const auto line = taken.subspan(at, std::min(bytesPerLine, taken.size() - at));
        lines += QLatin1String(at > 0 ? "\n" : "") + QString::fromStdString(Base64::encoded(line));
    }
    return lines;
}
