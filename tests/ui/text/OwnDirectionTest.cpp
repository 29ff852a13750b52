#include <QImage>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "app/desktop/session/RecentDocuments.h"
#include "app/model/editing/PlistDocument.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/menus/FileMenu.h"
#include "app/ui/table/PlistTable.h"
#include "app/ui/table/view/OutlineTableModel.h"
#include "app/ui/text/OwnDirection.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

namespace {

const QString arabic = QStringLiteral("\u0643\u062A\u0627\u0628");

/// The smallest part of an image that holds all that is drawn on its background.
QImage drawnIn(const QImage& image) {
    const QRgb background = image.pixel(0, 0);
    QRect drawn;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != background) {
                drawn |= QRect(x, y, 1, 1);
            }
        }
    }
    return image.copy(drawn);
}

}  // namespace

/// Windows are laid out from right to left, what users write keeps the direction of its script.
class OwnDirectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }

    void isThatOfTheFirstLetter() {
        QCOMPARE(OwnDirection::of(QStringLiteral("7 a ") + arabic), Qt::LeftToRight);
        QCOMPARE(OwnDirection::of(QStringLiteral("7 ") + arabic + u'a'), Qt::RightToLeft);
        QCOMPARE(OwnDirection::of(QStringLiteral("-42")), Qt::LeftToRight);
        QCOMPARE(OwnDirection::of({}), Qt::LeftToRight);
    }

    void needsNoMarksFromLeftToRight() { QCOMPARE(OwnDirection::isolated(arabic), arabic); }

    void isolatesFromRightToLeft() {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(OwnDirection::isolated(QStringLiteral("/a.plist")),
                 QStringLiteral("\u2066/a.plist\u2069"));
        QCOMPARE(OwnDirection::isolated(arabic), u'\u2067' + arabic + u'\u2069');
    }

    void isolatesPathsInMenus() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.plist"));
        Samples::writeFile(path, Samples::bytes(Samples::numbers(1), PlistFormat::xml));
        RecentDocuments::add(path);
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        const FileMenu menu(nullptr);
        QCOMPARE(menu.findChild<QMenu*>()->actions().first()->text(),
                 QStringLiteral("\u2066a.plist\u2069"));
    }

    void paintsTextsAlikeInMirroredWindows() {
        PlistDocument document;
        document.apply({Samples::allTypes(), PlistFormat::xml});
        DocumentView view(document);
        view.resize(760, 560);
        // Letters stand on whole pixels then, wherever a text begins.
        QFont font = view.font();
        font.setHintingPreference(QFont::PreferFullHinting);
        view.setFont(font);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const OutlineTableModel& model = view.table().outlineModel();
        const auto numberAndData = {rowOf(model, "integer"), rowOf(model, "data")};
        for (const int row : numberAndData) {
            const QModelIndex cell = model.index(row, OutlineTableModel::valueColumn);
            QGuiApplication::setLayoutDirection(Qt::LeftToRight);
            const QImage straight = imageOf(view.table(), cell);
            QGuiApplication::setLayoutDirection(Qt::RightToLeft);
            const QImage mirrored = imageOf(view.table(), cell);
            QVERIFY(view.table().isRightToLeft());
            QVERIFY(straight != mirrored);
            QCOMPARE(drawnIn(mirrored), drawnIn(straight));
        }
    }

private:
    static int rowOf(const OutlineTableModel& model, const char* key) {
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.index(row, OutlineTableModel::keyColumn).data().toString() ==
                QLatin1String(key)) {
                return row;
            }
        }
        return -1;
    }

    static QImage imageOf(QTableView& table, const QModelIndex& cell) {
        QCoreApplication::processEvents();
        // Without the lines at its edges.
        return table.viewport()->grab(table.visualRect(cell).adjusted(1, 1, -1, -1)).toImage();
    }
};

const RegisteredUiTest<OwnDirectionTest> registered;
#include "OwnDirectionTest.moc"
