// The editor of a parameter set's values: its rows, what can be typed, what is stored and passed on.

#include "params/paramvaluesdialog.h"

#include "support/executorbench.h"

#include <QDialogButtonBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

class TestParamValues : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static ModuleObject* sets() { return m(QStringLiteral("lumo.param")); }
    static ModuleObject* program() { return m(QStringLiteral("lumo.program")); }
    static QTableWidget* table(const QDialog& dialog) { return dialog.findChild<QTableWidget*>(); }

    static QLineEdit* line(const QDialog& dialog, int row) {
        return qobject_cast<QLineEdit*>(table(dialog)->cellWidget(row, 3));
    }

    static QString text(const QDialog& dialog, int row, int column) {
        const auto* label = qobject_cast<QLabel*>(table(dialog)->cellWidget(row, column));
        return label ? label->text() : line(dialog, row)->text();
    }

    static void type(const QDialog& dialog, int row, const QString& text) {
        line(dialog, row)->selectAll();
        QTest::keyClick(line(dialog, row), Qt::Key_Delete);
        QTest::keyClicks(line(dialog, row), text);
    }

    /// The named field of every line of the program.
    static QList<double> values(const char* field) {
        QList<double> result;
        for (const ModuleObject* statement : program()->cmobjs()) {
            result << statement->r(QString::fromLatin1(field))->getDouble(-1);
        }
        return result;
    }

private slots:
    void init() {
        bench_.reset();
        bench_.setParam("power", 50, 2);
        for (int i = 0; i < 3; ++i) {
            sets()->c(i)->set(this, QStringLiteral("name"), QString(QChar('A' + i)));
        }
    }

    void rows() {
        ParamValuesDialog dialog(sets()->c(0));
        QStringList numbers;
        QStringList groups;
        for (int row = 0; row < 15; ++row) {
            numbers << text(dialog, row, 0);
            groups << text(dialog, row, 1);
        }
        QCOMPARE(numbers.join(' '), QString("1 2 3 1 2 3 4 5 6 7 8 1 2 3 4"));
        QCOMPARE(groups.join('|'),
                 QString("|功率参数|功率参数||过程参数|过程参数|过程参数|过程参数|过程参数|过程参数|过程参数|"
                         "|送丝参数|送丝参数|送丝参数"));
        QCOMPARE(table(dialog)->rowCount(), 15);
        QCOMPARE(text(dialog, 1, 2), QString("激光频率(%)"));
        QCOMPARE(text(dialog, 1, 3), QString("40"));
        QCOMPARE(text(dialog, 1, 4), QString("[0,100]"));
        QCOMPARE(text(dialog, 14, 4), QString("[0,5000]"));
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("label"))->text(), QString("<h1>[A]:</h1>"));
    }

    void groups_areMergedUnderGreyHeads() {
        ParamValuesDialog dialog(sets()->c(0));
        QList<int> spans;
        QList<int> heads;
        for (int row = 0; row < 15; ++row) {
            spans << table(dialog)->rowSpan(row, 1);
            int grey = 0;
            for (int column = 0; column < 5; ++column) {
                grey += table(dialog)->cellWidget(row, column)->styleSheet() == "background-color: #CCCCCC";
            }
            QVERIFY(grey == 0 || grey == 5);
            if (grey > 0) {
                heads << row;
            }
        }
        QCOMPARE(heads, QList<int>({0, 3, 11}));
        QCOMPARE(spans, QList<int>({1, 2, 2, 1, 7, 7, 7, 7, 7, 7, 7, 1, 3, 3, 3}));
    }

    void typing_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        for (const int row : {0, 2, 11}) {
            for (const auto& [typed, expected] :
                 std::initializer_list<QPair<const char*, const char*>>{{"100", "100"},
                                                                        {"101", "10"},
                                                                        {"0", "0"},
                                                                        {"007", "0"},
                                                                        {"99", "99"},
                                                                        {"-5", "5"},
                                                                        {"7.5", "75"}}) {
                QTest::addRow("row %d, percent %s", row, typed) << row << QString(typed) << QString(expected);
            }
        }
        for (const int row : {3, 10, 12, 14}) {
            for (const auto& [typed, expected] :
                 std::initializer_list<QPair<const char*, const char*>>{{"5000", "5000"},
                                                                        {"5001", "500"},
                                                                        {"4999", "4999"},
                                                                        {"0", "0"},
                                                                        {"05", "0"},
                                                                        {"60000", "600"}}) {
                QTest::addRow("row %d, time %s", row, typed) << row << QString(typed) << QString(expected);
            }
        }
    }

    void typing() {
        QFETCH(int, row);
        QFETCH(QString, typed);
        ParamValuesDialog dialog(sets()->c(0));
        type(dialog, row, typed);
        QTEST(line(dialog, row)->text(), "expected");
    }

    /// The press goes to the panel's input method; the first one selects what typing will replace.
    void pressOnALine_isConsumed() {
        sets()->c(0)->set(this, QStringLiteral("stay_time"), 1234);
        ParamValuesDialog dialog(sets()->c(0));
        dialog.open();
        bench_.time.settle();
        QTest::mouseClick(line(dialog, 5), Qt::LeftButton, {}, QPoint(2, 10));
        QCOMPARE(line(dialog, 5)->selectedText(), QString("1234"));
        line(dialog, 5)->end(false);
        QTest::mouseClick(line(dialog, 5), Qt::LeftButton, {}, QPoint(2, 10));
        QCOMPARE(line(dialog, 5)->cursorPosition(), 4);
    }

    /// Row after row without the mouse, and never typing where nobody sees it.
    void tab_goesFromFieldToField() {
        ParamValuesDialog dialog(sets()->c(0));
        dialog.open();
        bench_.time.settle();
        QTest::mouseClick(line(dialog, 0), Qt::LeftButton);
        const int rows = table(dialog)->rowCount();
        for (int row = 0; row < rows; ++row) {
            QCOMPARE(dialog.focusWidget(), line(dialog, row));
            QVERIFY(table(dialog)->viewport()->rect().contains(line(dialog, row)->geometry()));
            QTest::keyClicks(line(dialog, row), QString::number(row));
            QTest::keyClick(line(dialog, row), Qt::Key_Tab);
        }
        for (int row = 0; row < rows; ++row) {
            QCOMPARE(line(dialog, row)->text(), QString::number(row));
        }
        QVERIFY(qobject_cast<QPushButton*>(dialog.focusWidget()));
    }

    void changes_reachTheProgram_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QList<int>>("lines");
        QTest::addColumn<QList<double>>("power");
        QTest::addColumn<QList<double>>("ratio");
        const QList<double> same{1, 1, 1, 1, 1};
        QTest::newRow("power") << 0 << "60" << QList<int>{1, 4} << QList<double>{1, 60, 1, 1, 60} << same;
        QTest::newRow("duty ratio") << 2 << "35" << QList<int>{1, 4} << same
                                    << QList<double>{1, 35, 1, 1, 35};
        QTest::newRow("power as it was") << 0 << "50" << QList<int>{} << same << same;
        QTest::newRow("frequency") << 1 << "60" << QList<int>{} << same << same;
        QTest::newRow("time") << 3 << "60" << QList<int>{} << same << same;
    }

    void changes_reachTheProgram() {
        // Only starts of welding with this set's position; "param" statements keep what they show.
        bench_.load(R"([{"type":"open","index":0,"laserPower":1,"laserDutyCycle":1},
                        {"type":"open","index":2,"laserPower":"1","laserDutyCycle":"1"},
                        {"type":"param","index":2,"laserPower":1,"laserDutyCycle":1},
                        {"type":"open","index":9,"laserPower":1,"laserDutyCycle":1},
                        {"type":"open","index":2,"laserPower":1,"laserDutyCycle":1}])");
        QFETCH(int, row);
        QFETCH(QString, typed);
        ParamValuesDialog dialog(sets()->c(2));
        QSignalSpy reports(&dialog, &ParamValuesDialog::signalparamValueschangedProgram);
        dialog.open();
        type(dialog, row, typed);
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
        QCOMPARE(reports.count(), 0);
        dialog.save();
        QList<int> lines;
        for (const auto& report : reports) {
            lines << report[0].toInt();
        }
        QTEST(lines, "lines");
        QTEST(values("laserPower"), "power");
        QTEST(values("laserDutyCycle"), "ratio");
        const QString field =
            m(QStringLiteral("lumo.default.param"))->c(row)->r(QStringLiteral("name"))->getString();
        QCOMPARE(sets()->c(2)->r(field)->value(), QVariant(typed.toDouble()));
    }

    void untouched_keepsTheSet() {
        sets()->c(0)->set(this, QStringLiteral("power"), 12.5);
        const QJsonValue before = sets()->exportToJson();
        ParamValuesDialog dialog(sets()->c(0));
        dialog.open();
        dialog.save();
        QCOMPARE(sets()->exportToJson(), before);
    }

    void setThatIsGone_isNotWritten() {
        ParamValuesDialog dialog(sets()->c(1));
        sets()->remove(this, mIndex(1));
        const QJsonValue before = sets()->exportToJson();
        type(dialog, 0, "77");
        dialog.save();
        QCOMPARE(sets()->exportToJson(), before);
    }
};

LUMO_TEST_MAIN(TestParamValues)
#include "test_paramvalues.moc"
