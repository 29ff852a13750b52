#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QToolButton>

#include "app/model/editing/PlistDocument.h"
#include "app/model/tree/PlistNode.h"
#include "app/ui/document/DocumentToolBar.h"
#include "app/ui/document/DocumentView.h"
#include "app/ui/document/EmptyState.h"
#include "app/ui/document/FormatPicker.h"
#include "app/ui/document/SearchField.h"
#include "app/ui/notices/NoticeStrip.h"
#include "app/ui/table/PlistTable.h"
#include "tests/ui/support/Samples.h"
#include "tests/ui/support/UiTest.h"

class DocumentViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::system()); }

    void showsTheBannerForOpenStep() {
        PlistDocument document;
        DocumentView view(document);
        const auto* banner = view.findChild<NoticeStrip*>();
        view.show();
        QVERIFY(!banner->isVisible());
        document.apply({Samples::allTypes(), PlistFormat::openStep});
        QVERIFY(banner->isVisible());
        QCOMPARE(banner->accessibleName(),
                 QStringLiteral("This file uses the old OpenStep format, which can only be read. "
                                "It will be saved as XML."));
        document.apply({Samples::allTypes(), PlistFormat::xml});
        QVERIFY(!banner->isVisible());
    }

    void bannerTextStandsBack() {
        PlistDocument document;
        DocumentView view(document);
        const auto* label = view.findChild<NoticeStrip*>()->findChild<QLabel*>();
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(label->palette().color(QPalette::WindowText) !=
                view.palette().color(QPalette::WindowText));
        QVERIFY(label->font().pointSizeF() < view.font().pointSizeF());
        // It follows when the desktop turns dark.
        QPalette dark = view.palette();
        dark.setColor(QPalette::WindowText, Qt::white);
        dark.setColor(QPalette::Window, Qt::black);
        view.setPalette(dark);
        QVERIFY(label->palette().color(QPalette::WindowText).lightness() > 128);
    }

    void invitesWhereNothingIs() {
        PlistDocument document;
        DocumentView view(document);
        view.show();
        const auto* empty = view.findChild<EmptyState*>();
        QVERIFY(empty->isVisible());
        QCOMPARE(empty->findChild<QLabel*>()->text(),
                 QStringLiteral("Click ＋ to add the first item."));
        // The table is there all the same, for the keyboard and for what is dropped.
        QVERIFY(view.table().isVisible());
        QVERIFY(empty->testAttribute(Qt::WA_TransparentForMouseEvents));
        QCOMPARE(empty->geometry(), view.table().geometry());
    }

    void invitationGoesWithTheFirstItem() {
        PlistDocument document;
        DocumentView view(document);
        view.show();
        const auto* empty = view.findChild<EmptyState*>();
        const PlistNodePtr item[] = {PlistNode::create("a", PlistValue::integer(1))};
        document.root().insertChildren(item, 0);
        view.outline().rebuild(document.root());
        QVERIFY(!empty->isVisible());
        const std::size_t first[] = {0};
        document.root().removeChildren(first);
        view.outline().rebuild(document.root());
        QVERIFY(empty->isVisible());
    }

    void invitationGoesWithTheFirstItemOfACollapsedRoot() {
        PlistDocument document;
        DocumentView view(document);
        view.show();
        view.outline().setExpanded(document.root(), OutlineState::Expansion::collapse,
                                   OutlineState::Reach::nodeAlone);
        const PlistNodePtr item[] = {PlistNode::create("a", PlistValue::integer(1))};
        document.root().insertChildren(item, 0);
        view.outline().rebuild(document.root());
        QVERIFY(!view.findChild<EmptyState*>()->isVisible());
    }

    void scalarRootsShowTheirRow() {
        PlistDocument document;
        DocumentView view(document);
        view.show();
        document.apply({PlistValue::string("alone"), PlistFormat::xml});
        QVERIFY(!view.findChild<EmptyState*>()->isVisible());
        QCOMPARE(view.table().model()->rowCount(), 1);
    }

    void theToolBarStandsInItsOrder() {
        PlistDocument document;
        DocumentView view(document);
        const DocumentToolBar& bar = *view.toolBar();
        QStringList shown;
        for (QAction* action : bar.actions()) {
            const QWidget* widget = bar.widgetForAction(action);
            if (widget == &bar.formatPicker()) {
                shown += QStringLiteral("picker");
            } else if (widget == &bar.searchField()) {
                shown += QStringLiteral("search");
            } else if (!action->text().isEmpty()) {
                shown += action->text();
            }
        }
        QCOMPARE(shown, QStringList({QStringLiteral("Add Item"), QStringLiteral("Delete"),
                                     QStringLiteral("picker"), QStringLiteral("search")}));
    }

    void pickerAndDocumentAgree() {
        PlistDocument document;
        DocumentView view(document);
        auto* picker = view.toolBar()->findChild<FormatPicker*>();
        QCOMPARE(picker->format(), PlistFormat::xml);
        document.setFormat(PlistFormat::binary);
        QCOMPARE(picker->format(), PlistFormat::binary);
        QTest::mouseClick(picker->findChildren<QToolButton*>().at(0), Qt::LeftButton);
        QCOMPARE(document.format(), PlistFormat::xml);
        document.apply({Samples::allTypes(), PlistFormat::binary});
        QCOMPARE(picker->format(), PlistFormat::binary);
    }

    void showsAnotherRoot() {
        PlistDocument document;
        DocumentView view(document);
        document.apply({Samples::numbers(3), PlistFormat::xml});
        QCOMPARE(view.table().model()->rowCount(), 4);
        document.setRoot(PlistNode::create({}, Samples::numbers(5)));
        QCOMPARE(view.table().model()->rowCount(), 6);
    }

    void explainsWhyNotAllIsExpanded_data() {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("beginning");
        QTest::newRow("English") << QLocale(QLocale::English)
                                 << QStringLiteral("More than 10,000,000 items would appear");
        QTest::newRow("German") << QLocale(QLocale::German)
                                << QStringLiteral("More than 10.000.000 items would appear");
    }

    void explainsWhyNotAllIsExpanded() {
        QFETCH(const QLocale, locale);
        QFETCH(const QString, beginning);
        QLocale::setDefault(locale);
        PlistValue value = PlistValue::array();
        for (int i = 0; i < 40; ++i) {
            value = PlistValue::array({value, value});
        }
        PlistDocument document;
        DocumentView view(document);
        view.show();
        document.apply({value, PlistFormat::binary});
        view.outline().select({document.root().id()});
        QTest::keyClick(&view.table(), Qt::Key_Right, Qt::AltModifier);
        const auto* box = view.window()->findChild<QMessageBox*>();
        QVERIFY(box != nullptr);
        QCOMPARE(box->text(), QStringLiteral("There are too many items to show at once."));
        QVERIFY(box->informativeText().startsWith(beginning));
    }
};

const RegisteredUiTest<DocumentViewTest> registered;
#include "DocumentViewTest.moc"
