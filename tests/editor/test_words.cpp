#include "editor/pairing.h"
#include "editor/statementtext.h"
#include "editor/wrapbutton.h"
#include "editorfixture.h"

/// What the editor says of a statement and on a button, and which programs it finds fault with.
class TestWords : public EditorTest {
    Q_OBJECT

private slots:
    void eachStatement_showsItsOwnValues() {
        reset();
        const std::pair<QByteArray, QString> cases[] = {
            {"{'type':'moveJ','point':{'near':[3.141592653589793,-1.5707963267948966,0,0,0,0.001]},'zone':2}",
             "空走|1.轴角度：(180.000, -90.000, 0.000, 0.000, 0.000, 0.057)°；\n2.转弯区：2mm；"},
            {"{'type':'moveL','point':{'trans':[0.5,0,0.25]},'speed':'35.9','toolset':{"
             "'end':{'name':'50%4','trans':[0.1,0,0.05]},'ref':{'name':'wobj0','trans':[0,0,0]}}}",
             "直线|1.点位：xyz(500.000, 0.000, 250.000)mm;\n2.速度：v35mm/s；\n"
             "3.工具：50%4, 坐标：xyz(0.100, 0.000, 0.050)mm;\n"
             "4.工件：wobj0, 坐标：xyz(0.000, 0.000, 0.000)mm;"},
            {"{'type':'moveC','point':{},'point1':{'trans':[1,-2,0.0004]}}",
             "圆弧|1.点位：xyz(0.000, 0.000, 0.000)mm;\n2.点位：xyz(1000.000, -2000.000, 0.400)mm;"},
            // A name that is empty leaves a gap in the numbers.
            {"{'type':'moveCC','name':'','speed':20}", "全圆|2.速度：v20mm/s；"},
            // The set's and the port's values, not the statement's own.
            {"{'type':'open','index':0,'laserPower':1,'laserDutyCycle':2,'wireEnable':false,'weldspeed':18}",
             "开始焊接|1.参数名称：A;\n2.激光功率：50%;\n3.激光占空比：30%;\n4.送丝使能：ON;\n"
             "5.焊接速度：v18mm/s；"},
            {"{'type':'param','index':7,'laserPower':50}", "工艺参数|1.参数名称：;\n2.激光功率：%;"},
            {"{'type':'setDO','doName':'DO1','DO_type':'IO','DO_reg':{'name':'R','bias':4},'value':'true'}",
             "setDO|1.DO名称：DO1\n2.设置为：true"},
            // Elements of registers are counted from 1.
            {"{'type':'waitDI','diName':'D','DI_type':'register','DI_reg':{'name':'R','bias':2},'value1':'no'"
             "}",
             "waitDI|1.DI名称：R[3]\n2.等待该信号变为：no"},
            {"{'type':'delay','delaytime':500}", "延时|延时时间为：500ms"},
            {"{'type':'close','note':'n','execute':true}", "停止焊接|(none)"},
            {"{'type':'movel'}", "|(none)"},
        };
        for (const auto& [content, expected] : cases) {
            const auto statement = node(content);
            const QString details = lumo::statementDetails(statement.get());
            const QString command = type2cn(statement->c("type")->getString());
            QCOMPARE(command + "|" + (details.isNull() ? "(none)" : details), expected);
            QCOMPARE(text(statement.get()), text(json(content)));  // showing writes nothing
        }
        kordservice()->dataNode("sys.info")->set(nullptr, "joint_num", 7);
        QVERIFY(
            joints2cn(node("{'near':[0,0,0,0,0,0,3.141592653589793]}").get()).contains(" 0.000,180.000)"));
    }

    void unpairedWelding_isFound() {
        const std::pair<QString, bool> cases[] = {{"moveL delay", true},
                                                  {"moveL open moveL close open close", true},
                                                  {"open", false},
                                                  {"close", false},
                                                  {"close open", false},
                                                  {"open open close close", false},
                                                  {"open close close open", false},
                                                  {"param close", false}};
        for (const auto& [types, match] : cases) {
            ModuleObject program("program");
            for (const QString& type : types.split(' ')) {
                program.append(nullptr)->set(nullptr, "type", type);
            }
            QVERIFY2(lumo::weldPairs(&program).match() == match, qPrintable(types));
        }
    }

    void captions_findTheirPlaceInNarrowButtons() {
        WrapButton button;
        const struct {
            QString caption;
            int width;  // in widths of an M
            QStringList lines;
            bool isSmaller;
        } cases[] = {
            {"Start Welding", 20, {"Start Welding"}, false},
            {"MM MM MMMM", 6, {"MM MM", "MMMM"}, false},
            {"开始焊接开始焊接", 5, {"开始焊接", "开始焊接"}, false},
            {"MMMM\u00adMMMM", 6, {"MMMM-", "MMMM"}, false},
            {"MMMM\u00adMMMM", 20, {"MMMMMMMM"}, false},
            {"MMMMMMMMMM", 8, {"MMMMMMMMMM"}, true},
        };
        for (const auto& [caption, width, lines, isSmaller] : cases) {
            button.setText(caption);
            const QFontMetrics metrics(button.font());
            button.resize(width * metrics.horizontalAdvance('M') + 20, 3 * metrics.height());
            QCOMPARE(button.shownLines(), lines);
            QVERIFY2((button.shownPixelSize() < 14) == isSmaller, qPrintable(caption));
        }
    }
};

LUMO_TEST(TestWords)
#include "test_words.moc"
