// The list of the stations and the page of one station, by hand.

#include "binding/signalsbindingparamwidget.h"
#include "binding/stationbench.h"
#include "editor/language.h"

#include <QComboBox>
#include <QHeaderView>
#include <QJsonDocument>
#include <QTest>

class TestStationEditor : public QObject {
    Q_OBJECT

    test::StationBench bench_;

    static ModuleObject* record(int row) { return m("lumo.signalsConfig")->c(row); }
    static QString field(int row, const char* path) { return record(row)->r(path)->getString(); }

    QComboBox* combo(const char* name) const { return page()->findChild<QComboBox*>(name); }
    SignalsBindingParamWidget* page() const { return bench_.page->findChild<SignalsBindingParamWidget*>(); }
    QStringList items(const char* name) const {
        QStringList texts;
        for (int i = 0; i < combo(name)->count(); ++i) {
            texts << combo(name)->itemText(i);
        }
        return texts;
    }
    void type(const char* lineEdit, const QString& text) const {
        auto* line = bench_.find<QLineEdit>(lineEdit);
        line->selectAll();
        QTest::keyClicks(line, text);
    }

    static void offer() {
        kordservice()
            ->dataNode("device.io")
            ->loadJson(nullptr, QJsonObject{{"DI", QJsonObject{{"DI1", false}, {"DI2", false}}},
                                            {"DO", QJsonObject{{"DO1", false}, {"DO2", false}}}});
        m("rova.robot.register._list")
            ->loadJson(nullptr, QJsonDocument::fromJson(R"([
                {"name":"OUT","type":"bit","rw":"rdwr","len":8}, {"name":"OUT1","type":"bool","rw":"rdwr"},
                {"name":"OUTINT","type":"int16","rw":"rdwr","len":4}, {"name":"WRITE","type":"bit","rw":"wr","len":4},
                {"name":"IN","type":"bit","rw":"rd","len":3}, {"name":"ININT","type":"int16","rw":"rd"}])")
                                    .array());
    }

private slots:
    void init() {
        bench_.renew(bench_.count(5));
        offer();
    }

    void offers_whatTheControllerHas() {
        bench_.click("btnAdd");
        for (const char* suffix : {"", "_2"}) {
            const auto named = [suffix](const char* name) { return QByteArray(name) + suffix; };
            QCOMPARE(items(named("cmbDI")), QStringList({"", "DI1", "DI2"}));
            QCOMPARE(items(named("cmbDO")), QStringList({"", "DO1", "DO2"}));
            QCOMPARE(items(named("cmbDIReg")), QStringList({"", "IN"}));
            QCOMPARE(items(named("cmbDOReg")), QStringList({"", "OUT", "OUT1"}));
            QCOMPARE(items(named("cmbDIRegBias")), QStringList({"1", "2", "3"}));
            QCOMPARE(items(named("cmbDORegBias")).size(), 8);
            combo(named("cmbDOReg"))->setCurrentIndex(2);
            QCOMPARE(items(named("cmbDORegBias")), QStringList("1"));
            combo(named("cmbDOReg"))->setCurrentIndex(0);
            QCOMPARE(items(named("cmbDORegBias")), QStringList());
        }
    }

    void kind_showsItsNames_data() {
        QTest::addColumn<QByteArray>("side");
        QTest::addColumn<QByteArray>("suffix");
        QTest::newRow("start input") << QByteArray("In") << QByteArray();
        QTest::newRow("stop input") << QByteArray("In") << QByteArray("_2");
        QTest::newRow("start output") << QByteArray("Out") << QByteArray();
        QTest::newRow("stop output") << QByteArray("Out") << QByteArray("_2");
    }

    void kind_showsItsNames() {
        QFETCH(QByteArray, side);
        QFETCH(QByteArray, suffix);
        const QByteArray direction = side == "In" ? "DI" : "DO";
        bench_.click("btnAdd");
        const auto shown = [&](const QByteArray& name) {
            return page()->findChild<QWidget*>(name + suffix)->isVisible();
        };
        const auto others = [this] {
            int visible = 0;
            for (const char* name : {"cmbDIReg", "cmbDIReg_2", "cmbDOReg", "cmbDOReg_2"}) {
                visible += combo(name)->isVisible() ? 1 : 0;
            }
            return visible;
        };
        for (const bool reg : {true, false}) {
            bench_.click((reg ? "rdbReg" : "rdbIO") + side + suffix);
            QCOMPARE(shown("cmb" + direction), !reg);
            QCOMPARE(shown("lbl" + direction), !reg);
            QCOMPARE(shown("cmb" + direction + "Reg"), reg);
            QCOMPARE(shown("lbl" + direction + "Reg"), reg);
            QCOMPARE(shown("cmb" + direction + "RegBias"), reg);
            QCOMPARE(others(), reg ? 1 : 0);
        }
    }

    void table_showsItsTextsWhole() {
        QJsonArray stations = bench_.count(2);
        QJsonObject wide = stations[1].toObject();
        wide.insert("stationname", "a station with a name of some length");
        wide.insert("time", "123456789");
        wide.insert("DI", "an input with a name of some length");
        stations[1] = wide;
        bench_.renewAlone(stations);
        const QTableWidget* const table = bench_.table();
        const auto widest = [](const QStringList& texts, const QFontMetrics& font) {
            int width = 0;
            for (const QString& text : texts) {
                width = std::max(width, font.horizontalAdvance(text));
            }
            return width;
        };
        constexpr int margin = 8;
        for (int column = 0; column < table->columnCount(); ++column) {
            QStringList lines;
            for (int row = 0; row < table->rowCount(); ++row) {
                lines << bench_.cell(row, column).split('\n');
                QCOMPARE(table->item(row, column)->textAlignment(), int(Qt::AlignCenter));
            }
            if (column == 7) {
                lines << "已触发"
                      << "正在运行"
                      << "未触发";
            }
            const QStringList words = table->horizontalHeaderItem(column)->text().split(' ');
            const int header = widest(words, table->horizontalHeader()->fontMetrics());
            const int needed = std::max(header, widest(lines, table->fontMetrics())) + margin;
            const QByteArray where = QByteArray("column ") + QByteArray::number(column);
            if (column == 5) {
                QCOMPARE(table->columnWidth(column), 100);
            } else {
                QVERIFY2(table->columnWidth(column) >= needed, where);
                QVERIFY2(table->columnWidth(column) < needed + 40, where);
            }
        }
    }

    void newStation_hasDefaults() {
        bench_.click("btnAdd");
        type("lineEdit_stationname", "rework");
        bench_.click("okayBtn");
        QVERIFY(!bench_.find<SignalsBindingParamWidget>());
        QCOMPARE(bench_.table()->rowCount(), 6);
        QStringList cells;
        for (int column = 0; column < 10; ++column) {
            cells << bench_.cell(5, column);
        }
        QCOMPARE(cells, QStringList({"6", "rework", "", "启动: IO\n停止: IO", "\n", "上升沿\n上升沿", "100",
                                     "---", "启动: IO\n停止: IO", "\n"}));
        QCOMPARE(field(5, "stationname"), "rework");
        QCOMPARE(record(5)->c("time")->value(), QVariant("100"));
        QCOMPARE(field(5, "filePath"), "");
        for (const char* kind : {"DI_type", "DI2_type", "DO_type", "DO2_type"}) {
            QCOMPARE(field(5, kind), "IO");
        }
        const QJsonValue stored = mendo::ModuleManager::readFromJson("lumo_signalsConfig.json");
        QCOMPARE(stored, m("lumo.signalsConfig")->exportToJson());
    }

    void register_isStoredWithItsBit() {
        bench_.click("btnAdd");
        type("lineEdit_stationname", "R");
        bench_.click("rdbRegOut_2");
        combo("cmbDORegBias_2")->setCurrentText("3");
        bench_.click("okayBtn");
        QCOMPARE(record(5)->c("DO2_reg")->exportToJson(),
                 QJsonValue(QJsonObject{{"name", "OUT"}, {"bias", 2}, {"type", "bit"}}));
        QCOMPARE(field(5, "DO2_type"), "寄存器");
        QCOMPARE(field(5, "DO2"), "");
        // Where it does not count the template's stays.
        QCOMPARE(field(5, "DO_reg.name"), "");
        QCOMPARE(bench_.cell(5, 8), "启动: IO\n停止: 寄存器");
        QCOMPARE(bench_.cell(5, 9), "\nOUT[3]");
        // And it is shown again.
        bench_.clickRow(5, "btnEdit");
        QCOMPARE(combo("cmbDOReg_2")->currentText(), "OUT");
        QCOMPARE(combo("cmbDORegBias_2")->currentText(), "3");
        QCOMPARE(items("cmbDORegBias_2").size(), 8);
    }

    void whatIsNotOffered_isKept_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("input") << QByteArray(R"({"DI":"DI77","DI_type":"IO"})");
        QTest::newRow("no input") << QByteArray(R"({"DI":"","DI_type":"IO"})");
        QTest::newRow("no register") << QByteArray(
            R"({"DI_type":"寄存器","DI_reg":{"name":"","type":"","bias":-1}})");
        QTest::newRow("register") << QByteArray(
            R"({"DI_type":"寄存器","DI_reg":{"name":"GONE","type":"bool","bias":5}})");
        QTest::newRow("bit") << QByteArray(
            R"({"DI_type":"寄存器","DI_reg":{"name":"IN","type":"bit","bias":9}})");
        QTest::newRow("no bit") << QByteArray(
            R"({"DI_type":"寄存器","DI_reg":{"name":"IN","type":"bit","bias":-1}})");
        QTest::newRow("bit that cannot be")
            << QByteArray(R"({"DI_type":"寄存器","DI_reg":{"name":"IN","type":"bit","bias":2000000000}})");
    }

    void whatIsNotOffered_isKept() {
        QFETCH(QByteArray, json);
        QJsonObject station = test::station(1, "P1.json");
        const QJsonObject fields = QJsonDocument::fromJson(json).object();
        for (auto one = fields.begin(); one != fields.end(); ++one) {
            station.insert(one.key(), *one);
        }
        bench_.renew({station});
        offer();
        const QString before = field(0, "DI") + field(0, "DI_reg.name");
        const int bias = record(0)->r("DI_reg.bias")->getInt();
        bench_.clickRow(0, "btnEdit");
        bench_.click("okayBtn");
        QCOMPARE(field(0, "DI") + field(0, "DI_reg.name"), before);
        QCOMPARE(record(0)->r("DI_reg.bias")->getInt(), bias > 1000 ? -1 : bias);
    }

    void reservedNames_areNotChanged_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("reserved");
        QTest::newRow("English") << "Station 2" << true;
        QTest::newRow("Chinese") << "工位二" << true;
        QTest::newRow("the package's own in Chinese") << "工位 2" << false;
        QTest::newRow("a fifth") << "Station 5" << false;
    }

    void reservedNames_areNotChanged() {
        QFETCH(QString, name);
        QFETCH(bool, reserved);
        record(1)->set(this, "stationname", name);
        bench_.clickRow(1, "btnEdit");
        QCOMPARE(bench_.find<QLineEdit>("lineEdit_stationname")->text(), name);
        QCOMPARE(page()->findChild<QLabel*>("label_8")->text(), reserved ? "固定名称" : "编辑名称");
        type("lineEdit_stationname", "other");
        bench_.click("okayBtn");
        QCOMPARE(field(1, "stationname"), reserved ? name : "other");
    }

    void edit_changesItsStationAlone() {
        const QJsonArray before = m("lumo.signalsConfig")->exportToJson().toArray();
        bench_.clickRow(3, "btnEdit");
        QCOMPARE(combo("cmbDI")->currentText(), "DI4");
        combo("cmbType_2")->setCurrentIndex(1);
        type("lineETime", "a25b0");
        bench_.click("okayBtn");
        QCOMPARE(field(3, "time"), "250");
        QCOMPARE(field(3, "type2"), "下降沿");
        QCOMPARE(bench_.cell(3, 5), "上升沿\n下降沿");
        QJsonArray after = m("lumo.signalsConfig")->exportToJson().toArray();
        QVERIFY(after[3] != before[3]);
        after[3] = before[3];
        QCOMPARE(after, before);
    }

    void cancel_changesNothing() {
        const QJsonValue before = m("lumo.signalsConfig")->exportToJson();
        bench_.click("btnAdd");
        type("lineEdit_stationname", "x");
        bench_.click("cancelBtn");
        bench_.clickRow(2, "btnEdit");
        type("lineEdit_stationname", "x");
        bench_.click("btnclear");
        bench_.click("cancelBtn");
        QCOMPARE(m("lumo.signalsConfig")->exportToJson(), before);
        QCOMPARE(bench_.table()->rowCount(), 5);
        QVERIFY(!QFile::exists("lumo_signalsConfig.json"));
    }

    void emptyName_isRefused() {
        bench_.click("btnAdd");
        bench_.click("okayBtn");
        QCOMPARE(bench_.boxes(), QStringList("工位名称不能为空!"));
        QCOMPARE(bench_.table()->rowCount(), 5);
        QVERIFY(bench_.find<SignalsBindingParamWidget>());
    }

    void project_isKeptByItsName() {
        QDir().mkdir("parts");
        bench_.write("parts/left.json", test::StationBench::delay);
        bench_.clickRow(0, "btnEdit");
        bench_.click("btnOpen");
        bench_.answerFile(QDir().absoluteFilePath("parts/left.json"));
        QCOMPARE(page()->findChild<QLabel*>("lblProject")->text(), "left.json");
        bench_.click("okayBtn");
        QCOMPARE(field(0, "filePath"), "left.json");
        QCOMPARE(bench_.cell(0, 2), "left.json");
        bench_.clickRow(0, "btnEdit");
        bench_.click("btnclear");
        bench_.click("okayBtn");
        QCOMPARE(field(0, "filePath"), "");
    }

    // A station can be given a stop input, and be freed of it again.
    void signal_canBeNone() {
        bench_.clickRow(4, "btnEdit");
        combo("cmbDI_2")->setCurrentText("DI2");
        combo("cmbDO")->setCurrentIndex(0);
        bench_.click("okayBtn");
        QCOMPARE(bench_.cell(4, 4), "DI5\nDI2");
        QCOMPARE(bench_.cell(4, 9), "\nDO15");
        bench_.time.settle();
        bench_.clickRow(4, "btnEdit");
        QCOMPARE(combo("cmbDO")->currentIndex(), 0);
        combo("cmbDI_2")->setCurrentIndex(0);
        bench_.click("okayBtn");
        QCOMPARE(field(4, "DI2"), "");
        QCOMPARE(field(4, "DO"), "");
    }

    void whatIsNoProject_isRefused_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("reports");
        QTest::newRow("settings") << "lumo_param.json" << QByteArray("[]") << 1;
        // The name stands for the file in the working directory.
        QTest::newRow("settings' name") << "parts/lumo_port.json" << QByteArray("[]") << 0;
        QTest::newRow("unknown statement") << "parts/a.json" << QByteArray(R"([{"type":"moveX"}])") << 1;
        QTest::newRow("damaged") << "a.json" << QByteArray("[{") << 1;
        QTest::newRow("missing") << "a.json" << QByteArray() << 1;
    }

    void whatIsNoProject_isRefused() {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QDir().mkdir("parts");
        if (!content.isEmpty()) {
            bench_.write(file, content);
        }
        bench_.clickRow(0, "btnEdit");
        bench_.click("btnOpen");
        bench_.answerFile(QDir().absoluteFilePath(file));
        QCOMPARE(page()->findChild<QLabel*>("lblProject")->text(), "P1.json");
        QTEST(bench_.problems.count(), "reports");
        QCOMPARE(bench_.boxes(), QStringList("该文件不能用作工位的工程：" + QFileInfo(file).fileName()));
        bench_.closeBoxes();
    }

    void editor_isOne_andLeftByTheNavigation() {
        bench_.clickRow(4, "btnEdit");
        const QPointer<SignalsBindingParamWidget> first = page();
        bench_.click("btnMonitor");
        bench_.click("btnBind");
        bench_.time.settle();
        QVERIFY(!first);
        QVERIFY(bench_.table()->isVisible());
        bench_.click("btnAdd");
        QCOMPARE(bench_.page->findChildren<SignalsBindingParamWidget*>().size(), 1);
    }

    // --- The list ---------------------------------------------------------------------------------

    void delete_renumbersAndSaves() {
        bench_.click("btnAdd");
        type("lineEdit_stationname", "last");
        bench_.click("okayBtn");
        bench_.clickRow(4, "btnDel");
        QCOMPARE(bench_.table()->rowCount(), 5);
        QCOMPARE(bench_.cell(4, 0), "5");
        QCOMPARE(bench_.cell(4, 1), "last");
        QCOMPARE(mendo::ModuleManager::readFromJson("lumo_signalsConfig.json").toArray().size(), 5);
        // A second tap on the button hits nothing.
        bench_.click("btnDel");
        QCOMPARE(bench_.boxes(), QStringList("请先选中行"));
        QCOMPARE(bench_.table()->rowCount(), 5);
    }

    void firstFourRows_stay() {
        for (int row = 0; row < 4; ++row) {
            bench_.clickRow(row, "btnDel");
            QCOMPARE(bench_.boxes(), QStringList("默认行禁止删除"));
            bench_.closeBoxes();
        }
        QCOMPARE(bench_.table()->rowCount(), 5);
        QVERIFY(!QFile::exists("lumo_signalsConfig.json"));
    }

    void withoutARow_thereIsNothingToEdit() {
        bench_.table()->setFocus();
        bench_.click("btnEdit");
        QCOMPARE(bench_.boxes(), QStringList("请先选中行"));
        QVERIFY(!bench_.find<SignalsBindingParamWidget>());
    }
};

LUMO_TEST_MAIN(TestStationEditor)
#include "test_stationeditor.moc"
