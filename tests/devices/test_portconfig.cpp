// The page of the port assignment, worked by mouse and keyboard.

#include "devices/handlit.h"
#include "devices/portconfigwidget.h"
#include "support/executorbench.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QWheelEvent>

class TestPortConfig : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;
    std::unique_ptr<PortConfigWidget> page_;
    std::unique_ptr<QSignalSpy> reports_;

    static constexpr auto fileName = "lumo_port.json";
    static constexpr int gas = 6;
    static constexpr int wire = 8;

    static ModuleObject* ports() { return m(QStringLiteral("lumo.port")); }
    static QString assigned(int row) { return ports()->c(row)->c(QStringLiteral("name"))->getString(); }
    static bool isUsed(int row) { return ports()->c(row)->c(QStringLiteral("enable"))->getBool(); }

    /// The page as it is made on a visit.
    void open() {
        page_ = std::make_unique<PortConfigWidget>();
        page_->resize(900, 700);
        page_->show();
        QApplication::setActiveWindow(page_.get());
        reports_ =
            std::make_unique<QSignalSpy>(page_.get(), &PortConfigWidget::signalportconfigchangedProgramlist);
        bench_.time.settle();
    }

    QTableWidget* table() const { return page_->findChild<QTableWidget*>(QStringLiteral("tableWidget")); }
    template <class Widget>
    Widget* cell(int row, int column) const {
        return qobject_cast<Widget*>(table()->cellWidget(row, column));
    }
    QComboBox* box(int row) const { return cell<QComboBox>(row, 3); }
    QCheckBox* check(int row) const { return cell<QCheckBox>(row, 4); }

    static QStringList choices(const QComboBox* box) {
        QStringList texts;
        for (int index = 0; index < box->count(); ++index) {
            texts << box->itemText(index);
        }
        return texts;
    }

    /// Presses a box and takes one of what it then offers.
    void choose(int row, const QString& name) {
        QTest::mousePress(box(row), Qt::LeftButton);
        bench_.time.settle();
        QVERIFY(box(row)->view()->isVisible());
        const int index = box(row)->findText(name);
        QVERIFY2(index >= 0, qPrintable(name));
        box(row)->setCurrentIndex(index);
        box(row)->hidePopup();
    }

    void confirm() {
        QTest::mouseClick(page_->findChild<QPushButton*>(QStringLiteral("okayBtn")), Qt::LeftButton);
        bench_.time.settle();
    }

    QList<int> reportedLines() const { return reports_->last()[0].value<QList<int>>(); }

    static QJsonArray file() {
        QFile stored(fileName);
        return stored.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(stored.readAll()).array()
                                                : QJsonArray();
    }

private slots:
    void initTestCase() { qRegisterMetaType<QList<int>>(); }

    void init() {
        bench_.reset();
        QFile::remove(fileName);
        for (const char* name :
             {"LUMO_AO_0", "LUMO_AO_1", "LUMO_AO_2", "LUMO_AO_3", "SPEED_AO", "lumo_ao_9"}) {
            kordservice()
                ->dataNode(QStringLiteral("register.values"))
                ->set(this, QLatin1String(name) + QStringLiteral(".#0"), 0);
        }
    }

    void cleanup() {
        page_.reset();
        Q_UNUSED(lumo::takeLitByHand());
    }

    void rows_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<int>("merged");
        const auto row = [](int at, const char* number, const char* group, const char* tag, int merged) {
            QTest::addRow("%d", at) << at << QStringList{number, group, tag} << merged;
        };
        row(0, "1", "", "激光器状态", 1);
        row(1, "2", "输入DI", "激光头状态", 5);
        row(5, "6", "输入DI", "焊接状态", 5);
        row(6, "1", "", "给气", 1);
        row(7, "2", "输出DO", "红光", 8);
        row(14, "9", "输出DO", "抽丝信号", 8);
        row(15, "1", "", "送丝速度", 1);
        row(16, "2", "模拟量输出AO", "激光功率", 3);
        row(18, "4", "模拟量输出AO", "激光占空比", 3);
    }

    void rows() {
        QFETCH(int, row);
        open();
        QStringList texts;
        for (const int column : {0, 1, 2}) {
            texts << cell<QLabel>(row, column)->text();
            QCOMPARE(cell<QLabel>(row, column)->alignment(), Qt::AlignCenter);
        }
        QTEST(texts, "texts");
        QTEST(table()->rowSpan(row, 1), "merged");
        QCOMPARE(table()->rowCount(), 19);
        QCOMPARE(check(row)->text(), QString("启用"));
        const bool isHead = texts[1].isEmpty();
        for (int column = 0; column < 5; ++column) {
            QCOMPARE(table()->cellWidget(row, column)->styleSheet() == "background-color: #CCCCCC", isHead);
        }
    }

    void box_offersTheRegistersOfItsKind_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("names");
        const auto sixteenOf = [](const QString& pattern) {
            QStringList names{QString()};
            for (int bit = 0; bit < 16; ++bit) {
                names << pattern.arg(bit);
            }
            return names;
        };
        QTest::newRow("input") << 0 << sixteenOf("LUMO_DI.#%1");
        QTest::newRow("output") << 14 << sixteenOf("LUMO_DO.#%1");
        QTest::newRow("analogue") << 15 << QStringList{"",          "LUMO_AO_0", "LUMO_AO_1",
                                                       "LUMO_AO_2", "LUMO_AO_3", "lumo_ao_9"};
    }

    void box_offersTheRegistersOfItsKind() {
        QFETCH(int, row);
        open();
        QTEST(choices(box(row)), "names");
        QCOMPARE(box(row)->currentText(), assigned(row));
    }

    void pressedBox_offersWhatNobodyElseHas_data() {
        QTest::addColumn<QList<QPair<int, QString>>>("before");  // rows and what they are given first
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("offered");
        QTest::addColumn<QString>("current");
        using Names = QList<QPair<int, QString>>;
        QTest::newRow("all taken") << Names{} << 15 << QStringList{"", "LUMO_AO_0", "lumo_ao_9"}
                                   << "LUMO_AO_0";
        QTest::newRow("one freed") << Names{{16, ""}} << 15
                                   << QStringList{"", "LUMO_AO_0", "LUMO_AO_1", "lumo_ao_9"} << "LUMO_AO_0";
        QTest::newRow("one more taken")
            << Names{{16, "lumo_ao_9"}} << 15 << QStringList{"", "LUMO_AO_0", "LUMO_AO_1"} << "LUMO_AO_0";
        QTest::newRow("not assigned")
            << Names{{15, ""}} << 15 << QStringList{"", "LUMO_AO_0", "lumo_ao_9"} << "";
    }

    void pressedBox_offersWhatNobodyElseHas() {
        using Names = QList<QPair<int, QString>>;
        QFETCH(Names, before);
        QFETCH(int, row);
        open();
        for (const auto& [given, name] : before) {
            choose(given, name);
        }
        QTest::mousePress(box(row), Qt::LeftButton);
        QTEST(choices(box(row)), "offered");
        QTEST(box(row)->currentText(), "current");
        box(row)->hidePopup();
    }

    /// As happens when the file was edited by hand.
    void nameThatTwoPortsHave_isLostToTheOneThatIsPressed() {
        ports()->c(17)->set(this, QStringLiteral("name"), "LUMO_AO_1");
        open();
        QTest::mousePress(box(17), Qt::LeftButton);
        QCOMPARE(box(17)->currentText(), QString());
        QCOMPARE(choices(box(17)), QStringList({"", "LUMO_AO_2", "lumo_ao_9"}));
        box(17)->hidePopup();
        QCOMPARE(box(16)->currentText(), QString("LUMO_AO_1"));
    }

    void keyboard_passesOverWhatIsTaken() {
        open();
        QTest::keyClick(box(15), Qt::Key_Down);
        QCOMPARE(box(15)->currentText(), QString("lumo_ao_9"));
        QTest::keyClick(box(15), Qt::Key_Home);
        QCOMPARE(box(15)->currentText(), QString());
        QTest::keyClick(box(16), Qt::Key_Up);
        QCOMPARE(box(16)->currentText(), QString("LUMO_AO_0"));
    }

    void wheel_scrollsAndAssignsNothing() {
        open();
        const QPoint centre = box(1)->rect().center();
        QWheelEvent turn(centre, box(1)->mapToGlobal(centre), QPoint(), QPoint(0, -120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box(1), &turn);
        QCOMPARE(box(1)->currentText(), assigned(1));
        QVERIFY(!turn.isAccepted());
    }

    void tab_goesFromBoxToBoxAndScrolls() {
        open();
        box(0)->setFocus();
        QWidget* reached = nullptr;
        for (const int row : {0, 1, 2}) {
            reached = QApplication::focusWidget();
            QCOMPARE(reached, static_cast<QWidget*>(box(row)));
            QTest::keyClick(reached, Qt::Key_Tab);
            reached = QApplication::focusWidget();
            QCOMPARE(reached, static_cast<QWidget*>(check(row)));
            QTest::keyClick(reached, Qt::Key_Tab);
        }
        check(17)->setFocus();
        table()->scrollToTop();
        QTest::keyClick(check(17), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(box(18)));
        QVERIFY(table()->viewport()->rect().contains(box(18)->geometry().center()));
    }

    void check_isHitAnywhereInItsCell() {
        open();
        QTest::mouseClick(check(2), Qt::LeftButton, {}, check(2)->rect().bottomRight() - QPoint(2, 2));
        QVERIFY(!check(2)->isChecked());
        QVERIFY(check(2)->height() >= 48);
    }

    void nothingIsWritten_beforeOk() {
        QSignalSpy names(ports()->c(gas)->c(QStringLiteral("name")), &ModuleObject::changed);
        QSignalSpy uses(ports()->c(gas)->c(QStringLiteral("enable")), &ModuleObject::changed);
        open();
        choose(gas, "LUMO_DO.#10");
        QTest::mouseClick(check(gas), Qt::LeftButton);
        page_.reset();
        QCOMPARE(names.count() + uses.count(), 0);
        QVERIFY(!QFile::exists(fileName));
    }

    void ok_storesTheTable() {
        open();
        choose(gas, "LUMO_DO.#10");
        choose(15, "");
        QTest::mouseClick(check(gas), Qt::LeftButton);
        QSignalSpy names(ports()->c(gas)->c(QStringLiteral("name")), &ModuleObject::changed);
        confirm();
        QCOMPARE(assigned(gas), QString("LUMO_DO.#10"));
        QVERIFY(!isUsed(gas));
        QCOMPARE(names.value(0).value(2).value<QObject*>(), page_.get());
        QCOMPARE(file().size(), 19);
        QCOMPARE(file()[gas].toObject(),
                 QJsonObject({{"type", "DO"}, {"name", "LUMO_DO.#10"}, {"enable", false}}));
        QCOMPARE(file()[15].toObject(), QJsonObject({{"type", "AO"}, {"name", ""}, {"enable", true}}));
        QCOMPARE(ports()->c(gas)->c(QStringLiteral("tag"))->getString(), QString("给气"));
        QCOMPARE(bench_.boxes(), QStringList{"保存成功"});
        bench_.closeBoxes();
        QFile::remove(fileName);
        confirm();
        QCOMPARE(file().size(), 19);
        QCOMPARE(bench_.boxes(), QStringList{"保存成功"});
    }

    void ok_whenTheFileCannotBeWritten_claimsNoSuccess() {
        open();
        QVERIFY(QDir().mkdir(fileName));  // nothing can be renamed over a folder
        QSignalSpy problems(m(), &mendo::ModuleManager::fileProblem);
        confirm();
        QVERIFY(QDir().rmdir(fileName));
        QCOMPARE(problems.size(), 1);
        QCOMPARE(bench_.boxes(), QStringList());
    }

    void outputThatIsOn_isSwitchedOffBeforeItsPortLeavesIt_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("used");
        QTest::addColumn<QStringList>("writes");
        QTest::newRow("laser, elsewhere") << 9 << "LUMO_DO.#12" << true << QStringList{"0 LASER 0"};
        QTest::newRow("laser, nowhere") << 9 << "" << true << QStringList{"0 LASER 0"};
        QTest::newRow("laser, not used") << 9 << "LUMO_DO.#3" << false << QStringList{"0 LASER 0"};
        QTest::newRow("laser, as it was") << 9 << "LUMO_DO.#3" << true << QStringList{};
        QTest::newRow("power, elsewhere") << 16 << "lumo_ao_9" << true << QStringList{"0 POWER 0"};
        QTest::newRow("gas, which is off") << gas << "LUMO_DO.#12" << true << QStringList{};
        QTest::newRow("input") << 0 << "LUMO_DI.#12" << true << QStringList{};
        const QStringList locked{"0 LASER 0", "0 RED 0", "0 LASERLOCK 0"};
        QTest::newRow("laser lock, not used") << 11 << "LUMO_DO.#5" << false << locked;
        QTest::newRow("laser lock, elsewhere") << 11 << "LUMO_DO.#12" << true << locked;
        QTest::newRow("laser lock, as it was") << 11 << "LUMO_DO.#5" << true << QStringList{};
        QTest::newRow("open wire lock of a wire that runs")
            << 12 << "LUMO_DO.#6" << false << QStringList{"0 WIRE 0"};
        QTest::newRow("gas lock, gas lit so lately that it does not show")
            << 13 << "LUMO_DO.#7" << false << QStringList{"0 GAS 0"};
    }

    void outputThatIsOn_isSwitchedOffBeforeItsPortLeavesIt() {
        QFETCH(int, row);
        QFETCH(QString, name);
        QFETCH(bool, used);
        QFETCH(QStringList, writes);
        ModuleObject* const registers = kordservice()->dataNode(QStringLiteral("register.values"));
        for (const char* bit : {"LUMO_DO.#1", "LUMO_DO.#2", "LUMO_DO.#3", "LUMO_DO.#5", "LUMO_DI.#0"}) {
            registers->set(this, QLatin1String(bit), true);
        }
        registers->set(this, QStringLiteral("LUMO_AO_1.#0"), 16384);
        lumo::noteByHand(DO_LASER_ENABLE, true);
        lumo::noteByHand(DO_GAS, row == 13);
        open();
        choose(row, name);
        check(row)->setChecked(used);
        bench_.robot.mark();
        confirm();
        QCOMPARE(bench_.robot.log(), writes);
        QCOMPARE(lumo::isLitByHand(DO_LASER_ENABLE), !writes.contains("0 LASER 0"));
        QCOMPARE(assigned(row), name);
    }

    void laserThatNobodyCouldSwitchOff_isNotLeftOnInAWeld_data() {
        QTest::addColumn<int>("row");
        QTest::newRow("laser, elsewhere") << 9;
        QTest::newRow("laser lock, not used") << 11;
    }

    void laserThatNobodyCouldSwitchOff_isNotLeftOnInAWeld() {
        QFETCH(int, row);
        bench_.load(R"([{"type":"open","index":0},{"type":"delay","delaytime":2000},{"type":"close"}])");
        open();
        choose(row, row == 9 ? "LUMO_DO.#12" : "LUMO_DO.#5");
        check(row)->setChecked(row == 9);
        bench_.at(1500, [this] {
            QCOMPARE(bench_.robot.output("LASER"), 1.0);
            confirm();
        });
        bench_.run();
        bench_.settle();
        QCOMPARE(bench_.robot.offSince("LASER"), 1500);
        QCOMPARE(bench_.robot.output("LASER"), 0.0);
        QCOMPARE(bench_.state(), QString("idle"));
    }

    void nameThatIsNotOffered_isStoredAsNotAssigned() {
        ports()->c(0)->set(this, QStringLiteral("name"), "DI2_0");
        open();
        QCOMPARE(box(0)->currentText(), QString());
        confirm();
        QCOMPARE(assigned(0), QString());
    }

    void wireUse_goesToTheStartsOfWelding_data() {
        QTest::addColumn<int>("switched");
        QTest::addColumn<QList<int>>("lines");
        QTest::newRow("wire") << wire << QList<int>{0, 2};
        QTest::newRow("gas") << gas << QList<int>{};
        QTest::newRow("none") << -1 << QList<int>{};
    }

    void wireUse_goesToTheStartsOfWelding() {
        QFETCH(int, switched);
        bench_.load(R"([{"type":"open","wireEnable":true},{"type":"param","wireEnable":true},
                        {"type":"open","wireEnable":true},{"type":"close"}])");
        open();
        if (switched >= 0) {
            QTest::mouseClick(check(switched), Qt::LeftButton);
        }
        confirm();
        QCOMPARE(reports_->count(), 1);
        QTEST(reportedLines(), "lines");
        const ModuleObject* program = m(QStringLiteral("lumo.program"));
        for (const int line : {0, 1, 2}) {
            QCOMPARE(program->c(line)->c(QStringLiteral("wireEnable"))->getBool(),
                     !reportedLines().contains(line));
        }
        bench_.closeBoxes();
        confirm();
        QCOMPARE(reportedLines(), QList<int>{});
    }

    void withoutPorts_theFileHoldsAnEmptyObject() {
        ModuleObject kept;
        kept.copyFrom(this, ports());
        ports()->loadJson(this, QJsonArray());
        open();
        confirm();
        QFile stored(fileName);
        QVERIFY(stored.open(QIODevice::ReadOnly));
        QCOMPARE(stored.readAll().simplified(), QByteArray("{ }"));
        QCOMPARE(bench_.boxes(), QStringList{});
        ports()->copyFrom(this, &kept);
    }
};

LUMO_TEST_MAIN(TestPortConfig)
#include "test_portconfig.moc"
