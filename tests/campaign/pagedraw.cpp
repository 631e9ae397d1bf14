// What somebody does at the page, as little scripts that are woven into a schedule.

#include "campaign/draw.h"
#include "campaign/programs.h"

namespace campaign {

namespace {

using Kind = Action::Kind;

/// What is clicked in one go, by objects' names; the page is chosen first.
struct Visit {
    int weight;
    const char* page;                           ///< button of the navigation, empty: wherever he is
    bool row;                                   ///< a row of the table in sight is selected first
    std::initializer_list<const char*> clicks;  ///< one of them
    int replies;                                ///< per cent that what opens is answered soon
};

const Visit visits[] = {
    {14,
     "btnProject",
     true,
     {"btnEdit", "btnEdit", "btnDel", "btnCopy", "btnPaste", "btnUp", "btnDown", "anotationBtn"},
     70},
    {10,
     "btnProject",
     true,
     {"btnMoveJ", "btnMoveL", "btnMoveC", "btnMoveCC", "btnOpenLaser", "btnClose", "btnWaitDI", "btnSetDO",
      "btnDelay"},
     70},
    {16, "btnProject", true, {"btnStart", "btnStart", "btnRunOnce"}, 85},
    {14, "btnProject", false, {"btnStart", "btnPause", "btnPause", "btnReset"}, 60},
    {4, "btnProject", true, {"multiBtn"}, 0},
    {5, "btnProject", true, {"speedBtn", "turningBtn"}, 70},
    {5, "btnProject", false, {"widget_weld", "widget_handweld"}, 0},
    {10, "btnProject", false, {"btnOpen", "btnOpen", "btnNew", "btnSave", "btnSaveAs"}, 60},
    {8, "btnParamCfg", true, {"btnEdit", "btnEdit", "btnDel", "btnAdd"}, 60},
    {7, "btnPort", false, {"okayBtn"}, 50},
    {8,
     "btnDeviceControl",
     false,
     {"btnLaserControl", "btnWireControl", "btnBlowControl", "btnLaserTest", "btnRedLight", "btnWireTest",
      "btnBlowTest"},
     0},
    {4, "btnMonitor", false, {"btnMonitor"}, 0},
    {4, "", false, {"okayBtn", "cancelBtn", "updateBtn1", "updateBtn2"}, 50},
};

const Visit stationVisits[] = {
    {10, "btnBind", true, {"btnEdit", "btnEdit", "btnAdd", "btnDel"}, 50},
    {10, "btnBind", false, {"switchBtn"}, 0},
    {10, "", false, {"okayBtn", "okayBtn", "cancelBtn", "btnclear", "btnOpen"}, 50},
};

template <std::size_t Size>
const Visit& drawFrom(const Visit (&table)[Size], Random& random) {
    int sum = 0;
    for (const Visit& visit : table) {
        sum += visit.weight;
    }
    int left = random.below(sum);
    for (const Visit& visit : table) {
        left -= visit.weight;
        if (left < 0) {
            return visit;
        }
    }
    return table[0];
}

Action deed(const QString& text, Random& random) {
    Action action = follower(Kind::Hand, random.below(random.oneOf({1, 50, 400})));
    action.text = text;
    action.number = random.below(12);
    action.mode = random.below(1000);
    action.on = random.chance(50);
    return action;
}

Action reply(Random& random) {
    Action action = follower(Kind::Reply, random.below(random.oneOf({2, 200, 2000, 6000})));
    action.text = QString::fromLatin1(random.oneOf({"ok", "ok", "ok", "cancel", "escape"}));
    action.number = random.below(random.oneOf({1, 1000, 1000}));
    return action;
}

/// A moment in which the panel handles what the operator does: never inside a write.
Moment drawTurn(Random& random) {
    Moment moment;
    switch (random.weighted({60, 25, 15})) {
        case 0:
            return drawWait(random);
        case 1:
            moment.kind = Moment::Kind::After;
            moment.ms = random.below(random.oneOf({2, 30, 300, 3000}));
            return moment;
        default:
            moment.ms = random.below(12000);
            return moment;
    }
}

/// Somebody who sees a message answers it before he goes on.
void answerFirst(QVector<Action>& actions, Random& random) {
    if (random.chance(60)) {
        actions << follower(Kind::Answer, 0);
    }
}

/// What has to be done in this order to have an effect, `ms` apart.
QVector<Action> drawSeries(std::initializer_list<const char*> deeds, int ms, Random& random) {
    QVector<Action> actions;
    answerFirst(actions, random);
    for (const char* const name : deeds) {
        actions << deed(QString::fromLatin1(name), random);
        actions.last().moment.ms = ms;
    }
    return actions;
}

QVector<Action> drawVisit(const Visit& visit, Random& random) {
    QVector<Action> actions;
    answerFirst(actions, random);
    if (*visit.page != '\0') {
        actions << deed(QString::fromLatin1(visit.page), random);
    }
    const int extra = random.chance(40) ? random.between(1, 2) : 0;
    for (int i = 0; i < extra; ++i) {
        actions << deed(QString::fromLatin1(random.oneOf({"combo", "box", "field"})), random);
    }
    if (visit.row && random.chance(75)) {
        actions << deed(QStringLiteral("row"), random);
    }
    const char* const click = visit.clicks.begin()[random.below(static_cast<int>(visit.clicks.size()))];
    actions << deed(QString::fromLatin1(click), random);
    if (random.chance(visit.replies)) {
        actions << reply(random);
    }
    actions.first().moment = drawTurn(random);
    return actions;
}

QVector<Action> drawSomething(Stage stage, Random& random) {
    QVector<Action> actions;
    const int ms = random.between(1, 400);
    switch (random.weighted({70, 12, 4, 4, 6, 6})) {
        case 0:
            return stage == Stage::Stations && random.chance(35)
                       ? drawVisit(drawFrom(stationVisits, random), random)
                       : drawVisit(drawFrom(visits, random), random);
        case 1:
            actions << reply(random);
            break;
        case 2:
            actions << deed(QStringLiteral("key"), random);
            break;
        case 3:
            // The page needs a moment to see that a lock is released.
            actions =
                random.chance(50)
                    ? drawSeries({"btnDeviceControl", "btnLaserControl", "btnLaserTest", "btnLaserTest"}, ms,
                                 random)
                    : drawSeries({"btnDeviceControl", "btnBlowControl", "btnBlowTest", "btnWireControl",
                                  "btnWireTest"},
                                 ms, random);
            break;
        case 4:
            actions = drawSeries({"btnPort", "box", "combo", "combo", "okayBtn"}, ms, random);
            break;
        default:
            actions << deed(QStringLiteral("jump"), random);
    }
    actions.first().moment = drawTurn(random);
    return actions;
}

/// Inputs of stations, apart from those that programs wait for.
QVector<Action> drawStationInput(Random& random) {
    Action on = follower(Kind::Input, 0);
    on.moment = drawTurn(random);
    on.text = QStringLiteral("DI%1").arg(random.chance(85) ? random.between(4, 8) : random.between(10, 14));
    on.on = random.chance(80);
    Action off = follower(Kind::Input, random.below(random.oneOf({150, 400, 3000})));
    off.text = on.text;
    off.on = !on.on;
    return {on, off};
}

QJsonObject drawStation(int number, Random& random) {
    const bool isOwn = number <= 4;
    return {{"stationname", QStringLiteral("Station %1").arg(number)},
            {"filePath", QString::fromLatin1(random.oneOf(
                             {"P1.json", "P1.json", "P2.json", "P2.json", "missing.json", "odd.json", ""}))},
            {"time", QString::fromLatin1(random.oneOf({"100", "100", "50", "333", "0", "-1", "x"}))},
            {"type", QString::fromUtf8(random.oneOf({"上升沿", "上升沿", "下降沿", "", "Rising edge"}))},
            {"type2", QString::fromUtf8(random.oneOf({"上升沿", "上升沿", "下降沿"}))},
            {"DI", QStringLiteral("DI%1").arg(3 + number)},
            {"DI_type", isOwn || random.chance(80) ? "IO" : "寄存器"},
            {"DI2", QStringLiteral("DI%1").arg(9 + number)},
            {"DI2_type", "IO"},
            {"DO", QStringLiteral("DO%1").arg(4 + (random.chance(90) ? number : 1))},
            {"DO_type", "IO"},
            {"DO2", QStringLiteral("DO%1").arg(11 + number % 5)},
            {"DO2_type", "IO"}};
}

void addStations(Scenario& scenario, Random& random) {
    const int count = random.between(1, 5);
    for (int number = 1; number <= count; ++number) {
        scenario.stations.append(drawStation(number, random));
    }
}

/// Puts a script behind the actions before `position`, not between an action and what comes after it.
void insert(QVector<Action>& actions, int position, const QVector<Action>& script) {
    while (position < actions.size() && actions[position].moment.kind == Moment::Kind::After) {
        ++position;
    }
    for (const Action& action : script) {
        actions.insert(position++, action);
    }
}

}  // namespace

void addPage(Scenario& scenario, Random& random) {
    scenario.endExecutor = false;  // it outlives the pages
    scenario.projectOpen = random.chance(80);
    for (const char* name : {"P1.json", "P2.json", "other.json"}) {
        scenario.projects[QString::fromLatin1(name)] = drawProgram(random);
    }
    scenario.projects["odd.json"] = QJsonArray{1, "no line", QJsonArray()};
    for (Action& action : scenario.actions) {
        // Stations bring their programs; what a listener of the program cannot see, nobody changes.
        action.mode = action.kind == Kind::Start ? 0 : action.mode;
        action.number = action.kind == Kind::Edit ? 2 + action.number % 4 : action.number;
    }
    if (scenario.stage == Stage::Stations) {
        addStations(scenario, random);
        QVector<Action> listen{deed(QStringLiteral("btnBind"), random),
                               deed(QStringLiteral("switchBtn"), random)};
        listen.first().moment = Moment();
        insert(scenario.actions, 0, listen);
        if (random.chance(50)) {
            scenario.actions[2].moment.ms = random.below(12000);  // the start by hand
        }
    }
    const int count = random.between(2, 10);
    for (int i = 0; i < count; ++i) {
        const bool input = scenario.stage == Stage::Stations && random.chance(50);
        insert(scenario.actions, 1 + random.below(scenario.actions.size()),
               input ? drawStationInput(random) : drawSomething(scenario.stage, random));
    }
    if (random.chance(10)) {
        Action quit = follower(Kind::Quit, 0);
        quit.moment = drawTurn(random);
        insert(scenario.actions, 1 + random.below(scenario.actions.size()), {quit});
    }
    if (random.chance(5)) {
        Action panel = follower(Kind::Panel, 0);
        panel.on = random.chance(80);
        panel.moment = drawTurn(random);
        insert(scenario.actions, 1 + random.below(scenario.actions.size()), {panel});
    }
}

}  // namespace campaign
