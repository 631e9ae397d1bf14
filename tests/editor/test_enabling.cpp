#include "editorfixture.h"

/// Which buttons can be pressed when.
class TestEnabling : public EditorTest {
    Q_OBJECT

    /// The letter in capitals when all these buttons are enabled, small when none is, "?" for a mixture.
    QString group(const QString& letter, const QString& names) const {
        const QStringList buttons = names.split(' ');
        int enabled = 0;
        for (const QString& name : buttons) {
            enabled += find(name.toLatin1())->isEnabled() ? 1 : 0;
        }
        return enabled == buttons.size() ? letter.toUpper() : enabled == 0 ? letter : "?";
    }

    /// Statement group, editing group, multi-selection, batch, run tools, pause.
    QString enabled() const {
        return group("s",
                     "btnMoveJ btnMoveL btnMoveCC btnMoveC btnOpenLaser btnClose btnParam btnWaitDI "
                     "btnSetDO btnDelay btnSteptojump") +
               group("e", "btnEdit btnDown btnUp btnCopy btnPaste btnDel anotationBtn") +
               group("m", "multiBtn") + group("b", "speedBtn turningBtn") +
               group("r", "btnStart btnRunOnce btnReset") + group("p", "btnPause");
    }

    void happens(const QString& event) {
        if (event == "on" || event == "off" || event == "lost") {
            bench.robot.setPower(event.toLatin1());
        } else if (event == "project") {
            isEnable_moveorder = true;
            page->refreshMoveOrderEnable(true);
        } else if (event == "multi") {
            act("multiBtn");
        } else {
            m("lumo.execute.state")->setValue(this, event);
        }
    }

private slots:
    void everyEvent_enablesWhatCanBeDoneThen() {
        // Power and whether a project is open at first, then what is enabled, each event with what is then.
        const struct {
            const char* power;
            bool projectOpen;
            const char* course;
        } cases[] = {
            {"off", false, "sEMbrp project SEMbRP"},
            {"on", false, "sembrp project sembRP"},
            {"off", true, "SEMbRP busy sembRP idle SEMbRp"},
            {"on", true, "sembRP busy sembRP idle sembRP"},
            {"off", false, "sEMbrp busy sEMbrP multi sEMBrP"},  // a run without a project can be stopped
            {"off", false, "sEMbrp busy sEMbrP idle sEMbrp"},
            {"off", true, "SEMbRP asleep SEMbRP on sembRP lost sembRP off SEMbRP"},
            {"on", false, "sembrp off sEMbrp multi sEMBrp"},
            {"off", true, "SEMbRP multi seMBRp multi SEMbRP multi seMBRp"},
            {"off", true, "SEMbRP multi seMBRp on sembRp off SEMBRp"},
        };
        for (const auto& [power, projectOpen, course] : cases) {
            reset(projectOpen);
            bench.robot.setPower(power);
            makePage();
            QStringList seen;
            const QStringList expected = QString(course).split(' ');
            for (int i = 0; i < expected.size(); i += 2) {
                if (i > 0) {
                    happens(expected[i - 1]);
                    seen << expected[i - 1];
                }
                seen << enabled();
            }
            QCOMPARE(seen.join(' '), course);
        }
    }

    void disabledButtons_areNotPressedByKeysAndDoubleClicks() {
        reset();
        load("[{'type':'delay','delaytime':1}]");
        bench.robot.setPower("on");
        doubleClickCell(table(), 0, ProgramTable::LineColumn);
        for (const char* name : {"center", "enter", "delete"}) {
            key(name);
        }
        QVERIFY(!shown());
        QCOMPARE(values("type"), QStringList{"delay"});
    }
};

LUMO_TEST(TestEnabling)
#include "test_enabling.moc"
