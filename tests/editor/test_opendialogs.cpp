#include "editorfixture.h"

/// What happens to the program while a dialog is open: the answer never lands in the wrong line.
class TestOpenDialogs : public EditorTest {
    Q_OBJECT

    void loadThree() {
        load(
            "[{'type':'delay','delaytime':1,'speed':1},{'type':'delay','delaytime':2,'speed':2},"
            "{'type':'delay','delaytime':3,'speed':3}]");
    }

private slots:
    void init() {
        reset();
        loadThree();
    }
    void cleanup() {
        QVERIFY(!shown());
        QVERIFY(!m("lumo.dialog.program")->value().isValid());
        QVERIFY(!m("lumo.dialog.statement")->value().isValid());
    }

    void programChangesBelowADialog_answerGoesToItsStatement() {
        const struct {
            const char* opens;
            std::function<void()> change;
            const char *delays, *speeds;
        } cases[] = {
            {"1 btnEdit", [this] { program()->remove(this, "#1"); }, "1 3", "1 3"},
            {"1 btnEdit", [this] { program()->reorder(this, 1, 2); }, "1 3 99", "1 3 2"},
            {"1 btnEdit", [this] { program()->remove(this, "#0"); }, "99 3", "2 3"},
            {"1 btnEdit", [this] { loadThree(); }, "1 2 3", "1 2 3"},
            {"2 btnDelay", [this] { program()->remove(this, "#0"); }, "2 3 99", "2 3 "},
            {"2 btnDelay", [this] { load("[]"); }, "99", ""},
            {"multiBtn 0 1 speedBtn", [this] { program()->remove(this, "#0"); }, "2 3", "99 3"},
            {"multiBtn 0 1 speedBtn", [this] { program()->reorder(this, 1, 2); }, "1 3 2", "99 3 99"},
            {"multiBtn 0 1 speedBtn", [this] { loadThree(); }, "1 2 3", "1 2 3"},
        };
        for (const auto& [opens, change, delays, speeds] : cases) {
            init();
            act(opens);
            change();
            type("99");
            answer(true);
            QCOMPARE(values("delaytime").join(' '), delays);
            QCOMPARE(values("speed").join(' '), speeds);
            QVERIFY(tableTellsTheTruth());
        }
    }

    void stationRunsBelowADialog_neitherHoldsUpTheOther() {
        m("lumo")
            ->append(this, "signalbind_program")
            ->loadJson(this, json("[{'type':'delay','delaytime':1000}]"));
        bench.robot.setPower("on");
        find("btnDelay")->setEnabled(true);
        act("2 btnDelay");
        at(300, [this] {
            QCOMPARE(bench.state(), "busy");
            type("99");
            answer(true);
        });
        bench.run(0, 1);
        QCOMPARE(bench.robot.nowMs(), qint64(1000));
        QCOMPARE(values("delaytime").join(' '), "1 2 3 99");
    }

    void dialogThatIsGivenUpOrGoesAway_changesNothing() {
        const auto open = [this](const char* button) {
            act("1");
            find(button)->setEnabled(true);
            act(button);
            const QPointer<QDialog> first = shown();
            for (const char* other : {"btnSetDO", "speedBtn", "btnEdit"}) {
                find<QPushButton>(other)->click();  // one is open at a time
            }
            return shown() == first ? first : nullptr;
        };
        for (const char* button :
             {"btnSetDO", "btnWaitDI", "btnDelay", "btnOpenLaser", "btnEdit", "speedBtn", "turningBtn"}) {
            QPointer<QDialog> dialog = open(button);
            QVERIFY2(dialog, button);
            QTest::keyClick(dialog, Qt::Key_Escape);
            bench.time.advance(0);
            QVERIFY2(!dialog, button);
            delete open(button);
            QVERIFY(!m("lumo.dialog.program")->value().isValid());
            dialog = open(button);
            QVERIFY2(dialog, button);
            page.reset();
            QVERIFY2(!dialog, button);
            QCOMPARE(values("delaytime").join(' '), "1 2 3");
            makePage();
        }
    }
};

LUMO_TEST(TestOpenDialogs)
#include "test_opendialogs.moc"
