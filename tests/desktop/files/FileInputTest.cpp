#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/desktop/files/FileInput.h"

class FileInputTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsFilesOfAnySize() {
        for (const qsizetype size : {0, 4095, 4096, 4097, 100'000}) {
            QByteArray bytes(size, 'x');
            if (size > 0) {
                bytes.back() = 'y';
            }
            make("a", bytes);
            QCOMPARE(FileInput::readAll(path("a")), std::optional(bytes));
        }
    }

    void readsNothingElse() {
        make("target", "text");
        QCOMPARE(::symlink(path("target").constData(), path("link").constData()), 0);
        QCOMPARE(FileInput::readAll(path("link")), std::nullopt);
        QCOMPARE(FileInput::readAll(path("none")), std::nullopt);
        QCOMPARE(FileInput::readAll(path("")), std::nullopt);
    }

    void doesNotWaitForAPipe() {
        QCOMPARE(::mkfifo(path("pipe").constData(), 0600), 0);
        QCOMPARE(FileInput::readAll(path("pipe")), std::optional(QByteArray()));
    }

private:
    QByteArray path(const char* name) const {
        return QFile::encodeName(folder_.filePath(QString::fromLatin1(name)));
    }

    void make(const char* name, const QByteArray& bytes) const {
        QFile file(folder_.filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(FileInputTest)
#include "FileInputTest.moc"
