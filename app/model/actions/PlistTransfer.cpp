#include "app/model/actions/PlistTransfer.h"

#include <QByteArrayView>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "app/model/runtime/Plist.h"

namespace {

// The members of the application's own form, which is one JSON object.
constexpr QLatin1String idsMember("ids");
constexpr QLatin1String keysMember("keys");
constexpr QLatin1String plistMember("plist");

std::span<const std::uint8_t> bytesOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

std::vector<PlistValue> valuesOf(const std::vector<PlistEntry>& entries) {
    std::vector<PlistValue> values;
    values.reserve(entries.size());
    std::ranges::transform(entries, std::back_inserter(values), &PlistEntry::value);
    return values;
}

// --- Export ---

// Written by hand, because QJsonDocument takes texts as UTF-16 only: a copy of a large document
// would stand in memory several times over.

void appendEscaped(QByteArray& json, char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    if (byte == '"' || byte == '\\') {
        json.append('\\').append(byte);
        return;
    }
    const auto code = static_cast<std::uint8_t>(byte);
    if (code >= 0x20) {
        json.append(byte);
        return;
    }
    json.append("\\u00").append(digits[code >> 4]).append(digits[code & 0xF]);
}

void appendString(QByteArray& json, std::string_view text) {
    json.append('"');
    for (const char byte : text) {
        appendEscaped(json, byte);
    }
    json.append('"');
}

template <typename Items, typename Append>
void appendArray(QByteArray& json, QLatin1String member, const Items& items, const Append& append) {
    json.append(member.data()).append("\":[");
    bool isFirst = true;
    for (const auto& item : items) {
        if (!std::exchange(isFirst, false)) {
            json.append(',');
        }
        append(item);
    }
    json.append("]");
}

QByteArray nodesData(const PlistTransfer& transfer) {
    const PlistBytes plist =
        PlistCodec::write(PlistValue::array(valuesOf(transfer.entries)), PlistFormat::binary);
    QByteArray json("{\"");
    appendArray(json, idsMember, transfer.sourceIDs,
                [&json](NodeId id) { json.append(QByteArray::number(id)); });
    json.append(",\"");
    appendArray(json, keysMember, transfer.entries,
                [&json](const PlistEntry& entry) { appendString(json, entry.key.view()); });
    json.append(",\"").append(plistMember.data()).append("\":\"");
    const qsizetype start = json.size();
    json.resize(start + static_cast<qsizetype>(Base64::encodedLength(plist.size())));
    Base64::encode(plist.span(), reinterpret_cast<std::uint8_t*>(json.data() + start));
    return json.append("\"}");
}

QByteArray xmlData(const PlistTransfer& transfer) {
    const PlistBytes xml = PlistCodec::write(transfer.value(), PlistFormat::xml);
    return QByteArrayView(xml.view()).toByteArray();
}

// --- Import ---

/// A whole number of 64 bits that is not negative. `QJsonValue` keeps such numbers exactly, and
/// gives the number asked for in place of any that is none.
std::optional<NodeId> idOf(const QJsonValue& value) {
    constexpr NodeId no = -1;
    const NodeId id = value.toInteger(no);
    return id >= 0 ? std::optional(id) : std::nullopt;
}

QJsonArray arrayIn(const QJsonObject& object, QLatin1String member) {
    const QJsonValue value = object.value(member);
    if (!value.isArray()) {
        throw TransferError();
    }
    return value.toArray();
}

std::vector<NodeId> idsIn(const QJsonObject& object) {
    const QJsonArray array = arrayIn(object, idsMember);
    std::vector<NodeId> ids;
    ids.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue value : array) {
        const std::optional<NodeId> id = idOf(value);
        if (!id) {
            throw TransferError();
        }
        ids.push_back(*id);
    }
    return ids;
}

std::vector<PlistString> keysIn(const QJsonObject& object) {
    const QJsonArray array = arrayIn(object, keysMember);
    std::vector<PlistString> keys;
    keys.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue value : array) {
        if (!value.isString()) {
            throw TransferError();
        }
        const QByteArray key = value.toString().toUtf8();
        keys.emplace_back(std::string_view(key.constData(), static_cast<std::size_t>(key.size())));
    }
    return keys;
}

QByteArray plistIn(const QJsonObject& object) {
    const QJsonValue value = object.value(plistMember);
    if (!value.isString()) {
        throw TransferError();
    }
    auto decoded = QByteArray::fromBase64Encoding(value.toString().toLatin1(),
                                                  QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded) {
        throw TransferError();
    }
    return std::move(*decoded);
}

PlistTransfer transferFromNodes(const QByteArray& bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        throw TransferError();
    }
    const QJsonObject object = document.object();
    PlistTransfer transfer{{}, idsIn(object)};
    std::vector<PlistString> keys = keysIn(object);
    const PlistValue root = PlistCodec::read(bytesOf(plistIn(object))).root;
    if (root.type() != PlistType::array || root.childCount() != transfer.sourceIDs.size()) {
        throw TransferError();
    }
    keys.resize(root.childCount());
    transfer.entries.reserve(root.childCount());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        transfer.entries.push_back({std::move(keys[i]), root.children()[i]});
    }
    return transfer;
}

std::vector<PlistEntry> entriesOf(const PlistValue& root) {
    if (!root.isContainer()) {
        return {{PlistString(), root}};
    }
    const std::span<const PlistString> keys = root.keys();
    std::vector<PlistEntry> entries;
    entries.reserve(root.childCount());
    for (const PlistValue& child : root.children()) {
        entries.push_back({keys.empty() ? PlistString() : keys[entries.size()], child});
    }
    return entries;
}

}  // namespace

TransferError::TransferError()
    : message_(QCoreApplication::translate("TransferError", "Invalid dragged items.")),
      what_(message_.toStdString()) {}

QString PlistTransfer::nodesContentType() {
    return QStringLiteral("com.ventrel.tabulet.nodes");
}

QByteArray PlistTransfer::exported(Representation representation) const {
    return representation == Representation::nodes ? nodesData(*this) : xmlData(*this);
}

PlistTransfer PlistTransfer::imported(Representation representation, const QByteArray& bytes) {
    return representation == Representation::nodes
               ? transferFromNodes(bytes)
               : PlistTransfer{entriesOf(PlistCodec::read(bytesOf(bytes)).root), {}};
}

PlistValue PlistTransfer::value() const {
    const bool hasKeys =
        std::ranges::any_of(entries, [](const PlistEntry& entry) { return !entry.key.isEmpty(); });
    if (hasKeys) {
        return PlistValue::dictionary(entries);
    }
    return entries.size() == 1 ? entries.front().value : PlistValue::array(valuesOf(entries));
}

// All at once: each of many entries is small, but together they may be most of a document.
void PlistTransfer::detach() {
    entries = entriesOf(PlistCopy::detached(PlistValue::dictionary(entries)));
}
