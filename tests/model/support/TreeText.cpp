#include "tests/model/support/TreeText.h"

#include <QByteArray>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "app/model/outline/OutlineRow.h"
#include "app/model/outline/OutlineState.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"

namespace {

constexpr int stepsPerLevel = 2;

QString indentation(qint64 depth) {
    return QString(static_cast<qsizetype>(depth * stepsPerLevel), QLatin1Char(' '));
}

QString content(PlistNode& node) {
    const QString scalar = TreeText::ofValue(node.scalar());
    return QStringLiteral("%1: %2").arg(QString::fromUtf8(node.key().view()), scalar);
}

// --- From text to values ---

class TreeReader {
public:
    explicit TreeReader(std::string_view text) : text_(text) {}

    PlistValue whole() {
        PlistValue result = value();
        skipWhitespace();
        require(place_ == text_.size(), "the end");
        return result;
    }

private:
    PlistValue value() {
        if (takes('{')) {
            return dictionary();
        }
        if (takes('[')) {
            return array();
        }
        return takes('"') ? PlistValue::string(until('"')) : scalar(word(",]}"));
    }

    PlistValue dictionary() {
        std::vector<PlistEntry> entries;
        while (!takes('}')) {
            std::string key = takes('"') ? until('"') : word(":");
            require(takes(':'), "a colon");
            entries.push_back({std::move(key), value()});
            require(takes(',') || isAt('}'), "a comma or a brace");
        }
        return PlistValue::dictionary(std::move(entries));
    }

    PlistValue array() {
        std::vector<PlistValue> values;
        while (!takes(']')) {
            values.push_back(value());
            require(takes(',') || isAt(']'), "a comma or a bracket");
        }
        return PlistValue::array(std::move(values));
    }

    PlistValue scalar(const std::string& text) const {
        if (text == "true" || text == "false") {
            return PlistValue::boolean(text == "true");
        }
        if (text.starts_with("data")) {
            return data(text.substr(4));
        }
        if (text.starts_with("date ")) {
            return PlistValue::date(number<double>(text.substr(5)));
        }
        if (text.starts_with("uid ")) {
            return PlistValue::uid(number<std::uint64_t>(text.substr(4)));
        }
        return text.find_first_of(".ein") == std::string::npos
                   ? PlistValue::integer(number<std::int64_t>(text))
                   : PlistValue::real(number<double>(text));
    }

    static PlistValue data(const std::string& hex) {
        const QByteArray bytes = QByteArray::fromHex(QByteArray::fromStdString(hex));
        return PlistValue::data(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    }

    template <typename Number>
    Number number(const std::string& text) const {
        Number result = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, result);
        require(error == std::errc() && stop == end, "a scalar");
        return result;
    }

    // --- Characters ---

    void skipWhitespace() {
        while (place_ < text_.size() && (text_[place_] == ' ' || text_[place_] == '\n')) {
            ++place_;
        }
    }

    bool isAt(char character) {
        skipWhitespace();
        return place_ < text_.size() && text_[place_] == character;
    }

    bool takes(char character) {
        const bool is = isAt(character);
        place_ += is ? 1 : 0;
        return is;
    }

    /// What comes before `end`, which is passed over.
    std::string until(char end) {
        const std::size_t start = std::exchange(place_, text_.find(end, place_));
        require(place_ < text_.size(), "the end of a text");
        return std::string(text_.substr(start, place_++ - start));
    }

    /// What comes before any of `ends`, or before the end, without the whitespace at its end.
    std::string word(std::string_view ends) {
        const std::size_t start = place_;
        place_ = std::min(text_.find_first_of(ends, start), text_.size());
        const std::string_view found = text_.substr(start, place_ - start);
        return std::string(found.substr(0, found.find_last_not_of(" \n") + 1));
    }

    void require(bool isThere, const char* expected) const {
        if (!isThere) {
            const std::string text(text_);
            qFatal("%s expected at %zu of %s", expected, place_, text.c_str());
        }
    }

    std::string_view text_;
    std::size_t place_ = 0;
};

}  // namespace

PlistValue tree(std::string_view text) {
    return TreeReader(text).whole();
}

QString TreeText::ofValue(const PlistValue& value) {
    switch (value.type()) {
        case PlistType::string:
            return QLatin1Char('"') + QString::fromUtf8(value.text()) + QLatin1Char('"');
        case PlistType::integer:
            return QString::fromStdString(plist::decimalText(value.integerValue()));
        case PlistType::real:
            return QString::number(value.realValue());
        case PlistType::boolean:
            return value.booleanValue() ? QStringLiteral("true") : QStringLiteral("false");
        case PlistType::date:
            return QStringLiteral("date %1").arg(value.dateValue());
        case PlistType::data: {
            const auto bytes = value.dataValue();
            const QByteArray copy(reinterpret_cast<const char*>(bytes.data()),
                                  static_cast<qsizetype>(bytes.size()));
            return QStringLiteral("data %1").arg(QString::fromLatin1(copy.toHex()));
        }
        case PlistType::uid:
            return QStringLiteral("uid %1").arg(value.uidValue());
        case PlistType::dictionary:
        case PlistType::array:
            break;
    }
    return QString::fromUtf8(rawValue(value.type()));
}

QString TreeText::whole(const PlistValue& value) {
    if (!value.isContainer()) {
        return ofValue(value);
    }
    const bool isDictionary = value.type() == PlistType::dictionary;
    QStringList parts;
    for (std::size_t i = 0; i < value.childCount(); ++i) {
        const QString child = whole(value.children()[i]);
        parts += isDictionary
                     ? QString::fromUtf8(value.keys()[i].view()) + QStringLiteral(": ") + child
                     : child;
    }
    const QString inside = parts.join(QStringLiteral(", "));
    return isDictionary ? QStringLiteral("{%1}").arg(inside) : QStringLiteral("[%1]").arg(inside);
}

QString TreeText::ofTree(PlistNode& node) {
    struct Waiting {
        PlistNode* node;
        PlistNode* parent;
        int depth;
    };
    QStringList lines;
    std::vector<Waiting> waiting{{&node, node.parent(), 0}};
    while (!waiting.empty()) {
        const Waiting next = waiting.back();
        waiting.pop_back();
        QString line = indentation(next.depth) + content(*next.node);
        if (next.node->isContainer()) {
            line += QStringLiteral(" %1").arg(next.node->childCount());
            line += QLatin1String(next.node->isMaterialized() ? "" : " ...");
        }
        line += QLatin1String(next.node->parent() == next.parent ? "" : " !");
        lines += line;
        if (next.node->isMaterialized()) {
            const auto children = next.node->children();
            for (std::size_t i = children.size(); i > 0; --i) {
                waiting.push_back({children[i - 1].get(), next.node, next.depth + 1});
            }
        }
    }
    return lines.join(QLatin1Char('\n'));
}

QString TreeText::ofRow(const OutlineRow& row) {
    QString line = indentation(row.depth());
    if (row.parentType()) {
        line += QStringLiteral("%1 ").arg(row.index());
    }
    if (row.parentType() == PlistType::array) {
        line += ofValue(row.node().scalar());
    } else {
        line += content(row.node());
    }
    if (row.node().isContainer()) {
        line += QLatin1String(row.isExpanded() ? " [-]" : " [+]");
    }
    line += QLatin1String(row.isDuplicateKey() ? " (duplicate)" : "");
    return line;
}

QString TreeText::ofRows(const OutlineState& outline) {
    QStringList lines;
    for (const OutlineRow& row : outline.rows()) {
        lines += ofRow(row);
    }
    return lines.join(QLatin1Char('\n'));
}

QString TreeText::repeatedKeys(PlistNode& dictionary) {
    OutlineState outline;
    outline.rebuild(dictionary);
    QString marks;
    for (const OutlineRow& row : outline.rows()) {
        if (row.depth() > 0) {
            marks += row.isDuplicateKey() ? u'x' : u'.';
        }
    }
    return marks;
}
