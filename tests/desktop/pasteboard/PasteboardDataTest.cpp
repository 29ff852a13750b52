#include <QMimeData>
#include <QTest>
#include <memory>
#include <vector>

#include "app/desktop/pasteboard/PasteboardData.h"
#include "app/model/actions/PlistTransfer.h"
#include "app/model/runtime/Plist.h"
#include "tests/support/TestProgram.h"

namespace {

const QString nodes = QStringLiteral("com.ventrel.tabulet.nodes");

PlistTransfer sample() {
    PlistTransfer transfer;
    transfer.entries = {{"name", PlistValue::string("Vesta")}};
    transfer.sourceIDs = {7};
    return transfer;
}

QByteArray binary(const PlistValue& value) {
    const PlistBytes bytes = PlistCodec::write(value, PlistFormat::binary);
    return {bytes.view().data(), static_cast<qsizetype>(bytes.view().size())};
}

/// What another program put on the clipboard.
std::unique_ptr<QMimeData> foreign(const QString& type, const QByteArray& bytes) {
    auto data = std::make_unique<QMimeData>();
    data->setData(type, bytes);
    return data;
}

bool isSample(const PlistTransfer& transfer, const std::vector<NodeId>& ids) {
    return transfer.entries.size() == 1 && transfer.entries[0].key == PlistString("name") &&
           transfer.entries[0].value == PlistValue::string("Vesta") && transfer.sourceIDs == ids;
}

}  // namespace

class PasteboardDataTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void offersFormsInOrder() {
        const PasteboardData data(sample());
        QCOMPARE(data.formats(), (QStringList{nodes, QStringLiteral("application/x-plist"),
                                              QStringLiteral("text/plain;charset=utf-8"),
                                              QStringLiteral("text/plain")}));
        for (const QString& type : data.formats()) {
            QVERIFY(data.hasFormat(type));
        }
        QVERIFY(!data.hasFormat(QStringLiteral("text/html")));
        QVERIFY(data.data(QStringLiteral("text/html")).isEmpty());
    }

    void encodesEachForm() {
        const PasteboardData data(sample());
        QCOMPARE(data.data(nodes), sample().exported(PlistTransfer::Representation::nodes));
        const QByteArray xml = sample().exported(PlistTransfer::Representation::xml);
        QVERIFY(xml.contains("<key>name</key>"));
        QCOMPARE(data.data(QStringLiteral("application/x-plist")), xml);
        QCOMPARE(data.data(QStringLiteral("text/plain;charset=utf-8")), xml);
        QVERIFY(data.hasText());
        QCOMPARE(data.text(), QString::fromUtf8(xml));
    }

    void comesBackWithinTheProcess() {
        QVERIFY(isSample(PasteboardData::transferFrom(PasteboardData(sample())), {7}));
    }

    void readsWhatOthersOffer_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("hasIds");
        const QByteArray xml = sample().exported(PlistTransfer::Representation::xml);
        QTest::newRow("own") << nodes << sample().exported(PlistTransfer::Representation::nodes)
                             << true;
        QTest::newRow("property list") << QStringLiteral("application/x-plist") << xml << false;
        QTest::newRow("XML") << QStringLiteral("application/x-plist+xml") << xml << false;
        QTest::newRow("binary") << QStringLiteral("application/x-bplist")
                                << binary(sample().value()) << false;
        QTest::newRow("text") << QStringLiteral("text/plain;charset=utf-8") << xml << false;
        QTest::newRow("plain text") << QStringLiteral("text/plain") << xml << false;
        QTest::newRow("OpenStep") << QStringLiteral("text/plain") << QByteArray("{name = Vesta;}")
                                  << false;
    }

    void readsWhatOthersOffer() {
        QFETCH(QString, type);
        QFETCH(QByteArray, bytes);
        QFETCH(bool, hasIds);
        const auto data = foreign(type, bytes);
        QVERIFY(PasteboardData::hasTransfer(*data));
        QVERIFY(isSample(PasteboardData::transferFrom(*data),
                         hasIds ? std::vector<NodeId>{7} : std::vector<NodeId>{}));
    }

    void prefersTheOwnForm() {
        const auto data = foreign(QStringLiteral("text/plain"), "nothing that could be read");
        data->setData(nodes, sample().exported(PlistTransfer::Representation::nodes));
        QVERIFY(isSample(PasteboardData::transferFrom(*data), {7}));
    }

    void knowsWhatIsNone() {
        const auto data = foreign(QStringLiteral("image/png"), "x");
        QVERIFY(!PasteboardData::hasTransfer(*data));
        QVERIFY(PasteboardData::transferFrom(*data).entries.empty());
    }

    void reportsWhatCannotBeRead() {
        QVERIFY_EXCEPTION_THROWN(PasteboardData::transferFrom(*foreign(nodes, "{}")),
                                 TransferError);
        QVERIFY_EXCEPTION_THROWN(
            PasteboardData::transferFrom(*foreign(QStringLiteral("text/plain"), "<plist>")),
            PlistError);
    }

    void offersNothingThatIsTooMuch() {
        // By sharing, a few values describe more than any file may hold.
        PlistValue value = PlistValue::array();
        for (int i = 0; i < 40; ++i) {
            value = PlistValue::array({value, value});
        }
        PlistTransfer transfer;
        transfer.entries = {{PlistString(), value}};
        const PasteboardData data(transfer);
        QVERIFY(data.data(QStringLiteral("application/x-plist")).isEmpty());
    }
};

const RegisteredTest<PasteboardDataTest> registered;
#include "PasteboardDataTest.moc"
