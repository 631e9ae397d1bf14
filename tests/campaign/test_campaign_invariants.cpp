#include "campaign/invariants.h"
#include "devices/ports.h"

#include <QTest>

Q_DECLARE_METATYPE(campaign::Ending)

using campaign::Checker;
using campaign::Ending;
using campaign::Event;

namespace {

/// Makes events of lines such as "120 write LASER 1"; what a line says of the state stays so.
class Diary {
public:
    explicit Diary(Checker& checker) : checker_(checker) {}

    void play(const QString& text) {
        const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& line : lines) {
            const QStringList words = line.simplified().split(QLatin1Char(' '));
            const QString argument = words.value(2);
            const int number = argument.toInt();
            if (words.value(1) == QLatin1String("facts")) {
                takeFact(argument, words.value(3).toInt());
                continue;
            }
            Event event;
            event.ms = words.value(0).toLongLong();
            event.text = argument;
            event.value = number;
            fillIn(event, words.value(1), words.value(3).toInt());
            event.facts = facts_;
            checker_.on(event);
        }
    }

private:
    void takeFact(const QString& name, int value) {
        bool* const flag = name == QLatin1String("idle")         ? &facts_.idle
                           : name == QLatin1String("powered")    ? &facts_.powered
                           : name == QLatin1String("robotIdle")  ? &facts_.robotIdle
                           : name == QLatin1String("lineExists") ? &lineExists_
                                                                 : nullptr;
        if (flag) {
            *flag = value != 0;
        } else if (name == QLatin1String("boxes")) {
            facts_.boxes = value;
        } else if (name == QLatin1String("postFlow")) {
            facts_.postFlowMs = value;
        } else if (name == QLatin1String("resumeLine")) {
            facts_.resumeLine = value;
        } else {
            QFAIL(qPrintable(QStringLiteral("no fact is called ") + name));
        }
    }

    void fillIn(Event& event, const QString& verb, int second) {
        using Kind = Event::Kind;
        static const QHash<QString, Kind> kinds{
            {"start", Kind::Start},       {"once", Kind::Once},           {"pause", Kind::Pause},
            {"power", Kind::Power},       {"replace", Kind::Replace},     {"quirk", Kind::Quirk},
            {"done", Kind::Done},         {"depth", Kind::Activity},      {"wait", Kind::Activity},
            {"state", Kind::State},       {"statement", Kind::Statement}, {"flag", Kind::WeldFlag},
            {"set", Kind::Param},         {"write", Kind::Write},         {"output", Kind::Output},
            {"command", Kind::Command},   {"result", Kind::Result},       {"zone", Kind::Zone},
            {"permit", Kind::Permission}, {"emits", Kind::Emission},      {"byHand", Kind::Foreign},
            {"line", Kind::Line},         {"dropped", Kind::Dropped},     {"quit", Kind::Quit},
        };
        QVERIFY2(kinds.contains(verb), qPrintable(verb));
        event.kind = kinds.value(verb);
        if (verb == QLatin1String("depth")) {
            facts_.depth = event.value;
            facts_.pending = second;
            facts_.wait.clear();
            event.value = 0;
        } else if (verb == QLatin1String("wait")) {
            facts_.wait = event.text;
            event.value = 1;
        } else if (verb == QLatin1String("state")) {
            facts_.idle = event.text == QLatin1String("idle");
        } else if (verb == QLatin1String("flag")) {
            facts_.weldOpen = event.value != 0;
        } else if (verb == QLatin1String("permit")) {
            facts_.permitted = event.value != 0;
        } else if (verb == QLatin1String("write") || verb == QLatin1String("byHand")) {
            event.port = portOf(event.text);
            event.value = second;
        } else if (verb == QLatin1String("start") || verb == QLatin1String("once")) {
            event.mode = event.value;
            event.lineExists = lineExists_;
        }
        if (verb == QLatin1String("done")) {
            event.action = stack_.takeLast();
        } else if (QStringList{"start", "once", "pause", "power", "replace", "quirk", "quit"}.contains(
                       verb)) {
            event.action = ++actions_;
            stack_ << event.action;
        }
        facts_.decreaseMs = 200;
    }

    static int portOf(const QString& name) {
        int port = DO_GAS;
        while (port <= AO_LASER_DUTY_CYCLE && campaign::nameOfPort(port) != name) {
            ++port;
        }
        return port;
    }

    Checker& checker_;
    campaign::Facts facts_;
    bool lineExists_ = true;
    QList<int> stack_;
    int actions_ = 0;
};

const char* const accepted = "0 start 0\n 0 depth 1\n 0 state busy\n 0 command move.reset\n";
const char* const opening =
    "0 statement open\n 0 set 0\n 0 write GAS 1\n 0 wait preflow\n"
    "100 write POWER 0\n 100 write LASER 1\n 100 depth 1 3\n 300 write POWER 9000\n 300 write WIRE 1\n"
    "300 depth 1 0\n 300 flag 1\n";
const char* const closing =
    "400 statement close\n 400 write PULLBACK 1\n 400 depth 1 9\n 400 wait rampdown\n"
    "500 write POWER 4000\n 600 write PULLBACK 0\n 600 write WIRE 0\n 600 write POWER 0\n 600 write LASER 0\n"
    "600 depth 1 1\n 800 write GAS 0\n 800 depth 1 0\n 800 flag 0\n";
const char* const ended = "900 state idle\n 900 depth 0\n 900 done\n";
const char* const pauseAt400 =
    "400 pause\n 400 depth 2\n 400 write PULLBACK 1\n 400 depth 2 9\n 400 state idle\n"
    "400 depth 1 9\n 400 done\n 400 depth 0 9\n 400 done\n";
const char* const pauseEnds =
    "500 write POWER 4000\n 600 write GAS 0\n 600 write PULLBACK 0\n 600 write WIRE 0\n"
    "600 write POWER 0\n 600 write LASER 0\n 600 depth 0 0\n";
const char* const shutdown =
    "400 command move.stop\n 400 write WIRE 0\n 400 write POWER 0\n 400 write LASER 0\n"
    "400 write GAS 0\n 400 state idle\n 400 done\n 400 depth 0 0\n 400 done\n";

QString text(std::initializer_list<const char*> parts) {
    QString whole;
    for (const char* const part : parts) {
        whole += QString::fromLatin1(part) + QLatin1Char('\n');
    }
    return whole;
}

}  // namespace

/// Each invariant of the campaign: courses that keep it and courses that break it.
class TestCampaignInvariants : public QObject {
    Q_OBJECT

    static void columns() {
        QTest::addColumn<QString>("diary");
        QTest::addColumn<QString>("broken");
    }

    static void row(const char* name, const QString& diary, const char* broken) {
        QTest::newRow(name) << diary << QString::fromLatin1(broken);
    }

    static void check() {
        QFETCH(QString, diary);
        QFETCH(QString, broken);
        Checker checker;
        Diary(checker).play(diary);
        const QString all = checker.broken().join(QStringLiteral("; "));
        QVERIFY2(broken.isEmpty() ? all.isEmpty() : all.contains(broken), qPrintable(all));
    }

private slots:
    void weld_data() {
        columns();
        row("a weld", text({accepted, opening, closing, ended}), "");
        row("a paused weld", text({accepted, opening, pauseAt400, pauseEnds}), "");
        row("a weld without power", text({accepted, opening, "400 power 0", shutdown}), "");

        row("laser on without an opening", text({accepted, "0 write LASER 1"}),
            "outside a permitted opening");
        row("gas on without an opening", text({accepted, "0 write GAS 1"}), "gas is switched on outside");
        row("opening without permission", text({accepted, "0 permit 0", opening}), "not permitted");
        row("pulse without permission", text({accepted, opening, "350 permit 0\n 360 write LASER 1"}),
            "outside a permitted opening");
        row("pulse after the pause", text({accepted, opening, pauseAt400, "450 write LASER 1"}),
            "outside a permitted opening");
        row("laser on long after a pause", text({accepted, opening, pauseAt400, "602 write POWER 0"}),
            "has to be off by 601 ms");
        row("laser on after a second pause",
            text({accepted, opening, pauseAt400, "450 pause\n 450 depth 1 9\n 451 write POWER 0"}),
            "has to be off by 450 ms");
        row("laser on long after the permission",
            text({accepted, opening, "350 permit 0\n 552 write POWER 0"}), "has to be off by 551 ms");
        row("laser on long after the close",
            text({accepted, opening, "400 statement close\n 602 write POWER 0"}), "has to be off by 601 ms");
        row("weld open behind its close",
            text({accepted, opening}) + QString(closing).replace("flag 0", "statement delay"),
            "behind its close statement");
        row("closing raises the power", text({accepted, opening, pauseAt400, "450 write POWER 9500"}),
            "raises the laser power");
        row("closing ends with power", text({accepted, opening, pauseAt400, "500 write LASER 0"}),
            "at power 9000");
        row("source emits while disabled", text({accepted, "0 emits 1"}), "source emits");

        const QString again = text({"1000 start 0\n 1000 depth 1\n 1000 state busy\n 1000 write GAS 1"});
        row("a weld is resumed", text({accepted, opening, pauseAt400, pauseEnds}) + again, "");
        row("a weld is resumed in another program",
            text({accepted, opening, pauseAt400, pauseEnds, "900 replace\n 900 done"}) + again, "gas");
        row("a weld is resumed in another mode",
            text({accepted, opening, pauseAt400, pauseEnds}) + QString(again).replace("start 0", "start 1"),
            "gas");
    }

    void weld() { check(); }

    void gas_data() {
        columns();
        row("post-flow", text({"0 facts postFlow 200", accepted, opening, closing, ended}), "");
        row("short post-flow", text({"0 facts postFlow 201", accepted, opening, closing, ended}),
            "200 ms after the laser");
        row("post-flow of a pause", text({"0 facts postFlow 200", accepted, opening, pauseAt400, pauseEnds}),
            "");
        row("short post-flow of a pause",
            text({"0 facts postFlow 201", accepted, opening, pauseAt400, pauseEnds}),
            "200 ms after the pause");
        row("no post-flow after a loss of power",
            text({"0 facts postFlow 200", accepted, opening, "400 power 0", shutdown}), "");
        row("laser without gas", text({accepted, "0 statement open\n 0 set 0\n 0 write LASER 1"}),
            "without gas");
        row("gas off in the weld", text({accepted, opening, "350 write GAS 0\n 351 write POWER 8000"}),
            "gas is off since 350 ms");
        row("gas that somebody else switches off",
            text({accepted, opening, "350 byHand GAS 0", closing, ended}), "");
        row("laser that somebody else switches on", text({"0 byHand LASER 1\n 1 emits 1\n 2 depth 0 0"}), "");
        row("laser on after a request to quit", text({accepted, opening, "400 quit\n 401 write POWER 0"}),
            "has to be off by 400 ms");
    }

    void gas() { check(); }

    void stop_data() {
        columns();
        row("power loss leaves gas on",
            text({accepted, opening, "400 power 0"}) + QString(shutdown).replace("400 write GAS 0\n", ""),
            "left on: GAS");
        row("wire on after a power loss",
            text({accepted, opening, "400 power 0", shutdown, "450 write WIRE 1"}), "WIRE is raised");
        row("pause inside a power loss",
            text({accepted, opening, "400 power 0\n 400 pause\n 400 done", shutdown, "450 write WIRE 1"}),
            "WIRE is raised");
        row("statement after a power loss",
            text({accepted, opening, "400 power 0", shutdown, "450 output DO1"}), "sets DO1");
        row("motion after a power loss",
            text({accepted, opening, "400 power 0", shutdown, "450 command move.l"}), "move.l is commanded");
        row("laser on in the ms after a power loss",
            text({accepted, opening, "400 power 0\n 400 pause\n 400 depth 2\n 401 write PULLBACK 1"}),
            "a loss of power it has to be off by 400 ms");

        row("rest with the wire on",
            text({accepted, opening}) + QString(closing).replace("600 write WIRE 0\n", "") + QString(ended),
            "rests with something on: WIRE");
        row("rest while the source emits", text({accepted, opening, "300 emits 1", closing, ended}),
            "rests while the laser source emits");
    }

    void stop() { check(); }

    void run_data() {
        columns();
        row("two runs", text({accepted, "10 start 0\n 10 depth 2"}), "another one is on the stack");
        row("start while not idle", text({"0 facts idle 0\n 0 start 0\n 0 depth 1"}), "not idle");
        row("start without power", text({"0 facts powered 0\n 0 start 0\n 0 depth 1"}), "without power");
        row("start of a moving robot", text({"0 facts robotIdle 0\n 0 start 0\n 0 depth 1"}), "robot moving");
        row("start of no line", text({"0 facts lineExists 0\n 0 start 0\n 0 depth 1"}), "without a line");
        row("a refused start", text({accepted, "10 start 0\n 10 facts boxes 1\n 10 done"}), "");
        row("refused in silence", text({accepted, "10 start 0\n 10 done"}), "without a message");
        row("refused for no reason", text({"0 start 0\n 0 facts boxes 1\n 0 done"}), "for no reason");
        row("refused, but it commands", text({accepted, "10 start 0\n 10 command move.reset"}), "caused");
        row("a run ends busy", text({accepted, "900 depth 0"}), "state is not idle");
        row("a run leaves its weld open", text({accepted, "0 flag 1", ended}), "leaves the weld open");
        row("a paused run may",
            text({accepted, "0 flag 1\n 0 pause\n 0 depth 2\n 0 depth 1\n 0 done", ended}), "");

        row("walk after the result", text({accepted, "0 statement moveL\n 9 result 0\n 9 statement delay"}),
            "");
        row("walk ahead of the robot", text({accepted, "0 statement moveL\n 9 statement delay"}), "ahead");
        row("walk after the zone", text({accepted, "0 statement moveL\n 9 zone -5\n 9 statement close"}), "");
        row("zone from afar", text({accepted, "0 statement moveL\n 9 zone 5\n 9 statement close"}),
            "outside");
        row("two moves, one result",
            text({accepted, "0 statement moveL\n 9 result 0\n 9 statement moveL\n 20 statement delay"}),
            "ahead");
        row("walk on after an error", text({accepted, "0 statement moveL\n 9 result -1\n 9 statement delay"}),
            "motion error");
        row("a pause that stops nothing",
            text({accepted, "0 command move.l\n 0 statement moveL\n 9 pause\n 9 depth 2\n 9 done"}),
            "did not stop the robot");
        row("a pause of a robot that stands",
            text({accepted, "0 command move.l\n 5 result 0\n 9 pause\n 9 depth 2\n 9 done"}), "");
        row("motions that nobody awaited",
            text({accepted, "0 command move.l\n 0 statement delay\n 0 state idle\n 0 depth 0\n 0 done"}),
            "1 motions that were not awaited");
        row("a surplus result that is logged",
            text({accepted, "5 result 0\n 5 dropped unexpected\n 6 result 0"}), "");
        row("a surplus result in silence", text({accepted, "5 result 0\n 6 result 0"}), "in silence");
        row("a result taken for a surplus one",
            text({accepted, "0 command move.l\n 5 result 0\n 5 dropped unexpected"}),
            "that nobody asked for");
        row("a result ignored without a zone",
            text({accepted, "0 command move.l\n 5 result 0\n 5 dropped ignore"}),
            "no wait has ended in a zone");
        row("lines upwards", text({accepted, "0 line 0\n 0 line 2\n 0 line 3"}), "");
        row("a line once more", text({accepted, "0 line 0\n 0 line 2\n 0 line 2"}), "to line 2 after line 2");
        row("a pause leaves its line",
            text({accepted, "0 line 4\n 0 facts resumeLine 4\n 5 pause\n 5 depth 2\n 5 done"}), "");
        row("a pause leaves another line",
            text({accepted, "0 line 4\n 0 facts resumeLine 5\n 5 pause\n 5 depth 2\n 5 done"}),
            "leaves line 5");
        row("results that mean nothing",
            text({accepted, "0 quirk\n 0 done\n 0 statement moveL\n 9 statement delay"}), "");
    }

    void run() { check(); }

    void ending_data() {
        QTest::addColumn<Ending>("ending");
        QTest::addColumn<QString>("broken");
        const auto row = [](const char* name, const char* broken, void (*change)(Ending*)) {
            Ending ending;
            change(&ending);
            QTest::newRow(name) << ending << QString::fromLatin1(broken);
        };
        row("nothing was run", "", [](Ending*) {});
        row("rest", "", [](Ending* end) { end->resumeLine = 2, end->lineCount = 3; });
        row("busy", "not idle", [](Ending* end) { end->idle = false; });
        row("a run on the stack", "depth is 1", [](Ending* end) { end->depth = 1; });
        row("steps", "2 steps", [](Ending* end) { end->pending = 2; });
        row("a message", "1 messages", [](Ending* end) { end->boxes = 1; });
        row("a timer", "1 timers", [](Ending* end) { end->timersMore = 1; });
        row("an object", "1 objects", [](Ending* end) { end->objectsMore = 1; });
        row("a station's row", "row 2", [](Ending* end) { end->station = QStringLiteral("row 2"); });
        row("a slow quit", "7 ms have passed", [](Ending* end) { end->quit = true, end->quitTookMs = 7; });
        row("an output", "GAS is on at the controller",
            [](Ending* end) { end->outputsOn << QStringLiteral("GAS"); });
        row("a line too many", "resume line 3", [](Ending* end) { end->resumeLine = 3, end->lineCount = 3; });
    }

    void ending() {
        QFETCH(Ending, ending);
        QFETCH(QString, broken);
        Checker checker;
        checker.end(ending);
        const QString all = checker.broken().join(QStringLiteral("; "));
        QVERIFY2(broken.isEmpty() ? all.isEmpty() : all.contains(broken), qPrintable(all));
    }
};

QTEST_APPLESS_MAIN(TestCampaignInvariants)
#include "test_campaign_invariants.moc"
