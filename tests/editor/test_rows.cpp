#include "editor/fulltext.h"
#include "editor/inspector.h"
#include "editor/rowsummary.h"
#include "editorfixture.h"
#include "undo/history.h"

using lumo::LineField;

/// What the rows of the program's list tell, how high they are, and the values that are edited in them.
class TestRows : public EditorTest {
    Q_OBJECT

    static QString summary(int row) {
        const lumo::RowSummary row0 = lumo::summaryOf(line(row));
        QStringList figures;
        for (const auto& points : row0.figures) {
            figures << QStringList(QStringList{points[0], points[1], points[2]}).join(' ');
        }
        return QStringList{figures.join(" / "), row0.title, row0.second, row0.speed + row0.speedUnit,
                           row0.zone,           row0.tool,  row0.note}
            .join('|');
    }
    /// The lines of a full text where each letter is 1 px wide; those that go on behind a ">".
    static QString full(const QString& details, int width) {
        QStringList lines;
        for (const lumo::FullLine& line :
             lumo::fullLines(details, width, 2, [](const QString& text) { return text.size(); })) {
            lines << (line.goesOn ? ">" : "") + line.text;
        }
        return lines.join('\n');
    }

    void tap(const QPoint& place) const { QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, place); }
    /// Taps on the field of a row that is selected already.
    void tapField(int row, LineField field) const { tap(table()->fieldPlace(row, field).center()); }
    QLineEdit* entry() const { return table()->findChild<QLineEdit*>("inlineEntry"); }
    /// Opens the field of a row and types over its value.
    void write(int row, LineField field, const char* text) const {
        act(QString::number(row));
        tapField(row, field);
        QVERIFY(entry() && entry()->hasFocus());
        QTest::keyClicks(QApplication::focusWidget(), text);
    }
    void closed() const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!entry());
    }

    /// Of each line: none, to weld, welded, now.
    QString welds() const {
        QString letters;
        for (int row = 0; row < table()->rowCount(); ++row) {
            letters += ".-WN"[static_cast<int>(table()->seams().at(row).weld)];
        }
        return letters;
    }

private slots:
    void init() { reset(); }

    void summary_tellsWhatTheStatementDoes() {
        m("lumo.param")->loadJson(this, json("[{'name':'A','power':50},{'name':'B','power':72.5}]"));
        ExecutorBench::enablePort(8, true);
        const QByteArray tools = "'toolset':{'end':{'name':'torch'},'ref':{'name':'table'}}";
        load(
            "[{'type':'moveJ','point':{'near':[0,0.1,-0.2,0.3,0.4,-0.00001]},'speed':150,'zone':5,'note':'"
            "home'},"
            "{'type':'moveL','point':{'trans':[0.48,-0.15,0.05449]},'speed':20,'zone':0," +
            tools +
            "},{'type':'moveC','point':{'trans':[0.1,0,-12.3456]},'point1':{'trans':[0.2,0,0]},'speed':'7'},"
            "{'type':'open','index':1,'weldspeed':'12'},{'type':'param','index':9},{'type':'close','note':'"
            "end'},"
            "{'type':'setDO','DO_type':'IO','doName':'DO2','value':'true'},"
            "{'type':'waitDI','DI_type':'register','diName':'','DI_reg':{'name':'IN','bias':2},'value1':'"
            "false'},"
            "{'type':'delay','delaytime':'500'}]");
        const char* const expected[] = {
            "0.0 5.7 −11.5 / 17.2 22.9 0.0°|||150mm/s|5||home",
            "480.0 −150.0 54.5|||20mm/s|0|torch, table|",
            "100.0 0.0 −12346 / 200.0 0.0 0.0|||7mm/s|||",
            "|B|72.5 % · 送丝 ON|12mm/s|||",
            "||||||",
            "||||||end",
            "|DO2 = true|||||",
            "|IN[3] = false|||||",
            "|||500ms|||",
        };
        for (int row = 0; row < program()->size(); ++row) {
            QCOMPARE(summary(row), QString::fromUtf8(expected[row]));
        }
    }

    void fullText_neverBreaksNumbers_andGroupsOnlyWhereTheyAreTooWide() {
        const QString details = "1.Point:xyz(1.5, -2, 30)mm;\n2.Speed:v5mm/s;";
        QCOMPARE(full(details, 40), details);
        QCOMPARE(full(details, 24), "1.Point:\n>xyz(1.5, -2, 30)mm;\n2.Speed:v5mm/s;");
        QCOMPARE(full(details, 12), "1.Point:\n>xyz(1.5,\n>-2, 30)mm;\n2.Speed:\n>v5mm/s;");
        QCOMPARE(full("1.工具：torch, 坐标：xyz(0.000, 0.000, 0.150)mm;", 30),
                 "1.工具：torch, 坐标：\n>xyz(0.000, 0.000, 0.150)mm;");
        QCOMPARE(full("", 10), "");
    }

    void rows_growBeforeAnythingIsCut() {
        load("[{'type':'close'},{'type':'close','note':'" + QByteArray("word ").repeated(60) +
             "'},{'type':'moveL','point':{},'toolset':{'end':{'name':'torch'}}},"
             "{'type':'moveC','point':{},'point1':{},'toolset':{'end':{'name':'torch'}}},"
             "{'type':'moveC','point':{},'point1':{},'toolset':{'end':{'name':'pen'}}}]");
        const auto heights = [this] {
            QVector<int> all;
            for (int row = 0; row < table()->rowCount(); ++row) {
                all << table()->rowHeight(row);
            }
            return all;
        };
        const QVector<int> compact = heights();
        QVERIFY(compact[1] > compact[0] + 16 && compact[3] == compact[0] && compact[4] == compact[0] + 16);
        // The third line's tool is no longer another one than above when the second has it.
        line(3)->c("toolset")->c("end")->set(this, "name", "pen");
        page->changeStatement(3);
        QCOMPARE(heights()[3], compact[4]);
        QCOMPARE(heights()[4], compact[3]);
        table()->setInspected(false);
        act("2");  // opens with its full text
        QVERIFY(heights()[2] > compact[2]);
        table()->setInspected(true);
        QCOMPARE(heights()[2], compact[2]);
        table()->setFullRows(true);
        QVERIFY(heights()[3] > compact[4]);
        table()->setFullRows(false);
        QCOMPARE(heights()[2], compact[2]);
    }

    void bars_followTheRun() {
        bench.robot.setPower("on");
        bench.loadSound(
            "moveL to=1,0,0; open 0 weldspeed=20; moveL to=2,0,0; moveL to=3,0,0; close; open 0 off; moveL");
        QStringList seen{welds()};
        QObject scope;
        connect(m("lumo.execute.line"), &ModuleObject::changed, &scope,
                [&] { QTimer::singleShot(1, &scope, [&] { seen << welds(); }); });
        bench.run();
        seen << welds();
        seen.removeDuplicates();
        QCOMPARE(seen.first(), ".----..");
        QVERIFY2(seen.contains(".WN--..") && seen.contains(".WWN-.."), qPrintable(seen.join(' ')));
        QCOMPARE(seen.last(), ".WWWW..");
        program()->remove(this, "#0");
        QCOMPARE(welds(), "----..");
    }

    void pausedSeam_isWeldedToItsLine() {
        bench.robot.setPower("on");
        bench.loadSound("open 0 weldspeed=20; moveL to=1,0,0; moveL to=2,0,0; close");
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        m("lumo.current.line")->setValue(this, 2);
        program()->loadJson(this, program()->exportToJson());  // as another session finds it
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        makePage();
        QCOMPARE(welds(), "WW--");
    }

    void oneTapSelects_theNextOneEditsTheField() {
        load("moveL speed=20 zone=1 note=a; open 0 weldspeed=30; close; delay 5");
        act("0");
        QVERIFY(!entry());
        const auto store = [this](int row, LineField field, const char* text) {
            write(row, field, text);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            closed();
        };
        store(0, LineField::Speed, "45");
        store(0, LineField::Zone, "3");
        store(0, LineField::Note, "seam");
        store(1, LineField::Speed, "12");
        store(2, LineField::Note, "end");
        QCOMPARE(values("speed") + ',' + values("zone") + ',' + values("weldspeed") + ',' + values("note"),
                 "45   ,3   , 12  ,seam  end ");
        QCOMPARE(line(0)->c("speed")->value().type(), QVariant::Int);
        QVERIFY(tableTellsTheTruth());
        act("3");
        tapField(3, LineField::Speed);  // a delay's time has its dialog
        QVERIFY(!entry());
        for (int step = 0; step < 5; ++step) {
            QVERIFY(lumo::History::instance()->go(lumo::History::Way::Undo));
        }
        QCOMPARE(values("speed") + ',' + values("weldspeed") + ',' + values("note"), "20   , 30  ,a   ");
    }

    void typedValue_isNeverLostUnseen() {
        load("moveL speed=20 zone=1; moveL speed=30 zone=1");
        write(0, LineField::Speed, "77");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        closed();
        QCOMPARE(values("speed"), "20 30");
        write(0, LineField::Speed, "77");
        act("1");  // the focus goes to the table
        closed();
        QCOMPARE(values("speed"), "77 30");
        write(1, LineField::Speed, "250");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(entry() && boxes().isEmpty());
        find("btnCopy")->setFocus();
        QVERIFY(entry());
        QCOMPARE(boxes().size(), 1);
        QVERIFY(boxes().first().contains("199"));
        closeBoxes();
        bench.robot.setPower("on");  // locks the editor
        closed();
        QCOMPARE(boxes().size(), 1);
        QVERIFY(boxes().first().contains("250"));
        QCOMPARE(values("speed"), "77 30");
        act("0");
        tapField(0, LineField::Speed);
        QVERIFY(!entry());
    }

    void statementThatLeaves_takesItsEntryAlong() {
        load("moveL speed=20 zone=1; moveL speed=30 zone=1");
        write(1, LineField::Speed, "77");
        table()->moveStatement(this, 1, 0);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        closed();
        QCOMPARE(values("speed"), "77 20");
        write(0, LineField::Speed, "55");
        program()->remove(this, "#0");
        closed();
        QCOMPARE(boxes().size(), 1);
        QCOMPARE(values("speed"), "20");
    }

    void inspector_showsAndEditsTheSelectedLine() {
        lumo::Inspector inspector(table());
        inspector.setWithEntries(true);
        inspector.resize(300, 400);
        inspector.show();
        load("moveL speed=20 zone=1 note=a; close note=b");
        act("0");
        QCOMPARE(inspector.accessibleDescription(), lumo::statementDetails(line(0)));
        QList<QLineEdit*> entries = inspector.findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(entries.size(), 3);
        typeIn(entries[0], "66");
        QTest::keyClick(entries[0], Qt::Key_Return);
        QCOMPARE(values("speed"), "66 ");
        QVERIFY(inspector.accessibleDescription().contains("v66"));
        bench.robot.setPower("on");
        QVERIFY(!entries[0]->isEnabled());
    }
};

LUMO_TEST(TestRows)
#include "test_rows.moc"
