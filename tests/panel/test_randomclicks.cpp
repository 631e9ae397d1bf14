#include "pagebench.h"

#include "equipment/handlit.h"
#include "equipment/ports.h"
#include "module/qtloops.h"
#include "support/suite.h"
#include "widgets/switchbutton.h"

#include <QContextMenuEvent>
#include <QRandomGenerator>

/// Random clicks, texts and events while programs and stations run. LUMO_SEED=n repeats one sequence.
class TestRandomClicks : public QObject {
    Q_OBJECT

    test::PageBench bench_;
    QRandomGenerator random_;
    QString fault_;
    const char* const program_ =
        "moveL to=0.1,0,0 speed=20 zone=2; open 0 weldspeed=20; moveL to=0.2,0,0 speed=20; close;"
        "delay 300; waitDI DI1 value1=true";
    int left_ = 0;  // steps
    int runs_ = 0;
    bool mayStart_ = false;

    template <typename T>
    T oneOf(std::initializer_list<T> items) {
        return items.begin()[random_.bounded(int(items.size()))];
    }
    static bool isIdle() { return !lumo::isRunning() && executor->depth() + executor->pendingSteps() == 0; }

    /// Of a file dialog: an export must not write outside the test's folder.
    static bool leavesFolder(const QWidget* widget) {
        return QStringList{"toParentButton", "backButton", "forwardButton", "lookInCombo"}.contains(
            widget->objectName());
    }

    void touch(QWidget* widget) {
        const QStringList starters{"btnStart", "btnRunOnce", "btnMoveThere"};
        mayStart_ |= starters.contains(widget->objectName());
        auto* const table = qobject_cast<QTableWidget*>(widget);
        if (random_.bounded(30) == 0) {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1));
            QApplication::sendEvent(widget, &event);
        } else if (auto* const line = qobject_cast<QLineEdit*>(widget)) {
            line->selectAll();
            QTest::keyClicks(line,
                             oneOf({"", "0", "7", "60", "-40", "1.5", "99999999999", "P1.json", "a/b"}));
        } else if (table && table->rowCount() > 0) {
            const QModelIndex cell = table->model()->index(random_.bounded(table->rowCount()), 1);
            table->scrollTo(cell);
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(cell).center());
        } else {
            test::click(widget);
        }
    }

    void happen() {
        const QString input = oneOf({"DI.DI1", "DI.DI1", "DI.DI4", "DI.DI5", "DI.DI14"});
        const int code = oneOf({0, 0, 7});
        const std::function<void()> events[] = {
            [&] { bench_.robot.setPower("off"); },
            [&] { bench_.robot.setMode("manual"); },
            [&] {
                isIdle() ? bench_.loadSound(program_) : bench_.robot.standAt({0.5, 0.0, 0.0});
            },
            [&] { bench_.robot.codes.fill(code, 3); },
            [&] { bench_.makePage(); },
            [&] { kordservice()->dataNode("device.io")->set(this, input, random_.bounded(3) > 0); }};
        events[oneOf({0, 0, 0, 1, 2, 2, 2, 3, 4, 5, 5, 5})]();
    }

    void step() {
        if (left_-- <= 0 || !fault_.isEmpty()) {
            bench_.robot.setPower("off");
            return lumo::endLoopsOfQt();
        }
        QTimer::singleShot(oneOf({1, 30, 200, 700}), this, &TestRandomClicks::step);  // also inside waits
        bench_.robot.setPower("on");                                                  // for the next step
        bench_.robot.setMode("auto");
        QWidget* const popup = QApplication::activePopupWidget();
        QWidget* const inFront = popup ? popup : QApplication::activeModalWidget();
        const QString wish =
            oneOf({"btnStart", "btnStart", "btnRunOnce", "btnPause", "btnProject", "switchBtn"});
        const char* const kinds[] = {"QAbstractButton", "QLineEdit", "QComboBox", "QTableWidget",
                                     "SwitchButton"};
        QList<QWidget*> reach, wished;
        for (QWidget* widget : instantiatedCenterWidget()->findChildren<QWidget*>()) {
            const bool isKnown = std::any_of(std::begin(kinds), std::end(kinds),
                                             [=](auto* kind) { return widget->inherits(kind); });
            const bool isInFront = !inFront || widget->window() == inFront;
            if (isKnown && isInFront && !leavesFolder(widget) && widget->isVisible() && widget->isEnabled()) {
                (widget->objectName() == wish ? wished : reach) << widget;
            }
        }
        const int what = random_.bounded(10);
        mayStart_ = qobject_cast<QMessageBox*>(inFront) ||
                    bench_.page->findChild<SwitchButton*>("switchBtn")->checked();
        if (what < 4 && !wished.isEmpty()) {
            touch(wished[0]);
        } else if (what == 4 && !popup) {
            happen();
        } else if (what == 5 || reach.isEmpty()) {
            const auto key = oneOf({Qt::Key_Return, Qt::Key_Escape, Qt::Key_Down, Qt::Key_Delete});
            QWidget* const window = inFront ? inFront : bench_.page.get();
            QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, key);
        } else {
            touch(reach[random_.bounded(reach.size())]);
        }
        checkDark();
    }

    void checkDark() {
        for (int port = DO_GAS; port < AO_WIRE_SPEED; ++port) {
            const bool isLock = port >= DO_LASER_SAFETY_LOCK && port <= DO_GAS_SAFETY_LOCK;
            if (isIdle() && portState(I_PORT(port)) && !isLock && !lumo::isLitByHand(I_PORT(port))) {
                fault_ = QString("port %1 is on though nothing runs").arg(port);
            }
        }
    }

private slots:
    void randomInput_leavesNothingOnHangingOrStartedByItself() {
        connect(m("lumo.execute.state"), &ModuleObject::changed, this, [this](const QVariant& state) {
            fault_ = state.toString() == "idle" || mayStart_ ? fault_ : "a run that nobody started";
            runs_ += state.toString() == "busy" ? 1 : 0;
        });
        const int only = qEnvironmentVariableIntValue("LUMO_SEED");
        for (int seed = only ? only : 1; seed <= (only ? only : 20); ++seed) {
            qInfo("LUMO_SEED=%d", seed);
            bench_.clear();
            instantiatedCenterWidget()->setUpdatesEnabled(seed % 5 == 0);  // painting takes most of the time
            random_.seed(quint32(seed));
            const auto stations = test::json(
                "[{'filePath':'P1.json','time':'100','DI':'DI4','type':'上升沿','DI_type':'IO',"
                "  'DI2':'DI14','type2':'上升沿','DI2_type':'IO'},"
                " {'filePath':'seam.json','time':'50','DI':'DI5','type':'上升沿','DI_type':'IO'}]");
            m("lumo.signalsConfig")->loadJson(this, stations);
            bench_.loadSound(program_);
            test::writeFile("P1.json", test::quoted("[{'type':'open','weldspeed':9},{'type':'close'}]"));
            LumoWidget::filePath = "seam.json";
            isEnable_moveorder = true;
            bench_.makePage();
            bench_.robot.motionMs = 3000;
            left_ = 150;
            step();
            bench_.time.advanceUntil([this] { return left_ < 0 && isIdle(); }, 300000);
            bench_.time.advance(1000);
            checkDark();
            QVERIFY2(fault_.isEmpty() && isIdle(), qPrintable(fault_));
        }
        QVERIFY2(only || runs_ > 50, qPrintable(QString::number(runs_)));  // few runs: the clicks got stuck
    }
};

LUMO_TEST(TestRandomClicks)
#include "test_randomclicks.moc"
