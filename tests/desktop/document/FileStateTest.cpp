#include <QTest>
#include <cstdint>
#include <optional>

#include "app/desktop/document/FileState.h"
#include "tests/support/TestProgram.h"

using Verdict = FileState::Verdict;

namespace {

FileContent contentOf(const QByteArray& bytes) {
    return {ContentDigest::of({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size())})};
}

const FileContent base = contentOf("what was read");
const FileContent other = contentOf("another program's");
const FileContent another = contentOf("another program's next");
const FileContent attempted = contentOf("what could not be saved");
const FileContent missing;

using Content = std::optional<FileContent>;
constexpr std::nullopt_t never = std::nullopt;

}  // namespace

Q_DECLARE_METATYPE(Content)
Q_DECLARE_METATYPE(Verdict)

class FileStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// What was seen, one after the other, between them what could not be read and what the user
    /// has overruled, and what then becomes of the file with work of the user's and without.
    void judges_data() {
        QTest::addColumn<Content>("unreadable");
        QTest::addColumn<Content>("overruled");
        QTest::addColumn<Content>("present");
        QTest::addColumn<Verdict>("withoutWork");
        QTest::addColumn<Verdict>("withWork");
        QTest::addColumn<bool>("isLost");
        const auto row = [](const char* name, const Content& unreadable, const Content& overruled,
                            const FileContent& present, Verdict withoutWork, Verdict withWork,
                            bool isLost) {
            QTest::newRow(name) << unreadable << overruled << Content(present) << withoutWork
                                << withWork << isLost;
        };
        row("as it was", never, never, base, Verdict::inSync, Verdict::inSync, false);
        row("changed", never, never, other, Verdict::reload, Verdict::ask, false);
        row("gone", never, never, missing, Verdict::missing, Verdict::missing, true);
        row("saved after all", never, never, attempted, Verdict::settled, Verdict::settled, true);

        row("not readable", other, never, other, Verdict::unreadable, Verdict::unreadable, true);
        row("not readable, changed", other, never, another, Verdict::reload, Verdict::ask, true);
        row("not readable, gone", other, never, missing, Verdict::missing, Verdict::missing, true);
        row("not readable, back", other, never, base, Verdict::inSync, Verdict::inSync, false);

        row("overruled", never, other, other, Verdict::settled, Verdict::settled, true);
        row("overruled, changed", never, other, another, Verdict::ask, Verdict::ask, true);
        row("overruled, gone", never, other, missing, Verdict::missing, Verdict::missing, true);
        row("overruled, back", never, other, base, Verdict::inSync, Verdict::inSync, false);
        row("gone on purpose", never, missing, missing, Verdict::settled, Verdict::settled, true);
        row("gone on purpose, made", never, missing, other, Verdict::ask, Verdict::ask, true);
        row("overruled as not readable", other, other, other, Verdict::settled, Verdict::settled,
            true);
    }

    void judges() {
        QFETCH(const Content, unreadable);
        QFETCH(const Content, overruled);
        QFETCH(const Content, present);
        FileState state = FileState::inSyncWith(base.digest);
        state.attempted = attempted.digest;
        if (unreadable) {
            state.update(*unreadable);
            state.unreadable = state.present;
        }
        if (overruled) {
            state.update(*overruled);
            state.overruled = state.present;
        }
        state.update(*present);
        QTEST(state.verdict(false), "withoutWork");
        QTEST(state.verdict(true), "withWork");
        QTEST(state.isLost(), "isLost");
    }

    void followsAgainWhenTheFileIsBack() {
        FileState state = FileState::inSyncWith(base.digest);
        state.update(other);
        state.overruled = state.present;
        state.update(base);
        state.update(another);
        QCOMPARE(state.verdict(false), Verdict::reload);
        QVERIFY(!state.isLost());
    }

    void readsAgainWhatIsMadeAgain() {
        FileState state = FileState::inSyncWith(base.digest);
        state.update(other);
        state.unreadable = state.present;
        state.update(missing);
        state.update(other);
        QCOMPARE(state.verdict(false), Verdict::reload);
        QVERIFY(!state.isLost());
    }

    void knowsWhatMayBeOverwritten() {
        FileState state = FileState::inSyncWith(base.digest);
        QVERIFY(state.mayOverwrite(*base.digest));
        QVERIFY(!state.mayOverwrite(*attempted.digest));
        state.attempted = attempted.digest;
        QVERIFY(state.mayOverwrite(*attempted.digest));
        state.update(other);
        QVERIFY(!state.mayOverwrite(*other.digest));
        state.overruled = state.present;
        QVERIFY(state.mayOverwrite(*other.digest));
        QVERIFY(!state.mayOverwrite(*another.digest));
        // Who has overruled that the file is gone has not seen what is there later.
        state.update(missing);
        state.overruled = state.present;
        QVERIFY(!state.mayOverwrite(*other.digest));
    }

    void isInSyncWithoutAFile() {
        const FileState state;
        QCOMPARE(state.verdict(true), Verdict::inSync);
        QVERIFY(!state.isLost());
        QVERIFY(!state.mayOverwrite(*base.digest));
    }
};

const RegisteredTest<FileStateTest> registered;
#include "FileStateTest.moc"
