// Registers, inputs and outputs of a controller and of a device beside it.

#include "fakes.h"
#include "support/suite.h"

using namespace test;
using Row = bridge::SignalRow;

class TestSignals : public QObject {
    Q_OBJECT
private:
    static QVariant shown(const char* path) { return kordservice()->dataNode(path)->value(); }

private slots:
    void aWrite_isShownAtOnceAndAnsweredWithTheDevice() {
        Cell cell;
        cell.controller.port.answersAtOnce = false;
        cell.write("LUMO_DO", 1, 1);
        cell.write("LUMO_DO", 1, 0);
        QCOMPARE(shown("register.values.LUMO_DO.#1"), QVariant(false));
        QCOMPARE(cell.controller.port.takeWritten(), QStringList({"LUMO_DO#1=1", "LUMO_DO#1=0"}));
        QCOMPARE(cell.take(), QString());
        QVERIFY(!cell.adapter.standsStill());
        cell.controller.port.answer(true);
        // The device tells a value that was overtaken: the later order is still on its way.
        emit cell.controller.port.changed(Row::Kind::Register, "LUMO_DO", 1, 1);
        QCOMPARE(shown("register.values.LUMO_DO.#1"), QVariant(false));
        cell.controller.port.answer(true);
        QCOMPARE(cell.take(), "register.write 0, register.write 0");
        QVERIFY(cell.adapter.standsStill());
    }

    void aRefusedWrite_fallsBackToWhatTheDeviceHas() {
        Cell cell;
        cell.write("LUMO_AO_1", 0, 100);
        cell.controller.port.answersAtOnce = false;
        cell.write("LUMO_AO_1", 0, 200);
        QCOMPARE(cell.adapter.output("LUMO_AO_1"), QVariant(200));
        cell.take();
        cell.controller.port.answer(false);
        QCOMPARE(cell.adapter.output("LUMO_AO_1"), QVariant(100));
        QCOMPARE(cell.take(), "rejected LUMO_AO_1: the device did not accept the write, register.write -1");
    }

    void aBatch_goesTogetherWithoutItsWrongRecords() {
        Cell cell;
        const auto record = [](const char* name, int bias, int value) {
            return QVariantHash{{"name", name}, {"bias", bias}, {"value", value}};
        };
        kordservice()->command(this, "register.write_multi",
                               QVariantList{record("LUMO_DO", 0, 1), record("LUMO_DO", 9, 1),
                                            record("LUMO_AO_1", 0, 7), record("LUMO_DO", 0, 0)});
        QCOMPARE(cell.controller.port.takeWritten(), QStringList("LUMO_DO#0=1 LUMO_AO_1#0=7 LUMO_DO#0=0"));
        QCOMPARE(cell.take(), "rejected LUMO_DO: no element 9, length is 4, register.write_multi -1");
    }

    void aDevice_hasItsNames_andOneAnswerComesWhenAllHaveAnswered() {
        FakePort device({{Row::Kind::Register, "LUMO_DO", "bit", true, 2}});
        Cell cell(true, &device);
        emit device.linkChanged(true, {});
        device.answersAtOnce = false;
        cell.take();
        kordservice()->command(this, "register.write_multi",
                               QVariantList{QVariantHash{{"name", "LUMO_DO"}, {"bias", 1}, {"value", 1}},
                                            QVariantHash{{"name", "LUMO_AO_1"}, {"bias", 0}, {"value", 3}}});
        QCOMPARE(device.takeWritten(), QStringList("LUMO_DO#1=1"));
        QCOMPARE(cell.controller.port.takeWritten(), QStringList("LUMO_AO_1#0=3"));
        QCOMPARE(cell.take(), QString());
        // The controller's own register of that name is nobody's.
        emit cell.controller.port.changed(Row::Kind::Register, "LUMO_DO", 0, 1);
        QCOMPARE(shown("register.values.LUMO_DO.#0"), QVariant(false));
        // Lost before its answer: it counts as refused.
        emit device.linkChanged(false, QString("cable"));
        QVERIFY(
            cell.take().startsWith("rejected LUMO_DO.#1: the device did not accept the write, "
                                   "register.write_multi -1"));
        QCOMPARE(shown("register.values.LUMO_DO.#1"), QVariant(false));
        device.answer(true);  // late
        QCOMPARE(shown("register.values.LUMO_DO.#1"), QVariant(false));
    }

    void inputs_areShownByTheirNames() {
        Cell cell;
        QStringList told;
        connect(&cell.adapter, &bridge::Adapter::inputChanged, this,
                [&](const QString& name, bool on) { told << name + (on ? "+" : "-"); });
        for (const int value : {1, 1, 0}) {
            emit cell.controller.port.changed(Row::Kind::Register, "LUMO_DI", 2, value);
        }
        QCOMPARE(told, QStringList({"LUMO_DI.#2+", "LUMO_DI.#2-"}));
        QCOMPARE(cell.adapter.inputNames(),
                 QStringList({"LUMO_DI.#0", "LUMO_DI.#1", "LUMO_DI.#2", "LUMO_DI.#3"}));
        kordservice()->command(nullptr, "device.io.out.do", QVariantHash{{"name", "DO1"}, {"value", 1}});
        QCOMPARE(cell.controller.port.takeWritten(), QStringList("DO1#0=1"));
        QCOMPARE(shown("device.io.DO.DO1"), QVariant(true));
    }
};

LUMO_TEST(TestSignals)
#include "test_signals.moc"
