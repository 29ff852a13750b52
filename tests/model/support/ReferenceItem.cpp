#include "tests/model/support/ReferenceItem.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "app/model/runtime/Plist.h"
#include "tests/model/support/TreeText.h"

ReferenceItem ReferenceItem::make(const std::string& key, const PlistValue& value, Name& lastName) {
    ReferenceItem item;
    item.name = ++lastName;
    item.key = key;
    item.scalar = value.isContainer() ? PlistValue::defaultValue(value.type()) : value;
    for (std::size_t i = 0; i < value.childCount(); ++i) {
        const bool hasKeys = value.type() == PlistType::dictionary;
        item.children.push_back(make(hasKeys ? std::string(value.keys()[i].view()) : std::string(),
                                     value.children()[i], lastName));
    }
    return item;
}

PlistValue ReferenceItem::value() const {
    std::vector<PlistEntry> entries;
    std::vector<PlistValue> values;
    for (const ReferenceItem& child : children) {
        entries.push_back({child.key, child.value()});
        values.push_back(entries.back().value);
    }
    switch (type()) {
        case PlistType::dictionary:
            return PlistValue::dictionary(std::move(entries));
        case PlistType::array:
            return PlistValue::array(std::move(values));
        default:
            return scalar;
    }
}

bool ReferenceItem::is(const PlistValue& value) const {
    if (value.type() != type() || value.childCount() != children.size()) {
        return false;
    }
    if (!isContainer()) {
        return ReferenceText::areIdentical(scalar, value);
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (!children[i].is(value.children()[i]) ||
            (type() == PlistType::dictionary && value.keys()[i].view() != children[i].key)) {
            return false;
        }
    }
    return true;
}

ReferenceItem* ReferenceItem::find(Name wanted) {
    return const_cast<ReferenceItem*>(std::as_const(*this).find(wanted));
}

const ReferenceItem* ReferenceItem::find(Name wanted) const {
    if (name == wanted) {
        return this;
    }
    for (const ReferenceItem& child : children) {
        if (const ReferenceItem* found = child.find(wanted)) {
            return found;
        }
    }
    return nullptr;
}

ReferenceItem* ReferenceItem::findParent(Name child) {
    for (ReferenceItem& item : children) {
        if (item.name == child) {
            return this;
        }
        if (ReferenceItem* found = item.findParent(child)) {
            return found;
        }
    }
    return nullptr;
}

std::size_t ReferenceItem::count() const {
    std::size_t sum = 1;
    for (const ReferenceItem& child : children) {
        sum += child.count();
    }
    return sum;
}

QString ReferenceItem::text(int depth) const {
    QString lines = QString(qsizetype{2} * depth, QLatin1Char(' ')) + QString::fromStdString(key) +
                    QStringLiteral(": ") + TreeText::ofValue(scalar) + QLatin1Char('\n');
    for (const ReferenceItem& child : children) {
        lines += child.text(depth + 1);
    }
    return lines;
}

namespace {

struct Spelling {
    std::string_view other;
    std::string_view composed;
};

constexpr Spelling spellings[] = {
    {"e\u0301", "\u00e9"},
    {"\u212b", "\u00c5"},
};

}  // namespace

std::string ReferenceText::canonical(std::string_view text) {
    std::string result(text);
    for (const Spelling& spelling : spellings) {
        for (std::size_t at = result.find(spelling.other); at != std::string::npos;
             at = result.find(spelling.other)) {
            result.replace(at, spelling.other.size(), spelling.composed);
        }
    }
    return result;
}

bool ReferenceText::areEqual(std::string_view left, std::string_view right) {
    return canonical(left) == canonical(right);
}

bool ReferenceText::areEqualScalars(const PlistValue& left, const PlistValue& right) {
    if (left.type() != right.type()) {
        return false;
    }
    switch (left.type()) {
        case PlistType::string:
            return areEqual(left.text(), right.text());
        case PlistType::real:
            return left.realValue() == right.realValue();
        case PlistType::date:
            return left.dateValue() == right.dateValue();
        default:
            return areIdentical(left, right);
    }
}

bool ReferenceText::areIdentical(const PlistValue& left, const PlistValue& right) {
    if (left.type() != right.type()) {
        return false;
    }
    const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
    switch (left.type()) {
        case PlistType::string:
            return left.text() == right.text();
        case PlistType::real:
            return bits(left.realValue()) == bits(right.realValue());
        case PlistType::date:
            return bits(left.dateValue()) == bits(right.dateValue());
        case PlistType::integer:
            return left.integerValue() == right.integerValue();
        case PlistType::boolean:
            return left.booleanValue() == right.booleanValue();
        case PlistType::data:
            return std::ranges::equal(left.dataValue(), right.dataValue());
        case PlistType::uid:
            return left.uidValue() == right.uidValue();
        default:
            return true;
    }
}
