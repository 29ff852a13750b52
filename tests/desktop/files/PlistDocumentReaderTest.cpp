#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cstdint>
#include <optional>
#include <thread>

#include "app/desktop/files/ContentDigest.h"
#include "app/desktop/files/FileError.h"
#include "app/desktop/files/PlistDocumentReader.h"
#include "app/desktop/files/ProgressReporter.h"
#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/IntervalCount.h"
#include "tests/model/support/OrdinaryUser.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

PlistValue sample() {
    return PlistValue::dictionary({{"a", PlistValue::integer(1)},
                                   {"b", PlistValue::string("a text longer than fits in place")}});
}

QByteArray encoded(const PlistValue& value, PlistFormat format) {
    const PlistBytes bytes = PlistCodec::write(value, format);
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

std::optional<FileError> failure(const QString& path, ProgressReporter* progress = nullptr) {
    try {
        PlistDocumentReader::read(path, progress);
    } catch (const FileError& error) {
        return error;
    }
    return std::nullopt;
}

}  // namespace

class PlistDocumentReaderTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;

    QString fileWith(const QByteArray& bytes) const {
        QString path = folder_.filePath(QStringLiteral("file.plist"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot prepare the test");
        }
        return path;
    }

private Q_SLOTS:
    void readsEveryFormat() {
        for (const PlistFormat format : {PlistFormat::xml, PlistFormat::binary}) {
            const PlistFile file = PlistDocumentReader::read(fileWith(encoded(sample(), format)));
            QCOMPARE(file.format, format);
            QVERIFY(file.root == sample());
        }
        const PlistFile file = PlistDocumentReader::read(fileWith("{ a = b; }"));
        QCOMPARE(file.format, PlistFormat::openStep);
        QCOMPARE(TreeText::whole(file.root), QStringLiteral("{a: \"b\"}"));
    }

    void readsFilesLargerThanTheirTold() {
        // The system tells no size for these files.
        const std::optional<FileError> error = failure(QStringLiteral("/proc/self/status"));
        QVERIFY(error);
        QCOMPARE(error->code(), FileError::Code::corruptFile);
        QVERIFY(error->failureReason() != QStringLiteral("The file ends unexpectedly."));
    }

    void readsInAnyThread() {
        const QString path = fileWith(encoded(sample(), PlistFormat::binary));
        ProgressReporter progress;
        QCOMPARE(progress.total(), 0);
        PlistFile file;
        std::thread([&] { file = PlistDocumentReader::read(path, &progress); }).join();
        QCOMPARE(progress.total(), 1);
        QCOMPARE(progress.completed(), 1);
        PlistDocument document;
        document.apply(file);
        QVERIFY(document.root().value() == sample());
    }

    /// Whether it succeeds or not.
    void marksTheTimeItTakes() {
        const QString path = fileWith(encoded(sample(), PlistFormat::xml));
        IntervalCount intervals;
        std::thread([&path] { PlistDocumentReader::read(path); }).join();
        QCOMPARE(intervals.takeNames(), QStringLiteral("Read"));
        QVERIFY(failure(fileWith("<plist>")));
        QCOMPARE(intervals.takeNames(), QStringLiteral("Read"));
    }

    void keepsNothingOfTheFile() {
        const QString path = fileWith(encoded(sample(), PlistFormat::xml));
        const PlistFile file = PlistDocumentReader::read(path);
        QVERIFY(QFile::resize(path, 0));
        QVERIFY(file.root == sample());
    }

    void takesTheDigestOfWhatItReads() {
        const auto digestOf = [](const QByteArray& bytes) {
            return ContentDigest::of({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                      static_cast<std::size_t>(bytes.size())});
        };
        ContentDigest digest;
        PlistDocumentReader::read(fileWith("{ a = b; }"), nullptr, &digest);
        QCOMPARE(digest, digestOf("{ a = b; }"));
        // Also of what is refused.
        QVERIFY_EXCEPTION_THROWN(PlistDocumentReader::read(fileWith("<plist>"), nullptr, &digest),
                                 FileError);
        QCOMPARE(digest, digestOf("<plist>"));
    }

    void opensAnOpenStepFileAsXml() {
        PlistDocument document;
        document.apply(PlistDocumentReader::read(fileWith("{ a = b; }")));
        QVERIFY(document.wasReadOnlyFormat());
        QCOMPARE(document.snapshot().format, PlistFormat::xml);
    }

    void tellsWhyAFileIsCorrupt() {
        const QByteArray whole = encoded(sample(), PlistFormat::binary);
        ProgressReporter progress;
        const QString path = fileWith(whole.first(20));
        const std::optional<FileError> error = failure(path, &progress);
        QVERIFY(error);
        QCOMPARE(error->code(), FileError::Code::corruptFile);
        QCOMPARE(error->path(), path);
        QCOMPARE(error->message(),
                 QStringLiteral("The file “file.plist” is not a readable property list."));
        QVERIFY2(error->failureReason().endsWith(QStringLiteral("The file ends unexpectedly.")),
                 qPrintable(error->failureReason()));
        QCOMPARE(QString::fromUtf8(error->what()),
                 error->message() + QLatin1Char(' ') + error->failureReason());
        QCOMPARE(progress.completed(), 0);
        // The file was there, all of it.
        QCOMPARE(progress.fraction(), 1.0);
    }

    void tellsWhyAFileCannotBeRead() {
        const auto reason = [](const QString& path) {
            const std::optional<FileError> error = failure(path);
            if (!error || error->code() != FileError::Code::readFailed) {
                return QStringLiteral("another error or none");
            }
            return error->failureReason();
        };
        QCOMPARE(reason(folder_.filePath(QStringLiteral("missing"))),
                 QStringLiteral("No such file or directory."));
        QCOMPARE(reason(folder_.path()), QStringLiteral("Is a directory."));
        QCOMPARE(reason(QStringLiteral("/dev/null")), QStringLiteral("It is not a regular file."));
        const QString pipe = folder_.filePath(QStringLiteral("pipe"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QCOMPARE(reason(pipe), QStringLiteral("It is not a regular file."));
    }

    void tellsThatReadingIsForbidden() {
        // The folder is the test's alone, and what is asked for is the file's refusal.
        QCOMPARE(::chmod(QFile::encodeName(folder_.path()).constData(), 0755), 0);
        const QString path = fileWith("{ a = b; }");
        QVERIFY(QFile::setPermissions(path, {}));
        const bool isForbidden = OrdinaryUser::does([&path] {
            const std::optional<FileError> error = failure(path);
            return error &&
                   error->message() == QStringLiteral("The file “file.plist” could not be read.") &&
                   error->failureReason() == QStringLiteral("Permission denied.");
        });
        QVERIFY(QFile::remove(path));
        QVERIFY(isForbidden);
    }

    void passesTheReasonOfAFailedReadOn() {
        // The first bytes of a process's memory cannot be read by anybody.
        const std::optional<FileError> error = failure(QStringLiteral("/proc/self/mem"));
        QVERIFY(error);
        QCOMPARE(error->code(), FileError::Code::readFailed);
        QCOMPARE(error->failureReason(), QStringLiteral("Input/output error."));
    }
};

const RegisteredTest<PlistDocumentReaderTest> registered;
#include "PlistDocumentReaderTest.moc"
