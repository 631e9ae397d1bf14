#include "devices/handlit.h"
#include "devices/portconfigwidget.h"
#include "support/executorbench.h"
#include "support/suite.h"
#include "support/text.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QSignalSpy>
#include <QWheelEvent>

using namespace test;

/// The page of the port assignment, worked by mouse and keyboard.
class TestPortConfig : public QObject {
    Q_OBJECT

    ExecutorBench bench_;
    std::unique_ptr<PortConfigWidget> page_;

    static ModuleObject* port(int row) { return m("lumo.port")->c(row); }
    QTableWidget* table() const { return child<QTableWidget>(page_.get(), "tableWidget"); }
    QComboBox* box(int row) const { return qobject_cast<QComboBox*>(table()->cellWidget(row, 3)); }
    QCheckBox* check(int row) const { return qobject_cast<QCheckBox*>(table()->cellWidget(row, 4)); }
    QString offered(int row) const {
        QTest::mousePress(box(row), Qt::LeftButton);
        box(row)->hidePopup();
        return textsOf(box(row)).join(' ');
    }
    void confirm() {
        click(child(page_.get(), "okayBtn"));
        bench_.time.settle();
    }
    /// The page as it is made on a visit.
    void open() {
        page_ = std::make_unique<PortConfigWidget>();
        page_->resize(900, 700);
        page_->show();
        QApplication::setActiveWindow(page_.get());
    }

private slots:
    void init() {
        bench_.reset();
        QFile::remove("lumo_port.json");
        for (const QString name :
             {"LUMO_AO_0", "LUMO_AO_1", "LUMO_AO_2", "LUMO_AO_3", "SPEED_AO", "lumo_ao_9"}) {
            kordservice()->dataNode("register.values")->set(this, name + ".#0", 0);
        }
    }

    void cleanup() {
        page_.reset();
        Q_UNUSED(lumo::takeLitByHand());
    }

    void rows_tellWhichPortTheyAre() {
        const QMap<int, QString> rows{{0, "1  激光器状态"}, {5, "6 输入DI 焊接状态"},
                                      {6, "1  给气"},       {14, "9 输出DO 抽丝信号"},
                                      {15, "1  送丝速度"},  {18, "4 模拟量输出AO 激光占空比"}};
        open();
        QCOMPARE(table()->rowCount(), 19);
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            QStringList texts;
            for (const int column : {0, 1, 2}) {
                texts << qobject_cast<QLabel*>(table()->cellWidget(row.key(), column))->text();
            }
            QCOMPARE(texts.join(' '), row.value());
        }
    }

    /// A name that two ports have, as a file edited by hand may say, is lost to the one that is pressed.
    void box_offersWhatNobodyElseHas_byFingerAndByKey() {
        port(0)->set(this, "name", "DI2_0");
        open();
        QCOMPARE(box(0)->currentText(), "");  // is not offered
        QCOMPARE(offered(0),
                 " LUMO_DI.#0 LUMO_DI.#6 LUMO_DI.#7 LUMO_DI.#8 LUMO_DI.#9 LUMO_DI.#10 LUMO_DI.#11 "
                 "LUMO_DI.#12 LUMO_DI.#13 LUMO_DI.#14 LUMO_DI.#15");
        QCOMPARE(offered(14), "?");
        QCOMPARE(offered(15), " LUMO_AO_0 lumo_ao_9");
        QCOMPARE(box(15)->currentText(), "LUMO_AO_0");
        box(16)->setCurrentText("");
        QCOMPARE(offered(15), " LUMO_AO_0 LUMO_AO_1 lumo_ao_9");
        QTest::keyClick(box(15), Qt::Key_Down);
        QTest::keyClick(box(17), Qt::Key_Up);
        QCOMPARE(box(15)->currentText() + box(17)->currentText(), "LUMO_AO_1LUMO_AO_0");
        QTest::keyClick(box(16), Qt::Key_End);
        QTest::keyClick(box(18), Qt::Key_Home);
        QCOMPARE(box(16)->currentText() + box(18)->currentText(), "lumo_ao_9");

        const QPoint centre = box(1)->rect().center();
        QWheelEvent turn(centre, box(1)->mapToGlobal(centre), QPoint(), QPoint(0, -120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box(1), &turn);
        QVERIFY(!turn.isAccepted());  // it scrolls the table
        QCOMPARE(box(1)->currentText(), "LUMO_DI.#1");

        port(17)->set(this, "name", "LUMO_AO_1");
        open();
        QCOMPARE(offered(17), " LUMO_AO_2 lumo_ao_9");
        QCOMPARE(box(17)->currentText() + box(16)->currentText(), "LUMO_AO_1");
    }

    void tabAndFinger_reachEveryCell() {
        open();
        box(0)->setFocus();
        for (QWidget* const next : QWidgetList{check(0), box(1), check(1)}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
        check(17)->setFocus();
        table()->scrollToTop();
        QTest::keyClick(check(17), Qt::Key_Tab);
        QVERIFY(box(18)->hasFocus() && table()->viewport()->rect().contains(box(18)->geometry().center()));
        QTest::mouseClick(check(18), Qt::LeftButton, {}, check(18)->rect().bottomRight() - QPoint(2, 2));
        QVERIFY(!check(18)->isChecked() && check(18)->height() >= 48);
    }

    void nothingIsWrittenBeforeOk_andOkStoresTheTable() {
        const QString before = text(m("lumo.port"));
        for (const bool confirmed : {false, true}) {
            open();
            box(DO_GAS)->setCurrentText("LUMO_DO.#10");
            box(AO_WIRE_SPEED)->setCurrentText("");
            click(check(DO_GAS));
            if (confirmed) {
                confirm();
            }
            page_.reset();
            QCOMPARE(text(m("lumo.port")) == before, !confirmed);
            QCOMPARE(QFile::exists("lumo_port.json"), confirmed);
        }
        const QJsonArray file = json(contentOf("lumo_port.json")).toArray();
        QCOMPARE(file.size(), 19);
        QCOMPARE(text(file[DO_GAS]), "{'enable':false,'name':'LUMO_DO.#10','type':'DO'}");
        QCOMPARE(text(file[AO_WIRE_SPEED]), "{'enable':true,'name':'','type':'AO'}");
        QCOMPARE(text(port(DO_GAS)), "?");
        QCOMPARE(boxes(), QStringList("保存成功"));
    }

    void fileThatCannotBeWritten_isNoSuccess() {
        open();
        QVERIFY(QDir().mkdir("lumo_port.json"));  // nothing can be renamed over a folder
        QSignalSpy problems(m(), &mendo::ModuleManager::fileProblem);
        confirm();
        QVERIFY(QDir().rmdir("lumo_port.json"));
        QCOMPARE(problems.size(), 1);
        QCOMPARE(boxes(), QStringList());
    }

    void outputThatIsOn_isSwitchedOffBeforeItsPortLeavesIt_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("used");
        QTest::addColumn<QString>("writes");
        const auto row = [](const char* what, int port, const char* name, bool used, const char* writes) {
            QTest::newRow(what) << port << name << used << writes;
        };
        const char* const locked = "0 LASER 0, 0 RED 0, 0 LASERLOCK 0";
        row("laser, elsewhere", DO_LASER_ENABLE, "LUMO_DO.#12", true, "0 LASER 0");
        row("laser, nowhere", DO_LASER_ENABLE, "", true, "0 LASER 0");
        row("laser, not used", DO_LASER_ENABLE, "LUMO_DO.#3", false, "0 LASER 0");
        row("laser, as it was", DO_LASER_ENABLE, "LUMO_DO.#3", true, "");
        row("power, elsewhere", AO_LASER_POWER, "lumo_ao_9", true, "0 POWER 0");
        row("gas, which is off", DO_GAS, "LUMO_DO.#12", true, "");
        row("input", DI_LASER_STATE, "LUMO_DI.#12", true, "");
        row("laser lock, not used", DO_LASER_SAFETY_LOCK, "LUMO_DO.#5", false, locked);
        row("laser lock, elsewhere", DO_LASER_SAFETY_LOCK, "LUMO_DO.#12", true, locked);
        row("open wire lock of a wire that runs", DO_WIRE_SAFETY_LOCK, "LUMO_DO.#6", false, "0 WIRE 0");
        row("gas lit so lately that it does not show", DO_GAS_SAFETY_LOCK, "LUMO_DO.#7", false, "0 GAS 0");
    }

    void outputThatIsOn_isSwitchedOffBeforeItsPortLeavesIt() {
        QFETCH(int, row);
        QFETCH(QString, name);
        QFETCH(bool, used);
        QFETCH(QString, writes);
        ModuleObject* const registers = kordservice()->dataNode("register.values");
        for (const char* const bit : {"LUMO_DO.#1", "LUMO_DO.#2", "LUMO_DO.#3", "LUMO_DO.#5", "LUMO_DI.#0"}) {
            registers->set(this, bit, true);
        }
        registers->set(this, "LUMO_AO_1.#0", 16384);
        lumo::noteByHand(DO_LASER_ENABLE, true);
        lumo::noteByHand(DO_GAS, row == DO_GAS_SAFETY_LOCK);
        page_ = std::make_unique<PortConfigWidget>();
        box(row)->setCurrentText(name);
        check(row)->setChecked(used);
        bench_.robot.mark();
        confirm();
        QCOMPARE(bench_.robot.log().join(", "), writes);
        QCOMPARE(lumo::isLitByHand(DO_LASER_ENABLE), !writes.contains("0 LASER 0"));
        QCOMPARE(port(row)->c("name")->getString(), name);
    }

    void laserThatNobodyCouldSwitchOff_isNotLeftOnInAWeld() {
        for (const int row : {int(DO_LASER_ENABLE), int(DO_LASER_SAFETY_LOCK)}) {
            bench_.reset();
            bench_.load(R"([{"type":"open","index":0},{"type":"delay","delaytime":2000},{"type":"close"}])");
            page_ = std::make_unique<PortConfigWidget>();
            check(row)->setChecked(false);
            bench_.at(1500, [this] {
                QCOMPARE(bench_.robot.output("LASER"), 1.0);
                confirm();
            });
            bench_.run();
            bench_.settle();
            QCOMPARE(bench_.robot.offSince("LASER"), 1500);
            QCOMPARE(bench_.state(), "idle");
        }
    }

    void wireUse_goesToTheStartsOfWelding() {
        bench_.load(R"([{"type":"open","wireEnable":true},{"type":"param","wireEnable":true},
                        {"type":"open","wireEnable":true},{"type":"close"}])");
        open();
        QList<QList<int>> reported;
        connect(page_.get(), &PortConfigWidget::signalportconfigchangedProgramlist, this,
                [&reported](const QList<int>& lines) { reported << lines; });
        for (const int switched : {DO_GAS, DO_WIRE_ENABLE, DO_GAS}) {
            click(check(switched));
            confirm();
        }
        QCOMPARE(reported, QList<QList<int>>({{}, {0, 2}, {}}));
        QString uses;
        for (const ModuleObject* const line : m("lumo.program")->cmobjs()) {
            uses += line->c("wireEnable")->getBool() ? 'y' : 'n';
        }
        QCOMPARE(uses, "nynn");
    }
};

LUMO_TEST(TestPortConfig)
#include "test_portconfig.moc"
