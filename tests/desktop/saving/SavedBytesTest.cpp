#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cstddef>
#include <cstdint>
#include <span>

#include "app/desktop/saving/SavedBytes.h"

namespace {

std::span<const std::uint8_t> spanOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

}  // namespace

class SavedBytesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void trustsDisksOfThisMachine_data() {
        QTest::addColumn<quint32>("type");
        QTest::addColumn<bool>("mayGoAstray");
        QTest::newRow("ext4") << 0xEF53U << false;
        QTest::newRow("xfs") << 0x58465342U << false;
        QTest::newRow("btrfs") << 0x9123683EU << false;
        QTest::newRow("tmpfs") << 0x01021994U << false;
        QTest::newRow("NFS") << 0x6969U << true;
        QTest::newRow("SMB") << 0x517BU << true;
        QTest::newRow("SMB 2") << 0xFE534D42U << true;
        QTest::newRow("CIFS") << 0xFF534D42U << true;
        QTest::newRow("FUSE") << 0x65735546U << true;
    }

    void trustsDisksOfThisMachine() {
        QFETCH(quint32, type);
        QTEST(SavedBytes::mayGoAstrayOn(type), "mayGoAstray");
    }

    void asksTheSystemForTheType() {
        // A file system that is there on every Linux, and is no server's.
        QVERIFY(!SavedBytes::mayGoAstrayAt("/proc/self/status"));
        QVERIFY(!SavedBytes::mayGoAstrayAt("/no/such/file"));
    }

    void readsBackSmallFiles() {
        write("saved");
        QVERIFY(SavedBytes::areAt(path(), spanOf("saved")));
        QVERIFY(!SavedBytes::areAt(path(), spanOf("other")));
        QVERIFY(!SavedBytes::areAt(path(), spanOf("longer")));
        QVERIFY(!SavedBytes::areAt(path() + "x", spanOf("saved")));
    }

    void asksForTheSizeOfLargeFiles() {
        const QByteArray largest(SavedBytes::mostReadBack, 'a');
        const QByteArray other(SavedBytes::mostReadBack, 'b');
        write(largest);
        QVERIFY(SavedBytes::areAt(path(), spanOf(largest)));
        QVERIFY(!SavedBytes::areAt(path(), spanOf(other)));
        write(largest + 'a');
        QVERIFY(SavedBytes::areAt(path(), spanOf(other + 'b')));
        QVERIFY(!SavedBytes::areAt(path(), spanOf(other + "bb")));
    }

private:
    QByteArray path() const { return QFile::encodeName(folder_.filePath(QStringLiteral("file"))); }

    void write(const QByteArray& bytes) const {
        QFile file(QFile::decodeName(path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(SavedBytesTest)
#include "SavedBytesTest.moc"
