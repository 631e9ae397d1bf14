#include "module/globals.h"
#include "module/qtloops.h"
#include "panel/projectdialogs.h"
#include "support/executorbench.h"

#include <QContextMenuEvent>
#include <QDoubleSpinBox>
#include <QListView>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>

using test::sameLog;

namespace {

/// One program that comes through every kind of wait. Ramps, delays and gas times are 200 ms, motions
/// 500 ms, the tool is at its target 100 ms before a motion's end.
const QByteArray program = R"([
    {"type":"moveL","point":{"trans":[1,0,0]}},
    {"type":"open"},
    {"type":"moveL","zone":2,"point":{"trans":[2,0,0]}},
    {"type":"close"},
    {"type":"delay","delaytime":300},
    {"type":"waitDI","DI_type":"IO","diName":"DI1","value1":"true"}])";

struct Instant {
    const char* wait;
    int ms;  ///< an instant in the middle of this wait
    int line;
    bool box;  ///< a refused start has put a message on the screen before
};

const Instant instants[] = {
    {"move", 250, 0, false},      {"preflow", 600, 1, false},   {"dwell", 800, 1, false},
    {"zone", 1010, 2, false},     {"rampdown", 1310, 3, false}, {"closedelay", 1610, 3, false},
    {"postflow", 1810, 3, false}, {"delay", 2010, 4, false},    {"input", 2250, 5, false},
    {"box", 250, 0, true},
};

/// What an event does in a wait. Outcome: when the run ended, the resume line, the weld flag, and when
/// laser and gas went off for good (-1: were never on), then the boxes shown.
struct Cell {
    const char* wait;
    const char* event;
    const char* outcome;
};

const Cell cells[] = {
    {"move", "pause", "250 0 weld=0 laserOff=-1 gasOff=-1"},
    {"move", "power", "250 0 weld=0 laserOff=-1 gasOff=-1"},
    {"move", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"move", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"move", "result", "2350 5 weld=0 laserOff=1250 gasOff=1650"},
    {"move", "permission", "2400 5 weld=0 laserOff=-1 gasOff=-1"},
    {"move", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"preflow", "pause", "600 1 weld=0 laserOff=-1 gasOff=800"},
    {"preflow", "power", "600 1 weld=0 laserOff=-1 gasOff=600"},
    {"preflow", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"preflow", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"preflow", "result", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"preflow", "permission", "2400 5 weld=0 laserOff=-1 gasOff=1200"},
    {"preflow", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"dwell", "pause", "1400 1 weld=0 laserOff=1000 gasOff=1400"},
    {"dwell", "power", "900 1 weld=0 laserOff=800 gasOff=800"},
    {"dwell", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"dwell", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"dwell", "result", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"dwell", "permission", "2400 5 weld=0 laserOff=1000 gasOff=1400"},
    {"dwell", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"zone", "pause", "1010 2 weld=1 laserOff=1210 gasOff=1210"},
    {"zone", "power", "1010 2 weld=1 laserOff=1010 gasOff=1010"},
    {"zone", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"zone", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"zone", "result", "2410 5 weld=0 laserOff=1210 gasOff=1610"},
    {"zone", "permission", "2400 5 weld=0 laserOff=1210 gasOff=1610"},
    {"zone", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"rampdown", "pause", "1310 3 weld=0 laserOff=1310 gasOff=1510"},
    {"rampdown", "power", "1310 3 weld=0 laserOff=1310 gasOff=1310"},
    {"rampdown", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"rampdown", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"rampdown", "result", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"rampdown", "permission", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"rampdown", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"closedelay", "pause", "1610 3 weld=0 laserOff=1500 gasOff=1810"},
    {"closedelay", "power", "1610 3 weld=0 laserOff=1500 gasOff=1610"},
    {"closedelay", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"closedelay", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"closedelay", "result", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"closedelay", "permission", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"closedelay", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"postflow", "pause", "1810 3 weld=0 laserOff=1500 gasOff=2010"},
    {"postflow", "power", "1810 3 weld=0 laserOff=1500 gasOff=1810"},
    {"postflow", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"postflow", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"postflow", "result", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"postflow", "permission", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"postflow", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"delay", "pause", "2010 4 weld=0 laserOff=1500 gasOff=1900"},
    {"delay", "power", "2010 4 weld=0 laserOff=1500 gasOff=1900"},
    {"delay", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"delay", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"delay", "result", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"delay", "permission", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"delay", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"input", "pause", "2250 5 weld=0 laserOff=1500 gasOff=1900"},
    {"input", "power", "2250 5 weld=0 laserOff=1500 gasOff=1900"},
    {"input", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"input", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"input", "result", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"input", "permission", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"input", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900"},
    {"box", "pause", "250 0 weld=0 laserOff=-1 gasOff=-1 当前不是空闲状态"},
    {"box", "power", "250 0 weld=0 laserOff=-1 gasOff=-1 当前不是空闲状态"},
    {"box", "start", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"box", "once", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
    {"box", "result", "2350 5 weld=0 laserOff=1250 gasOff=1650 当前不是空闲状态"},
    {"box", "permission", "2400 5 weld=0 laserOff=-1 gasOff=-1 当前不是空闲状态"},
    {"box", "replaced", "2400 5 weld=0 laserOff=1500 gasOff=1900 当前不是空闲状态"},
};

}  // namespace

/// For every kind of wait, what every kind of event does in it: the table of docs/executor.md.
class TestWaitTable : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    void happen(const QByteArray& event) {
        if (event == "pause") {
            test::ExecutorBench::pause();
        } else if (event == "power") {
            test::ScriptedRobot::setPower("off");
        } else if (event == "start" || event == "once") {
            test::ExecutorBench::trigger(event, 0);
        } else if (event == "result") {
            test::ScriptedRobot::answer("move.l", 0);
        } else if (event == "permission") {
            test::ScriptedRobot::setMode("manual");
        } else if (event == "replaced") {
            bench_.load(R"([{"type":"setDO","DO_type":"IO","doName":"DO9"}])");
        }
    }

    static void askForMenu(QWidget* widget) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, widget->rect().center(),
                                widget->mapToGlobal(widget->rect().center()));
        QApplication::sendEvent(widget, &event);
    }

private slots:
    void init() { bench_.reset(); }

    void undisturbed() {
        bench_.load(program);
        bench_.robot.zoneLeadMs = 100;
        QStringList seen;
        for (const Instant& instant : instants) {
            if (instant.box) {
                continue;
            }
            bench_.at(instant.ms, [this, &seen] {
                seen << QStringLiteral("%1 %2").arg(bench_.waitingKind()).arg(bench_.resumeLine());
            });
        }
        bench_.at(2350, [this] { kordservice()->dataNode("device.io")->set(this, "DI.DI1", true); });
        bench_.run();
        QStringList expected;
        for (const Instant& instant : instants) {
            if (instant.box) {
                continue;
            }
            expected << QStringLiteral("%1 %2").arg(instant.wait).arg(instant.line);
        }
        QVERIFY(sameLog(seen, expected));
        QCOMPARE(bench_.robot.nowMs(), qint64(2400));
    }

    void loopOfQt_holdsNoWait_data() {
        QTest::addColumn<QByteArray>("kind");
        for (const char* kind : {"scroll bar", "spin box", "list of files", "warning of the files"}) {
            QTest::newRow(kind) << QByteArray(kind);
        }
    }

    /// In every wait, with what Qt opens by itself and waits for in a loop of its own.
    void loopOfQt_holdsNoWait() {
        QFETCH(QByteArray, kind);
        QScrollBar bar;
        QDoubleSpinBox box;
        const std::unique_ptr<QFileDialog> files(lumo::makeProjectDialog(nullptr));
        const std::initializer_list<QWidget*> windows{&bar, &box, files.get()};
        for (QWidget* window : windows) {
            window->show();
        }
        int opened = 0;
        const auto open = [&] {
            ++opened;
            if (kind == "warning of the files") {
                QMessageBox::warning(files.get(), "title", "There is no such folder.");
            } else {
                auto* const list = files->findChild<QListView*>("listView")->viewport();
                askForMenu(kind == "scroll bar" ? &bar : kind == "spin box" ? &box : list);
            }
        };
        for (const Instant& instant : instants) {
            if (!instant.box) {
                bench_.at(instant.ms, open);
            }
        }
        bench_.load(program);
        bench_.robot.zoneLeadMs = 100;
        bench_.at(2350, [this] { kordservice()->dataNode("device.io")->set(this, "DI.DI1", true); });
        bench_.at(20000, lumo::endLoopsOfQt);
        bench_.run();
        QCOMPARE(opened, int(std::size(instants)) - 1);
        QCOMPARE(bench_.robot.nowMs(), qint64(2400));
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(1500));
        QVERIFY(!QApplication::activePopupWidget() && bench_.boxes().isEmpty());
    }

    void cell_data() {
        QTest::addColumn<QByteArray>("wait");
        QTest::addColumn<QByteArray>("event");
        QTest::addColumn<QString>("outcome");
        for (const Cell& cell : cells) {
            QTest::addRow("%s in %s", cell.event, cell.wait)
                << QByteArray(cell.wait) << QByteArray(cell.event) << QString(cell.outcome);
        }
    }

    void cell() {
        QFETCH(QByteArray, wait);
        QFETCH(QByteArray, event);
        const auto* instant = std::find_if(std::begin(instants), std::end(instants),
                                           [&wait](const Instant& other) { return wait == other.wait; });
        bench_.load(program);
        bench_.robot.zoneLeadMs = 100;
        if (instant->box) {
            bench_.at(200, [] { test::ExecutorBench::trigger("start", 3); });
        }
        bench_.at(instant->ms, [this, event] { happen(event); });
        bench_.at(2350, [this] { kordservice()->dataNode("device.io")->set(this, "DI.DI1", true); });
        bench_.run();
        const qint64 endMs = bench_.robot.nowMs();
        const int line = bench_.resumeLine();
        bench_.settle();
        QTEST(QStringLiteral("%1 %2 weld=%3 laserOff=%4 gasOff=%5%6")
                  .arg(endMs)
                  .arg(line)
                  .arg(bench_.weldFlag())
                  .arg(bench_.robot.offSince("LASER"))
                  .arg(bench_.robot.offSince("GAS"))
                  .arg(bench_.boxes().isEmpty() ? QString() : " " + bench_.boxes().join('|')),
              "outcome");
        QCOMPARE(bench_.state(), QString("idle"));
        for (const char* off : {"LASER", "GAS", "WIRE", "PULL", "POWER"}) {
            QCOMPARE(bench_.robot.output(off), 0.0);
        }
        QCOMPARE(bench_.robot.firstTime("out DO9 1"), qint64(-1));
        if (event == "power") {
            QCOMPARE(bench_.robot.logBetween(instant->ms + 1, 99999), QStringList());
        }
    }
};

LUMO_TEST_MAIN(TestWaitTable)
#include "test_waittable.moc"
