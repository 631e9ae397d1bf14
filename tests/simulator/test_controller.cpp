#include "controllerfixture.h"
#include "kord/controllermanager.h"
#include "virtualmain.h"

using mendo::ModuleObject;
using sim::Controller;

class TestController : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QCOMPARE(sim::VirtualTime::instance()->armedTimers(), 0); }

    // --- Data ---

    void dataNodes_areFilled_data() {
        QTest::addColumn<int>("axes");
        QTest::newRow("six axes") << 6;
        QTest::newRow("seven axes") << 7;
    }
    void dataNodes_areFilled() {
        QFETCH(int, axes);
        ControllerFixture robot({axes, true});
        KordService* service = kordservice();
        QCOMPARE(service->get(nullptr, QStringLiteral("sys.info"), QStringLiteral("joint_num"))->getInt(),
                 axes);
        QCOMPARE(robot.posture(QStringLiteral("near"))->size(), axes);
        QCOMPARE(robot.posture(QStringLiteral("trans.#0"))->getDouble(), 0.5);
        QCOMPARE(robot.posture(QStringLiteral("trans.#1"))->getDouble(-1), 0.0);
        QCOMPARE(robot.posture(QStringLiteral("trans.#2"))->getDouble(), 0.4);
        QCOMPARE(robot.posture(QStringLiteral("rot.#0"))->getDouble(), 3.14159265359);
        QCOMPARE(service->get(nullptr, QStringLiteral("move.default_zone"))->getDouble(), 0.002);
        QCOMPARE(m(QStringLiteral("kord.r.power"))->getString(), QStringLiteral("on"));
        QCOMPARE(m(QStringLiteral("kord.r.mode"))->getString(), QStringLiteral("auto"));
        QCOMPARE(robot.state(), QStringLiteral("idle"));
        for (const char* group : {"DI", "DO"}) {
            const ModuleObject* list =
                service->get(nullptr, QStringLiteral("device.io"), QLatin1String(group));
            QCOMPARE(list->size(), 16);
            QCOMPARE(list->c(0)->name(), QLatin1String(group) + QLatin1String("1"));
            QCOMPARE(list->c(15)->name(), QLatin1String(group) + QLatin1String("16"));
        }
        const ModuleObject* values = service->dataNode(QStringLiteral("register.values"));
        QCOMPARE(values->c(QStringLiteral("LUMO_DI"))->size(), 16);
        QVERIFY(values->c(QStringLiteral("LUMO_DO"))->isList());
        for (int i = 0; i < 8; ++i)
            QCOMPARE(values->r(QStringLiteral("LUMO_AO_%1.#0").arg(i))->value(), QVariant(0));
        const ModuleObject* tool = m(QStringLiteral("rova.project.tool._list"))->c(1);
        QVERIFY(tool->r(QStringLiteral("frame.ori.euler.b"))->getDouble() > 0);
        QVERIFY(tool->r(QStringLiteral("load.moment.#2"))->getDouble() > 0);
        QVERIFY(m(QStringLiteral("rova.project.wobj._list"))->size() > 1);
    }

    void registerList_offersEveryKindAndAgreesWithTheValues() {
        ControllerFixture robot;
        QSet<QString> kinds;
        for (const ModuleObject* row : m(QStringLiteral("rova.robot.register._list"))->cmobjs()) {
            const QString name = row->c(QStringLiteral("name"))->getString();
            const QString rw = row->c(QStringLiteral("rw"))->getString();
            const int length = row->c(QStringLiteral("len"))->getInt();
            kinds << row->c(QStringLiteral("type"))->getString() + QLatin1Char(' ') + rw;
            const ModuleObject* values =
                kordservice()->dataNode(mName(QStringLiteral("register.values"), name));
            QCOMPARE(values->size(), length);
            for (int i = 0; i < length && rw == QLatin1String("rdwr"); ++i)
                robot.writeRegister(name, QString(), 1, i);
            for (int i = 0; i < length; ++i)
                QCOMPARE(values->c(i)->getInt(), rw == QLatin1String("rdwr") ? 1 : 0);
        }
        for (const char* kind : {"bit rd", "bit rdwr", "bool rd", "bool rdwr", "int rd", "int rdwr"})
            QVERIFY2(kinds.contains(QLatin1String(kind)), kind);
        QCOMPARE(robot.lines.filter(QStringLiteral("rejected")), QStringList());
        // Every change was announced under the name that output() knows.
        QCOMPARE(robot.lines.size(), robot.controller.outputNames().size() - 16);
        for (const QString& name : robot.controller.outputNames())
            QCOMPARE(robot.controller.output(name).toInt(), name.startsWith(QLatin1String("DO")) ? 0 : 1);
    }

    void writeMulti_isOfferedOrNot() {
        const QString name = QStringLiteral("register.write_multi");
        {
            ControllerFixture robot({6, false});
            QVERIFY(!kordservice()->commandNode(QString())->hasCmobj(name));
        }
        ControllerFixture robot({6, true});
        QVERIFY(kordservice()->commandNode(QString())->hasCmobj(name));
    }

    // --- Registers and outputs ---

    void registerWrite_isThereWhenTheCallReturns_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("bias");
        QTest::addColumn<QString>("heard");
        QTest::newRow("bit on") << "LUMO_DO"
                                << "bit" << QVariant(1) << 3 << "0 LUMO_DO.#3=true";
        QTest::newRow("bit by bool") << "LUMO_DO"
                                     << "bool" << QVariant(true) << 15 << "0 LUMO_DO.#15=true";
        QTest::newRow("type left out") << "LUMO_DO"
                                       << "" << QVariant(1) << 0 << "0 LUMO_DO.#0=true";
        QTest::newRow("nothing new") << "LUMO_DO"
                                     << "bit" << QVariant(0) << 3 << "";
        QTest::newRow("analogue") << "LUMO_AO_1"
                                  << "int16" << QVariant(1638) << 0 << "0 LUMO_AO_1=1638";
        QTest::newRow("negative") << "LUMO_AO_1"
                                  << "int16" << QVariant(-32768) << 0 << "0 LUMO_AO_1=-32768";
        QTest::newRow("second element") << "PART_COUNT"
                                        << "int" << QVariant(70000) << 1 << "0 PART_COUNT.#1=70000";
        QTest::newRow("unknown") << "DO2_3"
                                 << "bit" << QVariant(1) << 0 << "0 rejected DO2_3: no such register";
        QTest::newRow("no name") << ""
                                 << "bit" << QVariant(1) << 0 << "0 rejected : no such register";
        QTest::newRow("bias beyond") << "LUMO_DO"
                                     << "bit" << QVariant(1) << 16
                                     << "0 rejected LUMO_DO: no element 16, length is 16";
        QTest::newRow("bias below") << "LUMO_DO"
                                    << "bit" << QVariant(1) << -1
                                    << "0 rejected LUMO_DO: no element -1, length is 16";
        QTest::newRow("an input") << "LUMO_DI"
                                  << "bit" << QVariant(1) << 0 << "0 rejected LUMO_DI: read-only register";
        QTest::newRow("bit into analogue")
            << "LUMO_AO_1"
            << "bit" << QVariant(1) << 0
            << "0 rejected LUMO_AO_1: type bit does not fit a register of type int16";
        QTest::newRow("too large") << "LUMO_AO_1"
                                   << "int16" << QVariant(32768) << 0
                                   << "0 rejected LUMO_AO_1: value does not fit type int16";
        QTest::newRow("no value") << "LUMO_DO"
                                  << "bit" << QVariant() << 0
                                  << "0 rejected LUMO_DO: value does not fit type bit";
    }
    void registerWrite_isThereWhenTheCallReturns() {
        QFETCH(QString, name);
        QFETCH(QString, type);
        QFETCH(QVariant, value);
        QFETCH(int, bias);
        QFETCH(QString, heard);
        const bool rejected = heard.contains(QLatin1String("rejected"));
        ModuleObject* shown =
            kordservice()->dataNode(QStringLiteral("register.values.%1.#%2").arg(name).arg(bias));
        for (const bool byNode : {false, true}) {
            ControllerFixture robot;
            if (byNode) {
                ModuleObject record;
                record.set(this, QStringLiteral("name"), name)->set(this, QStringLiteral("type"), type);
                record.set(this, QStringLiteral("value"), value)->set(this, QStringLiteral("bias"), bias);
                kordservice()->command(this, QStringLiteral("register.write"), &record);
            } else {
                robot.writeRegister(name, type, value, bias);
            }
            QCOMPARE(robot.lines.join(QLatin1Char('|')), heard);
            if (!rejected)
                QCOMPARE(shown->getInt(-1), value.toInt());
            QCOMPARE(kordservice()->commandNode(QStringLiteral("register.write"))->getInt(1),
                     rejected ? -1 : 0);
        }
    }

    void registerIsUpdated_beforeTheChangeIsAnnounced() {
        ControllerFixture robot;
        bool seen = false;
        connect(&robot.controller, &Controller::outputChanged, this, [&](const QString& name) {
            seen = kordservice()->dataNode(QStringLiteral("register.values.LUMO_DO.#2"))->getBool() &&
                   robot.controller.output(name).toBool();
        });
        robot.writeRegister(QStringLiteral("LUMO_DO"), QStringLiteral("bit"), 1, 2);
        QVERIFY(seen);
    }

    void batch_isWrittenInItsOrder_aWrongRecordAlone_data() {
        QTest::addColumn<bool>("byNode");
        QTest::newRow("node") << true;
        QTest::newRow("list") << false;
    }
    void batch_isWrittenInItsOrder_aWrongRecordAlone() {
        QFETCH(bool, byNode);
        ControllerFixture robot;
        const QVariantList records = {
            ControllerFixture::record(QStringLiteral("LUMO_AO_1"), QStringLiteral("int16"), 5, 0),
            ControllerFixture::record(QStringLiteral("LUMO_DO"), QStringLiteral("bit"), 1, 20),
            ControllerFixture::record(QStringLiteral("LUMO_DO"), QStringLiteral("bit"), 1, 3)};
        if (byNode) {
            ModuleObject batch;
            for (const QVariant& record : records) {
                ModuleObject* row = batch.append(this);
                const QVariantHash fields = record.toHash();
                for (auto field = fields.begin(); field != fields.end(); ++field)
                    row->set(this, field.key(), field.value(), true);
            }
            kordservice()->command(this, QStringLiteral("register.write_multi"), &batch);
        } else {
            kordservice()->command(this, QStringLiteral("register.write_multi"), records);
        }
        QCOMPARE(robot.diary(),
                 QStringLiteral("0 LUMO_AO_1=5, 0 rejected LUMO_DO: no element 20, length is 16, "
                                "0 LUMO_DO.#3=true"));
    }

    void deviceOutputs_areSwitchedByName_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("heard");
        QTest::newRow("known") << "DO3"
                               << "0 DO3=true";
        QTest::newRow("unknown") << "DO17"
                                 << "0 rejected DO17: no such output";
        QTest::newRow("an input") << "DI3"
                                  << "0 rejected DI3: no such output";
        QTest::newRow("a register") << "LUMO_DO.#3"
                                    << "0 rejected LUMO_DO.#3: no such output";
    }
    void deviceOutputs_areSwitchedByName() {
        QFETCH(QString, name);
        QFETCH(QString, heard);
        ControllerFixture robot;
        kordservice()->command(nullptr, QStringLiteral("device.io.out.do"),
                               QVariantHash{{QStringLiteral("name"), name}, {QStringLiteral("value"), 1}});
        QCOMPARE(robot.diary(), heard);
        QCOMPARE(
            kordservice()->get(nullptr, QStringLiteral("device.io"), QStringLiteral("DO.DO3"))->getBool(),
            name == QLatin1String("DO3"));
    }

    void inputs_areSetByNameAndAnnouncedWhenTheyChange() {
        ControllerFixture robot;
        QVERIFY(robot.controller.setInput(QStringLiteral("DI3"), true));
        QVERIFY(robot.controller.setInput(QStringLiteral("DI3"), true));
        QVERIFY(robot.controller.setInput(QStringLiteral("LUMO_DI.#2"), true));
        for (const char* wrong :
             {"DI0", "DI17", "LUMO_DI", "LUMO_DI.#16", "DO1", "LUMO_DO.#1", "PART_NUMBER", ""})
            QVERIFY2(!robot.controller.setInput(QLatin1String(wrong), true), wrong);
        QCOMPARE(robot.diary(), QStringLiteral("0 DI3=true, 0 LUMO_DI.#2=true"));
        QVERIFY(
            kordservice()->get(nullptr, QStringLiteral("device.io"), QStringLiteral("DI.DI3"))->getBool());
        QVERIFY(kordservice()->dataNode(QStringLiteral("register.values.LUMO_DI.#2"))->getBool());
        QVERIFY(robot.controller.input(QStringLiteral("LUMO_DI.#2")));
        QVERIFY(!robot.controller.input(QStringLiteral("LUMO_DI.#3")));
    }

    void pendantKey_keepsTheOthersAndFires() {
        ControllerFixture robot;
        ModuleObject* keys = kord::ControllerManager::cmdItemMobj(
            QStringLiteral("endtool.keypad.state_change"), QStringLiteral("notify"));
        QStringList reports;
        const auto listening = connect(keys, &ModuleObject::changed, this, [&] {
            QString report;
            for (const ModuleObject* key : keys->cmobjs())
                report += QLatin1Char(key->getBool() ? 'r' : 'P');
            reports << report;
        });
        QVERIFY(robot.controller.reportKey(QStringLiteral("last"), false));
        QVERIFY(robot.controller.reportKey(QStringLiteral("enter"), false));
        QVERIFY(robot.controller.reportKey(QStringLiteral("last"), true));
        QVERIFY(!robot.controller.reportKey(QStringLiteral("up"), true));
        QCOMPARE(reports,
                 (QStringList{QStringLiteral("rPrrr"), QStringLiteral("rPrPr"), QStringLiteral("rrrPr")}));
        disconnect(listening);
        robot.controller.reportKey(QStringLiteral("enter"), true);
    }
};

VIRTUAL_TIME_MAIN(TestController)
#include "test_controller.moc"
