// The point page: what it shows, takes and stores of a move, and how the pendant's keys work on it.

#include "dialogs/dialogsupport.h"
#include "editor/drag.h"
#include "editor/pointwidget.h"
#include "support/executorbench.h"

#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>

#include <cmath>

using test::child;

namespace {

/// Figures that six digits cannot hold, so that a page that writes back what it shows is found out.
constexpr char points[] = R"(
    "point":{"trans":[0.512345678901,-0.1000000004,0.25],"rot":[1.0471975511966,-0.3,0.00000012345],
             "near":[0.1234567890123,-1.5,2.25,0.3333333333,-0.75,3.1,0.9876543210987],"extra":"kept"},
    "point1":{"trans":[1.0000000012,0.2,0.3],"rot":[0.1,0.2,0.3333333333333],"near":[1,2,3,4,5,6]})";

constexpr char zone[] = "lineEditTurn";

QByteArray move(const char* type, const QByteArray& more = "\"speed\":20,\"zone\":2,\"note\":\"corner\"") {
    QByteArray record = QByteArray("{\"type\":\"") + type + "\"," + points + "," + more + "}";
    if (type == QByteArray("moveJ") || type == QByteArray("moveL")) {
        QJsonObject plain = test::object(record);
        plain.remove("point1");
        record = QJsonDocument(plain).toJson();
    }
    return record;
}

}  // namespace

class TestPointPage : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static ModuleObject* program() { return m(QStringLiteral("lumo.program")); }

    static QString shown(const PointWidget& page, const char* name) {
        return child<QLineEdit>(&page, name)->text();
    }

    static QStringList shown(const PointWidget& page, const QStringList& names) {
        QStringList texts;
        for (const QString& name : names) {
            texts << shown(page, name.toLatin1());
        }
        return texts;
    }

    /// Types over what is in the field.
    static void type(const PointWidget& page, const char* name, const QString& text) {
        auto* line = child<QLineEdit>(&page, name);
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, text);
    }

    static void press(const PointWidget& page, const char* name) { test::click(child(&page, name)); }

    static void pendantKey(const char* key) {
        m(QStringLiteral("lumo.keypad.") + QLatin1String(key))->setValue(nullptr, true);
    }

    void robotStandsAt(const QByteArray& posture) {
        kordservice()->dataNode(QStringLiteral("sys.posture"))->loadJson(this, test::object(posture));
    }

private slots:
    void init() {
        bench_.reset();
        robotStandsAt(R"({"trans":[0.7,0.8,0.9],"rot":[0,0,1.5707963267949],
                          "near":[1.5707963267949,0,0,0,0,0,0.1],"extra":"taught"})");
    }

    void shows_data() {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<int>("joints");
        QTest::addColumn<QStringList>("captions");
        QTest::addColumn<QStringList>("first");
        QTest::addColumn<bool>("seventh");
        QTest::addColumn<bool>("second");
        const QStringList cartesian{"512.346", "-100", "250", "60", "-17.1887", "7.07316e-06"};
        const QStringList angles{"7.07355", "-85.9437", "128.916", "19.0986", "-42.9718", "177.617"};
        const QStringList xyz{"X:", "Y:", "Z:", "A:", "B:", "C:"};
        const QStringList axes{"J1:", "J2:", "J3:", "J4:", "J5:", "J6:"};
        QTest::newRow("joints") << QByteArray("moveJ") << 6 << axes << angles << false << false;
        QTest::newRow("joints of seven") << QByteArray("moveJ") << 7 << axes << angles << true << false;
        QTest::newRow("line") << QByteArray("moveL") << 7 << xyz << cartesian << false << false;
        QTest::newRow("arc") << QByteArray("moveC") << 6 << xyz << cartesian << false << true;
        QTest::newRow("circle") << QByteArray("moveCC") << 7 << xyz << cartesian << false << true;
    }

    void shows() {
        QFETCH(QByteArray, type);
        QFETCH(int, joints);
        QFETCH(QStringList, captions);
        QFETCH(bool, seventh);
        QFETCH(bool, second);
        const auto statement = test::node(move(type));
        PointWidget page(0, statement.get(), joints);
        page.show();
        const QStringList axes{"X", "Y", "Z", "A", "B", "C"};
        for (int i = 0; i < axes.size(); ++i) {
            QCOMPARE(child<QLabel>(&page, "lbl" + axes[i].toLatin1() + "1")->text(), captions[i]);
            for (const QByteArray prefix : {"lbl", "lineEdit"}) {
                QCOMPARE(child(&page, prefix + axes[i].toLatin1() + "2")->isVisible(), second);
            }
        }
        QTEST(
            shown(page, {"lineEditX1", "lineEditY1", "lineEditZ1", "lineEditA1", "lineEditB1", "lineEditC1"}),
            "first");
        for (const char* name : {"lblJ7", "lineEditJ7"}) {
            QCOMPARE(child(&page, name)->isVisible(), seventh);
        }
        for (const char* name : {"lblP2", "updateBtn2"}) {
            QCOMPARE(child(&page, name)->isVisible(), second);
        }
        if (seventh) {
            QCOMPARE(shown(page, "lineEditJ7"), QString("56.5884"));
        }
        if (second) {
            QCOMPARE(shown(page, {"lineEditX2", "lineEditY2", "lineEditC2"}),
                     QStringList({"1000", "200", "19.0986"}));
        }
        QCOMPARE(shown(page, {"lineEditSpeed", "lineEditTurn"}), QStringList({"20", "2"}));
        QCOMPARE(child<QTextEdit>(&page, "textEditNote")->toPlainText(), QString("corner"));
    }

    void untouched_keepsEveryDigit_data() {
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<int>("joints");
        for (const char* type : {"moveJ", "moveL", "moveC", "moveCC"}) {
            QTest::newRow(type) << move(type) << 7;
        }
        QTest::newRow("speed and zone that cannot be typed")
            << move("moveL", R"("speed":500.5,"zone":20,"note":"")") << 6;
        QTest::newRow("speed and zone as text")
            << move("moveL", R"("speed":"60.0","zone":"1.5","note":"")") << 6;
        QTest::newRow("no speed, zone and note") << move("moveL", R"("execute":true)") << 6;
        QTest::newRow("note of foreign line ends") << move("moveL", R"("note":"one\r\ntwo")") << 6;
    }

    void untouched_keepsEveryDigit() {
        QFETCH(QByteArray, record);
        QFETCH(int, joints);
        const auto statement = test::node(record);
        PointWidget page(0, statement.get(), joints);
        press(page, "okayBtn");
        QCOMPARE(test::text(statement.get()), test::text(record));
    }

    void typed_isStored_data() {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("path");
        QTest::addColumn<double>("expected");
        const double degree = M_PI / 180;
        const auto row = [](const char* title, const char* type, const char* field, const char* typed,
                            const char* path, double expected) {
            QTest::newRow(title) << QByteArray(type) << QByteArray(field) << QString(typed) << QString(path)
                                 << expected;
        };
        row("millimetres", "moveL", "lineEditX1", "600", "point.trans.#0", 0.6);
        row("fraction", "moveL", "lineEditZ1", "-12.5", "point.trans.#2", -0.0125);
        row("decimal comma", "moveL", "lineEditY1", "600,5", "point.trans.#1", 0.6005);
        row("power of ten", "moveL", "lineEditY1", "6e2", "point.trans.#1", 0.6);
        row("degrees", "moveL", "lineEditA1", "90", "point.rot.#0", M_PI / 2);
        row("joint", "moveJ", "lineEditX1", "-30", "point.near.#0", -30 * degree);
        row("sixth joint", "moveJ", "lineEditC1", "5", "point.near.#5", 5 * degree);
        row("seventh joint", "moveJ", "lineEditJ7", "45", "point.near.#6", 45 * degree);
        row("second point", "moveC", "lineEditX2", "1", "point1.trans.#0", 0.001);
        row("second point's turn", "moveCC", "lineEditC2", "-1", "point1.rot.#2", -degree);
        row("empty", "moveL", "lineEditX1", "", "point.trans.#0", 0);
        row("no number", "moveL", "lineEditX1", "12mm", "point.trans.#0", 0);
        row("not-a-number", "moveL", "lineEditX1", "nan", "point.trans.#0", 0);
        row("infinity", "moveL", "lineEditX1", "inf", "point.trans.#0", 0);
        row("speed", "moveL", "lineEditSpeed", "75", "speed", 75);
        row("zone", "moveL", "lineEditTurn", "5", "zone", 5);
        row("no zone", "moveL", "lineEditTurn", "7", "zone", 0);
    }

    void typed_isStored() {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, field);
        QFETCH(QString, typed);
        QFETCH(QString, path);
        QFETCH(double, expected);
        const auto statement = test::node(move(type));
        // Everything else keeps its full precision: compare the whole record but for the one value.
        const auto wanted = test::node(move(type));
        PointWidget page(0, statement.get(), 7);
        this->type(page, field, typed);
        press(page, "okayBtn");
        const double stored = statement->r(path)->getDouble(-999);
        QVERIFY2(std::abs(stored - expected) < 1e-12, qPrintable(QString::number(stored, 'g', 15)));
        wanted->set(this, path, statement->r(path)->value());
        QCOMPARE(test::text(statement.get()), test::text(wanted.get()));
    }

    void note_isStored() {
        const auto statement = test::node(move("moveL"));
        PointWidget page(0, statement.get(), 6);
        auto* note = child<QTextEdit>(&page, "textEditNote");
        note->selectAll();
        QTest::keyClicks(note, "weld 7");
        press(page, "okayBtn");
        QCOMPARE(statement->r(QStringLiteral("note"))->getString(), QString("weld 7"));
    }

    void pointWithoutContent_isMade() {
        const auto statement = test::node(R"({"type":"moveL","speed":20,"point":{}})");
        PointWidget page(0, statement.get(), 6);
        type(page, "lineEditZ1", "100");
        press(page, "okayBtn");
        QCOMPARE(statement->r(QStringLiteral("point.trans"))->exportToJson().toArray(),
                 (QJsonArray{0, 0, 0.1}));
    }

    void limits_data() {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        const QByteArray speed = "lineEditSpeed";
        for (const auto& [field, typed, expected] :
             std::initializer_list<std::tuple<QByteArray, const char*, const char*>>{{speed, "199", "199"},
                                                                                     {speed, "200", "20"},
                                                                                     {speed, "1999", "199"},
                                                                                     {speed, "-5.5", "55"},
                                                                                     {speed, "+1 0", "10"},
                                                                                     {speed, "0", "0"},
                                                                                     {speed, "99", "99"},
                                                                                     {zone, "7", ""},
                                                                                     {zone, "45", "4"},
                                                                                     {zone, "5", "5"},
                                                                                     {zone, "0", "0"},
                                                                                     {zone, "-2", "2"},
                                                                                     {zone, "6543", "5"},
                                                                                     {zone, "1.5", "1"}}) {
            QTest::newRow(field + " " + typed) << field << QString(typed) << QString(expected);
        }
    }

    void limits() {
        QFETCH(QByteArray, field);
        QFETCH(QString, typed);
        const auto statement = test::node(move("moveL"));
        PointWidget page(0, statement.get(), 6);
        type(page, field, typed);
        QTEST(shown(page, field), "expected");
        QCOMPARE(child(&page, "okayBtn")->isEnabled(), field == zone || typed != "0");
        type(page, field, QString());
        QCOMPARE(child(&page, "okayBtn")->isEnabled(), field == zone);
    }

    void firstUpdate_isStoredOnlyByOk_data() {
        QTest::addColumn<bool>("ok");
        QTest::newRow("OK") << true;
        QTest::newRow("Cancel") << false;
    }

    void firstUpdate_isStoredOnlyByOk() {
        QFETCH(bool, ok);
        const QByteArray record = move("moveC");
        const auto statement = test::node(record);
        PointWidget page(3, statement.get(), 6);
        QSignalSpy okays(&page, &PointWidget::okayBtnClicked);
        QSignalSpy cancels(&page, &PointWidget::cancelBtnClicked);
        press(page, "updateBtn1");
        QCOMPARE(shown(page, {"lineEditX1", "lineEditC1"}), QStringList({"700", "90"}));
        QCOMPARE(test::text(statement.get()), test::text(record));

        press(page, ok ? "okayBtn" : "cancelBtn");
        const auto expected = test::node(record);
        if (ok) {
            expected->r(QStringLiteral("point"))
                ->copyFrom(this, kordservice()->dataNode(QStringLiteral("sys.posture")));
        }
        QCOMPARE(test::text(statement.get()), test::text(expected.get()));
        QCOMPARE(okays.count(), ok ? 1 : 0);
        QCOMPARE(cancels.count(), ok ? 0 : 1);
        if (ok) {
            QCOMPARE(okays[0][0].toInt(), 3);
        }
    }

    void typedAfterUpdate_winsOverThePosture() {
        const auto statement = test::node(move("moveL"));
        PointWidget page(0, statement.get(), 6);
        press(page, "updateBtn1");
        type(page, "lineEditX1", "650");
        press(page, "okayBtn");
        QCOMPARE(test::text(statement->r(QStringLiteral("point"))),
                 test::text(QByteArray(R"({"trans":[0.65,0.8,0.9],"rot":[0,0,1.5707963267949],
                                          "near":[1.5707963267949,0,0,0,0,0,0.1],"extra":"taught"})")));
    }

    void secondUpdate_staysEvenWhenCancelled() {
        const auto statement = test::node(move("moveCC"));
        PointWidget page(0, statement.get(), 6);
        press(page, "updateBtn2");
        QCOMPARE(shown(page, {"lineEditX2", "lineEditC2"}), QStringList({"700", "90"}));
        press(page, "cancelBtn");
        QCOMPARE(test::text(statement->r(QStringLiteral("point1"))),
                 test::text(kordservice()->dataNode(QStringLiteral("sys.posture"))));
    }

    void firstUpdate_leavesWhatWasTypedForTheSecondPoint() {
        const auto statement = test::node(move("moveC"));
        PointWidget page(0, statement.get(), 6);
        type(page, "lineEditX2", "123");
        press(page, "updateBtn1");
        QCOMPARE(shown(page, "lineEditX2"), QString("123"));
    }

    void centreKey_savesAndCloses() {
        const auto statement = test::node(move("moveL"));
        PointWidget page(5, statement.get(), 6);
        QSignalSpy okays(&page, &PointWidget::okayBtnClicked);
        type(page, "lineEditX1", "600");
        pendantKey("center.clicked");
        QCOMPARE(okays.count(), 1);
        QCOMPARE(okays[0][0].toInt(), 5);
        QCOMPARE(statement->r(QStringLiteral("point.trans.#0"))->getDouble(), 0.6);
    }

    void longPresses_setTheHandGuiding_data() {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<int>("space");
        QTest::addColumn<int>("type");
        QTest::newRow("next") << QByteArray("next") << 0 << 2;
        QTest::newRow("last") << QByteArray("last") << 1 << 2;
        QTest::newRow("enter") << QByteArray("enter") << 1 << 1;
        QTest::newRow("center") << QByteArray("center") << 1 << 0;
    }

    void longPresses_setTheHandGuiding() {
        QFETCH(QByteArray, key);
        const auto statement = test::node(move("moveL"));
        ModuleObject* rova = m(QStringLiteral("rova"));
        const QJsonValue before = rova->exportToJson();
        for (const bool handle : {true, false}) {
            if (!handle) {
                rova->remove(this, QStringLiteral("handle"));
            }
            ModuleObject* drag =
                m(handle ? QStringLiteral("rova.handle.drag") : QStringLiteral("rova.sidemove.drag"));
            drag->set(this, QStringLiteral("space"), 9)->set(this, QStringLiteral("type"), 9);
            PointWidget page(0, statement.get(), 6);
            QSignalSpy writes(drag->c(QStringLiteral("type")), &ModuleObject::changed);
            pendantKey(key + ".pressing");
            QTEST(drag->c(QStringLiteral("space"))->getInt(), "space");
            QTEST(drag->c(QStringLiteral("type"))->getInt(), "type");
            QCOMPARE(writes.count(), 1);
            QCOMPARE(writes[0][2].value<QObject*>(), &page);
        }
        rova->loadJson(this, before);
    }

    void statementThatIsGone_isNotWritten_data() {
        QTest::addColumn<bool>("replaced");
        QTest::newRow("deleted") << false;
        QTest::newRow("program replaced") << true;
    }

    void statementThatIsGone_isNotWritten() {
        QFETCH(bool, replaced);
        const QByteArray program2 = "[" + move("moveL") + "," + move("moveC") + "]";
        bench_.load(program2);
        PointWidget page(1, program()->c(1), 6);
        QSignalSpy okays(&page, &PointWidget::okayBtnClicked);
        QSignalSpy cancels(&page, &PointWidget::cancelBtnClicked);
        type(page, "lineEditX1", "1");
        if (replaced) {
            bench_.load(program2);
        } else {
            program()->remove(this, mIndex(1));
        }
        bench_.time.settle();
        const QJsonValue before = program()->exportToJson();
        press(page, "updateBtn2");
        press(page, "okayBtn");
        QCOMPARE(okays.count(), 0);
        QCOMPARE(cancels.count(), 1);
        QCOMPARE(program()->exportToJson(), before);
    }

    void statementThatMoved_isReportedWhereItIs() {
        bench_.load("[" + move("moveL") + "," + move("moveJ") + "," + move("moveL") + "]");
        PointWidget page(2, program()->c(2), 6);
        QSignalSpy okays(&page, &PointWidget::okayBtnClicked);
        program()->remove(this, mIndex(0));
        press(page, "okayBtn");
        QCOMPARE(okays[0][0].toInt(), 1);
    }

    void opensWithoutFocusInAField() {
        QStackedWidget stack;
        auto* line = new QLineEdit;
        stack.addWidget(line);
        stack.show();
        line->setFocus();
        bench_.time.settle();
        const auto statement = test::node(move("moveL"));
        auto* page = new PointWidget(0, statement.get(), 6, &stack);
        page->testNofocus();
        stack.addWidget(page);
        stack.setCurrentWidget(page);
        bench_.time.settle();
        QCOMPARE(QApplication::focusWidget(), child(page, "label_28"));
    }

    void end_freesTheStatementDialog() {
        ModuleObject* slot = m(QStringLiteral("lumo.dialog.statement"));
        const auto statement = test::node(move("moveL"));
        {
            PointWidget page(0, statement.get(), 6);
            slot->setValue(this, QVariant::fromValue<QObject*>(&page));
        }
        QVERIFY(!slot->value().isValid());
    }
};

LUMO_TEST_MAIN(TestPointPage)
#include "test_pointpage.moc"
