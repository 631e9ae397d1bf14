#include "editor/statementtext.h"
#include "language.h"
#include "support/executorbench.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

/// What the table shows of each kind of statement, in three languages.
class TestStatementText : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static void fill(ModuleObject& node, const QByteArray& json) {
        QJsonParseError error;
        node.loadJson(nullptr, QJsonDocument::fromJson(json, &error).object());
        QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
    }
    static void setJoints(const QVariant& count) {
        kordservice()->dataNode("sys.info")->set(nullptr, "joint_num", count);
    }
    static void row(const char* what, const QByteArray& json, const char* cn, const char* en,
                    const char* ru) {
        const std::pair<const char*, const char*> texts[] = {{"cn", cn}, {"en", en}, {"ru", ru}};
        for (const auto& [language, text] : texts) {
            QTest::addRow("%s, %s", what, language) << QString(language) << json << QString(text);
        }
    }

private slots:
    void init() {
        bench_.reset();
        m("lumo.param")->c(0)->set(this, "name", "thin");
        setJoints(6);
    }

    void commandWords_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("cn");
        QTest::addColumn<QString>("en");
        QTest::newRow("moveJ") << "moveJ"
                               << "空走"
                               << "Joint";
        QTest::newRow("moveL") << "moveL"
                               << "直线"
                               << "Line";
        QTest::newRow("moveC") << "moveC"
                               << "圆弧"
                               << "Arc";
        QTest::newRow("moveCC") << "moveCC"
                                << "全圆"
                                << "Circle";
        QTest::newRow("open") << "open"
                              << "开始焊接"
                              << "Start Welding";
        QTest::newRow("close") << "close"
                               << "停止焊接"
                               << "Stop Welding";
        QTest::newRow("param") << "param"
                               << "工艺参数"
                               << "Welding Parameters";
        QTest::newRow("setDO") << "setDO"
                               << "setDO"
                               << "setDO";
        QTest::newRow("waitDI") << "waitDI"
                                << "waitDI"
                                << "waitDI";
        QTest::newRow("delay") << "delay"
                               << "延时"
                               << "delay";
        QTest::newRow("unknown") << "dance"
                                 << ""
                                 << "";
        QTest::newRow("another letter case") << "movej"
                                             << ""
                                             << "";
    }

    void commandWords() {
        QFETCH(QString, type);
        QTEST(type2cn(type), "cn");
        const Language english("en");
        QTEST(type2cn(type), "en");
    }

    void details_data() {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<QString>("text");
        row("moveJ shows degrees",
            R"({"type":"moveJ","point":{"near":[3.141592653589793,-1.5707963267948966,0,0,0,0.001]},
                "speed":20,"zone":2})",
            "1.轴角度：(180.000, -90.000, 0.000, 0.000, 0.000, 0.057)°；\n2.速度：v20mm/s；\n3.转弯区：2mm；",
            "1.Joint Angle:(180.000, -90.000, 0.000, 0.000, 0.000, 0.057).;\n2.Speed:v20mm/s;\n3.Radius: "
            "2mm;",
            "1.Углы осей: (180.000, -90.000, 0.000, 0.000, 0.000, 0.057)°;\n2.Скорость: v20мм/с;\n"
            "3.Радиус сглаживания: 2мм;");
        row("moveL shows millimetres, its frames as they are stored",
            R"({"type":"moveL","point":{"trans":[0.5,0,0.25]},"speed":"35.9","zone":0,"toolset":{
                "end":{"name":"torch","trans":[0.1,0,0.05]},"ref":{"name":"wobj0","trans":[0,0,0]}}})",
            "1.点位：xyz(500.000, 0.000, 250.000)mm;\n2.速度：v35mm/s；\n3.转弯区：0mm；\n"
            "4.工具：torch, 坐标：xyz(0.100, 0.000, 0.050)mm;\n5.工件：wobj0, 坐标：xyz(0.000, 0.000, "
            "0.000)mm;",
            "1.Point:xyz(500.000, 0.000, 250.000)mm;\n2.Speed:v35mm/s;\n3.Radius: 0mm;\n"
            "4.Tool:torch, Coord:xyz(0.100, 0.000, 0.050)mm;\n5.Wobj:wobj0, Coord:xyz(0.000, 0.000, "
            "0.000)mm;",
            "1.Точка: xyz(500.000, 0.000, 250.000)мм;\n2.Скорость: v35мм/с;\n3.Радиус сглаживания: 0мм;\n"
            "4.Инструмент: torch, Коорд.: xyz(0.100, 0.000, 0.050)мм;\n"
            "5.Деталь: wobj0, Коорд.: xyz(0.000, 0.000, 0.000)мм;");
        row("moveC shows both its points as positions",
            R"({"type":"moveC","point":{},"point1":{"trans":[1,-2,0.0004]}})",
            "1.点位：xyz(0.000, 0.000, 0.000)mm;\n2.点位：xyz(1000.000, -2000.000, 0.400)mm;",
            "1.Point:xyz(0.000, 0.000, 0.000)mm;\n2.Point:xyz(1000.000, -2000.000, 0.400)mm;",
            "1.Точка: xyz(0.000, 0.000, 0.000)мм;\n2.Точка: xyz(1000.000, -2000.000, 0.400)мм;");
        row("open shows the set's and the port's values, not its own",
            R"({"type":"open","index":0,"laserPower":"1","laserDutyCycle":"2","wireEnable":false,"weldspeed":"18"})",
            "1.参数名称：thin;\n2.激光功率：50%;\n3.激光占空比：30%;\n4.送丝使能：ON;\n5.焊接速度：v18mm/s；",
            "1.Param Name:thin;\n2.Laser Power:50%;\n3.Laser Ratio:30%;\n4.Wire Enable:ON;\n5.Weld "
            "Speed:v18mm/s;",
            "1.Набор параметров: thin;\n2.Мощность лазера: 50%;\n3.Коэффициент заполнения: 30%;\n4.Подача "
            "проволоки: ON;\n"
            "5.Скорость сварки: v18мм/с;");
        row("param that names no set",
            R"({"type":"param","index":7,"laserPower":50,"laserDutyCycle":50,"wireEnable":true})",
            "1.参数名称：;\n2.激光功率：%;\n3.激光占空比：%;\n4.送丝使能：ON;",
            "1.Param Name:;\n2.Laser Power:%;\n3.Laser Ratio:%;\n4.Wire Enable:ON;",
            "1.Набор параметров: ;\n2.Мощность лазера: %;\n3.Коэффициент заполнения: %;\n4.Подача проволоки: "
            "ON;");
        row("setDO of an output",
            R"({"type":"setDO","doName":"DO1","DO_type":"IO","DO_reg":{"name":"R","bias":4},"value":"true"})",
            "1.DO名称：DO1\n2.设置为：true", "1.DO Name:DO1\n2.Set To: true",
            "1.Выход DO: DO1\n2.Установить: true");
        row("waitDI of a register's element, counted from 1",
            R"({"type":"waitDI","diName":"DI1","DI_type":"register","DI_reg":{"name":"R1","bias":2},"value1":"false"})",
            "1.DI名称：R1[3]\n2.等待该信号变为：false",
            "1.DI Name:R1[3]\n2.Waiting for signal become tofalse",
            "1.Вход DI: R1[3]\n2.Ждать состояния сигнала: false");
        row("delay is not numbered", R"({"type":"delay","delaytime":500})", "延时时间为：500ms",
            "Delay Time is:500ms", "Время задержки: 500мс");
    }

    void details() {
        QFETCH(QString, language);
        QFETCH(QByteArray, statement);
        const Language shown(language);
        ModuleObject node("statement");
        fill(node, statement);
        QTEST(lumo::statementDetails(&node), "text");
    }

    void sevenJoints_data() {
        QTest::addColumn<QVariant>("joints");
        QTest::newRow("seven") << QVariant(7);
        QTest::newRow("five") << QVariant(5);
        QTest::newRow("unknown") << QVariant();
    }

    void sevenJoints() {
        QFETCH(QVariant, joints);
        setJoints(joints);
        ModuleObject node("point");
        fill(node, R"({"near":[0,0,0,0,0,0,3.141592653589793]})");
        QCOMPARE(joints2cn(&node), QString("轴角度：(0.000, 0.000, 0.000, 0.000, 0.000, 0.000,180.000)°；"));
    }

    void emptyPieces_leaveAGapInTheNumbers() {
        ModuleObject node("statement");
        fill(node, R"({"type":"moveL","name":"","speed":20})");
        QCOMPARE(lumo::statementDetails(&node), QString("2.速度：v20mm/s；"));
    }

    void namesMayHoldPlaceholders() {
        ModuleObject node("end");
        fill(node, R"({"name":"50%4","trans":[1,2,3]})");
        QCOMPARE(toolsetend2cn(&node), QString("工具：50%4, 坐标：xyz(1.000, 2.000, 3.000)mm;"));
    }

    void statementsWithoutDetails() {
        ModuleObject node("statement");
        fill(node, R"({"type":"close","note":"","execute":true})");
        QVERIFY(lumo::statementDetails(&node).isNull());
    }

    void rendering_writesNothing() {
        ModuleObject node("statement");
        fill(node, R"({"type":"moveL","point":{},"laserPower":1})");
        const QJsonValue before = node.exportToJson();
        (void)lumo::statementDetails(&node);
        QCOMPARE(node.exportToJson(), before);
    }
};

LUMO_TEST_MAIN(TestStatementText)
#include "test_statementtext.moc"
