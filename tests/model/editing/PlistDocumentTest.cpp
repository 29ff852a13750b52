#include <QSignalSpy>
#include <QTest>

#include "app/model/editing/PlistDocument.h"
#include "app/model/runtime/Plist.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/BrokenRule.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

PlistValue sample() {
    return tree("{a: 1, b: [true]}");
}

/// How often each signal of a document came.
struct Signals {
    explicit Signals(PlistDocument* document)
        : root(document, &PlistDocument::rootChanged),
          format(document, &PlistDocument::formatChanged),
          revision(document, &PlistDocument::revisionChanged),
          notice(document, &PlistDocument::wasReadOnlyFormatChanged),
          node(document, &PlistDocument::nodeChanged) {}

    QString counts() const {
        return QStringLiteral("root %1, format %2, revision %3, notice %4, node %5")
            .arg(root.count())
            .arg(format.count())
            .arg(revision.count())
            .arg(notice.count())
            .arg(node.count());
    }

    QSignalSpy root;
    QSignalSpy format;
    QSignalSpy revision;
    QSignalSpy notice;
    QSignalSpy node;
};

}  // namespace

class PlistDocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<PlistNode*>("PlistNode*"); }

    void startsAsAnEmptyDictionary() {
        const PlistDocument document;
        QCOMPARE(TreeText::ofTree(document.root()), QStringLiteral(": dictionary 0 ..."));
        QCOMPARE(document.format(), PlistFormat::xml);
        QCOMPARE(document.revision(), 0);
        QVERIFY(!document.wasReadOnlyFormat());
    }

    void listsItsContentTypes() {
        QCOMPARE(PlistDocument::readableContentTypes(),
                 QStringList({QStringLiteral("application/x-plist"),
                              QStringLiteral("application/x-plist+xml"),
                              QStringLiteral("application/x-bplist"),
                              QStringLiteral("com.apple.xcode.entitlements-property-list"),
                              QStringLiteral("com.apple.xcode.app-privacy-property-list"),
                              QStringLiteral("com.apple.xcode.strings-dictionary")}));
        QCOMPARE(PlistDocument::writableContentTypes(),
                 QStringList({QStringLiteral("application/x-plist"),
                              QStringLiteral("com.apple.xcode.entitlements-property-list"),
                              QStringLiteral("com.apple.xcode.app-privacy-property-list"),
                              QStringLiteral("com.apple.xcode.strings-dictionary")}));
    }

    void appliesASnapshot() {
        PlistDocument document;
        const Signals heard(&document);
        document.apply({sample(), PlistFormat::binary});
        QCOMPARE(TreeText::ofTree(document.root()), QStringLiteral(": dictionary 2 ..."));
        QCOMPARE(document.format(), PlistFormat::binary);
        QCOMPARE(document.revision(), 1);
        QVERIFY(!document.wasReadOnlyFormat());
        QCOMPARE(heard.counts(), QStringLiteral("root 1, format 1, revision 1, notice 0, node 0"));
    }

    void appliesAReadOnlyFormatAsXml() {
        PlistDocument document;
        const Signals heard(&document);
        document.apply({sample(), PlistFormat::openStep});
        QCOMPARE(document.format(), PlistFormat::xml);
        QVERIFY(document.wasReadOnlyFormat());
        QCOMPARE(heard.counts(), QStringLiteral("root 1, format 0, revision 1, notice 1, node 0"));
        document.apply({sample(), PlistFormat::openStep});
        QCOMPARE(document.revision(), 2);
        QCOMPARE(heard.counts(), QStringLiteral("root 2, format 0, revision 2, notice 1, node 0"));
        document.apply({sample(), PlistFormat::xml});
        QVERIFY(!document.wasReadOnlyFormat());
        QCOMPARE(heard.counts(), QStringLiteral("root 3, format 0, revision 3, notice 2, node 0"));
    }

    void setsTheNoticeBeforeTheRoot() {
        PlistDocument document;
        bool wasSet = false;
        connect(&document, &PlistDocument::rootChanged, this,
                [&] { wasSet = document.wasReadOnlyFormat() && document.revision() == 0; });
        document.apply({sample(), PlistFormat::openStep});
        QVERIFY(wasSet);
    }

    void takesSnapshots() {
        PlistDocument document;
        document.apply({sample(), PlistFormat::binary});
        const PlistFile before = document.snapshot();
        QVERIFY(before.root == sample());
        QCOMPARE(before.format, PlistFormat::binary);
        document.root().children()[0]->setValue(PlistValue::integer(2));
        QCOMPARE(TreeText::whole(document.snapshot().root), QStringLiteral("{a: 2, b: [true]}"));
        QVERIFY(before.root == sample());
    }

    void setsOnlyDifferences() {
        PlistDocument document;
        const Signals heard(&document);
        document.setFormat(PlistFormat::xml);
        document.setWasReadOnlyFormat(false);
        document.setRoot(PlistNodePtr(&document.root()));
        QCOMPARE(heard.counts(), QStringLiteral("root 0, format 0, revision 0, notice 0, node 0"));
        document.setFormat(PlistFormat::binary);
        document.setWasReadOnlyFormat(true);
        document.increaseRevision();
        QCOMPARE(heard.counts(), QStringLiteral("root 0, format 1, revision 1, notice 1, node 0"));
    }

    void passesChangesOfNodesOn() {
        PlistDocument document;
        document.apply({sample(), PlistFormat::xml});
        const PlistNodePtr old(&document.root());
        const Signals heard(&document);
        const quint64 version = document.treeVersion();
        old->children()[1]->children();
        QCOMPARE(document.treeVersion(), version);
        old->children()[0]->setKey("renamed");
        QCOMPARE(heard.node.count(), 1);
        QCOMPARE(document.treeVersion(), version + 1);
        QCOMPARE(document.revision(), 1);
        document.setRoot(PlistNode::create({}, sample()));
        QCOMPARE(document.treeVersion(), version + 2);
        old->children()[0]->setKey("nobody hears");
        QCOMPARE(heard.node.count(), 1);
        document.root().children()[0]->setKey("heard");
        QCOMPARE(heard.node.count(), 2);
    }

    void keepsTheOldRootUntilEverybodyHasHeard() {
        PlistDocument document;
        document.apply({sample(), PlistFormat::xml});
        PlistNode* old = &document.root();
        qint64 count = 0;
        connect(&document, &PlistDocument::rootChanged, this,
                [&count, old] { count = old->childCount(); });
        document.apply({});
        QCOMPARE(count, 2);
    }

    void leavesATreeThatOutlivesIt() {
        PlistNodePtr root;
        {
            PlistDocument document;
            document.apply({sample(), PlistFormat::xml});
            root = PlistNodePtr(&document.root());
        }
        root->children()[0]->setKey("nobody hears");
        QVERIFY(root->children()[0]->key() == "nobody hears");
    }

    void refusesWhatIsNoRootAndNoFormat() {
        PlistDocument document;
        document.apply({sample(), PlistFormat::xml});
        const BrokenRule broken;
        QVERIFY(broken.of([&] { document.setRoot({}); }));
        QVERIFY(broken.of([&] { document.setRoot(document.root().children()[0]); }));
        QVERIFY(broken.of([&] { document.setFormat(PlistFormat::openStep); }));
    }
};

const RegisteredTest<PlistDocumentTest> registered;
#include "PlistDocumentTest.moc"
