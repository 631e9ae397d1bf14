// The controller's nodes, registers, results and quirks.

#include "kord/controllermanager.h"
#include "robot.h"
#include "support/suite.h"
#include "support/text.h"

#include <QSignalSpy>

using namespace test;
using mendo::ModuleObject;
using sim::Controller;
using sim::Quirk;

class TestController : public QObject {
    Q_OBJECT
private:
    static QVariantHash record(const char* name, const char* type, const QVariant& value, int bias) {
        return {{"name", name}, {"type", type}, {"value", value}, {"bias", bias}};
    }

private slots:
    void cleanup() { QCOMPARE(sim::VirtualTime::instance()->armedTimers(), 0); }

    void nodes_areFilledAtTheStart() {
        for (const int axes : {7, 6}) {
            Robot robot({axes, axes == 6});
            QCOMPARE(text(robot.posture("trans")) + text(robot.posture("rot")),
                     "[0.5,0,0.4][3.14159265359,0,0]");
            QCOMPARE(robot.posture("near")->size(), axes);
            QCOMPARE(kordservice()->dataNode("sys.info.joint_num")->getInt(), axes);
            QCOMPARE(kordservice()->dataNode("move.default_zone")->getDouble(), 0.002);
            QCOMPARE(m("kord.r.power")->getString() + m("kord.r.mode")->getString(), "onauto");
            QCOMPARE(kordservice()->commandNode("")->hasCmobj("register.write_multi"), axes == 6);
            QVERIFY(m("rova.project.tool._list")->c(1)->r("frame.ori.euler.b")->getDouble() > 0);
            QVERIFY(m("rova.project.wobj._list")->size() > 1);
        }
    }

    void registerList_offersEveryKindAndAgreesWithTheValues() {
        Robot robot;
        QSet<QString> kinds;
        for (const ModuleObject* row : m("rova.robot.register._list")->cmobjs()) {
            const QString name = row->c("name")->getString(), rw = row->c("rw")->getString();
            const ModuleObject* const values = kordservice()->dataNode("register.values")->c(name);
            kinds << row->c("type")->getString() + ' ' + rw;
            QCOMPARE(values->size(), row->c("len")->getInt());
            for (int i = 0; i < values->size() && rw == "rdwr"; ++i)
                robot.write(name, 1, i);
            for (const ModuleObject* value : values->cmobjs())
                QCOMPARE(value->getInt(), rw == "rdwr" ? 1 : 0);
        }
        QVERIFY(kinds.contains(
            {"bit rd", "bit rdwr", "bool rd", "bool rdwr", "int rd", "int rdwr", "int16 rdwr"}));
        // Every change was announced under the name that output() knows.
        QCOMPARE(robot.lines.size(), robot.controller.outputNames().size() - 16);
        for (const QString& name : robot.controller.outputNames())
            QCOMPARE(robot.controller.output(name).toInt(), name.startsWith("DO") ? 0 : 1);
    }

    void write_isThereWhenTheCallReturnsOrIsRejected() {
        const std::vector<std::pair<QVariantHash, const char*>> rows = {
            {record("LUMO_DO", "bit", 1, 3), "LUMO_DO.#3=true"},
            {record("LUMO_DO", "bool", true, 15), "LUMO_DO.#15=true"},
            {record("LUMO_DO", "", 1, 0), "LUMO_DO.#0=true"},
            {record("LUMO_DO", "bit", 0, 3), ""},
            {record("LUMO_AO_1", "int16", 1638, 0), "LUMO_AO_1=1638"},
            {record("LUMO_AO_1", "int16", -32768, 0), "LUMO_AO_1=-32768"},
            {record("PART_COUNT", "int", 70000, 1), "PART_COUNT.#1=70000"},
            {record("DO2_3", "bit", 1, 0), "rejected DO2_3: no such register"},
            {record("", "bit", 1, 0), "rejected : no such register"},
            {record("LUMO_DO", "bit", 1, 16), "rejected LUMO_DO: no element 16, length is 16"},
            {record("LUMO_DO", "bit", 1, -1), "rejected LUMO_DO: no element -1, length is 16"},
            {record("LUMO_DI", "bit", 1, 0), "rejected LUMO_DI: read-only register"},
            {record("LUMO_AO_1", "bit", 1, 0),
             "rejected LUMO_AO_1: type bit does not fit a register of type int16"},
            {record("LUMO_AO_1", "int16", 32768, 0), "rejected LUMO_AO_1: value does not fit type int16"},
            {record("LUMO_DO", "bit", QVariant(), 0), "rejected LUMO_DO: value does not fit type bit"},
        };
        for (const auto& [fields, heard] : rows) {
            const bool rejected = QString(heard).startsWith("rejected");
            const QString path =
                mName("register.values", fields["name"].toString(), mIndex(fields["bias"].toInt()));
            for (int way = 0; way < 4; ++way) {
                Robot robot;
                const QString command = way < 2 ? "register.write" : "register.write_multi";
                connect(&robot.controller, &Controller::outputChanged, this,
                        [&](const QString& name, auto value) {
                            QCOMPARE(kordservice()->dataNode(path)->value(), value);
                            QCOMPARE(robot.controller.output(name), value);
                        });
                ModuleObject list;
                ModuleObject* const node = list.append(this);
                for (auto field = fields.begin(); field != fields.end(); ++field)
                    node->set(this, field.key(), field.value());
                if (way % 2 == 0)
                    kordservice()->command(this, command, way ? &list : node);
                else
                    kordservice()->execCommand(this, command,
                                               way == 1 ? QVariant(fields) : QVariantList{fields});
                QCOMPARE(robot.lines.join('|'), heard[0] ? QString("0 ") + heard : QString());
                QCOMPARE(kordservice()->commandNode(command)->getInt(1), rejected ? -1 : 0);
            }
        }
        // A wrong record is left out of its batch alone.
        Robot robot;
        kordservice()->command(this, "register.write_multi",
                               QVariantList{record("LUMO_AO_1", "", 5, 0), record("LUMO_DO", "", 1, 20),
                                            record("LUMO_DO", "", 1, 3)});
        QCOMPARE(robot.diary(),
                 "0 LUMO_AO_1=5, 0 rejected LUMO_DO: no element 20, length is 16, 0 LUMO_DO.#3=true");
        QCOMPARE(kordservice()->commandNode("register.write_multi")->getInt(), -1);
    }

    void deviceSignals_areSwitchedByNameAndAnnouncedWhenTheyChange() {
        Robot robot;
        for (const char* name : {"DO3", "DO17", "DI3", "LUMO_DO.#3"})
            kordservice()->command(nullptr, "device.io.out.do", QVariantHash{{"name", name}, {"value", 1}});
        kordservice()->command(nullptr, "device.io.out.do", QVariantHash{{"name", "DO4"}});
        for (const char* name : {"DI3", "DI3", "LUMO_DI.#2"})
            QVERIFY(robot.controller.setInput(name, true));
        for (const char* wrong :
             {"DI0", "DI17", "LUMO_DI", "LUMO_DI.#16", "DO1", "LUMO_DO.#1", "PART_NUMBER", ""})
            QVERIFY2(!robot.controller.setInput(wrong, true), wrong);
        QCOMPARE(robot.diary(),
                 "0 DO3=true, 0 rejected DO17: no such output, 0 rejected DI3: no such output, "
                 "0 rejected LUMO_DO.#3: no such output, 0 rejected DO4: value is no switch state, "
                 "0 DI3=true, 0 LUMO_DI.#2=true");
        for (const char* path : {"device.io.DO.DO3", "device.io.DI.DI3", "register.values.LUMO_DI.#2"})
            QVERIFY2(kordservice()->dataNode(path)->getBool(), path);
        QVERIFY(robot.controller.input("LUMO_DI.#2") && !robot.controller.input("LUMO_DI.#3"));
    }

    void pendantKey_keepsTheOthersAndFires() {
        Robot robot;
        ModuleObject* const keys =
            kord::ControllerManager::cmdItemMobj("endtool.keypad.state_change", "notify");
        QStringList reports;
        connect(keys, &ModuleObject::changed, &robot, [&] { reports << text(keys); });
        QVERIFY(robot.controller.reportKey("last", false) && robot.controller.reportKey("enter", false));
        QVERIFY(robot.controller.reportKey("last", true) && !robot.controller.reportKey("up", true));
        const QString report = "{'center':true,'delete':true,'enter':%1,'last':%2,'next':true}";
        QCOMPARE(reports, (QStringList{report.arg("true", "false"), report.arg("false", "false"),
                                       report.arg("false", "true")}));
    }

    void senselessMotion_isAnswered() {
        const std::vector<std::tuple<const char*, QVariant, int>> rows = {
            {"traj.speed", QVariant(), -5}, {"traj.speed", -0.1, -5},
            {"traj.speed", "fast", -5},     {"point.trans.#1", QVariant(), -6},
            {"point.rot.#2", "x", -6},      {"traj.zone", QVariant(), 0},
            {"traj.speed", "0.1", 0}};
        for (const auto& [spoilt, value, code] : rows) {
            Robot robot;
            ModuleObject arguments("tmp");
            arguments.loadJson(this, QJsonObject{{"point", Robot::pose({0.55, 0, 0.4})}});
            arguments.set(this, "traj.speed", 0.1)->set(this, "traj.zone", 0.001)->set(this, spoilt, value);
            kordservice()->command(this, "move.l", &arguments);
            QVERIFY2(robot.go().endsWith(QString("idle, %1 result move.l 1 %2").arg(robot.now()).arg(code)),
                     spoilt);
        }
        for (const char* name : {"move.j", "move.l", "move.c"}) {
            Robot robot;
            robot.order(name);
            QVERIFY(robot.go().endsWith(QString(" result %1 1 -5").arg(name)));
        }
    }

    void powerLoss_brakesAndTheDriveStaysOff() {
        Robot robot;
        QCOMPARE(robot.go(), "");
        robot.write("LUMO_DO", 1, 3);
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.order("move.opr.enough");
        robot.advance(500);
        QVERIFY(!robot.controller.standsStill());
        robot.start();
        robot.controller.setPower(false);
        QVERIFY(!robot.controller.standsStill());
        QCOMPARE(robot.diary(), "0 stopped 1, 50 idle");
        QVERIFY(m("kord.r.power")->getString() == "off" && robot.controller.output("LUMO_DO.#3").toBool());
        robot.line({0.6, 0, 0.4});
        robot.line({0.6, 0, 0.4});
        QCOMPARE(robot.go(), "1 failed 2, 1 dropped 3, 1 result move.l 2 -4");
        robot.controller.setPower(true);
        robot.line({0.7, 0, 0.4});
        robot.order("move.reset");
        robot.line({0.65, 0, 0.4});
        QCOMPARE(robot.go(), "0 moving, 0 started 5, 600 passed 5, 600 idle, 600 result move.l 5 0");
    }

    void result_findsThePostureWrittenAndMayRunAnEventLoop() {
        Robot robot;
        QSignalSpy moved(&robot.controller, &Controller::postureMoved);
        QStringList found;
        connect(kordservice()->commandNode("move.l"), &ModuleObject::changed, &robot, [&] {
            found << m("kord.r.state")->getString() + robot.posture("trans.#0")->getString();
            if (found.size() == 1)
                robot.advance(5000);
        });
        robot.line({0.51, 0, 0.4});
        robot.line({0.52, 0, 0.4});
        robot.line({0.53, 0, 0.4});
        robot.order("move.opr.enough");
        robot.diary();
        QCOMPARE(found.join(' '), "moving0.51 moving0.52 idle0.53");
        QCOMPARE(moved.count(), 44);
    }

    void quirks_misbehaveAsTheyAreCalled() {
        // Three motions of 150 ms each.
        const QHash<QString, QString> rows = {
            {"", "150 1, 300 2, 450 idle, 450 3"},
            {"bunch", "300 1, 300 2, 450 idle, 450 3"},
            {"sync", "450 idle"},
            {"late", "150 1, 300 2, 450 idle, 450 3"},
            {"double", "150 1, 151 1, 300 2, 301 2, 450 idle, 450 3, 451 3"},
            {"wrongKind", "150 c1, 300 c2, 450 idle, 450 c3"},
            {"slowState", "150 1, 300 2, 450 3, 500 idle"},
            {"noResult", "300 2, 450 idle, 450 3"},
            {"failAtEnd", "150 idle, 150 1"}};
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            Robot robot;
            Quirk quirk = Quirk::Bunch;
            QCOMPARE(Controller::quirkFromName(row.key(), &quirk), !row.key().isEmpty());
            if (!row.key().isEmpty())
                robot.controller.setQuirk(quirk, true);
            for (const double x : {0.51, 0.52, 0.53})
                robot.line({x, 0, 0.4});
            QCOMPARE(robot.lines.filter("result").size(), quirk == Quirk::Sync ? 3 : 0);
            robot.go();
            QStringList heard = robot.lines.filter(QRegularExpression("result|idle"));
            heard.replaceInStrings(QRegularExpression("result move\\.(l|(c)) (\\d) -?\\d"), "\\2\\3");
            QCOMPARE(heard.join(", "), row.value());
        }
    }

    void quirksResults_areForgottenAtAStopOrComeThen() {
        for (const bool late : {false, true}) {
            Robot robot;
            robot.controller.setQuirk(late ? Quirk::Late : Quirk::Bunch, true);
            robot.line({0.51, 0, 0.4}, 0.1);
            robot.line({0.7, 0, 0.4}, 0.2);
            robot.line({0.7, 0.1, 0.4}, 0.2);
            robot.order("move.opr.enough");
            robot.advance(650);
            robot.start();
            robot.order("move.stop");
            QCOMPARE(robot.diary(), late ? "0 stopped 2, 0 dropped 3, 50 idle, 300 result move.l 2 0"
                                         : "0 stopped 2, 0 dropped 3, 50 idle");
        }
        Robot robot;
        robot.controller.setQuirk(Quirk::Bunch, true);
        robot.line({0.51, 0, 0.4});
        robot.controller.setQuirk(Quirk::Sync, true);  // the last result has come at once
        robot.line({0.52, 0, 0.4});
        QVERIFY(robot.go().endsWith("300 idle, 300 result move.l 1 0"));
    }

    void failureAtTheEnd_comesAtTheTargetUnlessItIsStopped() {
        for (const bool stopped : {false, true}) {
            Robot robot;
            robot.controller.setQuirk(Quirk::FailAtEnd, true);
            robot.line({0.6, 0, 0.4}, 0.1, 0.03);
            robot.line({0.6, 0.1, 0.4});
            robot.order("move.opr.enough");
            robot.advance(500);
            robot.start();
            if (stopped)
                robot.order("move.stop");
            QCOMPARE(robot.diary(), stopped
                                        ? "0 stopped 1, 0 dropped 2, 25 idle"
                                        : "550 failed 1, 550 dropped 2, 550 idle, 550 result move.l 1 -9");
            QCOMPARE(robot.place() == (Point{0.6, 0, 0.4}), !stopped);
        }
    }
};

LUMO_TEST(TestController)
#include "test_controller.moc"
