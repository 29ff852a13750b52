#include "tests/ui/support/Samples.h"

#include <QFile>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/runtime/Plist.h"

PlistValue Samples::allTypes() {
    constexpr std::array<std::uint8_t, 12> data = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    return PlistValue::dictionary(
        {{"dictionary", PlistValue::dictionary({{"inner", PlistValue::string("deep")}})},
         {"array", PlistValue::array({PlistValue::integer(1), PlistValue::integer(2)})},
         {"string", PlistValue::string("North Mole")},
         {"integer", PlistValue::integer(-27)},
         {"real", PlistValue::real(0.5)},
         {"boolean", PlistValue::boolean(true)},
         {"date", PlistValue::date(0)},
         {"data", PlistValue::data(data)},
         {"uid", PlistValue::uid(7)}});
}

PlistValue Samples::numbers(int count) {
    std::vector<PlistEntry> entries;
    for (int i = 0; i < count; ++i) {
        entries.push_back({"k" + std::to_string(i), PlistValue::integer(i)});
    }
    return PlistValue::dictionary(std::move(entries));
}

QByteArray Samples::bytes(const PlistValue& value, PlistFormat format) {
    const PlistBytes written = PlistCodec::write(value, format);
    const std::span<const std::uint8_t> span = written.span();
    return {reinterpret_cast<const char*>(span.data()), static_cast<qsizetype>(span.size())};
}

void Samples::writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("%s cannot be written", qUtf8Printable(path));
    }
}

QByteArray Samples::readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

PlistValue Samples::valueOf(const QByteArray& bytes) {
    try {
        return PlistCodec::read(
                   std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())))
            .root;
    } catch (const PlistError&) {
        return {};
    }
}
