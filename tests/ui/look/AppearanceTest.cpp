#include <QApplication>
#include <QMenu>
#include <QPalette>
#include <QTest>

#include "app/ui/look/Appearance.h"
#include "app/ui/look/Colors.h"
#include "app/ui/look/DarkPalette.h"
#include "tests/ui/support/UiTest.h"

class AppearanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void darkTextIsReadable_data() {
        QTest::addColumn<QPalette::ColorRole>("text");
        QTest::addColumn<QPalette::ColorRole>("ground");
        QTest::newRow("rows") << QPalette::Text << QPalette::Base;
        QTest::newRow("every second row") << QPalette::Text << QPalette::AlternateBase;
        QTest::newRow("labels") << QPalette::WindowText << QPalette::Window;
        QTest::newRow("buttons") << QPalette::ButtonText << QPalette::Button;
        QTest::newRow("selected rows") << QPalette::HighlightedText << QPalette::Highlight;
        QTest::newRow("tooltips") << QPalette::ToolTipText << QPalette::ToolTipBase;
        QTest::newRow("links") << QPalette::Link << QPalette::Base;
        QTest::newRow("placeholders") << QPalette::PlaceholderText << QPalette::Base;
    }

    void darkTextIsReadable() {
        QFETCH(QPalette::ColorRole, text);
        QFETCH(QPalette::ColorRole, ground);
        const QPalette palette = DarkPalette::make();
        const double found = Colors::contrast(palette.color(text), palette.color(ground));
        QVERIFY2(found >= 4.5, qPrintable(QString::number(found)));
    }

    void darkensLightWindowsOnlyWhileThatIsWanted() {
        const QPalette theme = QApplication::palette();
        QVERIFY(theme.color(QPalette::Window).lightness() > 128);
        Appearance appearance;
        appearance.follow(ColorScheme::Preference::light);
        QCOMPARE(QApplication::palette(), theme);
        appearance.follow(ColorScheme::Preference::dark);
        QCOMPARE(QApplication::palette().color(QPalette::Base),
                 DarkPalette::make().color(QPalette::Base));
        appearance.follow(ColorScheme::Preference::none);
        QCOMPARE(QApplication::palette().color(QPalette::Base), theme.color(QPalette::Base));
        QCOMPARE(QApplication::palette().color(QPalette::Text), theme.color(QPalette::Text));
    }

    void leavesDarkThemesAlone() {
        QPalette theme;
        theme.setColor(QPalette::Window, Qt::black);
        theme.setColor(QPalette::WindowText, Qt::yellow);
        QApplication::setPalette(theme);
        Appearance appearance;
        appearance.follow(ColorScheme::Preference::dark);
        QCOMPARE(QApplication::palette().color(QPalette::WindowText), QColor(Qt::yellow));
        appearance.follow(ColorScheme::Preference::none);
        QCOMPARE(QApplication::palette().color(QPalette::WindowText), QColor(Qt::yellow));
        QApplication::setPalette(QPalette());
    }

    void menusStandOut() {
        const QPalette menus = DarkPalette::forMenus();
        const QColor ground = menus.color(QPalette::Base);
        // The plain style makes both from these.
        const QColor painted = ground.lighter(108);
        const QColor frame = menus.color(QPalette::Window).darker(140);
        QVERIFY(Colors::contrast(frame, painted) >= 3.0);
        QVERIFY(Colors::contrast(frame, DarkPalette::make().color(QPalette::Base)) >= 3.0);
        QVERIFY(Colors::contrast(menus.color(QPalette::Text), painted) >= 4.5);
        QVERIFY(Colors::contrast(menus.color(QPalette::HighlightedText),
                                 menus.color(QPalette::Highlight)) >= 4.5);
    }

    void menusFollowToo() {
        const QMenu menu;
        const QWidget other;
        const QColor before = menu.palette().color(QPalette::Base);
        Appearance appearance;
        appearance.follow(ColorScheme::Preference::dark);
        QTRY_COMPARE(menu.palette().color(QPalette::Base),
                     DarkPalette::forMenus().color(QPalette::Base));
        QCOMPARE(other.palette().color(QPalette::Base), DarkPalette::make().color(QPalette::Base));
        appearance.follow(ColorScheme::Preference::light);
        QTRY_COMPARE(menu.palette().color(QPalette::Base), before);
        QCOMPARE(other.palette().color(QPalette::Base), before);
    }

    void theSelectionStandsOut() {
        const QPalette palette = DarkPalette::make();
        QVERIFY(Colors::contrast(palette.color(QPalette::Highlight),
                                 palette.color(QPalette::Base)) >= 3.0);
    }
};

const RegisteredUiTest<AppearanceTest> registered;
#include "AppearanceTest.moc"
