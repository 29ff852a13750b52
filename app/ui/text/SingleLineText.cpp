#include "app/ui/text/SingleLineText.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr char16_t returnMark = u'\u21B5';
constexpr char16_t tabMark = u'\u21E5';
constexpr char16_t ellipsis = u'\u2026';
constexpr char16_t controlPictures = 0x2400;
constexpr char16_t deletePicture = 0x2421;

constexpr bool isLineBreak(char16_t unit) {
    return unit == u'\n' || unit == u'\r' || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

/// The explicit embeddings, overrides and isolates; and the mark that shows nothing at all.
constexpr bool isHidden(char16_t unit) {
    return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069) ||
           unit == 0xFEFF;
}

constexpr bool isControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

bool needsMark(QChar character) {
    const char16_t unit = character.unicode();
    return isControl(unit) || isHidden(unit) || isLineBreak(unit);
}

void appendMark(QString& line, char16_t unit) {
    if (isLineBreak(unit)) {
        line += QChar(returnMark);
    } else if (unit == u'\t') {
        line += QChar(tabMark);
    } else if (unit < 0x20) {
        line += QChar(static_cast<char16_t>(controlPictures + unit));
    } else if (unit == 0x7F) {
        line += QChar(deletePicture);
    } else {
        // Unicode has no symbols for these: their code points, as other editors show them.
        line += QStringLiteral("[U+%1]").arg(QString::number(unit, 16).toUpper(), 4, u'0');
    }
}

/// The longest prefix of at most `count` bytes that does not end within a character.
std::string_view beginning(std::string_view utf8, std::size_t count) {
    while (count > 0 && (static_cast<unsigned char>(utf8[count]) & 0xC0) == 0x80) {
        --count;
    }
    return utf8.substr(0, count);
}

/// Unlike `QString::fromUtf8`, which takes a byte-order mark for no part of the text.
QString decoded(std::string_view utf8) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return utf8.starts_with(byteOrderMark) ? QChar(QChar::ByteOrderMark) + text : text;
}

}  // namespace

QString SingleLineText::fromText(const QString& text) {
    const auto first = std::find_if(text.begin(), text.end(), needsMark);
    if (first == text.end()) {
        return text;
    }
    QString line = text.left(first - text.begin());
    for (auto next = first; next != text.end(); ++next) {
        const bool isPair = *next == u'\r' && next + 1 != text.end() && *(next + 1) == u'\n';
        if (isPair) {
            continue;
        }
        if (needsMark(*next)) {
            appendMark(line, next->unicode());
        } else {
            line += *next;
        }
    }
    return line;
}

QString SingleLineText::fromUtf8(std::string_view utf8) {
    constexpr auto limit = static_cast<std::size_t>(longest);
    if (utf8.size() <= limit) {
        return fromText(decoded(utf8));
    }
    return fromText(decoded(beginning(utf8, limit))) + QChar(ellipsis);
}
