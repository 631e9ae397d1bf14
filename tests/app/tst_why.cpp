#include "app/language.h"
#include "app/why/whytext.h"

#include <QtTest>

#include <functional>

using app::PortTrouble;
using app::WhyState;

/// What the operator is told, in three languages.
class AppWhy : public QObject {
    Q_OBJECT
private slots:
    void text_data();
    void text();
    void duration_data();
    void duration();
};

namespace {

using Change = std::function<void(WhyState&)>;

/// What the sentences begin with.
struct Case {
    const char* name;
    bool well;
    Change change;
    const char* cn;
    const char* en;
    const char* ru;
};

/// A wait of line 12.
Change waits(const char* kind, qint64 leftMs) {
    return [kind, leftMs](WhyState& s) {
        s.busy = true;
        s.line = 11;
        s.waiting = QLatin1String(kind);
        s.leftMs = leftMs;
    };
}

const Case kCases[] = {
    {"nothing runs, the drives are on", true, [](WhyState&) {},
     "允许焊接|没有程序在运行|编辑已锁定：驱动已上电",
     "Welding is permitted|No program runs|Editing is locked: the drives are on",
     "Сварка разрешена|Программа не выполняется|Правка закрыта: приводы включены"},
    {"no project", false,
     [](WhyState& s) {
         s.power = false;
         s.projectOpen = false;
     },
     "不能焊接：驱动未上电|没有程序在运行|编辑已锁定：没有打开的工程",
     "No welding: the drives are off|No program runs|Editing is locked: no project is open",
     "Сварка невозможна: приводы выключены|Программа не выполняется|Правка закрыта: проект не открыт"},
    {"manual mode", false, [](WhyState& s) { s.automatic = false; }, "不能焊接：手动模式下手动焊接开关已关闭",
     "No welding: manual mode, and the Hand Weld switch is off",
     "Сварка невозможна: ручной режим, а переключатель «Ручная сварка» выключен"},
    {"manual mode, permitted", true,
     [](WhyState& s) {
         s.automatic = false;
         s.handWeldSwitch = true;
     },
     "允许焊接", "Welding is permitted", "Сварка разрешена"},
    {"everything against the laser", false,
     [](WhyState& s) {
         s.power = s.automatic = s.weldSwitch = false;
         s.laserPorts = {{PortTrouble::NoSuchSignal, "E", "DO2_3"}, {PortTrouble::NotAssigned, "P", ""}};
         s.gasPorts = {{PortTrouble::OutOfUse, "G", "LUMO_DO.#0"}};
     },
     "不能焊接：端口“E”分配到不存在的 "
     "DO2_3、端口“P”未分配、端口“G”已停用、驱动未上电、焊接开关已关闭、手动模式下手动焊接开关已关闭",
     "No welding: port \"E\" is assigned to DO2_3, which does not exist, port \"P\" is not assigned, port "
     "\"G\" is disabled, the drives are off, the Weld switch is off, manual mode, and the Hand Weld switch "
     "is "
     "off",
     "Сварка невозможна: порт «E» назначен на DO2_3, которого нет, порт «P» не назначен, порт «G» отключён, "
     "приводы выключены, переключатель «Сварка» выключен, ручной режим, а переключатель «Ручная сварка» "
     "выключен"},
    {"gas out of use", false,
     [](WhyState& s) {
         s.gasPorts = {{PortTrouble::OutOfUse, "G", ""}};
     },
     "焊接没有保护气：端口“G”已停用|没有程序在运行",
     "Welding without gas: port \"G\" is disabled|No program runs",
     "Сварка без газа: порт «G» отключён|Программа не выполняется"},
    {"a fault does not permit welding", false,
     [](WhyState& s) {
         s.faults = QStringList{"A", "B"};
     },
     "设备异常：A、B|没有程序在运行", "Equipment not ready: A, B|No program runs",
     "Оборудование не в порядке: A, B|Программа не выполняется"},
    {"everything at once", false,
     [](WhyState& s) {
         s.emergencyStop = s.listening = s.pausedInWeld = true;
         s.power = false;
         s.laser = WhyState::Laser::ByHand;
         s.faults = QStringList{"A"};
         s.lastError = -42;
         s.pausedLine = 2;
         s.waitingStations = 2;
     },
     "急停已按下|激光已手动打开|设备异常：A|上次运行失败：机器人运动错误 -0x2a|不能焊接：驱动未上电|"
     "在第 3 行暂停，焊缝未完成|正在监听工位，2 个等待启动",
     "Emergency stop is pressed|Laser on: by hand|Equipment not ready: A|The last run failed: robot motion "
     "error -0x2a|No welding: the drives are off|Paused at line 3, inside a weld|Listening to the stations, "
     "2 "
     "waiting",
     "Аварийный останов нажат|Лазер включён вручную|Оборудование не в порядке: A|Прошлый запуск не удался: "
     "ошибка движения робота -0x2a|Сварка невозможна: приводы выключены|Пауза на строке 3, шов не "
     "закончен|Опрос постов включён, ждут: 2"},
    {"paused, the stations are listened to", true,
     [](WhyState& s) {
         s.pausedLine = 0;
         s.listening = true;
     },
     "允许焊接|在第 1 行暂停|正在监听工位|编辑",
     "Welding is permitted|Paused at line 1|Listening to the stations|Ed",
     "Сварка разрешена|Пауза на строке 1|Опрос постов включён|Правка"},
    {"failed", false, [](WhyState& s) { s.lastError = -1; }, "上次运行失败：机器人运动错误 -0x1|允许焊接",
     "The last run failed: robot motion error -0x1|Welding is permitted",
     "Прошлый запуск не удался: ошибка движения робота -0x1|Сварка разрешена"},
    {"stopped", false, [](WhyState& s) { s.emergencyStop = true; }, "急停已按下", "Emergency stop is pressed",
     "Аварийный останов нажат"},
    {"lit by nobody", false, [](WhyState& s) { s.laser = WhyState::Laser::ByNobody; },
     "激光已打开，但没有程序在运行", "Laser on, though no program runs",
     "Лазер включён, хотя программа не выполняется"},
    {"lit by a station", true, [](WhyState& s) { s.laser = WhyState::Laser::ByStation; },
     "激光已由工位程序打开|允许焊接", "Laser on: by a station|Welding is permitted",
     "Лазер включён программой поста|Сварка разрешена"},
    {"an input", true,
     [](WhyState& s) {
         waits("input", -1)(s);
         s.laser = WhyState::Laser::ByProgram;
         s.input = "DI3";
         s.awaited = "true";
         s.waitedMs = 12345;
     },
     "激光已由程序打开|第 12 行：等待 DI3 = true，已等待 12 秒|允许焊接|编辑已锁定：程序正在运行",
     "Laser on: by the program|Line 12 waits for DI3 = true, 12 s|Welding is permitted|Editing is locked: a "
     "program is running",
     "Лазер включён программой|Строка 12 ждёт DI3 = true, 12 с|Сварка разрешена|Правка закрыта: программа "
     "выполняется"},
    {"an input of a station, of which nothing more is known", true,
     [](WhyState& s) {
         waits("input", -1)(s);
         s.station = true;
         s.input = "LUMO_DI.#3";
         s.waitedMs = 61000;
     },
     "工位程序第 12 行：等待 LUMO_DI.#3，已等待 1:01 分", "Station, line 12 waits for LUMO_DI.#3, 1:01 min",
     "Пост, строка 12 ждёт LUMO_DI.#3, 1:01 мин"},
    {"move", true, waits("move", -1), "第 12 行：机器人正在运动", "Line 12: the robot moves",
     "Строка 12: робот движется"},
    {"zone", true, waits("zone", -1), "第 12 行：机器人正在运动到焊缝终点",
     "Line 12: the robot moves to the end of the seam", "Строка 12: робот движется к концу шва"},
    {"gas before", true, waits("preflow", 180), "第 12 行：焊前送气，剩余 180 毫秒",
     "Line 12: gas flows before the weld, 180 ms left",
     "Строка 12: продувка газом до сварки, осталось 180 мс"},
    {"dwell", true, waits("dwell", 40), "第 12 行：激光已打开，机器人停留，剩余 40 毫秒",
     "Line 12: the laser is on, the robot stays, 40 ms left",
     "Строка 12: лазер включён, робот стоит, осталось 40 мс"},
    {"ramp", true, waits("rampdown", 80), "第 12 行：激光功率正在下降，剩余 80 毫秒",
     "Line 12: laser power ramps down, 80 ms left", "Строка 12: мощность лазера снижается, осталось 80 мс"},
    {"delay after the laser", true, waits("closedelay", 20), "第 12 行：激光已关闭，延时结束，剩余 20 毫秒",
     "Line 12: the laser is off, end delay, 20 ms left",
     "Строка 12: лазер выключен, задержка окончания, осталось 20 мс"},
    {"gas after", true, waits("postflow", 1250), "第 12 行：焊后送气，剩余 1 秒",
     "Line 12: gas flows after the weld, 1 s left", "Строка 12: продувка газом после сварки, осталось 1 с"},
    {"delay", true, waits("delay", 90000), "第 12 行：延时，剩余 1:30 分", "Line 12: delay, 1:30 min left",
     "Строка 12: пауза, осталось 1:30 мин"},
    {"a line that waits for nothing", true,
     [](WhyState& s) {
         s.busy = true;
         s.line = 0;
     },
     "第 1 行：正在执行|允许焊接", "Line 1: being executed|Welding is permitted",
     "Строка 1: выполняется|Сварка разрешена"},
    {"the closing of a pause", true,
     [](WhyState& s) {
         s.waiting = "rampdown";
         s.leftMs = 80;
     },
     "激光功率正在下降，剩余 80 毫秒|允许焊接", "Laser power ramps down, 80 ms left|Welding is permitted",
     "Мощность лазера снижается, осталось 80 мс|Сварка разрешена"},
    {"switching off after a pause", true, [](WhyState& s) { s.settling = true; },
     "正在关闭激光、气体和送丝|允许焊接", "Laser, gas and wire are being switched off|Welding is permitted",
     "Лазер, газ и проволока отключаются|Сварка разрешена"},
};

}  // namespace

Q_DECLARE_METATYPE(WhyState)

/// Chinese first: a process does not go back to it.
void AppWhy::text_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<WhyState>("state");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("well");
    const auto addAll = [](const char* language, const char* Case::*text) {
        for (const Case& row : kCases) {
            WhyState state;
            row.change(state);
            QTest::addRow("%s, %s", row.name, language)
                << QString::fromLatin1(language) << state << QString::fromUtf8(row.*text) << row.well;
        }
    };
    addAll("cn", &Case::cn);
    addAll("en", &Case::en);
    addAll("ru", &Case::ru);
}

void AppWhy::text() {
    QFETCH(QString, language);
    QFETCH(WhyState, state);
    app::installLanguage(language);
    QFETCH(QString, text);
    QCOMPARE(app::whyText(state).join(QLatin1Char('|')).left(text.size()), text);
    QTEST(state.isWell(), "well");
}

void AppWhy::duration_data() {
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << "0 ms";
    QTest::newRow("below a second") << qint64(999) << "999 ms";
    QTest::newRow("a second") << qint64(1000) << "1 s";
    QTest::newRow("below a minute") << qint64(59999) << "59 s";
    QTest::newRow("a minute") << qint64(60000) << "1:00 min";
    QTest::newRow("more") << qint64(3725000) << "62:05 min";
}

void AppWhy::duration() {
    QFETCH(qint64, ms);
    app::installLanguage(QStringLiteral("en"));
    QTEST(app::durationText(ms), "text");
}

QTEST_GUILESS_MAIN(AppWhy)
#include "tst_why.moc"
