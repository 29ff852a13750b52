#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/desktop/saving/ByteFile.h"
#include "tests/support/TestProgram.h"

class ByteFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatItWrote() {
        const QByteArray bytes("\0\r\n\xff", 4);
        const QString path = folder_.filePath(QStringLiteral("a"));
        QCOMPARE(ByteFile::write(path, bytes), QString());
        QCOMPARE(ByteFile::read(path).bytes, bytes);
        QCOMPARE(ByteFile::read(path).error, QString());
    }

    void leavesNothingOfALongerFile() {
        const QString path = folder_.filePath(QStringLiteral("b"));
        QCOMPARE(ByteFile::write(path, "long"), QString());
        QCOMPARE(ByteFile::write(path, "x"), QString());
        QCOMPARE(ByteFile::read(path).bytes, QByteArray("x"));
    }

    /// From those, reading may wait for ever or never end.
    void readsRegularFilesOnly() {
        const QString pipe = folder_.filePath(QStringLiteral("pipe"));
        QVERIFY(::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
        for (const QString& path : {pipe, QStringLiteral("/dev/zero")}) {
            QCOMPARE(ByteFile::read(path).error, QStringLiteral("It is not a regular file."));
            QVERIFY(ByteFile::read(path).bytes.isEmpty());
        }
    }

    void givesTheReasonOfTheSystem() {
        const QString missing = folder_.filePath(QStringLiteral("c/d"));
        QCOMPARE(ByteFile::read(missing).error, QStringLiteral("No such file or directory."));
        QVERIFY(ByteFile::read(missing).bytes.isEmpty());
        QCOMPARE(ByteFile::write(missing, "x"), QStringLiteral("No such file or directory."));
        QVERIFY(!ByteFile::read(folder_.path()).error.isEmpty());
        QCOMPARE(ByteFile::write(QStringLiteral("/dev/full"), "x"),
                 QStringLiteral("It is not a regular file."));
    }

private:
    QTemporaryDir folder_;
};

const RegisteredTest<ByteFileTest> registered;
#include "ByteFileTest.moc"
