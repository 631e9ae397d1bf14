// The dialogs with a line to type in: what can be typed, when OK is offered, what is handed over.

#include "dialogs/dialogsupport.h"
#include "editor/delaydialog.h"
#include "editor/selectparamdialog.h"
#include "editor/updatespeeddialog.h"
#include "editor/updateturningparamdialog.h"
#include "support/executorbench.h"

#include <QComboBox>
#include <QJsonArray>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

using test::child;

class TestLineDialogs : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static ModuleObject* program() { return m(QStringLiteral("lumo.program")); }

    /// The rows of a selection in a table as long as the program.
    static QList<QModelIndex> rows(const QTableWidget& table, const QList<int>& selected) {
        QList<QModelIndex> result;
        for (const int row : selected) {
            result << table.model()->index(row, 0);
        }
        return result;
    }

    static std::unique_ptr<WatchedLineDialog> make(const QByteArray& kind, ModuleObject* statement) {
        if (kind == "delay") {
            return std::make_unique<DelayDialog>(statement);
        }
        if (kind == "speed") {
            return std::make_unique<UpdateSpeedDialog>(program(), QList<QModelIndex>());
        }
        if (kind == "zone") {
            return std::make_unique<UpdateTurningParamDialog>(program(), QList<QModelIndex>());
        }
        auto dialog = std::make_unique<SelectParamDialog>(statement);
        dialog->setbeginOrparam(kind == "open" ? 1 : 0);
        return dialog;
    }

private slots:
    void init() { bench_.reset(); }

    void typing_data() {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("okOffered");
        QTest::newRow("delay") << QByteArray("delay") << QByteArray("500") << ""
                               << "500" << true;
        QTest::newRow("delay typed over") << QByteArray("delay") << QByteArray("500") << "30"
                                          << "30" << true;
        QTest::newRow("delay digits only") << QByteArray("delay") << QByteArray("0") << "-1.5e3"
                                           << "153" << true;
        QTest::newRow("delay emptied") << QByteArray("delay") << QByteArray("500") << "\b"
                                       << "" << false;
        QTest::newRow("delay not stored") << QByteArray("delay") << QByteArray("null") << ""
                                          << "" << false;
        QTest::newRow("delay past what an integer holds")
            << QByteArray("delay") << QByteArray("0") << "12345678901"
            << "123456789" << true;
        QTest::newRow("weld speed") << QByteArray("open") << QByteArray("\"20\"") << ""
                                    << "20" << true;
        QTest::newRow("weld speed emptied") << QByteArray("open") << QByteArray("\"20\"") << "\b"
                                            << "" << false;
        QTest::newRow("weld speed 0") << QByteArray("open") << QByteArray("\"20\"") << "0"
                                      << "0" << false;
        QTest::newRow("weld speed not stored") << QByteArray("open") << QByteArray("null") << ""
                                               << "" << false;
        QTest::newRow("weld speed again") << QByteArray("open") << QByteArray("null") << "3x5"
                                          << "35" << true;
        QTest::newRow("change of parameters") << QByteArray("param") << QByteArray("null") << ""
                                              << "" << true;
        QTest::newRow("batch speed") << QByteArray("speed") << QByteArray("null") << ""
                                     << "" << false;
        QTest::newRow("batch speed 0") << QByteArray("speed") << QByteArray("null") << "0"
                                       << "0" << false;
        QTest::newRow("batch speed without limit") << QByteArray("speed") << QByteArray("null") << "5000"
                                                   << "5000" << true;
        for (const auto& [typed, shown] : std::initializer_list<QPair<const char*, const char*>>{
                 {"5", "5"}, {"6", ""}, {"9", ""}, {"45", "4"}, {"54", "5"}, {"-3", "3"}, {"05", "05"}}) {
            QTest::newRow(qPrintable(QString("batch zone ") + typed))
                << QByteArray("zone") << QByteArray("null") << typed << shown << true;
        }
    }

    void typing() {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, stored);
        QFETCH(QString, typed);
        const auto statement = test::node("{\"delaytime\":" + stored + ",\"weldspeed\":" + stored + "}");
        const auto dialog = make(kind, statement.get());
        dialog->open();
        auto* line = child<QLineEdit>(dialog.get(), "lineEdit");
        for (const QChar key : typed) {
            key == '\b' ? QTest::keyClick(line, Qt::Key_Backspace) : QTest::keyClick(line, key.toLatin1());
        }
        QTEST(line->text(), "shown");
        QTEST(test::button(dialog.get(), QDialogButtonBox::Ok)->isEnabled(), "okOffered");
    }

    void pastedZone_isCutDown() {
        UpdateTurningParamDialog dialog(program(), {});
        auto* line = child<QLineEdit>(&dialog, "lineEdit");
        line->insert("45000");
        QCOMPARE(line->text(), QString("4"));
        line->clear();
        line->insert("123456789");
        QCOMPARE(line->text(), QString("1"));
    }

    /// The press goes to the panel's input method: the line keeps its cursor.
    void pressOnTheLine_isReported() {
        const auto statement = test::node(R"({"delaytime":123456})");
        DelayDialog dialog(statement.get());
        dialog.open();
        bench_.time.settle();
        auto* line = child<QLineEdit>(&dialog, "lineEdit");
        line->end(false);
        QSignalSpy presses(&dialog, &WatchedLineDialog::lineeditclicked);
        QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(2, line->height() / 2));
        QCOMPARE(presses.count(), 1);
        QCOMPARE(line->cursorPosition(), 6);
        QVERIFY(line->hasFocus());
    }

    void parameterForms_data() {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("hidden");
        QTest::newRow("start of welding") << 1 << QStringList{"label"};
        QTest::newRow("change") << 0 << QStringList{"label_2", "label_3", "label_4", "lineEdit"};
        QTest::newRow("anything else") << 7 << QStringList{};
    }

    void parameterForms() {
        QFETCH(int, mode);
        const auto statement = test::node(R"({"index":1,"weldspeed":35})");
        bench_.setParam("power", 10, 1);
        SelectParamDialog dialog(statement.get());
        dialog.setbeginOrparam(mode);
        dialog.open();
        QStringList hidden;
        for (const char* name : {"label", "label_2", "label_3", "label_4", "comboBox", "lineEdit"}) {
            if (!child(&dialog, name)->isVisible()) {
                hidden << name;
            }
        }
        QTEST(hidden, "hidden");
        QCOMPARE(dialog.index(), 1);
        QCOMPARE(dialog.weldSpeed(), QString(mode == 1 ? "35" : ""));
    }

    void parameterSets_areOfferedInOrder() {
        m(QStringLiteral("lumo.param"))
            ->loadJson(this, QJsonDocument::fromJson(R"([{"name":"B"},{"name":"A"},{"name":"B"}])").array());
        const auto statement = test::node(R"({"index":1})");
        SelectParamDialog dialog(statement.get());
        auto* sets = child<QComboBox>(&dialog, "comboBox");
        QCOMPARE(sets->count(), 3);
        QCOMPARE(sets->currentText(), QString("A"));
        dialog.open();
        QTest::keyClick(sets, Qt::Key_Down);
        QCOMPARE(dialog.index(), 2);
    }

    void setThatIsGone_isNotReplacedByAnother_data() {
        QTest::addColumn<int>("mode");
        QTest::newRow("start of welding") << 1;
        QTest::newRow("change") << 0;
    }

    void setThatIsGone_isNotReplacedByAnother() {
        QFETCH(int, mode);
        const auto statement = test::node(R"({"index":4,"weldspeed":20})");
        SelectParamDialog dialog(statement.get());
        dialog.setbeginOrparam(mode);
        dialog.open();
        QCOMPARE(dialog.index(), -1);
        auto* sets = child<QComboBox>(&dialog, "comboBox");
        QCOMPARE(sets->currentText(), QString());
        const QPushButton* ok = test::button(&dialog, QDialogButtonBox::Ok);
        QVERIFY(!ok->isEnabled());
        QTest::keyClick(sets, Qt::Key_Down);
        QCOMPARE(dialog.index(), 0);
        QVERIFY(ok->isEnabled());
    }

    void withoutSets_nothingCanBeChosen() {
        m(QStringLiteral("lumo.param"))->loadJson(this, QJsonArray());
        const auto statement = test::node(R"({"index":0,"weldspeed":20})");
        SelectParamDialog dialog(statement.get());
        dialog.setbeginOrparam(1);
        QTest::keyClicks(child<QLineEdit>(&dialog, "lineEdit"), "5");
        QVERIFY(!test::button(&dialog, QDialogButtonBox::Ok)->isEnabled());
        QVERIFY(!child<QComboBox>(&dialog, "comboBox")->placeholderText().isEmpty());
    }

    void batch_data() {
        QTest::addColumn<bool>("speed");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("expected");
        const char* const lines = R"([{"type":"moveL","speed":%1,"zone":%3},{"type":"delay","delaytime":7},
                                      {"type":"moveJ","speed":%2,"zone":%4},{"type":"moveC","speed":3,"zone":3}])";
        const auto expected = [lines](int speed0, int speed2, int zone0, int zone2) {
            return QString(lines).arg(speed0).arg(speed2).arg(zone0).arg(zone2).toUtf8();
        };
        QTest::newRow("speed") << true << "50" << expected(50, 50, 1, 2);
        QTest::newRow("zone") << false << "4" << expected(1, 2, 4, 4);
        QTest::newRow("nothing typed") << true << "" << expected(0, 0, 1, 2);
    }

    void batch() {
        QFETCH(bool, speed);
        QFETCH(QString, typed);
        QFETCH(QByteArray, expected);
        bench_.load(R"([{"type":"moveL","speed":1,"zone":1},{"type":"delay","delaytime":7},
                        {"type":"moveJ","speed":2,"zone":2},{"type":"moveC","speed":3,"zone":3}])");
        const QTableWidget table(4, 1);
        const auto selected = rows(table, {0, 1, 2});
        std::unique_ptr<BatchDialog> dialog;
        if (speed) {
            dialog = std::make_unique<UpdateSpeedDialog>(program(), selected);
        } else {
            dialog = std::make_unique<UpdateTurningParamDialog>(program(), selected);
        }
        dialog->open();
        QTest::keyClicks(child<QLineEdit>(dialog.get(), "lineEdit"), typed);
        dialog->save();
        QCOMPARE(program()->exportToJson().toArray(), QJsonDocument::fromJson(expected).array());
    }

    void batch_followsItsStatements_data() {
        QTest::addColumn<QByteArray>("happens");
        QTest::addColumn<QList<int>>("speeds");
        QTest::newRow("nothing") << QByteArray("nothing") << QList<int>{1, 99, 99};
        QTest::newRow("a line before them goes") << QByteArray("remove first") << QList<int>{99, 99};
        QTest::newRow("one of them goes") << QByteArray("remove second") << QList<int>{1, 99};
        QTest::newRow("one of them moves") << QByteArray("reorder") << QList<int>{99, 1, 99};
        QTest::newRow("the program is replaced") << QByteArray("replace") << QList<int>{1, 2, 3};
    }

    void batch_followsItsStatements() {
        const QByteArray lines = R"([{"speed":1},{"speed":2},{"speed":3}])";
        bench_.load(lines);
        const QTableWidget table(3, 1);
        UpdateSpeedDialog dialog(program(), rows(table, {1, 2}));
        dialog.open();
        QTest::keyClicks(child<QLineEdit>(&dialog, "lineEdit"), "99");

        QFETCH(QByteArray, happens);
        if (happens == "remove first") {
            program()->remove(this, mIndex(0));
        } else if (happens == "remove second") {
            program()->remove(this, mIndex(1));
        } else if (happens == "reorder") {
            program()->reorder(this, 1, 0);
        } else if (happens == "replace") {
            bench_.load(lines);
        }
        bench_.time.settle();
        dialog.save();

        QList<int> speeds;
        for (const ModuleObject* statement : program()->cmobjs()) {
            speeds << statement->r(QStringLiteral("speed"))->getInt();
        }
        QTEST(speeds, "speeds");
    }
};

LUMO_TEST_MAIN(TestLineDialogs)
#include "test_linedialogs.moc"
