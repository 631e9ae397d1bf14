// What a map says, what is wrong with one, and which telegrams its elements make.

#include "bridge/modbus/modbusplan.h"
#include "support/suite.h"

using bridge::ModbusMap;

class MapTest : public QObject {
    Q_OBJECT
private slots:
    void exampleIsRead();
    void faultsAreToldWithTheirPlace_data();
    void faultsAreToldWithTheirPlace();
    void valuesAreScaledAndSigned();
    void writesJoinOnlyWhereTheOrderIsKept();
    void inputsAreReadInFewTelegrams();
};

// Null unless the program is built with LeakSanitizer.
extern "C" {
[[gnu::weak]] void __lsan_disable();
[[gnu::weak]] void __lsan_enable();
}

namespace {

/// Qt 5.15 leaks the first of two objects that have one name in a document.
std::optional<mendo::JsonText> parsed(const QByteArray& text, mendo::FileProblem* problem) {
    if (__lsan_disable) {
        __lsan_disable();
    }
    std::optional<mendo::JsonText> json = mendo::JsonText::parse(text, problem);
    if (__lsan_enable) {
        __lsan_enable();
    }
    return json;
}

std::optional<ModbusMap> mapOf(const QByteArray& text, mendo::FileProblem* problem) {
    const std::optional<mendo::JsonText> json = parsed(text, problem);
    return json ? ModbusMap::from(*json, problem) : std::nullopt;
}

ModbusMap mapOf(const QByteArray& entries) {
    mendo::FileProblem problem;
    return mapOf("{\"host\": \"h\", " + entries + "}", &problem).value_or(ModbusMap());
}

QString textOf(const QModbusDataUnit& unit) {
    static const char* const names[] = {"", "discrete", "coil", "input", "holding"};
    QStringList words{QLatin1String(names[unit.registerType()]), QString::number(unit.startAddress())};
    for (const quint16 value : unit.values()) {
        words << QString::number(qint16(value));
    }
    return words.join(QLatin1Char(' '));
}

}  // namespace

void MapTest::exampleIsRead() {
    mendo::FileProblem problem;
    const std::optional<ModbusMap> map = ModbusMap::read(QStringLiteral(MODBUS_MAP), &problem);
    QVERIFY2(map, qPrintable(problem.text()));
    QCOMPARE(map->rows.size(), 9 + 8 + 8);
    QCOMPARE(map->rows[1].name, "LUMO_DO");
    QVERIFY(map->rows[1].writable && map->rows[1].type == "bit" && map->rows[1].length == 16);
    QVERIFY(!map->rows[8].writable && map->rows[8].type == "int16");
    QCOMPARE(map->rows[10].name, "DI2");
    QCOMPARE(map->elements.back().label(), "DO8");
    QCOMPARE(map->elements.back().address, 23);
    QCOMPARE(map->heartbeat->periodMs, 50);
}

void MapTest::faultsAreToldWithTheirPlace_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("told");
    const auto row = [](const char* text, const char* told) {
        QTest::newRow(text) << QByteArray(text) << told;
    };
    row("[]", "1:1 this is no record");
    row("{}", "1:1 'host' is missing");
    row("{\"host\": \"h\",\n \"prot\": 5}", "2:10 'prot' is not known here");
    row("{\"host\": \"h\", \"port\": 0}", "1:23 'port' is no whole number from 1 to 65535");
    row("{\"host\": \"h\", \"unit\": 1.5}", "1:23 'unit' is no whole number from 0 to 255");
    row("{\"host\": \"h\", \"heartbeat\": {\"address\": 1}}", "1:28 'period_ms' is missing");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"address\": 1}}}", "1:34 'table' is missing");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"table\": \"coils\"}}}",
        "1:44 'table' is none of coil, discrete_input, holding_register, input_register");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"table\": \"coil\", \"address\": 1, \"bit\": 2}}}",
        "1:73 'bit' is for registers of the device only");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"table\": \"coil\", \"address\": 65530, \"length\": 8}}}",
        "1:80 the addresses end at 65535");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"table\": \"input_register\", \"address\": 1, "
        "\"direction\": "
        "\"out\"}}}",
        "1:89 a device's input_register cannot be written");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"table\": \"coil\", \"address\": 1},\n\"A\": {\"table\": "
        "\"coil\", "
        "\"address\": 2}}}",
        "2:6 'registers.A' is there twice");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"table\": \"coil\", \"address\": 1, \"length\": "
        "3},\n\"B\": "
        "{\"table\": \"coil\", \"address\": 3}}}",
        "2:6 A.#2 and B.#0 are written to the same address 3");
    row("{\"host\": \"h\", \"registers\": {\"A\": {\"table\": \"holding_register\", \"address\": 1, \"bit\": "
        "3},\n"
        "\"B\": {\"table\": \"holding_register\", \"address\": 1}}}",
        "2:6 A.#0 and B are written to the same address 1");
    row("{\"host\": \"h\", \"heartbeat\": {\"address\": 7, \"period_ms\": 9}, \"registers\": {\"A\": "
        "{\"table\": "
        "\"holding_register\", \"address\": 7, \"bit\": 1}}}",
        "1:79 the heartbeat and A.#0 are written to the same address 7");
    row("{\"host\": \"h\", \"signals\": {\"DI1\": {\"table\": \"input_register\", \"address\": 7}}}",
        "1:34 'DI1' is one bit: 'bit' is missing");
    row("{\"host\": \"h\", \"signals\": {\"DI1\": {\"table\": \"coil\", \"address\": 7, \"length\": "
        "2},\n\"DI2\": "
        "{\"table\": \"coil\", \"address\": 9}}}",
        "2:8 'DI2' is there twice");
}

void MapTest::faultsAreToldWithTheirPlace() {
    QFETCH(const QByteArray, text);
    mendo::FileProblem problem;
    QVERIFY(!mapOf(text, &problem));
    QTEST(QStringLiteral("%1:%2 %3").arg(problem.place.line).arg(problem.place.column).arg(problem.text()),
          "told");
}

void MapTest::valuesAreScaledAndSigned() {
    const ModbusMap map = mapOf(
        "\"registers\": {\"A\": {\"table\": \"holding_register\", \"address\": 0, \"scale\": 2.5},"
        "\"B\": {\"table\": \"coil\", \"address\": 0}}");
    const bridge::ModbusElement& number = map.elements[0];
    QCOMPARE(number.toDevice(-101), std::optional<quint16>(quint16(-253)));
    QCOMPARE(number.fromDevice(quint16(-253)), -101);
    QCOMPARE(number.toDevice(13106), std::optional<quint16>(32765));
    QVERIFY(!number.toDevice(13108));
    QVERIFY(!map.elements[1].toDevice(2));
}

void MapTest::writesJoinOnlyWhereTheOrderIsKept() {
    const ModbusMap map = mapOf(
        "\"registers\": {\"C\": {\"table\": \"coil\", \"address\": 0, \"length\": 8},"
        "\"R\": {\"table\": \"holding_register\", \"address\": 0, \"length\": 4},"
        "\"W\": {\"table\": \"holding_register\", \"address\": 4, \"bit\": 14, \"length\": 4}}");
    const auto textsOf = [&map](const std::vector<bridge::ModbusWrite>& writes) {
        QStringList texts;
        bridge::ModbusWords words{{4, 1}};  // a bit that was on
        for (const bridge::ModbusWrite& write : writes) {
            const QModbusDataUnit unit = unitOf(map, write, words);
            words[unit.startAddress()] = unit.value(0);
            texts << textOf(unit);
        }
        return texts.join(QLatin1String(", "));
    };
    constexpr int c = 0, r = 8, w = 12;
    QCOMPARE(textsOf(writesOf(map, {{c, 1}, {c + 1, 0}, {c + 2, 1}, {c + 4, 1}})), "coil 0 1 0 1, coil 4 1");
    QCOMPARE(textsOf(writesOf(map, {{c + 1, 1}, {c, 1}, {c, 0}})), "coil 1 1, coil 0 1, coil 0 0");
    QCOMPARE(textsOf(writesOf(map, {{r, 5}, {c, 1}, {r + 1, -6}, {r + 2, 7}})),
             "holding 0 5, coil 0 1, holding 1 -6 7");
    // Bits 14 and 15 of register 4, bits 0 and 1 of register 5.
    QCOMPARE(textsOf(writesOf(map, {{w, 1}, {w + 1, 1}, {w + 2, 1}, {w, 0}, {w, 1}})),
             "holding 4 -16383, holding 5 1, holding 4 -32767, holding 4 -16383");
    QCOMPARE(textsOf(writesOff(map)), "coil 0 0 0 0 0 0 0 0 0, holding 0 0 0 0 0, holding 4 1, holding 5 0");
}

void MapTest::inputsAreReadInFewTelegrams() {
    const auto textsOf = [](const ModbusMap& map) {
        QStringList texts;
        for (const bridge::ModbusPoll& poll : pollsOf(map)) {
            texts << QStringLiteral("%1 %2+%3 %4ms: %5")
                         .arg(poll.unit.registerType())
                         .arg(poll.unit.startAddress())
                         .arg(poll.unit.valueCount())
                         .arg(poll.periodMs)
                         .arg(poll.elements.size());
        }
        return texts.join(QLatin1String(", "));
    };
    QCOMPARE(
        textsOf(mapOf("\"registers\": {\"A\": {\"table\": \"discrete_input\", \"address\": 4, \"length\": 4},"
                      "\"B\": {\"table\": \"discrete_input\", \"address\": 0, \"length\": 4},"
                      "\"C\": {\"table\": \"discrete_input\", \"address\": 9},"
                      "\"D\": {\"table\": \"discrete_input\", \"address\": 8, \"poll_ms\": 100},"
                      "\"E\": {\"table\": \"input_register\", \"address\": 0, \"length\": 130},"
                      "\"F\": {\"table\": \"holding_register\", \"address\": 2, \"bit\": 8, \"length\": 16, "
                      "\"direction\": \"in\"}}")),
        "1 0+8 20ms: 8, 1 8+1 100ms: 1, 1 9+1 20ms: 1, 3 0+125 20ms: 125, 3 125+5 20ms: 5, 4 2+2 20ms: 16");
    QCOMPARE(textsOf(mapOf("\"registers\": {\"A\": {\"table\": \"coil\", \"address\": 4}}")),
             "2 4+1 500ms: 0");
}

LUMO_TEST(MapTest)
#include "test_map.moc"
