// Courses that keep the rules, and courses that break one: events as "ms fact=value … kind text value".

#include "campaign/rules.h"

namespace campaign {

namespace {

/// What the rules say of a course; what it says of the facts stays so.
QString play(const QString& course) {
    std::vector<Event> events;
    Event event;
    event.facts[Idle] = event.facts[Powered] = event.facts[RobotIdle] = event.facts[Permitted] = 1;
    event.facts[GasUsed] = event.facts[LineExists] = 1;
    event.facts[DecreaseMs] = 200;
    event.facts[LineCount] = -1;
    QList<int> deeds;
    int count = 0;
    for (const QString& line : course.split(';', Qt::SkipEmptyParts)) {
        QStringList words = line.split(' ', Qt::SkipEmptyParts);
        event.ms = words.takeFirst().toInt();
        while (words.first().contains('=')) {
            const QStringList fact = words.takeFirst().split('=');
            event.facts[size_t(fromName<Fact>(fact[0]))] = fact[1].toInt();
        }
        event.kind = Kind(fromName<Kind>(words[0]));
        event.text = words.value(1);
        event.value = words.value(words.size() - 1).toInt();
        event.port = fromName<Port>(event.text);
        if (event.kind <= Act) {
            deeds << ++count;
        } else if (event.kind == Activity) {
            event.wait = event.text;
            event.value = !event.text.isEmpty();
        }
        event.action = event.kind <= Act ? count : event.kind == Done ? deeds.takeLast() : 0;
        events.push_back(event);
    }
    QStringList said;
    for (const auto& finding : check(events).all) {
        said << finding.second;
    }
    return said.join("; ");
}

const QString begin = "0 Start 0; 0 Depth=1 Activity; 0 Idle=0 State busy; 0 Command move.reset;";
const QString weld = begin +
                     "0 Statement open; 0 Param 0; 0 Write GAS 1; 0 Activity preflow; 9 Write LASER 1;"
                     "9 Write POWER 9000; 9 Write WIRE 1; 9 WeldOpen=1 WeldFlag 1;";
const QString closing =
    "40 Statement close; 40 Write PULLBACK 1; 40 Pending=9 Activity rampdown;"
    "60 Write PULLBACK 0; 60 Write WIRE 0; 60 Write POWER 0; 60 Write LASER 0;"
    "80 Pending=0 Write GAS 0; 80 WeldOpen=0 WeldFlag 0;";
const QString ended = "90 Idle=1 State idle; 90 Depth=0 Activity; 90 Done;";
const QString pause =
    "40 Pause; 40 Depth=2 Activity; 40 Write PULLBACK 1; 40 Pending=9 Activity;"
    "40 Idle=1 State idle; 40 Depth=0 Activity; 40 Done; 40 Done;";
const QString pauseEnds =
    "60 Write GAS 0; 60 Write PULLBACK 0; 60 Write WIRE 0; 60 Write POWER 0;"
    "60 Write LASER 0; 60 Pending=0 Activity;";
const QString powerLoss =
    "40 Power off 0; 40 Command move.stop; 40 Write WIRE 0; 40 Write POWER 0;"
    "40 Write LASER 0; 40 Write GAS 0; 40 Idle=1 State idle; 40 Done; 40 Depth=0 Activity; 40 Done;";
const QString again = "100 Start 0; 100 Depth=1 Activity; 100 Idle=0 State busy; 100 Write GAS 1";
const QString move = begin + "0 Statement moveL; 0 Command move.l;";

/// A part of a broken rule's words, or none; and the course.
const QPair<const char*, QString> courses[] = {
    {"", weld + closing + ended + "99 End"},
    {"", weld + pause + pauseEnds + again},
    {"", weld + powerLoss},
    {"", begin + "9 Start 0; 9 Boxes=1 Done"},
    {"", move + "5 Result move.l 0; 9 Pause; 9 Depth=2 Activity; 9 Done"},
    {"", begin + "0 Quirk; 0 Done; 0 Statement moveL; 9 Statement delay"},
    {"", begin + "0 Line 0; 0 Line 2; 0 ResumeLine=2 Pause; 0 Done"},
    {"outside a permitted opening", begin + "0 Write LASER 1"},
    {"outside a permitted opening", weld + pause + "50 Write LASER 1"},
    {"gas is switched on outside", begin + "0 Write GAS 1"},
    {"gas is switched on outside", weld + pause + pauseEnds + "70 Replace; 70 Done;" + again},
    {"an opening goes on though", begin + "0 Permitted=0 Permission;" + weld.mid(begin.size())},
    {"after a pause it has to be off by 241", weld + pause + "242 Write POWER 0"},
    {"after a pause in a closing it has to be off by 50", weld + pause + "50 Pause; 51 Write POWER 0"},
    {"the loss of the welding permission it has", weld + "30 Permitted=0 Permission; 232 Write POWER 0"},
    {"a close statement it has to be off by 241", weld + "40 Statement close; 242 Write POWER 0"},
    {"the request to quit it has to be off by 40", weld + "40 Quit; 41 Write POWER 0"},
    {"a loss of power it has to be off by 40", weld + "40 Power off 0; 41 Write POWER 0"},
    {"counts as open behind its close", weld + closing.left(closing.size() - 25) + "80 Statement delay"},
    {"raises the laser power", weld + pause + "50 Write POWER 9500"},
    {"at power 9000, not 0", weld + pause + "50 Write LASER 0"},
    {"though the laser is disabled", begin + "0 Emission 1"},
    {"the gas goes off 40 ms after the laser",
     "0 PostFlowMs=41 Act;" + weld + QString(closing).replace("80 ", "100 ") + ended},
    {"the gas goes off 20 ms after the pause", "0 PostFlowMs=21 Act;" + weld + pause + pauseEnds},
    {"without gas", begin + "0 Statement open; 0 Param 0; 0 Write LASER 1"},
    {"enabled and the gas is off", weld + "30 Write GAS 0; 31 Write POWER 8000"},
    {"has left on: WIRE", weld + QString(powerLoss).replace("40 Write WIRE 0;", "")},
    {"WIRE is raised", weld + powerLoss + "50 Write WIRE 1"},
    {"WIRE is raised", weld + "40 Power off 0; 40 Pause; 40 Done;" + powerLoss.mid(16) + "50 Write WIRE 1"},
    {"sets an output after", weld + powerLoss + "50 Output DO1"},
    {"move.l is commanded after", weld + powerLoss + "50 Command move.l"},
    {"rests with something on: WIRE", weld + QString(closing).replace("60 Write WIRE 0;", "") + ended},
    {"rests while the laser source emits", weld + "9 Emission 1;" + closing + ended},
    {"another one is on the stack", begin + "1 Start 0; 1 Depth=2 Activity"},
    {"was not idle", "0 Idle=0 Start 0; 0 Depth=1 Activity"},
    {"without power", "0 Powered=0 Start 0; 0 Depth=1 Activity"},
    {"of a moving robot", "0 RobotIdle=0 Start 0; 0 Depth=1 Activity"},
    {"of no line", "0 LineExists=0 Start 0; 0 Depth=1 Activity"},
    {"refused without a message", begin + "9 Start 0; 9 Done"},
    {"refused for no reason", "0 Start 0; 0 Boxes=1 Done"},
    {"not accepted caused a Command", begin + "9 Start 0; 9 Command move.reset"},
    {"the state is not idle", begin + "9 Depth=0 Activity"},
    {"leaves the weld open", begin + "0 WeldOpen=1 WeldFlag 1;" + ended},
    {"ahead of the robot", move + "9 Statement delay"},
    {"ahead of the robot", move + "9 Result move.l 0; 9 Statement moveL; 20 Statement delay"},
    {"the tool is outside", move + "9 Zone 5"},
    {"after a motion error", move + "9 Result move.l -1; 9 Statement delay"},
    {"did not stop the robot", move + "9 Pause; 9 Depth=2 Activity; 9 Done"},
    {"were not awaited", begin + "0 Command move.l;" + ended},
    {"of no motion was passed over", begin + "5 Result move.l 0; 6 Result move.l 0"},
    {"that nobody asked for", move + "5 Result move.l 0; 5 Dropped unexpected"},
    {"no wait has ended in a zone", move + "5 Result move.l 0; 5 Dropped ignore"},
    {"to line 2 after line 2", begin + "0 Line 2; 0 Line 2"},
    {"leaves line 5 to resume", begin + "0 Line 4; 5 ResumeLine=5 Pause; 5 Done"},
    {"strange", "0 Complaint strange"},
    {"executor is not idle", "0 Idle=0 End"},
    {"steps are pending", "0 Pending=2 End"},
    {"on, as far as was written: GAS LASER POWER", weld + "9 Write WIRE 0; 9 End"},
    {"at the end the source emits", "0 Emission 1; 0 End"},
    {"the resume line 3 is none", "0 ResumeLine=3 LineCount=3 End"},
};

}  // namespace

QStringList checkRules() {
    QStringList missed;
    for (const auto& course : courses) {
        const QString said = play(course.second);
        const bool right = *course.first == 0 ? said.isEmpty() : said.contains(course.first);
        if (!right) {
            missed << QString("\"%1\" is said of: %2\n  not \"%3\"").arg(said, course.second, course.first);
        }
    }
    return missed;
}

}  // namespace campaign
