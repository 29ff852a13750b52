#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <memory>

#include "app/desktop/watching/FileWatch.h"
#include "tests/support/TestProgram.h"

/// What the detector makes of the events is tested with it.
class FileWatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        write(path("file"));
        before_ = watches();
        events_ = std::make_unique<FileWatch>();
        events_->watch(path("file"));
        // The file and its folder.
        QCOMPARE(watches() - before_, 2);
    }

    void cleanup() { events_.reset(); }

    void hearsOfTheFile_data() {
        QTest::addColumn<QByteArray>("change");
        for (const char* change : {"write", "replace", "remove", "take away", "rights"}) {
            QTest::newRow(change) << QByteArray(change);
        }
    }

    void hearsOfTheFile() {
        QFETCH(QByteArray, change);
        QSignalSpy happened(events_.get(), &FileWatch::happened);
        if (change == "write") {
            write(path("file"));
        } else if (change == "replace") {
            replace();
        } else if (change == "remove") {
            QVERIFY(QFile::remove(text(path("file"))));
        } else if (change == "take away") {
            QVERIFY(QFile::rename(text(path("file")), text(path("else"))));
        } else {
            QVERIFY(QFile::setPermissions(text(path("file")), QFile::ReadOwner));
        }
        QVERIFY(happened.wait());
    }

    void hearsNothingOfOtherFiles() {
        QSignalSpy happened(events_.get(), &FileWatch::happened);
        write(path("other"));
        QVERIFY(QFile::remove(text(path("other"))));
        QCoreApplication::processEvents();
        QCOMPARE(happened.count(), 0);
        write(path("file"));
        QVERIFY(happened.wait());
    }

    void hearsOfNamesThatAreNoText() {
        const QByteArray name = path("\xFF\xFE");
        events_->watch(name);
        QSignalSpy happened(events_.get(), &FileWatch::happened);
        std::FILE* file = std::fopen(name.constData(), "w");
        QVERIFY(file != nullptr);
        std::fclose(file);
        QVERIFY(happened.wait());
        // QTemporaryDir does not find such a name.
        QCOMPARE(std::remove(name.constData()), 0);
    }

    /// However often the file is replaced, no watch is left behind.
    void keepsNoWatchesOfWhatHasGone() {
        for (int i = 0; i < 50; ++i) {
            QSignalSpy happened(events_.get(), &FileWatch::happened);
            replace();
            QVERIFY(happened.wait());
            QCOMPARE(watches() - before_, 2);
        }
        // Not even where the old file lives on under another name.
        QVERIFY(QFile::link(text(path("file")), text(path("link"))));
        events_->watch(path("link"));
        QCOMPARE(watches() - before_, 2);
        events_->watch({});
        QCOMPARE(watches() - before_, 0);
    }

private:
    static QString text(const QByteArray& path) { return QFile::decodeName(path); }

    QByteArray path(const QByteArray& name) const {
        return QFile::encodeName(folder_->path()) + '/' + name;
    }

    static void write(const QByteArray& path) {
        QFile file(text(path));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write("x"), 1);
    }

    void replace() const {
        write(path("fresh"));
        QCOMPARE(std::rename(path("fresh").constData(), path("file").constData()), 0);
    }

    /// How many watches the process has, as the kernel tells.
    static int watches() {
        int count = 0;
        const QDir infos(QStringLiteral("/proc/self/fdinfo"));
        for (const QString& name : infos.entryList(QDir::Files)) {
            QFile info(infos.filePath(name));
            if (info.open(QIODevice::ReadOnly)) {
                count += static_cast<int>(info.readAll().count("inotify wd:"));
            }
        }
        return count;
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<FileWatch> events_;
    int before_ = 0;
};

const RegisteredTest<FileWatchTest> registered;
#include "FileWatchTest.moc"
