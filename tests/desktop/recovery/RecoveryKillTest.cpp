#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <array>
#include <cstdio>
#include <random>
#include <vector>

#include "app/desktop/document/DocumentController.h"
#include "app/desktop/document/DocumentRecovery.h"
#include "app/desktop/recovery/RecoverableDocument.h"
#include "app/model/editing/PlistEditor.h"
#include "app/model/tree/PlistNode.h"
#include "tests/model/support/RandomValues.h"
#include "tests/support/TestProgram.h"

using std::chrono::milliseconds;

namespace {

/// Edits of a document that are the same for the same seed. Each also counts itself in the first
/// item of the root, so that a document tells after how many edits it was kept.
class ScriptedEditing {
public:
    ScriptedEditing(DocumentController& controller, unsigned seed)
        : controller_(controller), random_(seed) {
        const PlistNodePtr count = PlistNode::create(PlistString("count"), PlistValue::integer(0));
        editor().add({&count, 1}, root(), 0);
    }

    void editOnce() {
        UndoManager& history = controller_.undoManager();
        history.beginGroup();
        editor().changeValue(*item(0), PlistValue::integer(++count_));
        const std::size_t items = root().childCount() - 1;
        const std::uint32_t choice = choose();
        const std::size_t index = items == 0 ? 1 : 1 + choose() % items;
        if (items == 0 || (choice % 2 == 0 && items < mostItems)) {
            const PlistNodePtr fresh = PlistNode::create(PlistString(RandomValues::key(choose())),
                                                         RandomValues::value(choose()));
            editor().add({&fresh, 1}, root(), static_cast<qint64>(index));
        } else if (choice % 8 == 1) {
            const PlistNodePtr old = item(index);
            editor().remove({&old, 1});
        } else {
            editor().changeValue(*item(index), RandomValues::scalar(choose()));
        }
        history.endGroup();
    }

    int count() const { return count_; }

private:
    static constexpr std::size_t mostItems = 60;

    std::uint32_t choose() { return static_cast<std::uint32_t>(random_()); }

    PlistNodePtr item(std::size_t index) const { return root().children()[index]; }
    PlistNode& root() const { return controller_.document().root(); }
    PlistEditor editor() const {
        return PlistEditor(controller_.document(), &controller_.undoManager());
    }

    DocumentController& controller_;
    std::mt19937 random_;
    int count_ = 0;
};

/// What a document holds, to the last bit.
QByteArray exactBytes(const DocumentController& controller) {
    const PlistBytes bytes = PlistCodec::write(controller.document().snapshot().root,
                                               PlistFormat::binary, {.keepsSpellings = true});
    return {bytes.view().data(), static_cast<qsizetype>(bytes.view().size())};
}

void say(const char* what, int count) {
    std::printf("%s %d\n", what, count);
    std::fflush(stdout);
}

/// The program that is killed: edits without end, and says what it has done and kept.
int editUntilKilled(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    RecoveryStore store(QString::fromLocal8Bit(argv[2]));
    DocumentController controller(QStringLiteral("Untitled"));
    auto* recovery = new DocumentRecovery(controller, store, {milliseconds(2), milliseconds(4)});
    ScriptedEditing editing(controller, static_cast<unsigned>(std::atoi(argv[3])));
    std::map<UndoManager::State, int> counts;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &controller, [&] {
        editing.editOnce();
        counts[controller.undoManager().state()] = editing.count();
        say("edited", editing.count());
    });
    QObject::connect(recovery, &DocumentRecovery::backedUp, &controller,
                     [&counts](UndoManager::State state) { say("kept", counts[state]); });
    timer.start(1);
    return QCoreApplication::exec();
}

}  // namespace

class RecoveryKillTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatWasKeptLastComesBackExactly_data() {
        QTest::addColumn<int>("seed");
        constexpr int seeds = 25;
        for (int seed = 1; seed <= seeds; ++seed) {
            QTest::addRow("seed %d", seed) << seed;
        }
    }

    void whatWasKeptLastComesBackExactly() {
        QFETCH(const int, seed);
        const QTemporaryDir folder;
        const QString place = folder.filePath(QStringLiteral("recovery"));
        const int lastKept = editAndKill(place, seed);
        QVERIFY(lastKept > 0);

        const std::vector<RecoverableDocument> found = RecoverableDocument::find(place);
        QCOMPARE(found.size(), std::size_t{1});
        DocumentController recovered(QStringLiteral("New"));
        QSignalSpy opened(&recovered, &DocumentController::opened);
        recovered.recover(found.front());
        QVERIFY(opened.wait());
        const auto count =
            static_cast<int>(recovered.document().root().children()[0]->value().integerValue());
        QVERIFY(count >= lastKept);

        DocumentController replayed(QStringLiteral("Untitled"));
        ScriptedEditing editing(replayed, static_cast<unsigned>(seed));
        for (int i = 0; i < count; ++i) {
            editing.editOnce();
        }
        QCOMPARE(exactBytes(recovered), exactBytes(replayed));
        QVERIFY(recovered.isModified());
        QVERIFY(!recovered.isPristine());
        QCOMPARE(recovered.name(), QStringLiteral("Untitled (recovered)"));
    }

private:
    /// Runs the program until it has made a number of edits that the seed chooses, and kills it
    /// wherever it is then. The number of edits that it said were kept.
    static int editAndKill(const QString& place, int seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        const int lastEdit = 20 + static_cast<int>(random() % 300);
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("RecoveryKillTest"), QStringLiteral("edit"), place,
                       QString::number(seed)});
        int edited = 0;
        int kept = 0;
        while ((edited < lastEdit || kept == 0) && program.waitForReadyRead()) {
            readOutput(program, edited, kept);
        }
        program.kill();
        program.waitForFinished();
        readOutput(program, edited, kept);
        return kept;
    }

    static void readOutput(QProcess& program, int& edited, int& kept) {
        while (program.canReadLine()) {
            const QList<QByteArray> words = program.readLine().trimmed().split(' ');
            int& count = words.first() == "kept" ? kept : edited;
            count = words.last().toInt();
        }
    }
};

namespace {

int editOrTest(int argc, char** argv) {
    if (argc == 4 && QByteArray(argv[1]) == "edit") {
        return editUntilKilled(argc, argv);
    }
    return TestProgram::runWithoutWindows<RecoveryKillTest>(argc, argv);
}

const RegisteredTest<RecoveryKillTest, editOrTest> registered;

}  // namespace

#include "RecoveryKillTest.moc"
