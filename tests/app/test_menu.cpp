#include "app/help/chapters.h"
#include "app/help/handbookview.h"
#include "app/help/helppage.h"
#include "app/menu/menutools.h"
#include "app/preferences.h"
#include "app/sheet/sheet.h"
#include "panelfixture.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>

/// The menu of the header: handbook, first setup, support archive, restoring.
class AppMenu : public test::PanelTest {
    Q_OBJECT

    app::HandbookView* handbook() const { return panel_->menu()->help()->view(); }
    bool isOpen(const QString& name) const {
        const auto* const sheet = window()->findChild<app::Sheet*>(name);
        return sheet && sheet->isVisible();
    }
    static void pressF1() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1); }
    QString ticks() const {
        QString all;
        pass(0);  // deletes the menu
        for (const QLabel* sign : find<app::Sheet>("setupSheet")->findChildren<QLabel*>("lblSetupSign")) {
            all += sign->accessibleName() == "done" ? "x" : "o";
        }
        return all;
    }

private slots:
    void init() {
        window()->activateWindow();
        find<QWidget>("btnMenu")->setFocus();
        pass(0);
    }

    void f1_opensTheChapterOfWhatIsSeen() {
        QStringList anchors;
        pressF1();
        for (const QTextBlock& heading : app::headingsOf(*handbook()->document())) {
            anchors << app::anchorOf(heading.text());
        }
        for (const QString& chapter : app::chapters()) {
            QVERIFY2(anchors.contains(chapter), qPrintable(chapter));
        }
        const QPair<const char*, const char*> pages[] = {{"btnPort", "ports"},
                                                         {"btnDeviceControl", "devices-by-hand"},
                                                         {"btnBind", "stations"},
                                                         {"btnProject", "a-program"}};
        for (const auto& [button, chapter] : pages) {
            init();
            click(button);
            pressF1();
            QCOMPARE(handbook()->shownChapter(), chapter);
        }
        init();
        QMessageBox box(window());  // blocks the window
        box.open();
        box.setFocus();
        pass(0);
        QTest::keyClick(&box, Qt::Key_F1);
        QCOMPARE(handbook()->shownChapter(), "what-the-messages-mean");
        docks()->close("help");
    }

    void search_findsEveryPlaceInTurn() {
        panel_->menu()->openHandbook();
        QWidget* const help = panel_->menu()->help();
        auto* const field = test::child<QLineEdit>(help, "edtHelpSearch");
        QList<int> places;
        QTest::keyClicks(field, "Seam passport");
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(field, Qt::Key_Return);
            places << handbook()->textCursor().selectionStart();
        }
        QVERIFY(places[0] > 0 && places.contains(places.takeLast()));  // begins anew
        QVERIFY(!test::child(help, "lblHelpResult")->isVisible());
        QTest::keyClicks(field, "xyzzy\r");
        QVERIFY(test::child(help, "lblHelpResult")->isVisible());
        docks()->close("help");
    }

    void firstSetup_ticksItself() {
        load("lumo.program", "[]");
        load("lumo.param", "[]");
        click("btnMenu");
        click("btnSetup");
        QVERIFY(!isOpen("menuSheet"));
        QCOMPARE(ticks().right(4), "oooo");
        load("lumo.param", "[{'name':'A'}]");
        load("lumo.toolset.end.trans", "[0,0,0.15]");
        load("lumo.program", "[{'type':'moveL','point':{'trans':[0.5,0,0.3]}}]");
        pass(1000);
        QCOMPARE(ticks().right(4), "xxxo");
        click("btnSetupWay0");
        QVERIFY(!isOpen("setupSheet") && find("btnPort")->isChecked());
        pass(0);  // deletes it
        panel_->menu()->offerSetup();
        QVERIFY(isOpen("setupSheet"));
        click("btnSetupForGood");
        panel_->menu()->offerSetup();
        pass(0);
        QVERIFY(!isOpen("setupSheet") && app::Preferences::setupDone());
    }

    void menuDuringARun_startsNothingAnew() {
        load("lumo.program", "[{'type':'delay','delaytime':1000}]");
        robot()->setPower(true);
        QString states;
        run(0, {{300, [&] {
                     click("btnMenu");
                     for (const char* name :
                          {"btnRestoreBackup", "btnLanguage_ru", "btnExample_flange", "btnSupport"}) {
                         states += find(name)->isEnabled() ? "+" : "-";
                     }
                 }}});
        waitUntilIdle();
        QCOMPARE(states, "---+");
        QSignalSpy language(panel_.get(), &app::Panel::languageChosen);
        click("btnLanguage_ru");
        QCOMPARE(language.value(0).value(0).toString(), "ru");
    }
};

LUMO_TEST(AppMenu)
#include "test_menu.moc"
