#include "devices/portconfigwidget.h"
#include "devices/portstate.h"
#include "equipment/handlit.h"
#include "equipment/ports.h"
#include "support/executorbench.h"
#include "support/suite.h"
#include "support/text.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QWheelEvent>

#include <cmath>

using namespace test;

/// The page of the port assignment, operated by mouse and keyboard.
class TestPortConfig : public QObject {
    Q_OBJECT

    ExecutorBench bench_;
    std::unique_ptr<PortConfigWidget> page_;

    static ModuleObject* port(int row) { return m("lumo.port")->c(row); }
    template <class Widget>
    Widget* cell(int row, int column) const {
        return qobject_cast<Widget*>(
            child<QTableWidget>(page_.get(), "tableWidget")->cellWidget(row, column));
    }
    QComboBox* box(int row) const { return cell<QComboBox>(row, 3); }
    QCheckBox* check(int row) const { return cell<QCheckBox>(row, 4); }
    /// The names that a box offers when it is pressed.
    QString offered(int row) const {
        QTest::mousePress(box(row), Qt::LeftButton);
        box(row)->hidePopup();
        return textsOf(box(row)).join(' ');
    }
    void confirm() { click(child(page_.get(), "okayBtn")); }

private slots:
    void init() {
        bench_.reset();
        for (const QString name : {"AO_0", "LUMO_AO_0", "LUMO_AO_1", "LUMO_AO_2", "LUMO_AO_3", "lumo_ao_9"}) {
            kordservice()->dataNode("register.values")->set(this, name + ".#0", 0);
        }
        Q_UNUSED(lumo::takeLitByHand(nullptr));
        page_ = nullptr;
    }

    void box_offersNamesThatNoOtherPortHas() {
        port(0)->set(this, "name", "DI2_0");       // is not offered
        port(17)->set(this, "name", "LUMO_AO_1");  // port 16 has it too, as in a file edited by hand
        page_ = std::make_unique<PortConfigWidget>();
        page_->show();
        const QString from8 = ".#8 %1.#9 %1.#10 %1.#11 %1.#12 %1.#13 %1.#14 %1.#15";
        QCOMPARE(offered(0), QString(" %1.#0 %1.#6 %1.#7 %1" + from8).arg("LUMO_DI"));
        QCOMPARE(offered(14), QString(" %1" + from8).arg("LUMO_DO"));
        QCOMPARE(offered(17), " LUMO_AO_2 lumo_ao_9");
        QCOMPARE(offered(15), " LUMO_AO_0 LUMO_AO_2 lumo_ao_9");
        QTest::keyClick(box(15), Qt::Key_Down);
        QTest::keyClick(box(17), Qt::Key_Down);
        QTest::keyClick(box(18), Qt::Key_Home);
        QCOMPARE(box(15)->currentText() + ' ' + box(17)->currentText(), "LUMO_AO_2 LUMO_AO_0");
        QCOMPARE(box(0)->currentText() + box(18)->currentText(), "");

        QWheelEvent turn(QPointF(9, 9), QPointF(9, 9), QPoint(), QPoint(0, -120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box(1), &turn);
        QVERIFY(!turn.isAccepted() && box(1)->currentText() == "LUMO_DI.#1");  // it scrolls the table
    }

    void ok_storesTheTable_nothingIsWrittenBefore() {
        const QString before = text(m("lumo.port"));
        for (const bool confirmed : {false, true}) {
            page_ = std::make_unique<PortConfigWidget>();
            box(DO_GAS)->setCurrentText("LUMO_DO.#10");
            box(AO_WIRE_SPEED)->setCurrentText("");
            click(check(DO_GAS));
            if (confirmed) {
                confirm();
            }
            QCOMPARE(text(m("lumo.port")) == before, !confirmed);
            QCOMPARE(QFile::exists("lumo_port.json"), confirmed);
        }
        QCOMPARE(boxes(), QStringList("保存成功"));
        const QJsonArray file = json(contentOf("lumo_port.json")).toArray();
        QCOMPARE(file.size(), 19);
        QCOMPARE(text(file[DO_GAS]), "{'enable':false,'name':'LUMO_DO.#10','type':'DO'}");
        QCOMPARE(text(file[AO_WIRE_SPEED]), "{'enable':true,'name':'','type':'AO'}");
        closeBoxes();
        QFile::remove("lumo_port.json");
        QVERIFY(QDir().mkdir("lumo_port.json"));  // nothing can be renamed over a folder
        confirm();
        QCOMPARE(boxes(), QStringList());
        QVERIFY(QDir().rmdir("lumo_port.json"));
    }

    void outputThatIsOn_goesOffBeforeItsPortChanges() {
        const char* const locked = "0 LASER 0, 0 RED 0, 0 LASERLOCK 0";
        const struct {
            const char* what;
            I_PORT port;
            const char* name;
            bool used;
            const char* writes;
        } rows[] = {
            {"laser, elsewhere", DO_LASER_ENABLE, "LUMO_DO.#12", true, "0 LASER 0"},
            {"laser, not used", DO_LASER_ENABLE, "LUMO_DO.#3", false, "0 LASER 0"},
            {"laser, as it was", DO_LASER_ENABLE, "LUMO_DO.#3", true, ""},
            {"wire pullback", DO_WIRE_PULLBACK, "", true, "0 PULL 0"},
            {"power, elsewhere", AO_LASER_POWER, "lumo_ao_9", true, "0 POWER 0"},
            {"frequency, which is off", AO_LASER_FREQUENCY, "", true, ""},
            {"input", DI_LASER_STATE, "LUMO_DI.#12", true, ""},
            {"laser lock, not used", DO_LASER_SAFETY_LOCK, "LUMO_DO.#5", false, locked},
            {"open wire lock of a wire that runs", DO_WIRE_SAFETY_LOCK, "LUMO_DO.#6", false, "0 WIRE 0"},
            {"gas lit so lately that it does not show", DO_GAS_SAFETY_LOCK, "LUMO_DO.#7", false, "0 GAS 0"},
        };
        ModuleObject* const registers = kordservice()->dataNode("register.values");
        for (const auto& row : rows) {
            init();
            for (const int bit : {2, 3, 5, 8}) {
                registers->set(this, QString("LUMO_DO.#%1").arg(bit), true);
            }
            registers->set(this, "LUMO_AO_1.#0", 9)->set(this, "LUMO_DI.#0", true);
            lumo::noteByHand(DO_LASER_ENABLE, true);
            lumo::noteByHand(DO_GAS, row.port == DO_GAS_SAFETY_LOCK);
            page_ = std::make_unique<PortConfigWidget>();
            page_->completeRows();  // one at a time while the laser is on
            box(row.port)->setCurrentText(row.name);
            check(row.port)->setChecked(row.used);
            bench_.robot.mark();
            confirm();
            const QString written = bench_.robot.log().join(", ");
            QVERIFY2(written == row.writes && port(row.port)->c("name")->getString() == row.name, row.what);
            QCOMPARE(lumo::isLitByHand(DO_LASER_ENABLE), !written.contains("0 LASER 0"));
        }
    }

    /// A laser goes off before its lock goes out of use, also during a weld.
    void wireUse_isCopiedToStartsOfWelding_andLaserInAWeldGoesOff() {
        bench_.load(R"([{"type":"open","index":0,"wireEnable":true},{"type":"param","wireEnable":true},
                        {"type":"open","wireEnable":true},{"type":"delay","delaytime":2000},{"type":"close"}])");
        page_ = std::make_unique<PortConfigWidget>();
        QList<QList<int>> reported;
        connect(page_.get(), &PortConfigWidget::signalportconfigchangedProgramlist, this,
                [&reported](const QList<int>& lines) { reported << lines; });
        for (const int switched : {DO_GAS, DO_WIRE_ENABLE, DO_LASER_SAFETY_LOCK}) {
            bench_.at(1500 + switched, [this, switched] {
                check(switched)->setChecked(false);
                confirm();
            });
        }
        bench_.run();
        bench_.waitUntilIdle();
        QCOMPARE(bench_.robot.offSince("LASER"), 1500 + DO_LASER_SAFETY_LOCK);
        QCOMPARE(reported, QList<QList<int>>({{}, {0, 2}, {}}));
        QString uses;
        for (const ModuleObject* const line : m("lumo.program")->cmobjs()) {
            uses += line->c("wireEnable")->getBool() ? 'y' : 'n';
        }
        QCOMPARE(uses, "nynnn");
    }

    /// Not the laser, and nothing that a run, a lock, another port or an unsaved change stands against.
    void test_isOnWhileItIsHeld_andEndsWithEverythingElse() {
        ModuleObject* const registers = kordservice()->dataNode("register.values");
        const auto test = [this](int row) { return cell<QPushButton>(row, 6); };
        const auto hold = [&](int row) { QTest::mousePress(test(row), Qt::LeftButton); };
        const QVector<QPair<const char*, std::function<void()>>> ends = {
            {"lifted", [&] { QTest::mouseRelease(test(DO_GAS), Qt::LeftButton); }},
            {"left",
             [&] {
                 QMouseEvent away(QEvent::MouseMove, QPointF(-50, -50), Qt::NoButton, Qt::LeftButton, {});
                 QApplication::sendEvent(test(DO_GAS), &away);
             }},
            {"page left", [this] { page_->hide(); }},
            {"page deleted", [this] { page_.reset(); }},
            {"lock closed", [&] { registers->set(this, "LUMO_DO.#7", false); }},
            {"power lost", [this] { bench_.robot.setPower("off"); }},
            {"quit", [] { QMetaObject::invokeMethod(qApp, "aboutToQuit"); }},
            {"port switched", [this] { click(check(DO_GAS)); }},
            {"half a minute", [this] { bench_.time.advance(30000); }},
        };
        for (const auto& [what, end] : ends) {
            init();
            registers->set(this, "LUMO_DO.#7", true);  // the lock of the gas is open
            page_ = std::make_unique<PortConfigWidget>();
            page_->show();
            bench_.robot.mark();
            hold(DO_GAS);
            bench_.time.advance(200);
            end();
            bench_.time.advance(200);
            const QString log = bench_.robot.log().join(", ");
            QVERIFY2(log.contains(QRegularExpression("^0 GAS 1, \\d+ GAS 0$")),
                     qPrintable(what + (": " + log)));
            QVERIFY(!lumo::isLitByHand());
        }
        init();
        const struct {
            int row;
            const char* caption;
        } barred[] = {{DO_LASER_ENABLE, "设备控制"},
                      {DO_LASER_SAFETY_LOCK, "设备控制"},
                      {DO_RED_LIGHT, "已锁定"},
                      {DO_WIRE_PULLBACK, "已锁定"},
                      {DO_ALARM, "重复分配"}};
        port(DO_ALARM)->set(this, "name", "LUMO_DO.#3");  // the laser's
        page_ = std::make_unique<PortConfigWidget>();
        page_->show();
        bench_.robot.mark();
        for (const auto& [row, caption] : barred) {
            QCOMPARE(test(row)->text(), caption);
            click(test(row));
        }
        QCOMPARE(cell<lumo::PortState>(DO_ALARM, 5)->findingText(), "重复分配");
        box(DO_GAS_SAFETY_LOCK)->setCurrentText("");
        bench_.time.advance(160);
        QCOMPARE(test(DO_GAS_SAFETY_LOCK)->text(), "未保存");
        bench_.load("delay 500");
        bench_.at(100, [&] { click(test(DO_WIRE_SAFETY_LOCK)); });
        bench_.run();
        QCOMPARE(bench_.robot.log().filter("LOCK 1"), QStringList());
    }

    void writes_nameTheAssignedRegister_andAreClamped() {
        ModuleObject batch;
        port(AO_LASER_POWER)->set(this, "name", "AO.#4");
        setPortAO(this, AO_LASER_POWER, 0.5, &batch);
        for (const char* const name : {"A.b.#7", "DO2_2"}) {
            port(DO_GAS)->set(this, "name", name)->set(this, "enable", true);
            setPortDO(this, DO_GAS, true, &batch);
            port(DO_GAS)->set(this, "enable", "perhaps");  // as in a file edited by hand
            QVERIFY(!setPortDO(this, DO_GAS, true, &batch));
        }
        QCOMPARE(text(&batch),
                 "[{'bias':0,'name':'AO.#4','type':'int16','value':16384},"
                 "{'bias':7,'name':'A','type':'bit','value':1},"
                 "{'bias':0,'name':'DO2_2','type':'bit','value':1}]");
        const QVector<QPair<double, int>> values{{1.0, 32767}, {-0.5, -16383}, {0.07, 2294},
                                                 {3.0, 32767}, {-3.0, -32768}, {std::nan(""), 0}};
        for (const auto& [fraction, value] : values) {
            QCOMPARE(scaledFraction(fraction), value);
        }
    }
};

LUMO_TEST(TestPortConfig)
#include "test_portconfig.moc"
