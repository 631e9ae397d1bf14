#include "app/language.h"
#include "app/why/whytext.h"

#include <QtTest>

#include <functional>

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

struct Case {
    const char* name;
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
    {"nothing runs, the drives are on", [](WhyState&) {}, "没有程序在运行|允许焊接|编辑已锁定：驱动已上电",
     "No program runs|Welding is permitted|Editing is locked: the drives are on",
     "Программа не выполняется|Сварка разрешена|Правка закрыта: приводы включены"},
    {"power off", [](WhyState& s) { s.power = false; }, "没有程序在运行|不能焊接：驱动未上电",
     "No program runs|No welding: the drives are off",
     "Программа не выполняется|Сварка невозможна: приводы выключены"},
    {"no project",
     [](WhyState& s) {
         s.power = false;
         s.projectOpen = false;
     },
     "没有程序在运行|不能焊接：驱动未上电|编辑已锁定：没有打开的工程",
     "No program runs|No welding: the drives are off|Editing is locked: no project is open",
     "Программа не выполняется|Сварка невозможна: приводы выключены|Правка закрыта: проект не открыт"},
    {"welding switch off", [](WhyState& s) { s.weldSwitch = false; },
     "没有程序在运行|不能焊接：焊接开关已关闭|编辑已锁定：驱动已上电",
     "No program runs|No welding: the Weld switch is off|Editing is locked: the drives are on",
     "Программа не выполняется|Сварка невозможна: переключатель «Сварка» выключен|Правка закрыта: приводы "
     "включены"},
    {"manual mode", [](WhyState& s) { s.automatic = false; },
     "没有程序在运行|不能焊接：手动模式下手动焊接开关已关闭|编辑已锁定：驱动已上电",
     "No program runs|No welding: manual mode, and the Hand Weld switch is off|Editing is locked: the drives "
     "are "
     "on",
     "Программа не выполняется|Сварка невозможна: ручной режим, а переключатель «Ручная сварка» "
     "выключен|Правка закрыта: приводы включены"},
    {"manual mode, permitted",
     [](WhyState& s) {
         s.automatic = false;
         s.handWeldSwitch = true;
     },
     "没有程序在运行|允许焊接|编辑已锁定：驱动已上电",
     "No program runs|Welding is permitted|Editing is locked: the drives are on",
     "Программа не выполняется|Сварка разрешена|Правка закрыта: приводы включены"},
    {"everything at once",
     [](WhyState& s) {
         s.power = s.automatic = s.weldSwitch = false;
         s.disabledPorts = QStringList{"Laser Enable", "Laser Power"};
     },
     "没有程序在运行|不能焊接：驱动未上电、焊接开关已关闭、手动模式下手动焊接开关已关闭、端口“Laser "
     "Enable”已停用、端口“Laser Power”已停用",
     "No program runs|No welding: the drives are off, the Weld switch is off, manual mode, and the Hand Weld "
     "switch "
     "is off, port \"Laser Enable\" is disabled, port \"Laser Power\" is disabled",
     "Программа не выполняется|Сварка невозможна: приводы выключены, переключатель «Сварка» выключен, ручной "
     "режим, а переключатель «Ручная сварка» выключен, порт «Laser Enable» отключён, порт «Laser Power» "
     "отключён"},
    {"an input",
     [](WhyState& s) {
         waits("input", -1)(s);
         s.input = "DI3";
         s.awaited = "true";
         s.waitedMs = 12345;
     },
     "第 12 行：等待 DI3 = true，已等待 12 秒|允许焊接|编辑已锁定：程序正在运行",
     "Line 12 waits for DI3 = true, 12 s|Welding is permitted|Editing is locked: a program is running",
     "Строка 12 ждёт DI3 = true, 12 с|Сварка разрешена|Правка закрыта: программа выполняется"},
    {"an input of a station, of which nothing more is known",
     [](WhyState& s) {
         waits("input", -1)(s);
         s.station = true;
         s.input = "LUMO_DI.#3";
         s.waitedMs = 61000;
     },
     "工位程序第 12 行：等待 LUMO_DI.#3，已等待 1:01 分|允许焊接|编辑已锁定：程序正在运行",
     "Station, line 12 waits for LUMO_DI.#3, 1:01 min|Welding is permitted|Editing is locked: a program is "
     "running",
     "Пост, строка 12 ждёт LUMO_DI.#3, 1:01 мин|Сварка разрешена|Правка закрыта: программа выполняется"},
    {"move", waits("move", -1), "第 12 行：机器人正在运动|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: the robot moves|Welding is permitted|Editing is locked: a program is running",
     "Строка 12: робот движется|Сварка разрешена|Правка закрыта: программа выполняется"},
    {"zone", waits("zone", -1), "第 12 行：机器人正在运动到焊缝终点|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: the robot moves to the end of the seam|Welding is permitted|Editing is locked: a program is "
     "running",
     "Строка 12: робот движется к концу шва|Сварка разрешена|Правка закрыта: программа выполняется"},
    {"gas before", waits("preflow", 180),
     "第 12 行：焊前送气，剩余 180 毫秒|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: gas flows before the weld, 180 ms left|Welding is permitted|Editing is locked: a program is "
     "running",
     "Строка 12: продувка газом до сварки, осталось 180 мс|Сварка разрешена|Правка закрыта: программа "
     "выполняется"},
    {"dwell", waits("dwell", 40),
     "第 12 行：激光已打开，机器人停留，剩余 40 毫秒|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: the laser is on, the robot stays, 40 ms left|Welding is permitted|Editing is locked: a "
     "program is "
     "running",
     "Строка 12: лазер включён, робот стоит, осталось 40 мс|Сварка разрешена|Правка закрыта: программа "
     "выполняется"},
    {"ramp", waits("rampdown", 80),
     "第 12 行：激光功率正在下降，剩余 80 毫秒|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: laser power ramps down, 80 ms left|Welding is permitted|Editing is locked: a program is "
     "running",
     "Строка 12: мощность лазера снижается, осталось 80 мс|Сварка разрешена|Правка закрыта: программа "
     "выполняется"},
    {"delay after the laser", waits("closedelay", 20),
     "第 12 行：激光已关闭，延时结束，剩余 20 毫秒|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: the laser is off, end delay, 20 ms left|Welding is permitted|Editing is locked: a program is "
     "running",
     "Строка 12: лазер выключен, задержка окончания, осталось 20 мс|Сварка разрешена|Правка закрыта: "
     "программа "
     "выполняется"},
    {"gas after", waits("postflow", 1250), "第 12 行：焊后送气，剩余 1 秒|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: gas flows after the weld, 1 s left|Welding is permitted|Editing is locked: a program is "
     "running",
     "Строка 12: продувка газом после сварки, осталось 1 с|Сварка разрешена|Правка закрыта: программа "
     "выполняется"},
    {"delay", waits("delay", 90000), "第 12 行：延时，剩余 1:30 分|允许焊接|编辑已锁定：程序正在运行",
     "Line 12: delay, 1:30 min left|Welding is permitted|Editing is locked: a program is running",
     "Строка 12: пауза, осталось 1:30 мин|Сварка разрешена|Правка закрыта: программа выполняется"},
    {"a line that waits for nothing",
     [](WhyState& s) {
         s.busy = true;
         s.line = 0;
     },
     "第 1 行：正在执行|允许焊接|编辑已锁定：程序正在运行",
     "Line 1: being executed|Welding is permitted|Editing is locked: a program is running",
     "Строка 1: выполняется|Сварка разрешена|Правка закрыта: программа выполняется"},
    {"the closing of a pause",
     [](WhyState& s) {
         s.waiting = "rampdown";
         s.leftMs = 80;
     },
     "激光功率正在下降，剩余 80 毫秒|允许焊接|编辑已锁定：驱动已上电",
     "Laser power ramps down, 80 ms left|Welding is permitted|Editing is locked: the drives are on",
     "Мощность лазера снижается, осталось 80 мс|Сварка разрешена|Правка закрыта: приводы включены"},
    {"switching off after a pause", [](WhyState& s) { s.settling = true; },
     "正在关闭激光、气体和送丝|允许焊接|编辑已锁定：驱动已上电",
     "Laser, gas and wire are being switched off|Welding is permitted|Editing is locked: the drives are on",
     "Лазер, газ и проволока отключаются|Сварка разрешена|Правка закрыта: приводы включены"},
};

}  // namespace

Q_DECLARE_METATYPE(WhyState)

/// Chinese first: a process does not go back to it.
void AppWhy::text_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<WhyState>("state");
    QTest::addColumn<QString>("text");
    const auto addAll = [](const char* language, const char* Case::*text) {
        for (const Case& row : kCases) {
            WhyState state;
            row.change(state);
            QTest::addRow("%s, %s", row.name, language)
                << QString::fromLatin1(language) << state << QString::fromUtf8(row.*text);
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
    QTEST(app::whyText(state).join(QLatin1Char('|')), "text");
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
