#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

#include "app/desktop/files/FilePath.h"
#include "app/desktop/saving/ByteFile.h"
#include "app/desktop/session/RecentDocuments.h"
#include "tests/support/TestProgram.h"

class RecentDocumentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { RecentDocuments::clear(); }

    void isEmptyAtFirst() {
        QVERIFY(RecentDocuments::existingPaths().isEmpty());
        QCOMPARE(RecentDocuments::lastFolder(), QString());
    }

    void putsTheLastFileFirst() {
        const QString a = file("a, b.plist");
        const QString b = file("ü%20.plist");
        RecentDocuments::add(a);
        RecentDocuments::add(b);
        QCOMPARE(RecentDocuments::existingPaths(), (QStringList{b, a}));
        RecentDocuments::add(a);
        QCOMPARE(RecentDocuments::existingPaths(), (QStringList{a, b}));
        QCOMPARE(RecentDocuments::lastFolder(), folder_.path());
    }

    void leavesMissingFilesOut() {
        const QString a = file("a.plist");
        const QString b = file("b.plist");
        RecentDocuments::add(a);
        RecentDocuments::add(b);
        QVERIFY(QFile::remove(b));
        QCOMPARE(RecentDocuments::existingPaths(), QStringList(a));
        file("b.plist");
        QCOMPARE(RecentDocuments::existingPaths(), (QStringList{b, a}));
    }

    void keepsNamesThatAreNoTexts() {
        const QString path =
            FilePath::decoded(QFile::encodeName(folder_.path()) + "/%41 \xE9\xC3\xA9;.plist");
        QCOMPARE(ByteFile::write(path, "x"), QString());
        RecentDocuments::add(path);
        QCOMPARE(RecentDocuments::existingPaths(), QStringList(path));
        // (The temporary folder cannot delete such a file itself.)
        QCOMPARE(std::remove(FilePath::encoded(path).constData()), 0);
    }

    void beginsInAFolderThatIsThere() {
        QDir folder(folder_.path());
        QVERIFY(folder.mkdir(QStringLiteral("sub")));
        RecentDocuments::add(file("a.plist"));
        RecentDocuments::add(file("sub/b.plist"));
        QCOMPARE(RecentDocuments::lastFolder(), folder_.filePath(QStringLiteral("sub")));
        QVERIFY(QDir(folder_.filePath(QStringLiteral("sub"))).removeRecursively());
        QCOMPARE(RecentDocuments::lastFolder(), folder_.path());
    }

    void clears() {
        RecentDocuments::add(file("a.plist"));
        RecentDocuments::clear();
        QVERIFY(RecentDocuments::existingPaths().isEmpty());
        QCOMPARE(RecentDocuments::lastFolder(), QString());
    }

    void remembersOnlySoMany() {
        for (int i = 0; i < 12; ++i) {
            RecentDocuments::add(file(qPrintable(QString::number(i))));
        }
        const QStringList paths = RecentDocuments::existingPaths();
        QCOMPARE(paths.size(), 10);
        QCOMPARE(paths.first(), folder_.filePath(QStringLiteral("11")));
        QCOMPARE(paths.last(), folder_.filePath(QStringLiteral("2")));
    }

private:
    QString file(const char* name) {
        QFile file(folder_.filePath(QString::fromUtf8(name)));
        [&file] { QVERIFY(file.open(QIODevice::WriteOnly)); }();
        return file.fileName();
    }

    QTemporaryDir folder_;
};

const RegisteredTest<RecentDocumentsTest> registered;
#include "RecentDocumentsTest.moc"
