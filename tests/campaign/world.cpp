#include "campaign/world.h"

#include "campaign/recorder.h"
#include "devices/ports.h"
#include "executor/lumoexecutor.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/log.h"
#include "module/globals.h"
#include "module/host.h"
#include "module/keys.h"
#include "panel/lumowidget.h"

#include <QApplication>
#include <QMessageBox>
#include <QPixmapCache>

#include <private/qfont_p.h>

#include <algorithm>

namespace campaign {

namespace {

QString assignment(int port) {
    if (port < DO_GAS) {
        return QStringLiteral("LUMO_DI.") + mIndex(port);
    }
    return port < AO_WIRE_SPEED ? QStringLiteral("LUMO_DO.") + mIndex(port - DO_GAS)
                                : QStringLiteral("LUMO_AO_%1").arg(port - AO_WIRE_SPEED);
}

}  // namespace

World::World() : time(*sim::VirtualTime::instance()) {
    mendo::LogHub::instance()->setConsole(false);
    kord::ManagerHelper::instance()->module()->mobj()->set(this, QStringLiteral("language"),
                                                           QStringLiteral("en"));
    QPixmapCache::setCacheLimit(0);  // it would keep a timer, which is no timer of ours
    { const LumoWidget page; }       // fills the tree and makes the executor, which outlive it
    endExecutor();
    pristine_ = m(lumo::key::lumo)->exportToJson();
    time.settle();
}

World::~World() {
    panel.end();
    endExecutor();
}

void World::fill(const Scenario& scenario) {
    ModuleObject* const root = m(lumo::key::lumo);
    root->loadJson(this, pristine_);
    root->set(this, QStringLiteral("signalbind_program"), QVariant(), true);
    const auto ports = m(lumo::key::port)->cmobjs();
    for (int port = 0; port < ports.size(); ++port) {
        ports[port]->set(this, lumo::field::name, assignment(port));
        ports[port]->set(this, lumo::field::enable, !scenario.disabledPorts.contains(port));
    }
    m(lumo::key::program)->loadJson(this, scenario.program);
    m(lumo::key::stationProgram)->loadJson(this, scenario.otherProgram);
    m(lumo::key::param)->loadJson(this, scenario.sets);
    m(lumo::key::executeDt)->setValue(this, scenario.dtMs);
    m(lumo::key::weldSwitch)->setValue(this, scenario.weld);
    m(lumo::key::handWeldSwitch)->setValue(this, scenario.handWeld);
    panel.prepare(scenario);
    timersBefore_ = armedTimers();
    objectsBefore_ = objects();
}

void World::makeExecutor() {
    executor = new LumoExecutor(m(lumo::key::lumo));
    helpersBefore_ = executor->findChildren<QObject*>().size();
}

void World::makeCell(const Scenario& scenario) {
    sim::Controller::Options options;
    options.axes = scenario.axes;
    options.writeMulti = scenario.writeMulti;
    controller = std::make_unique<sim::Controller>(kordservice(), options);
    if (!scenario.automatic) {
        controller->setMode(QStringLiteral("manual"));
    }
    const auto name = [](int port) { return assignment(port); };
    cell = std::make_unique<sim::Cell>(
        controller.get(), sim::Wiring{name(DO_GAS), name(DO_WIRE_ENABLE), name(DO_WIRE_PULLBACK),
                                      name(DO_LASER_ENABLE), name(AO_LASER_POWER), name(AO_WIRE_SPEED)});
}

void World::makePage(const Scenario& scenario) {
    if (scenario.stage != Stage::Bare) {
        panel.make();
    }
}

void World::endExecutor() {
    delete executor;
    executor = nullptr;
}

Ending World::takeDown(int resumeLines, bool quits) {
    Ending ending;
    const Facts facts = Recorder::facts();
    ending.idle = facts.idle;
    ending.depth = facts.depth;
    ending.pending = facts.pending;
    ending.outputsOn = outputsOn();
    ending.resumeLine = m(lumo::key::currentLine)->getInt(-1);
    // The line follows its statement when lines come.
    ending.lineCount = resumeLines < 0 ? -1 : std::max(resumeLines, m(lumo::key::program)->cmobjCount());
    ending.station = panel.staleStation();
    if (executor) {
        ending.objectsMore = executor->findChildren<QObject*>().size() - helpersBefore_;
    }
    panel.end();
    time.settle();
    closeMessages();
    time.settle();
    ending.objectsMore += objects() - objectsBefore_;
    ending.boxes = messageCount();
    cell.reset();
    controller.reset();
    if (quits) {
        constexpr int longestDelayMs = 400;  // of the controller's answers, which outlive it
        time.advance(longestDelayMs);
    }
    ending.timersMore = armedTimers() - timersBefore_;
    endExecutor();
    time.settle();
    return ending;
}

/// Those of Qt's cache of fonts are no timers of ours.
int World::armedTimers() const {
    return time.armedTimers() - time.registeredTimers(QFontCache::instance()).size();
}

/// On the screen and below the host's central widget.
int World::objects() const {
    return PageWorld::objects() + QApplication::topLevelWidgets().size();
}

QStringList World::outputsOn() const {
    QStringList names;
    for (const int port : {int(DO_GAS), int(DO_WIRE_ENABLE), int(DO_LASER_ENABLE), int(DO_WIRE_PULLBACK),
                           int(AO_LASER_POWER)}) {
        if (controller->output(assignment(port)).toInt() != 0) {
            names << nameOfPort(port);
        }
    }
    return names;
}

void closeMessages() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* box = qobject_cast<QMessageBox*>(window)) {
            box->done(QMessageBox::Ok);
        }
    }
}

}  // namespace campaign
