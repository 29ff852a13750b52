#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <optional>
#include <thread>
#include <vector>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/files/PlistDocumentReader.h"
#include "app/desktop/files/ProgressReporter.h"
#include "app/desktop/saving/PlistDocumentWriter.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/IntervalCount.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

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

}  // namespace

class PlistDocumentWriterTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;

    QString path() const { return folder_.filePath(QStringLiteral("file.plist")); }

    void write(const PlistFile& file, const QString& to,
               ProgressReporter* progress = nullptr) const {
        PlistDocumentWriter::write(file, to, folder_.filePath(QStringLiteral("safety")), nullptr,
                                   progress);
    }

    QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

private Q_SLOTS:
    void init() { QFile::remove(path()); }

    void writesEveryFormat() {
        for (const PlistFormat format : {PlistFormat::xml, PlistFormat::binary}) {
            write({sample(), format}, path());
            const PlistFile file = PlistDocumentReader::read(path());
            QCOMPARE(file.format, format);
            QVERIFY(file.root == sample());
        }
    }

    void savesInTheFormatThatWasRead() {
        write({sample(), PlistFormat::binary}, path());
        PlistDocument document;
        document.apply(PlistDocumentReader::read(path()));
        document.root().children()[0]->setValue(PlistValue::integer(2));
        write(document.snapshot(), path());
        const PlistFile file = PlistDocumentReader::read(path());
        QCOMPARE(file.format, PlistFormat::binary);
        QCOMPARE(TreeText::whole(file.root), QStringLiteral("{a: 2, b: [true]}"));
    }

    void savesALargeFileAfterAnEdit() {
        // What an edit puts together from parts of a file that was read is no larger than before.
        std::vector<PlistValue> items(20'000, sample());
        write({PlistValue::array(std::move(items)), PlistFormat::xml}, path());
        PlistDocument document;
        document.apply(PlistDocumentReader::read(path()));
        document.root().children()[0]->setValue(PlistValue::integer(2));
        write(document.snapshot(), path());
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
        std::thread([&] { write(snapshot, path(), &progress); }).join();
        QCOMPARE(progress.total(), 1);
        QCOMPARE(progress.completed(), 1);
        QVERIFY(PlistDocumentReader::read(path()).root == sample());
    }

    void marksTheTimeItTakes() {
        IntervalCount intervals;
        write({sample(), PlistFormat::xml}, path());
        QCOMPARE(intervals.takeNames(), QStringLiteral("Write"));
    }

    void keepsLinksAndModes() {
        const QString link = folder_.filePath(QStringLiteral("link.plist"));
        write({sample(), PlistFormat::xml}, path());
        QVERIFY(QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(QFile::link(path(), link));
        write({PlistValue::integer(5), PlistFormat::xml}, link);
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(PlistDocumentReader::read(path()).root == PlistValue::integer(5));
        QCOMPARE(QFileInfo(path()).permissions() & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());
    }

    void touchesNothingThatCannotBeEncoded() {
        write({sample(), PlistFormat::xml}, path());
        const QByteArray before = content();
        ProgressReporter progress;
        const PlistFile readOnly{sample(), PlistFormat::openStep};
        const auto refused = failureOf([&] { write(readOnly, path(), &progress); });
        QVERIFY(refused);
        QCOMPARE(refused->code(), FileError::Code::notEncoded);
        QCOMPARE(refused->message(),
                 QStringLiteral("The document “file.plist” could not be saved."));
        QVERIFY(!refused->failureReason().isEmpty());
        QCOMPARE(progress.completed(), 0);
        const auto endless = failureOf([&] { write({doubling(40), PlistFormat::xml}, path()); });
        QVERIFY(endless);
        QCOMPARE(endless->code(), FileError::Code::notEncoded);
        QCOMPARE(content(), before);
    }

    void tellsWhatItWasToWrite() {
        const QString safety = folder_.filePath(QStringLiteral("safety"));
        std::optional<ContentDigest> digest;
        PlistDocumentWriter::write({sample(), PlistFormat::xml}, path(), safety, nullptr, nullptr,
                                   &digest);
        ContentDigest written;
        PlistDocumentReader::read(path(), nullptr, &written);
        QCOMPARE(digest, std::optional(written));

        // Also where it cannot be written, but not where there are no bytes.
        std::optional<ContentDigest> refused;
        const auto error = failureOf([&] {
            PlistDocumentWriter::write({sample(), PlistFormat::xml}, folder_.path(), safety,
                                       nullptr, nullptr, &refused);
        });
        QVERIFY(error);
        QCOMPARE(error->code(), FileError::Code::writeFailed);
        QCOMPARE(refused, std::optional(written));
        std::optional<ContentDigest> none;
        QVERIFY(failureOf([&] {
            PlistDocumentWriter::write({sample(), PlistFormat::openStep}, path(), safety, nullptr,
                                       nullptr, &none);
        }));
        QVERIFY(!none);
    }
};

const RegisteredTest<PlistDocumentWriterTest> registered;
#include "PlistDocumentWriterTest.moc"
