#include "app/desktop/recovery/RecoveryRecord.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr QLatin1String kind("unsavedDocument");

constexpr QLatin1String kindName("kind");
constexpr QLatin1String fileName("file");
constexpr QLatin1String titleName("title");
constexpr QLatin1String baseDigestName("baseDigest");
constexpr QLatin1String formatName("format");
constexpr QLatin1String wasReadOnlyName("wasReadOnlyFormat");
constexpr QLatin1String backedUpAtName("backedUpAt");
constexpr QLatin1String attemptsName("attempts");
constexpr QLatin1String versionName("version");

constexpr QLatin1String xml("xml");
constexpr QLatin1String binary("binary");

}  // namespace

QByteArray RecoveryRecord::toJson() const {
    // File names are bytes; those that are not valid UTF-8 survive this too.
    const QJsonObject object{
        {kindName, kind},
        {fileName, QString::fromLatin1(file.toPercentEncoding("/"))},
        {titleName, title},
        {baseDigestName, baseDigest},
        {formatName, format == PlistFormat::binary ? binary : xml},
        {wasReadOnlyName, wasReadOnlyFormat},
        {backedUpAtName, backedUpAt.toUTC().toString(Qt::ISODateWithMs)},
        {attemptsName, attempts},
        {versionName, QCoreApplication::applicationVersion()},
    };
    return QJsonDocument(object).toJson();
}

std::optional<RecoveryRecord> RecoveryRecord::fromJson(const QByteArray& json) {
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (object.value(kindName) != kind) {
        return std::nullopt;
    }
    RecoveryRecord record;
    record.file = QByteArray::fromPercentEncoding(object.value(fileName).toString().toLatin1());
    record.title = object.value(titleName).toString();
    record.baseDigest = object.value(baseDigestName).toString();
    record.format = object.value(formatName) == binary ? PlistFormat::binary : PlistFormat::xml;
    record.wasReadOnlyFormat = object.value(wasReadOnlyName).toBool();
    record.backedUpAt =
        QDateTime::fromString(object.value(backedUpAtName).toString(), Qt::ISODateWithMs).toUTC();
    record.attempts = object.value(attemptsName).toInt();
    return record;
}
