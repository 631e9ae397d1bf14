#include "editor/pointwidget.h"
#include "editorfixture.h"

#include <QTextEdit>

#include <cmath>

/// The point page: what it shows, takes and stores of a move, and how the pendant's keys work on it.
class TestPointPage : public EditorTest {
    Q_OBJECT

    std::unique_ptr<PointWidget> points_;
    QVector<int> answers_;  // rows that were OK, -1 for Cancel

    /// Figures that six digits cannot hold, so that a page that writes back what it shows is found out.
    const QByteArray first_ =
        "'point':{'trans':[0.512345678901,-0.1000000004,0.25],'rot':[1.0471975511966,-0.3,1.2345e-7],"
        "'near':[0.1234567890123,-1.5,2.25,0.3,-0.75,3,0.98765432109],'extra':'kept'},";
    const QByteArray second_ = "'point1':{'trans':[1.0000000012,0.2,0.3],'rot':[0.1,0.2,0.33333333333]},";

    QByteArray move(const QByteArray& type, const QByteArray& more = "'speed':20,'zone':2,'note':'a'") const {
        return "{'type':'" + type + "'," + first_ + (type.startsWith("moveC") ? second_ : "") + more + "}";
    }
    /// Makes it the program's only statement and opens the page on it.
    void open(const QByteArray& record, int joints = 6) {
        load("[" + record + "]");
        answers_.clear();
        points_ = std::make_unique<PointWidget>(0, line(0), joints);
        connect(points_.get(), &PointWidget::okayBtnClicked, this, [this](int row) { answers_ << row; });
        connect(points_.get(), &PointWidget::cancelBtnClicked, this, [this] { answers_ << -1; });
        points_->show();
    }
    QLineEdit* field(const QByteArray& name) const {
        return child<QLineEdit>(points_.get(), "lineEdit" + name);
    }
    void press(const char* name) { click(child(points_.get(), name)); }
    static ModuleObject* posture() { return kordservice()->dataNode("sys.posture"); }

    /// Texts of the fields on the screen.
    QString shownFields() const {
        QString texts;
        for (const QString& name : QString("J7 X1 Y1 Z1 A1 B1 C1 X2 Y2 Z2 A2 B2 C2").split(' ')) {
            texts += field(name.toLatin1())->isVisible() ? field(name.toLatin1())->text() + ' ' : "";
        }
        return texts;
    }

private slots:
    void init() {
        bench.reset();
        posture()->loadJson(this, json("{'trans':[0.7,0.8,0.9],'rot':[0,0,1.5707963267949],"
                                       "'near':[1.5707963267949,0,0,0,0,0,0.1],'extra':'taught'}"));
    }

    void eachMove_showsItsFieldsAndKeepsEveryDigit() {
        const QString joints = "7.07355 -85.9437 128.916 17.1887 -42.9718 171.887 ";
        const QString first = "512.346 -100 250 60 -17.1887 7.07316e-06 ";
        const QString second = first + "1000 200 300 5.72958 11.4592 19.0986 ";
        const std::tuple<QByteArray, int, QString> cases[] = {
            {move("moveJ"), 6, joints},
            {move("moveJ"), 7, "56.5884 " + joints},
            {move("moveC"), 6, second},
            {move("moveCC"), 7, second},
            {move("moveL", "'speed':500.5,'zone':20,'note':''"), 7, first},  // cannot be typed
            {move("moveL", "'speed':'60.0','zone':'1.5','note':'one\\r\\ntwo'"), 6, first},
        };
        for (const auto& [record, jointCount, fields] : cases) {
            open(record, jointCount);
            QCOMPARE(shownFields(), fields);
            QCOMPARE(child(points_.get(), "updateBtn2")->isVisible(), fields == second);
            press("okayBtn");
            QCOMPARE(text(line(0)), text(json(record)));
        }
        QCOMPARE(child<QTextEdit>(points_.get(), "textEditNote")->toPlainText(), "one\ntwo");
    }

    void typedValue_changesOnlyItsField() {
        const double degree = M_PI / 180;
        const std::tuple<const char*, const char*, const char*, QString, double> cases[] = {
            {"moveL", "X1", "600", "point.trans.#0", 0.6},
            {"moveL", "Y1", "600,5", "point.trans.#1", 0.6005},
            {"moveL", "A1", "90", "point.rot.#0", 90 * degree},
            {"moveJ", "X1", "-30.5", "point.near.#0", -30.5 * degree},
            {"moveJ", "J7", "45", "point.near.#6", 45 * degree},
            {"moveC", "X2", "1", "point1.trans.#0", 0.001},
            {"moveL", "Speed", "199", "speed", 199},
            {"moveL", "Turn", "4", "zone", 4},
        };
        for (const auto& [moveType, name, typed, path, expected] : cases) {
            open(move(moveType), 7);
            typeIn(field(name), typed);
            press("okayBtn");
            const double stored = line(0)->r(path)->getDouble(-999);
            QVERIFY2(std::abs(stored - expected) < 1e-12, typed);
            const auto wanted = node(move(moveType));
            wanted->set(this, path, stored);
            QCOMPARE(text(line(0)), text(wanted.get()));
        }
    }

    void taughtPoints_areStoredAsTheyAre() {
        open(move("moveC"));
        typeIn(field("X2"), "123");
        press("updateBtn1");
        QCOMPARE(shownFields(), "700 800 900 0 0 90 123 200 300 5.72958 11.4592 19.0986 ");
        press("updateBtn2");
        QCOMPARE(field("X2")->text(), "700");
        typeIn(field("X1"), "650");
        child<QTextEdit>(points_.get(), "textEditNote")->setPlainText("weld 7");
        const auto expected = node(move("moveC"));
        expected->c("point1")->copyFrom(this, posture());  // at once, also when it is cancelled
        QCOMPARE(text(line(0)), text(expected.get()));
        press("okayBtn");
        expected->c("point")->copyFrom(this, posture());
        expected->set(this, "point.trans.#0", 0.65)->set(this, "note", "weld 7");
        QCOMPARE(text(line(0)), text(expected.get()));
        QCOMPARE(answers_, QVector<int>{0});
    }

    void page_namesItsPoints_andMovesToWhatIsStored() {
        const std::tuple<QByteArray, QString> cases[] = {
            {move("moveL"), "||"},
            {move("moveC"), "（途经点）|（终点）|"},
            {move("moveCC"), "（圆上第 2 点）|（圆上第 3 点）|"},
            {"{'type':'moveL','point':{},'speed':20,'zone':2}", "||未示教"},
        };
        for (const auto& [record, names] : cases) {
            open(record);
            QSignalSpy moves(points_.get(), &PointWidget::moveRequested);
            QString seen;
            for (const char* name : {"lblRole1", "lblRole2", "lblTaught1"}) {
                const auto* const label = child<QLabel>(points_.get(), name);
                seen += (label->isVisible() ? label->text() : QString()) + '|';
            }
            QCOMPARE(seen, names + '|');
            QCOMPARE(child<QLabel>(field("A1"), "unit")->text(), "°");
            press("btnMoveThere");
            typeIn(field("X1"), "601");
            press("btnMoveThere");
            QCOMPARE(moves, QList<QVariantList>{QVariantList{0}});
            press("updateBtn1");
            QVERIFY(child(points_.get(), "lblTaught1")->isHidden());
        }
    }

    void longKeyPress_setsTheHandGuiding() {
        open(move("moveL"));
        QString seen;
        for (const char* key : {"next", "last", "enter", "center"}) {
            m(QString("lumo.keypad.%1.pressing").arg(key))->setValue(nullptr, true);
            const ModuleObject* const drag = m("rova.handle.drag");
            seen += drag->c("space")->getString() + drag->c("type")->getString() + ' ';
        }
        QCOMPARE(seen, "02 12 11 10 ");
    }

    void movedOrRemovedStatement_isWrittenOnlyInTheProgram() {
        for (const bool moves : {true, false}) {
            open(move("moveC"));
            typeIn(field("X1"), "600");
            if (moves) {
                program()->insert(this, new ModuleObject("another"), true, 0);
            } else {
                load("[" + move("moveC") + "]");
                bench.time.settle();
            }
            const QString before = text(program());
            press("updateBtn2");
            m("lumo.keypad.center.clicked")->setValue(nullptr, true);  // is OK
            QCOMPARE(answers_, QVector<int>{moves ? 1 : -1});
            QCOMPARE(text(program()) == before, !moves);
        }
    }
};

LUMO_TEST(TestPointPage)
#include "test_pointpage.moc"
