#include <malloc.h>

#include <QPixmapCache>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "app/model/actions/PlistTransfer.h"
#include "app/model/runtime/Plist.h"
#include "app/ui/app/TabuletApp.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/window/DocumentWindow.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

/// The long run of all tests has ten times as many.
int cycleCount() {
    constexpr int few = 100;
    return qEnvironmentVariableIsSet("TABULET_LONG") ? 10 * few : few;
}

/// What this process has of the system.
struct Possessions {
    std::size_t heap;    ///< bytes in use; 0 under a sanitizer, which looks for leaks itself
    std::size_t mapped;  ///< pages of data
    std::size_t descriptors;
    std::size_t watches;

    static Possessions now() {
        const auto heap = mallinfo2();
        return {heap.uordblks + heap.hblkhd, dataPages(), entriesIn("/proc/self/fd"), allWatches()};
    }

private:
    static std::size_t entriesIn(const char* folder) {
        const std::filesystem::directory_iterator entries(folder);
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    /// The sixth number of the file (proc(5)).
    static std::size_t dataPages() {
        std::ifstream file("/proc/self/statm");
        std::array<std::size_t, 6> numbers{};
        for (std::size_t& number : numbers) {
            file >> number;
        }
        return numbers.back();
    }

    static std::size_t allWatches() {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
            std::ifstream file(entry.path());
            for (std::string line; std::getline(file, line);) {
                count += line.starts_with("inotify") ? 1 : 0;
            }
        }
        return count;
    }
};

}  // namespace

/// Many files are opened, edited, saved and closed in one process, which must not keep anything of
/// them.
class SoakTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
        // It would grow to its 10 MiB, and then stay so.
        QPixmapCache::setCacheLimit(0);
        app_ = std::make_unique<TabuletApp>();
        // The one that stays.
        const QString path = folder_->filePath(QStringLiteral("kept.plist"));
        Samples::writeFile(path, Samples::bytes(Samples::numbers(3), PlistFormat::xml));
        app_->open({path});
        QTRY_COMPARE(app_->windows().first()->controller().path(), path);
    }

    void cleanup() { app_.reset(); }

    void keepsNothingOfClosedDocuments() {
        const int cycles = cycleCount();
        const int warmUp = cycles / 4;
        Possessions before{};
        for (int i = 0; i < cycles; ++i) {
            if (i == warmUp) {
                before = Possessions::now();
            }
            cycle(i);
            if (QTest::currentTestFailed()) {
                qWarning("cycle %d", i);
                return;
            }
        }
        const Possessions after = Possessions::now();
        qInfo("heap %zu -> %zu, pages %zu -> %zu, descriptors %zu -> %zu, watches %zu -> %zu",
              before.heap, after.heap, before.mapped, after.mapped, before.descriptors,
              after.descriptors, before.watches, after.watches);
        // The toolkit itself keeps about a hundred bytes of each window. One of which something is
        // kept has many thousands.
        constexpr std::size_t fluctuation = std::size_t{1} << 17;
        const std::size_t mostBytes = fluctuation + 256 * static_cast<std::size_t>(cycles - warmUp);
        QVERIFY2(after.heap <= before.heap + mostBytes, "memory");
        constexpr std::size_t mostPages = 2048;
        QVERIFY2(after.mapped <= before.mapped + mostPages, "mapped memory");
        QCOMPARE(after.descriptors, before.descriptors);
        QCOMPARE(after.watches, before.watches);
    }

private:
    void cycle(int number) {
        const QString path = folder_->filePath(QStringLiteral("%1.plist").arg(number % 7));
        const PlistFormat format = number % 2 == 0 ? PlistFormat::xml : PlistFormat::binary;
        const int items = static_cast<int>(random_.bounded(1, 400));
        Samples::writeFile(path, Samples::bytes(Samples::numbers(items), format));

        app_->open({path});
        QCOMPARE(app_->windows().size(), 2);
        DocumentWindow& window = *app_->windows().last();
        DocumentController& controller = window.controller();
        QSignalSpy opened(&controller, &DocumentController::opened);
        QVERIFY(opened.wait());
        for (auto edits = random_.bounded(1, 12); edits > 0; --edits) {
            edit(window);
        }
        // Whatever the edits were, this is one more.
        window.view().actions().changeFormat(format == PlistFormat::xml ? PlistFormat::binary
                                                                        : PlistFormat::xml);
        QSignalSpy saved(&controller, &DocumentController::saved);
        window.save();
        QVERIFY(saved.wait());
        QVERIFY(!controller.isModified());
        const PlistFile content = controller.document().snapshot();
        QCOMPARE(Samples::readFile(path), Samples::bytes(content.root, content.format));
        window.close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(app_->windows().size(), 1);
    }

    void edit(DocumentWindow& window) {
        DocumentView& view = window.view();
        const DocumentActions actions = view.actions();
        OutlineState& outline = view.outline();
        const auto row =
            static_cast<std::size_t>(random_.bounded(static_cast<quint32>(outline.rows().size())));
        view.table().selectRow(static_cast<int>(row));
        PlistNode& node = outline.rows().at(row).node();
        switch (random_.bounded(9)) {
            case 0:
                actions.addItem();
                break;
            case 1:
                actions.duplicate();
                break;
            case 2:
                actions.deleteSelected();
                break;
            case 3:
                actions.moveSelected(DocumentActions::Direction::down);
                break;
            case 4:
                actions.changeType(node, PlistType::dictionary);
                break;
            case 5:
                actions.paste(actions.copy());
                break;
            case 6:
                view.expandAll();
                break;
            case 7:
                window.controller().undoManager().undo();
                break;
            default:
                if (!node.isContainer()) {
                    actions.changeValue(node, PlistValue::string("seven"));
                }
        }
        QCoreApplication::processEvents();
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<TabuletApp> app_;
    QRandomGenerator random_{20'261'121};
};

const RegisteredUiTest<SoakTest> registered;
#include "SoakTest.moc"
