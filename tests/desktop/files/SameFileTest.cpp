#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/desktop/files/SameFile.h"

class SameFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsLinksOfBothKinds() {
        make("a");
        QVERIFY(QFile::link(path("a"), path("soft")));
        QCOMPARE(::link(QFile::encodeName(path("a")).constData(),
                        QFile::encodeName(path("hard")).constData()),
                 0);
        QVERIFY(isSameFile(path("a"), path("soft")));
        QVERIFY(isSameFile(path("hard"), path("soft")));
        QVERIFY(isSameFile(path("a"), folder_.path() + QStringLiteral("/./a")));
    }

    void tellsFilesApart() {
        make("b");
        make("c");
        QVERIFY(!isSameFile(path("b"), path("c")));
        QVERIFY(!isSameFile(path("b"), path("none")));
        QVERIFY(!isSameFile(path("none"), path("b")));
    }

    void goesByThePathWhereNothingIs() {
        QVERIFY(isSameFile(path("none"), path("none")));
        QVERIFY(!isSameFile(path("none"), path("nothing")));
        QVERIFY(isSameFile(path("none"), QDir::current().relativeFilePath(path("none"))));
    }

private:
    QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
    void make(const char* name) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(SameFileTest)
#include "SameFileTest.moc"
