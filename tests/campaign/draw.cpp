// How scenarios are drawn: which actions, and when.

#include "campaign/draw.h"
#include "campaign/programs.h"
#include "devices/ports.h"

namespace campaign {

namespace {

using Kind = Action::Kind;

QString word(const char* text) {
    return QString::fromLatin1(text);
}

Moment drawInside(Random& random) {
    Moment moment;
    moment.kind = Moment::Kind::Inside;
    moment.nth = random.below(random.oneOf({2, 6, 20}));
    switch (random.weighted({10, 4, 3, 3, 2, 2, 2, 2, 1, 3, 2, 1})) {
        case 0:
            moment.hook = Event::Kind::Write;
            moment.port = random.oneOf({-1, int(DO_GAS), int(DO_WIRE_ENABLE), int(DO_LASER_ENABLE),
                                        int(DO_WIRE_PULLBACK), int(AO_LASER_POWER), int(AO_WIRE_SPEED)});
            break;
        case 1:
            moment.hook = Event::Kind::Command;
            moment.text = word(random.oneOf({"", "move.reset", "move.stop", "move.stop", "move.opr.enough"}));
            break;
        case 2:
            moment.hook = Event::Kind::Activity;
            break;
        case 3:
            moment.hook = Event::Kind::State;
            break;
        case 4:
            moment.hook = Event::Kind::Line;
            break;
        case 5:
            moment.hook = Event::Kind::Statement;
            break;
        case 6:
            moment.hook = Event::Kind::WeldFlag;
            break;
        case 7:
            moment.hook = Event::Kind::Node;
            moment.text = word(random.oneOf({"", "lumo.current.pausepoint"}));
            break;
        case 8:
            moment.hook = Event::Kind::Param;
            break;
        case 9:
            moment.hook = Event::Kind::Result;
            moment.early = random.chance(50);
            break;
        case 10:
            moment.hook = Event::Kind::Robot;
            break;
        default:
            moment.hook = Event::Kind::Output;
    }
    return moment;
}

Moment drawMoment(Random& random, bool first) {
    if (first) {
        return {};
    }
    Moment moment;
    switch (random.weighted({50, 22, 18, 10})) {
        case 0:
            return drawWait(random);
        case 1:
            return drawInside(random);
        case 2:
            moment.kind = Moment::Kind::After;
            moment.ms = random.below(random.oneOf({2, 30, 300, 3000}));
            return moment;
        default:
            moment.ms = random.below(15000);
            return moment;
    }
}

Kind drawKind(Random& random) {
    static const Kind kinds[] = {Kind::Pause, Kind::Resume,  Kind::Start,    Kind::Once,   Kind::Power,
                                 Kind::Mode,  Kind::Weld,    Kind::HandWeld, Kind::Input,  Kind::Fail,
                                 Kind::Quirk, Kind::Replace, Kind::Edit,     Kind::Result, Kind::Param,
                                 Kind::Fault, Kind::Answer};
    return kinds[random.weighted({22, 16, 8, 5, 9, 6, 5, 3, 8, 5, 4, 4, 4, 3, 3, 2, 4})];
}

/// The particulars of an action.
void detail(Action& action, Random& random, int lineCount) {
    const auto line = [&random, lineCount] {
        return random.chance(5) ? random.oneOf({-1, lineCount}) : random.below(lineCount);
    };
    action.on = random.chance(50);
    switch (action.kind) {
        case Kind::Start:
            action.number = random.chance(60) ? 0 : line();
            action.mode = random.chance(75) ? 0 : random.oneOf({1, 1, 1, 2});
            break;
        case Kind::Once:
            action.number = line();
            action.on = random.chance(75);
            break;
        case Kind::Power:
            action.on = random.chance(20);
            break;
        case Kind::Input:
            action.text = word(random.oneOf({"DI1", "DI2", "FIXTURE_DI.#0", "FIXTURE_DI.#1"}));
            break;
        case Kind::Fail:
            action.number = random.oneOf({-1, -3, -42});
            break;
        case Kind::Quirk:
            action.text = word(random.oneOf({"bunch", "sync", "late", "double", "wrongKind", "slowState"}));
            action.on = random.chance(80);
            break;
        case Kind::Replace:
            action.on = random.chance(80);
            break;
        case Kind::Edit:
            action.number = random.below(6);
            action.mode = line();
            break;
        case Kind::Result:
            action.text = word(random.oneOf({"move.j", "move.l", "move.c"}));
            action.number = random.oneOf({0, 0, -7});
            break;
        case Kind::Param:
            action.number = random.below(3);
            action.text =
                word(random.oneOf({"power", "decrease_time", "open_interval", "stay_time", "close_delay",
                                   "delay_after_blow", "stop_wire_time", "give_wire_time"}));
            action.mode = random.oneOf({0, 5, 60, 90, 400});
            break;
        case Kind::Fault:
            action.text = word(random.oneOf({"laser", "head", "chiller", "gas", "temperature"}));
            break;
        default:
            break;
    }
}

/// What may come inside a notification, and not before the executor hears of it.
void fit(Action& action) {
    const bool inside = action.moment.kind == Moment::Kind::Inside;
    if (inside && action.kind == Kind::Param) {
        action.moment.kind = Moment::Kind::After;
    }
    // A value written in a listener of the same value would never reach those behind it.
    if (inside && action.moment.hook == Event::Kind::Result && action.kind == Kind::Result) {
        action.moment.early = false;
    }
}

/// What usually comes after a stop: the power returns, somebody presses again, the run is resumed.
void followStop(QVector<Action>& actions, Random& random) {
    const bool wasPower = actions.last().kind == Kind::Power;
    if (wasPower && random.chance(80)) {
        actions.append(follower(Kind::Power, random.below(random.oneOf({2, 2000}))));
        actions.last().on = true;
    }
    if (!wasPower && random.chance(25)) {
        // A second pause, or a stop input that is held on.
        const int count = random.chance(25) ? random.between(2, 5) : 1;
        const int ms = random.below(random.oneOf({2, 60, 300}));
        for (int i = 0; i < count; ++i) {
            actions.append(follower(Kind::Pause, ms));
        }
        if (random.chance(40)) {
            actions.append(follower(Kind::Pause, 0));
            actions.last().moment = drawInside(random);
        }
    }
    if (random.chance(60)) {
        const Kind kind = random.chance(85) ? Kind::Resume : Kind::Start;
        actions.append(follower(kind, random.below(random.oneOf({2, 300, 3000}))));
    }
}

QVector<Action> drawActions(Random& random, int lineCount) {
    QVector<Action> actions;
    const int count = random.between(3, 16);
    for (int i = 0; i < count; ++i) {
        Action action;
        action.kind = i == 0 ? (random.chance(90) ? Kind::Start : Kind::Once) : drawKind(random);
        action.moment = drawMoment(random, i == 0);
        if (action.moment.kind == Moment::Kind::Inside && random.chance(60)) {
            // What stops something is the hardest to bear in the middle of a write.
            action.kind = random.oneOf({Kind::Pause, Kind::Pause, Kind::Power, Kind::Weld, Kind::Mode});
        }
        detail(action, random, lineCount);
        fit(action);
        actions.append(action);
        if (action.kind == Kind::Pause || (action.kind == Kind::Power && !action.on)) {
            followStop(actions, random);
        }
    }
    return actions;
}

/// One schedule in three has the page.
Stage stageOf(quint64 seed) {
    constexpr quint64 period = 6;
    const quint64 place = seed % period;
    return place == 0 ? Stage::Page : place == 3 ? Stage::Stations : Stage::Bare;
}

}  // namespace

Moment drawWait(Random& random) {
    Moment moment;
    moment.kind = Moment::Kind::InWait;
    moment.text = word(random.oneOf({"move", "move", "zone", "preflow", "dwell", "rampdown", "closedelay",
                                     "postflow", "delay", "input"}));
    moment.nth = random.chance(50) ? 0 : random.below(4);
    moment.behind = random.chance(50);
    if (random.chance(35)) {
        moment.fromDue = true;
        moment.ms = random.between(-1, 1);
    } else if (moment.text == QLatin1String("zone") && random.chance(40)) {
        moment.ms = 50 * random.between(1, 25);  // in one pass of the event loop with the executor's poll
    } else if (moment.text == QLatin1String("input") && random.chance(40)) {
        moment.ms = 100 * random.between(1, 4);
    } else {
        moment.ms = random.below(random.oneOf({3, 40, 400}));
    }
    return moment;
}

Action follower(Action::Kind kind, int ms) {
    Action action;
    action.kind = kind;
    action.moment.kind = Moment::Kind::After;
    action.moment.ms = ms;
    return action;
}

Scenario drawScenario(quint64 seed) {
    Random random(seed);
    Scenario scenario;
    scenario.seed = seed;
    scenario.stage = stageOf(seed);
    scenario.program = drawProgram(random);
    scenario.otherProgram = drawProgram(random);
    scenario.sets = drawSets(random);
    for (const I_PORT port : {DO_GAS, DO_WIRE_ENABLE, DO_LASER_ENABLE, DO_WIRE_PULLBACK, AO_WIRE_SPEED,
                              AO_LASER_POWER, AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE}) {
        if (random.chance(4)) {
            scenario.disabledPorts << port;
        }
    }
    scenario.writeMulti = random.chance(65);
    scenario.automatic = random.chance(85);
    scenario.weld = random.chance(95);
    scenario.handWeld = random.chance(60);
    scenario.axes = random.chance(90) ? 6 : 7;
    scenario.dtMs = random.chance(75) ? 20 : random.oneOf({0, -5, 1, 7, 1000});
    scenario.endExecutor = random.chance(15);
    scenario.endMs = random.below(random.oneOf({1, 50, 700}));
    scenario.actions = drawActions(random, scenario.program.size());
    if (scenario.stage != Stage::Bare) {
        addPage(scenario, random);
    }
    if (random.chance(12)) {
        makeOdd(scenario, random);
    }
    return scenario;
}

}  // namespace campaign
