#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/saving/SafetyCopy.h"
#include "tests/support/TestProgram.h"

class SafetyCopyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_.emplace();
        write("file", "old bytes");
    }

    void isForTheUserAlone() {
        const SafetyCopy copy(place(), pathOf("file"));
        QCOMPARE(copy.error(), 0);
        for (const QFileInfo& file : QDir(place()).entryInfoList(QDir::Files)) {
            struct stat status {};
            ::stat(QFile::encodeName(file.filePath()).constData(), &status);
            QCOMPARE(status.st_mode & 0777U, 0600U);
        }
        QCOMPARE(QDir(place()).entryList(QDir::Files).size(), 2);
    }

    void isNotFoundWhileTheSaveGoesOn() {
        const SafetyCopy copy(place(), pathOf("file"));
        write("file", "half of the n");
        QVERIFY(SafetyCopy::leftBehind(place()).empty());
        QVERIFY(QFile::exists(copy.path()));
    }

    void isFoundWhenTheSaveWasInterrupted() {
        interrupt("file");
        const std::vector<SafetyCopy> found = SafetyCopy::leftBehind(place());
        QCOMPARE(found.size(), std::size_t{1});
        QCOMPARE(found.front().target(), pathOf("file"));
        QVERIFY2(SafetyCopy::leftBehind(place()).empty(), "another program must not find it too");
    }

    void bringsTheOldBytesBack() {
        interrupt("file");
        const std::vector<SafetyCopy> found = SafetyCopy::leftBehind(place());
        QCOMPARE(found.front().restore(), 0);
        QCOMPARE(read("file"), QByteArray("old bytes"));
        found.front().remove();
        QVERIFY(QDir(place()).isEmpty());
    }

    void isFoundAgainUntilItIsRemoved() {
        interrupt("file");
        QCOMPARE(SafetyCopy::leftBehind(place()).size(), std::size_t{1});
        QCOMPARE(SafetyCopy::leftBehind(place()).size(), std::size_t{1});
    }

    void isDeletedWhereTheFileHoldsTheOldBytes() {
        { const SafetyCopy copy(place(), pathOf("file")); }
        QVERIFY(SafetyCopy::leftBehind(place()).empty());
        QVERIFY(QDir(place()).isEmpty());
    }

    /// The save was interrupted when only the copy was left to delete.
    void isDeletedWhereTheFileHoldsAllTheNewBytes() {
        { const SafetyCopy copy(place(), pathOf("file"), digestOf("new bytes")); }
        write("file", "new byt");
        QCOMPARE(SafetyCopy::leftBehind(place()).size(), std::size_t{1});
        write("file", "new bytes");
        QVERIFY(SafetyCopy::leftBehind(place()).empty());
        QVERIFY(QDir(place()).isEmpty());
        QCOMPARE(read("file"), QByteArray("new bytes"));
    }

    void isFoundWhereTheFileIsGone() {
        interrupt("file");
        QVERIFY(QFile::remove(folder_->filePath(QStringLiteral("file"))));
        QCOMPARE(SafetyCopy::leftBehind(place()).size(), std::size_t{1});
    }

    void knowsFilesWhoseNamesAreNoText() {
        const QByteArray odd = QFile::encodeName(folder_->path()) + "/caf\xE9 100%";
        QCOMPARE(std::rename(pathOf("file").constData(), odd.constData()), 0);
        { const SafetyCopy copy(place(), odd); }
        QCOMPARE(std::rename(odd.constData(), pathOf("file").constData()), 0);
        QCOMPARE(SafetyCopy::leftBehind(place()).at(0).target(), odd);
    }

    void withoutARecordIsDeleted() {
        interrupt("file");
        for (const QString& name : QDir(place()).entryList({QStringLiteral("*.json")})) {
            QVERIFY(QDir(place()).remove(name));
        }
        QVERIFY(SafetyCopy::leftBehind(place()).empty());
        QVERIFY(QDir(place()).isEmpty());
    }

    /// It may be the only complete content that is left.
    void withADamagedRecordIsLeftAlone() {
        interrupt("file");
        QFile record(onlyRecord());
        QVERIFY(record.resize(10));
        QVERIFY(SafetyCopy::leftBehind(place()).empty());
        QCOMPARE(QDir(place()).entryList(QDir::Files).size(), 2);
    }

    void withARecordThatCannotBeReadIsLeftAlone() {
        interrupt("file");
        const QString record = onlyRecord();
        QVERIFY(QFile::remove(record));
        QVERIFY(QDir().mkdir(record));
        QVERIFY(SafetyCopy::leftBehind(place()).empty());
        QCOMPARE(QDir(place()).entryList(QDir::Files).size(), 1);
        QVERIFY(QFileInfo(record).isDir());
    }

private:
    static ContentDigest digestOf(const QByteArray& bytes) {
        return ContentDigest::of({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                  static_cast<std::size_t>(bytes.size())});
    }

    QString onlyRecord() const {
        return QDir(place()).entryInfoList({QStringLiteral("*.json")}).value(0).filePath();
    }

    QString place() const { return folder_->filePath(QStringLiteral("recovery")); }

    QByteArray pathOf(const char* name) const {
        return QFile::encodeName(folder_->filePath(QString::fromLatin1(name)));
    }

    /// A save of the file that a crash ends halfway.
    void interrupt(const char* name) const {
        const SafetyCopy copy(place(), pathOf(name));
        QCOMPARE(copy.error(), 0);
        write(name, "half of the n");
    }

    void write(const char* name, const QByteArray& bytes) const {
        QFile file(folder_->filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QByteArray read(const char* name) const {
        QFile file(folder_->filePath(QString::fromLatin1(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::optional<QTemporaryDir> folder_;
};

const RegisteredTest<SafetyCopyTest> registered;
#include "SafetyCopyTest.moc"
