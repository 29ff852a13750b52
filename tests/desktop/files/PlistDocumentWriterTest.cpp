#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <optional>
#include <thread>
#include <vector>

#include "app/desktop/files/FileError.h"
#include "app/desktop/files/PlistDocumentReader.h"
#include "app/desktop/files/PlistDocumentWriter.h"
#include "app/desktop/files/ProgressReporter.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/IntervalCount.h"
#include "tests/model/support/TreeText.h"

namespace {

PlistValue sample() {
    return PlistValue::dictionary(
        {{"a", PlistValue::integer(1)}, {"b", PlistValue::array({PlistValue::boolean(true)})}});
}

/// 2^levels numbers in a few bytes.
PlistValue doubling(int levels) {
    PlistValue value = PlistValue::integer(1);
    for (int i = 0; i < levels; ++i) {
        value = PlistValue::array({value, value});
    }
    return value;
}

template <typename Action>
std::optional<FileError> failureOf(const Action& action) {
    try {
        action();
    } catch (const FileError& error) {
        return error;
    }
    return std::nullopt;
}

/// While this lives, files of this process cannot grow beyond a size: the next write past it comes
/// back short, and the one after fails.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        rlimit limit = old_;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_{};
    void (*oldHandler_)(int);
};

}  // namespace

class PlistDocumentWriterTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;

    QString path() const { return folder_.filePath(QStringLiteral("file.plist")); }

    QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

private Q_SLOTS:
    void init() { QFile::remove(path()); }

    void writesEveryFormat() {
        for (const PlistFormat format : {PlistFormat::xml, PlistFormat::binary}) {
            PlistDocumentWriter::write({sample(), format}, path());
            const PlistFile file = PlistDocumentReader::read(path());
            QCOMPARE(file.format, format);
            QVERIFY(file.root == sample());
        }
    }

    void savesInTheFormatThatWasRead() {
        PlistDocumentWriter::write({sample(), PlistFormat::binary}, path());
        PlistDocument document;
        document.apply(PlistDocumentReader::read(path()));
        document.root().children()[0]->setValue(PlistValue::integer(2));
        PlistDocumentWriter::write(document.snapshot(), path());
        const PlistFile file = PlistDocumentReader::read(path());
        QCOMPARE(file.format, PlistFormat::binary);
        QCOMPARE(TreeText::whole(file.root), QStringLiteral("{a: 2, b: [true]}"));
    }

    void savesALargeFileAfterAnEdit() {
        // What an edit puts together from parts of a file that was read is no larger than before.
        std::vector<PlistValue> items(20'000, sample());
        PlistDocumentWriter::write({PlistValue::array(std::move(items)), PlistFormat::xml}, path());
        PlistDocument document;
        document.apply(PlistDocumentReader::read(path()));
        document.root().children()[0]->setValue(PlistValue::integer(2));
        PlistDocumentWriter::write(document.snapshot(), path());
        const PlistValue root = PlistDocumentReader::read(path()).root;
        QCOMPARE(root.childCount(), std::size_t{20'000});
        QVERIFY(root.children()[0] == PlistValue::integer(2));
        QVERIFY(root.children()[1] == sample());
    }

    void writesInAnyThread() {
        PlistDocument document;
        document.apply({sample(), PlistFormat::xml});
        const PlistFile snapshot = document.snapshot();
        ProgressReporter progress;
        std::thread([&] { PlistDocumentWriter::write(snapshot, path(), &progress); }).join();
        QCOMPARE(progress.total(), 1);
        QCOMPARE(progress.completed(), 1);
        QVERIFY(PlistDocumentReader::read(path()).root == sample());
    }

    void marksTheTimeItTakes() {
        IntervalCount intervals;
        PlistDocumentWriter::write({sample(), PlistFormat::xml}, path());
        QCOMPARE(intervals.takeNames(), QStringLiteral("Write"));
    }

    void leavesNothingOfALongerFile() {
        const std::vector<std::uint8_t> longer(1000, 'x');
        PlistDocumentWriter::writeBytes(path(), longer);
        PlistDocumentWriter::writeBytes(path(), std::span(longer).first(3));
        QCOMPARE(content(), QByteArray("xxx"));
        PlistDocumentWriter::writeBytes(path(), {});
        QCOMPARE(content(), QByteArray());
    }

    void keepsLinksAndModes() {
        const QString link = folder_.filePath(QStringLiteral("link.plist"));
        PlistDocumentWriter::write({sample(), PlistFormat::xml}, path());
        QVERIFY(QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(QFile::link(path(), link));
        PlistDocumentWriter::write({PlistValue::integer(5), PlistFormat::xml}, link);
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(PlistDocumentReader::read(path()).root == PlistValue::integer(5));
        QCOMPARE(QFileInfo(path()).permissions() & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());
    }

    void touchesNothingThatCannotBeEncoded() {
        PlistDocumentWriter::write({sample(), PlistFormat::xml}, path());
        const QByteArray before = content();
        ProgressReporter progress;
        const PlistFile readOnly{sample(), PlistFormat::openStep};
        const auto refused =
            failureOf([&] { PlistDocumentWriter::write(readOnly, path(), &progress); });
        QVERIFY(refused);
        QCOMPARE(refused->code(), FileError::Code::notEncoded);
        QCOMPARE(refused->message(),
                 QStringLiteral("The document “file.plist” could not be saved."));
        QVERIFY(!refused->failureReason().isEmpty());
        QCOMPARE(progress.completed(), 0);
        const auto endless = failureOf([&] {
            PlistDocumentWriter::write({doubling(40), PlistFormat::xml}, path());
        });
        QVERIFY(endless);
        QCOMPARE(endless->code(), FileError::Code::notEncoded);
        QCOMPARE(content(), before);
    }

    void tellsWhyAFileCannotBeWritten() {
        const auto reason = [](const QString& target) {
            const auto error = failureOf([&] { PlistDocumentWriter::writeBytes(target, {}); });
            if (!error || error->code() != FileError::Code::writeFailed) {
                return QStringLiteral("another error or none");
            }
            return error->failureReason();
        };
        QCOMPARE(reason(folder_.path()), QStringLiteral("Is a directory."));
        QCOMPARE(reason(folder_.filePath(QStringLiteral("no/such/folder"))),
                 QStringLiteral("No such file or directory."));
    }

    void noticesAFullDisk() {
        if (!QFile::exists(QStringLiteral("/dev/full"))) {
            QSKIP("This system has no /dev/full, the device that is always full.");
        }
        const std::vector<std::uint8_t> bytes(10, 'x');
        const auto error =
            failureOf([&] { PlistDocumentWriter::writeBytes(QStringLiteral("/dev/full"), bytes); });
        QVERIFY(error);
        QCOMPARE(error->message(), QStringLiteral("The file “full” could not be written."));
        QCOMPARE(error->failureReason(), QStringLiteral("No space left on device."));
    }

    void noticesWritesThatComeBackShort() {
        const std::vector<std::uint8_t> bytes(100'000, 'x');
        std::optional<FileError> error;
        {
            const FileSizeLimit limit(50'000);
            error = failureOf([&] { PlistDocumentWriter::writeBytes(path(), bytes); });
        }
        QVERIFY(error);
        QCOMPARE(error->failureReason(), QStringLiteral("File too large."));
        QCOMPARE(content().size(), 50'000);
    }
};

QTEST_GUILESS_MAIN(PlistDocumentWriterTest)
#include "PlistDocumentWriterTest.moc"
