#include "pagebench.h"

#include "binding/switchbutton.h"
#include "devices/handlit.h"
#include "editor/programtable.h"
#include "editor/statementtext.h"
#include "module/qtloops.h"
#include "support/suite.h"

#include <QContextMenuEvent>
#include <QPixmapCache>
#include <QPointer>
#include <QRandomGenerator>

#include <private/qfont_p.h>

using test::json;
using test::quoted;

/// Somebody who touches whatever he can reach, types anything and answers late, while programs and stations
/// run, the power goes and inputs change. LUMO_SEED=n takes one of his ways again.
class TestRandomClicks : public QObject {
    Q_OBJECT

    test::PageBench bench_;
    QRandomGenerator random_;
    QTimer hang_;
    QStringList done_;
    QString fault_;
    int left_ = 0;
    bool mayStart_ = false;

    template <typename T>
    T oneOf(std::initializer_list<T> items) {
        return items.begin()[random_.bounded(int(items.size()))];
    }
    bool isListening() const {
        const auto* station = bench_.page->findChild<SwitchButton*>("switchBtn");
        return station && station->checked();
    }
    static bool isIdle() { return !lumo::isRunning() && executor->depth() + executor->pendingSteps() == 0; }

    /// What stands in front of everything else; null for the page.
    static QWidget* inFront() {
        QWidget* const popup = QApplication::activePopupWidget();
        return popup ? popup : QApplication::activeModalWidget();
    }
    QList<QWidget*> withinReach() const {
        QList<QWidget*> found;
        for (QWidget* widget : instantiatedCenterWidget()->findChildren<QWidget*>()) {
            const bool isTouched = qobject_cast<QAbstractButton*>(widget) ||
                                   qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget) ||
                                   qobject_cast<SwitchButton*>(widget) ||
                                   qobject_cast<QAbstractItemView*>(widget);
            const bool isBehind = inFront() && widget->window() != inFront();
            if (isTouched && widget->isVisible() && widget->isEnabled() && !isBehind) {
                found << widget;
            }
        }
        return found;
    }

    void touch(QWidget* widget) {
        done_ << QString(widget->metaObject()->className()) + ' ' + widget->objectName();
        mayStart_ |= widget->objectName() == "btnStart" || widget->objectName() == "btnRunOnce" ||
                     qobject_cast<QMessageBox*>(widget->window());
        if (random_.bounded(30) == 0) {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1));
            QApplication::sendEvent(widget, &event);
        } else if (auto* const line = qobject_cast<QLineEdit*>(widget)) {
            line->selectAll();
            QTest::keyClicks(line,
                             oneOf({"", "0", "7", "60", "-40", "1.5", "99999999999", "nan", "P1", "a/b"}));
        } else if (qobject_cast<QComboBox*>(widget) && random_.bounded(2) == 0) {
            QTest::keyClick(widget, oneOf({Qt::Key_Up, Qt::Key_Down, Qt::Key_End}));
        } else if (auto* const view = qobject_cast<QAbstractItemView*>(widget)) {
            const int rows = view->model()->rowCount(view->rootIndex());
            const QModelIndex row =
                view->model()->index(rows ? random_.bounded(rows) : 0, 1, view->rootIndex());
            view->scrollTo(row);
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(row).center());
        } else {
            test::click(widget);
        }
    }

    void press(QWidget* widget) {
        if (auto* const files = qobject_cast<QFileDialog*>(inFront())) {
            widget = test::child<QLineEdit>(files, "fileNameEdit");
            QTest::keyClicks(widget, oneOf({"P1.json", "seam.json", "odd.json", "missing.json"}));
        }
        const Qt::Key key =
            oneOf({Qt::Key_Return, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Down, Qt::Key_Delete});
        done_ << QString("key %1").arg(key, 0, 16);
        mayStart_ |= qobject_cast<QMessageBox*>(widget->window()) != nullptr;
        QTest::keyClick(widget, key);
    }

    void happen() {
        const char* const input = oneOf({"DI.DI1", "DI.DI4", "DI.DI5", "DI.DI14"});
        const int what = random_.bounded(10);
        done_ << QString("event %1 %2").arg(what).arg(input);
        if (what < 2) {
            test::ScriptedRobot::setPower(oneOf({"on", "on", "off"}));
        } else if (what == 2) {
            test::ScriptedRobot::setMode(oneOf({"auto", "manual"}));
        } else if (what == 3) {
            bench_.pause();
        } else if (what == 4) {
            bench_.robot.standAt({random_.bounded(1.0), 0, 0});
        } else if (what == 5) {
            bench_.robot.codes = {0, oneOf({0, 7}), 0};
        } else if (what == 6 && !QApplication::activePopupWidget()) {
            bench_.makePage();
        } else {
            kordservice()->dataNode("device.io")->set(this, input, random_.bounded(3) > 0);
        }
    }

    void check() {
        const auto* const table = static_cast<ProgramTable*>(bench_.programTable());
        QStringList lines, shown;
        for (const ModuleObject* statement : m("lumo.program")->cmobjs()) {
            lines << type2cn(statement->c("type")->getString());
        }
        if (test::columnOf(table, ProgramTable::CommandColumn) != lines) {
            fault_ = "the table shows another program: " + shown.join(' ');
        }
        for (int bit = 0; bit < 16 && isIdle(); ++bit) {
            const QString name = QString("LUMO_DO.#%1").arg(bit);
            const bool isOn = kordservice()->dataNode("register.values")->r(name)->getBool();
            bool isWanted = false;
            for (const I_PORT port : {DO_LASER_SAFETY_LOCK, DO_WIRE_SAFETY_LOCK, DO_GAS_SAFETY_LOCK, DO_GAS,
                                      DO_RED_LIGHT, DO_WIRE_ENABLE, DO_LASER_ENABLE}) {
                const bool isByHand = port >= DO_LASER_SAFETY_LOCK && port <= DO_GAS_SAFETY_LOCK;
                isWanted |= m("lumo.port")->c(port)->c("name")->getString() == name &&
                            (isByHand || lumo::isLitByHand(port));
            }
            if (isOn && !isWanted) {
                fault_ = name + " is on though nothing runs";
            }
        }
    }

    void step() {
        if (left_-- == 0 || !fault_.isEmpty()) {
            test::ScriptedRobot::setPower("off");
            lumo::endLoopsOfQt();
            return;
        }
        QTimer::singleShot(oneOf({1, 30, 200, 700}), this, &TestRandomClicks::step);
        mayStart_ = isListening();
        const QList<QWidget*> reach = withinReach();
        const int what = random_.bounded(10);
        if (what == 0) {
            happen();
        } else if (what == 1 || reach.isEmpty() || qobject_cast<QFileDialog*>(inFront())) {
            press(inFront() ? inFront() : bench_.page.get());
        } else {
            touch(reach[random_.bounded(reach.size())]);
        }
        check();
    }

private slots:
    void initTestCase() {
        QPixmapCache::setCacheLimit(0);  // its timer is none of ours
        connect(&hang_, &QTimer::timeout, this,
                [this] { qFatal("a wait does not end: %s", qPrintable(done_.join('\n'))); });
        connect(m("lumo.execute.state"), &ModuleObject::changed, this, [this](const QVariant& state) {
            if (state.toString() == "busy" && !mayStart_) {
                fault_ = "a run that nobody started";
            }
        });
    }

    void whateverIsTouched_nothingBurnsHangsOrStartsByItself_data() {
        QTest::addColumn<int>("seed");
        const int only = qEnvironmentVariableIntValue("LUMO_SEED");
        for (int seed = only ? only : 1; seed <= (only ? only : 20); ++seed) {
            QTest::addRow("LUMO_SEED=%d", seed) << seed;
        }
    }

    void whateverIsTouched_nothingBurnsHangsOrStartsByItself() {
        QFETCH(int, seed);
        qInfo("LUMO_SEED=%d", seed);
        bench_.clear();
        random_.seed(quint32(seed));
        done_.clear();
        fault_.clear();
        left_ = 150;
        const QByteArray station =
            "{'filePath':'P1.json','time':'100','type':'上升沿','type2':'上升沿',"
            "'DI':'DI4','DI_type':'IO','DI2':'DI14','DI2_type':'IO',"
            "'DO':'DO4','DO_type':'IO','DO2':'DO14','DO2_type':'IO'}";
        m("lumo.signalsConfig")
            ->loadJson(this, json('[' + station + ',' + QByteArray(station).replace("DI4", "DI5") + ']'));
        bench_.load(
            quoted("[{'type':'moveL','speed':20,'zone':2,'execute':true,'point':{'trans':[0.1,0,0]}},"
                   " {'type':'open','index':0,'weldspeed':'20','execute':true},"
                   " {'type':'moveL','speed':20,'zone':0,'execute':true,'point':{'trans':[0.2,0,0]}},"
                   " {'type':'close','execute':true},{'type':'delay','delaytime':'300','execute':true},"
                   " {'type':'waitDI','diName':'DI1','value1':'true','DI_type':'IO','execute':true}]"));
        bench_.write("P1.json",
                     quoted("[{'type':'open','index':0,'execute':true},{'type':'close','execute':true}]"));
        bench_.write("odd.json", "[{");
        LumoWidget::filePath = "seam.json";
        isEnable_moveorder = true;
        bench_.makePage();
        bench_.robot.setPower("on");
        hang_.start(600000);
        step();
        bench_.time.advanceUntil([this] { return left_ < 0 && isIdle(); }, 300000);
        bench_.time.advance(1000);
        check();
        QVERIFY2(fault_.isEmpty(), qPrintable(fault_ + " after\n" + done_.mid(done_.size() - 20).join('\n')));
        QVERIFY(isIdle());
        bench_.page.reset();
        hang_.stop();
        bench_.time.settle();
        QVERIFY(!inFront());
        QCOMPARE(instantiatedCenterWidget()->findChildren<QDialog*>().size(), 0);
        QCOMPARE(bench_.time.armedTimers(QFontCache::instance()), 0);
    }
};

LUMO_TEST(TestRandomClicks)
#include "test_randomclicks.moc"
