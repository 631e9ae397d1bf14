#include "editorfixture.h"

#include "module/globals.h"

/// Which buttons can be pressed when.
class TestEnabling : public QObject {
    Q_OBJECT

    EditorFixture editor_;

    /// "S" when all these buttons are enabled, "s" when none is, "?" for a mixture.
    QString group(char letter, const QStringList& names) const {
        int enabled = 0;
        for (const QString& name : names) {
            enabled += editor_.find(name.toLatin1().constData())->isEnabled() ? 1 : 0;
        }
        const QChar sign = QLatin1Char(letter);
        return enabled == names.size() ? QString(sign.toUpper())
               : enabled == 0          ? QString(sign)
                                       : QString("?");
    }

    /// Statement group, editing group, multi-selection, batch, run tools, pause.
    QString enabled() const {
        return group('s', {"btnMoveJ", "btnMoveL", "btnMoveCC", "btnMoveC", "btnOpenLaser", "btnClose",
                           "btnParam", "btnWaitDI", "btnSetDO", "btnDelay", "btnSteptojump"}) +
               group('e', {"btnEdit", "btnDown", "btnUp", "btnCopy", "btnPaste", "btnDel", "anotationBtn"}) +
               group('m', {"multiBtn"}) + group('b', {"speedBtn", "turningBtn"}) +
               group('r', {"btnStart", "btnRunOnce", "btnReset"}) + group('p', {"btnPause"});
    }

    void happens(const QString& event) {
        if (event == "on" || event == "off" || event == "lost") {
            editor_.bench.robot.setPower(event.toLatin1().constData());
        } else if (event == "busy" || event == "idle" || event == "asleep") {
            m("lumo.execute.state")->setValue(this, event);
        } else if (event == "project") {
            isEnable_moveorder = true;
            editor_.page->refreshMoveOrderEnable(true);
        } else {
            QCOMPARE(event, QString("multi"));
            editor_.click("multiBtn");
        }
    }

private slots:
    void rules_data() {
        QTest::addColumn<QString>("power");
        QTest::addColumn<bool>("projectOpen");
        QTest::addColumn<QStringList>("events");
        QTest::addColumn<QString>("expected");
        using Events = QStringList;
        QTest::newRow("at first") << "off" << false << Events() << "sEMbrp";
        QTest::newRow("at first, power on") << "on" << false << Events() << "sembrp";
        QTest::newRow("project open before") << "off" << true << Events() << "SEMbRP";
        QTest::newRow("project open before, power on") << "on" << true << Events() << "sembRP";
        QTest::newRow("project is opened") << "off" << false << Events{"project"} << "SEMbRP";
        QTest::newRow("project is opened, power on") << "on" << false << Events{"project"} << "sembRP";
        QTest::newRow("a run without a project can be stopped")
            << "off" << false << Events{"busy"} << "sEMbrP";
        QTest::newRow("also in multi-selection") << "off" << false << Events{"busy", "multi"} << "sEMBrP";
        QTest::newRow("a run without a project is over")
            << "off" << false << Events{"busy", "idle"} << "sEMbrp";
        QTest::newRow("running") << "off" << true << Events{"busy"} << "sembRP";
        QTest::newRow("run over, power off") << "off" << true << Events{"busy", "idle"} << "SEMbRp";
        QTest::newRow("run over, power on") << "on" << true << Events{"busy", "idle"} << "sembRP";
        QTest::newRow("an unknown state changes nothing") << "off" << true << Events{"asleep"} << "SEMbRP";
        QTest::newRow("power comes") << "off" << true << Events{"on"} << "sembRP";
        QTest::newRow("power goes") << "on" << true << Events{"off"} << "SEMbRP";
        QTest::newRow("power goes, no project") << "on" << false << Events{"off"} << "sEMbrp";
        QTest::newRow("an unknown power changes nothing") << "on" << true << Events{"lost"} << "sembRP";
        QTest::newRow("multi-selection") << "off" << true << Events{"multi"} << "seMBRp";
        QTest::newRow("single selection again") << "off" << true << Events{"multi", "multi"} << "SEMbRP";
        QTest::newRow("power comes in multi-selection") << "off" << true << Events{"multi", "on"} << "sembRp";
        QTest::newRow("power goes in multi-selection")
            << "off" << true << Events{"multi", "on", "off"} << "SEMBRp";
        QTest::newRow("multi-selection without a project") << "off" << false << Events{"multi"} << "sEMBrp";
    }

    void rules() {
        QFETCH(QString, power);
        QFETCH(bool, projectOpen);
        QFETCH(QStringList, events);
        editor_.reset(projectOpen);
        editor_.bench.robot.setPower(power.toLatin1().constData());
        editor_.makePage();
        for (const QString& event : events) {
            happens(event);
        }
        QTEST(enabled(), "expected");
    }

    void buttonsOfDialogs_areNotTouched() {
        editor_.reset();
        editor_.click("btnDelay");
        m("lumo.execute.state")->setValue(this, "busy");
        const auto buttons = EditorFixture::dialog()->findChildren<QPushButton*>();
        QVERIFY(!buttons.isEmpty());
        QVERIFY(std::all_of(buttons.begin(), buttons.end(),
                            [](QPushButton* button) { return button->isEnabled(); }));
        m("lumo.execute.state")->setValue(this, "idle");
    }

    void disabledButtons_areNotClickedByKeysAndDoubleClicks() {
        editor_.reset();
        editor_.load(R"([{"type":"delay","delaytime":1}])");
        editor_.bench.robot.setPower("on");
        editor_.doubleClick(0);
        editor_.key("center");
        QVERIFY(!EditorFixture::dialog());
        editor_.key("enter");
        editor_.key("delete");
        QCOMPARE(EditorFixture::types(), QStringList{"delay"});
    }
};

LUMO_TEST_MAIN(TestEnabling)
#include "test_enabling.moc"
