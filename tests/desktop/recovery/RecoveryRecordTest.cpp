#include <QTest>

#include "app/desktop/recovery/RecoveryRecord.h"
#include "tests/support/TestProgram.h"

class RecoveryRecordTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comesBackAsItWas() {
        RecoveryRecord record;
        record.file = "/a folder/caf\xE9 100%\n.plist";
        record.title = QStringLiteral("café “1”.plist");
        record.baseDigest = QStringLiteral("00ff");
        record.format = PlistFormat::binary;
        record.wasReadOnlyFormat = true;
        record.backedUpAt = QDateTime::fromMSecsSinceEpoch(1'700'000'000'123, Qt::UTC);
        record.attempts = 1;
        QVERIFY(RecoveryRecord::fromJson(record.toJson()) == record);
    }

    void ofADocumentWithoutAFileComesBackToo() {
        RecoveryRecord record;
        record.title = QStringLiteral("Untitled 2");
        record.backedUpAt = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
        const auto again = RecoveryRecord::fromJson(record.toJson());
        QVERIFY(again == record);
        QVERIFY(again->file.isEmpty());
    }

    void isReadableForPeople() {
        RecoveryRecord record;
        record.file = "/home/ann/a b.plist";
        record.title = QStringLiteral("a b.plist");
        record.backedUpAt = QDateTime::fromMSecsSinceEpoch(1'700'000'000'123, Qt::UTC);
        QCOMPARE(QString::fromUtf8(record.toJson()),
                 QStringLiteral("{\n"
                                "    \"attempts\": 0,\n"
                                "    \"backedUpAt\": \"2023-11-14T22:13:20.123Z\",\n"
                                "    \"baseDigest\": \"\",\n"
                                "    \"file\": \"/home/ann/a%20b.plist\",\n"
                                "    \"format\": \"xml\",\n"
                                "    \"kind\": \"unsavedDocument\",\n"
                                "    \"title\": \"a b.plist\",\n"
                                "    \"version\": \"\",\n"
                                "    \"wasReadOnlyFormat\": false\n"
                                "}\n"));
    }

    void takesNothingElse() {
        for (const char* json : {"", "{", "[]", "{}", "{\"kind\": \"interruptedSave\"}"}) {
            QVERIFY2(!RecoveryRecord::fromJson(json), json);
        }
    }
};

const RegisteredTest<RecoveryRecordTest> registered;
#include "RecoveryRecordTest.moc"
