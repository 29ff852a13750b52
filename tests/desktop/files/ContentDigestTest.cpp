#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileDescriptor.h"
#include "tests/support/TestProgram.h"

namespace {

ContentDigest digestOf(const QByteArray& bytes) {
    return ContentDigest::of({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                              static_cast<std::size_t>(bytes.size())});
}

}  // namespace

class ContentDigestTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// What recoveries have recorded must be found again by later versions. The values are those
    /// that the description of XXH3 gives for no bytes, and its program for the others.
    void isTheSameEverywhere_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("hex");
        QTest::newRow("nothing") << QByteArray()
                                 << QStringLiteral("99aa06d3014798d86001c324468d497f");
        QTest::newRow("word") << QByteArray("tabulet")
                              << QStringLiteral("4d8f075e940ef8bd36749c519bbd840b");
    }

    void isTheSameEverywhere() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, hex);
        QCOMPARE(digestOf(bytes).hex(), hex);
    }

    void tellsBytesApart() {
        QCOMPARE(digestOf("one"), digestOf("one"));
        QVERIFY(digestOf("one") != digestOf("two"));
        QVERIFY(digestOf("one") != digestOf(QByteArray("one\0", 4)));
        QCOMPARE(ContentDigest(), digestOf(""));
    }

    void readsFilesPieceByPiece() {
        // More than several pieces, and the last one is not full.
        const QByteArray bytes = QByteArray("0123456789abcdefg").repeated(100'000) + "end";
        const QString path = folder_.filePath(QStringLiteral("long"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        const FileDescriptor opened = FileDescriptor::forReading(path.toLocal8Bit());
        QCOMPARE(ContentDigest::ofOpenFile(opened), std::optional(digestOf(bytes)));
        // From where the file stands, which is now its end.
        QCOMPARE(ContentDigest::ofOpenFile(opened), std::optional(ContentDigest()));
    }

    void tellsWhyAFileCannotBeRead() {
        const FileDescriptor folder = FileDescriptor::forReading(folder_.path().toLocal8Bit());
        errno = 0;
        QVERIFY(!ContentDigest::ofOpenFile(folder));
        QCOMPARE(errno, EISDIR);
    }

    void survivesAsText() {
        const ContentDigest digest = digestOf("text");
        QCOMPARE(digest.hex().size(), 32);
        QCOMPARE(ContentDigest::fromHex(digest.hex()), std::optional(digest));
    }

    void refusesOtherTexts_data() {
        QTest::addColumn<QString>("text");
        const QString hex = digestOf("text").hex();
        QTest::newRow("nothing") << QString();
        QTest::newRow("shorter") << hex.chopped(1);
        QTest::newRow("longer") << hex + u'0';
        QTest::newRow("no digit") << hex.chopped(1) + u'g';
        QTest::newRow("blank") << hex.left(16) + u' ' + hex.mid(16);
        QTest::newRow("capitals") << hex.toUpper();
    }

    void refusesOtherTexts() {
        QFETCH(QString, text);
        QVERIFY(!ContentDigest::fromHex(text));
    }

private:
    QTemporaryDir folder_;
};

const RegisteredTest<ContentDigestTest> registered;
#include "ContentDigestTest.moc"
