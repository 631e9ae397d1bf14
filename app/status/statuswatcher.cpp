#include "app/status/statuswatcher.h"

#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/ports.h"
#include "program/statement.h"
#include "program/words.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QVariantMap>

#include <algorithm>

namespace app {

using mendo::ModuleObject;

namespace {

constexpr int tickMs = 100;
// A pulsed laser counts as on while its gaps are not longer.
constexpr int pulseGapMs = 500;

/// The ports that tell whether the equipment is ready.
constexpr I_PORT states[] = {DI_LASER_STATE, DI_LASER_HEAD_STATE, DI_WATER_COOLING_STATE,
                             DI_AIR_PRESSURE_STATE, DI_TEMPERATURE_STATE};

const ModuleObject* portField(I_PORT port, QLatin1String field) {
    return m(prog::key::port)->c(port)->c(field);
}

bool isUsed(I_PORT port) {
    return portField(port, prog::field::enable)->getBool(false);
}

QString labelOf(I_PORT port) {
    return portField(port, prog::field::tag)->getString();
}

/// The data node of the signal that a port is assigned to; the null node when the controller has none.
const ModuleObject* signalOf(I_PORT port) {
    const QString name = portField(port, prog::field::name)->getString();
    return name.isEmpty() ? ModuleObject::null()
                          : kordservice()->dataNode(prog::key::registerValues)->r(name);
}

bool isOn(I_PORT port) {
    return isUsed(port) && signalOf(port)->getBool(false);
}

/// The problem of an output needed for welding; empty without one.
QVector<PortProblem> problemsOf(I_PORT port) {
    const QString name = portField(port, prog::field::name)->getString();
    if (!isUsed(port)) {
        return {{PortProblem::OutOfUse, labelOf(port), name}};
    }
    if (name.isEmpty()) {
        return {{PortProblem::NotAssigned, labelOf(port), name}};
    }
    if (signalOf(port)->isNull()) {
        return {{PortProblem::NoSuchSignal, labelOf(port), name}};
    }
    return {};
}

bool isWord(QLatin1String path, QLatin1String word) {
    return m(path)->getString() == word;
}

/// Power, mode and welding switches; everything else has its default.
CellStatus readSwitches() {
    CellStatus state;
    state.power = isWord(prog::key::robotPower, prog::word::on);
    state.automatic = isWord(prog::key::robotMode, prog::word::automatic);
    state.weldSwitch = m(prog::key::weldSwitch)->getBool(true);
    state.handWeldSwitch = m(prog::key::handWeldSwitch)->getBool(false);
    const bool isIdle = isWord(prog::key::executeState, prog::word::idle);
    state.dry = m(isIdle ? prog::key::executeDry : prog::key::executeDryRun)->getBool(false);
    return state;
}

}  // namespace

StatusWatcher::StatusWatcher(const workcell::PackageFlags& package, const sim::Controller* controller,
                             const sim::Cell* cell, const QWidget* page, QObject* parent)
    : QObject(parent), package_(package), controller_(controller), cell_(cell), project_(page) {
    tick_.setInterval(tickMs);
    connect(&tick_, &QTimer::timeout, this, &StatusWatcher::refresh);
    gap_.setSingleShot(true);
    gap_.setInterval(pulseGapMs);
    connect(&gap_, &QTimer::timeout, this, &StatusWatcher::refresh);
    followTree();
    followStations(page);
    followEditor(page);
    connect(controller, &sim::Controller::emergencyStopChanged, this, &StatusWatcher::refreshLater);
    connect(controller, &sim::Controller::linkChanged, this, &StatusWatcher::refreshLater);
    connect(controller, &sim::Controller::outputChanged, this, [this](const QString& name) {
        if (name == cell_->wiring().laserEnable) {
            refreshLater();
        }
    });
    if (package.executor) {
        connect(package.executor, SIGNAL(activityChanged()), this, SLOT(refreshLater()));
    }
    refresh();
}

void StatusWatcher::followTree() {
    for (const QLatin1String path :
         {prog::key::robotPower, prog::key::robotMode, prog::key::weldSwitch, prog::key::handWeldSwitch,
          prog::key::executeDry, prog::key::executeDryRun, prog::key::executeState, prog::key::currentLine,
          prog::key::executeLine, prog::key::program, prog::key::toolset, prog::key::weldOpen,
          prog::key::currentPausePoint}) {
        connect(m(path), &ModuleObject::changed, this, &StatusWatcher::refreshLater);
    }
    connect(m(prog::key::program), &ModuleObject::added, this, &StatusWatcher::refreshLater);
    connect(m(prog::key::program), &ModuleObject::removed, this, &StatusWatcher::refreshLater);
    connect(m(prog::key::port), &ModuleObject::changed, this, &StatusWatcher::refreshLater);
    connect(m(prog::key::port), &ModuleObject::added, this, &StatusWatcher::refreshLater);
    const ModuleObject* registers = kordservice()->dataNode(prog::key::registerValues);
    connect(registers, &ModuleObject::added, this, &StatusWatcher::refreshLater);
    connect(m(prog::key::executeState), &ModuleObject::changed, this, &StatusWatcher::onState);
    connect(m(prog::key::currentPausePoint), &ModuleObject::changed, this, &StatusWatcher::onStopped);
    for (const QLatin1String move : {prog::command::moveJ, prog::command::moveL, prog::command::moveC}) {
        connect(kordservice()->commandNode(QLatin1String(move)), &ModuleObject::changed, this,
                &StatusWatcher::onResult);
    }
}

/// The stations' page shows in its table what it waits for.
void StatusWatcher::followStations(const QWidget* page) {
    stations_ = page ? page->findChild<QWidget*>(QStringLiteral("SignalsBindWidget")) : nullptr;
    const auto* table =
        stations_ ? stations_->findChild<QAbstractItemView*>(QStringLiteral("tableWidget")) : nullptr;
    listening_ = stations_ ? stations_->findChild<QWidget*>(QStringLiteral("switchBtn")) : nullptr;
    if (!table || !listening_) {
        return;
    }
    connect(listening_, SIGNAL(statusChanged(bool)), this, SLOT(refreshLater()));
    connect(table->model(), &QAbstractItemModel::dataChanged, this, &StatusWatcher::refreshLater);
    connect(table->model(), &QAbstractItemModel::rowsRemoved, this, &StatusWatcher::refreshLater);
}

/// The editor tells what the check of its program has found.
void StatusWatcher::followEditor(const QWidget* page) {
    editor_ = page ? page->findChild<QWidget*>(QStringLiteral("ProgramWidget")) : nullptr;
    if (editor_) {
        connect(editor_, SIGNAL(findingsChanged()), this, SLOT(refreshLater()));
    }
}

void StatusWatcher::refreshLater() {
    if (posted_) {
        return;
    }
    posted_ = true;
    QMetaObject::invokeMethod(this, &StatusWatcher::refresh, Qt::QueuedConnection);
}

void StatusWatcher::refresh() {
    posted_ = false;
    followPorts();
    followLaser();
    const CellStatus now = state();
    if (!now.hasTime()) {
        tick_.stop();
    } else if (!tick_.isActive()) {
        tick_.start();
    }
    emit refreshed(now);
    const QStringList sentences = statusText(now);
    if (sentences == sentences_) {
        return;
    }
    sentences_ = sentences;
    emit changed();
}

/// Connects to the ports' nodes again, because loading settings and assigning signals replaces them.
void StatusWatcher::followPorts() {
    const auto follow = [this](I_PORT port) {
        for (const ModuleObject* watched :
             {portField(port, prog::field::enable), portField(port, prog::field::name), signalOf(port)}) {
            if (!watched->isNull()) {
                connect(watched, &ModuleObject::changed, this, &StatusWatcher::refreshLater,
                        Qt::UniqueConnection);
            }
        }
    };
    std::for_each(std::begin(states), std::end(states), follow);
    for (const I_PORT port : {DO_GAS, DO_LASER_ENABLE, AO_LASER_POWER}) {
        follow(port);
    }
}

/// The output that the port names now, or the one that the laser source is wired to: after a wrong
/// assignment these are two.
bool StatusWatcher::isLaserEnabled() const {
    const QString wired = cell_->wiring().laserEnable;
    return isOn(DO_LASER_ENABLE) || (!wired.isEmpty() && controller_->output(wired).toBool());
}

void StatusWatcher::followLaser() {
    const bool on = isLaserEnabled();
    if (on || !isBusy()) {
        gap_.stop();
    } else if (laserOn_) {
        gap_.start();
    }
    laserOn_ = on;
}

void StatusWatcher::onState() {
    const bool busy = isBusy();
    if (busy == wasBusy_) {
        return;
    }
    wasBusy_ = busy;
    if (busy) {
        lastError_ = 0;
        ended_.reset();
    }
    const bool isStep = package_.mode() == prog::runmode::singleStep;
    if (busy && !isStep) {  // a single step does not end a pause
        stopped_ = false;
    } else if (!busy && package_.mode() == prog::runmode::byHand && m(prog::key::weldOpen)->getBool(false)) {
        stopped_ = true;
    }
}

/// The package writes the pause point when it stops a run.
void StatusWatcher::onStopped() {
    if (isBusy() && package_.mode() == prog::runmode::byHand) {
        stopped_ = true;
    }
}

/// Results without drive power are not errors of a run.
void StatusWatcher::onResult(const QVariant& code) {
    if (code.toInt() < 0 && isWord(prog::key::robotPower, prog::word::on)) {
        lastError_ = code.toInt();
    }
    refreshLater();
}

bool StatusWatcher::isBusy() const {
    return !isWord(prog::key::executeState, prog::word::idle);
}

int StatusWatcher::activity(const char* property) const {
    return package_.executor ? package_.executor->property(property).toInt() : 0;
}

QVariantMap StatusWatcher::waiting() const {
    return package_.executor ? package_.executor->property("waiting").toMap() : QVariantMap();
}

/// During the dwell and the weld, until the closing begins, the laser will come on again.
bool StatusWatcher::isInPulseGap() const {
    if (!gap_.isActive() || !isWord(prog::key::robotPower, prog::word::on)) {
        return false;
    }
    const QString kind = waiting().value(QStringLiteral("kind")).toString();
    const bool closes = kind == prog::waits::closeDelay || kind == prog::waits::postFlow;
    return kind == prog::waits::dwell || (m(prog::key::weldOpen)->getBool(false) && !closes);
}

bool StatusWatcher::isActive() const {
    return isBusy() || activity("depth") > 0 || activity("pendingSteps") > 0 ||
           (stations_ && stations_->property("queued").toInt() > 0);
}

/// A laser switched on by hand during a program's weld counts as the program's.
CellStatus::Laser StatusWatcher::laser() const {
    if (!laserOn_ && !isInPulseGap()) {
        return CellStatus::Laser::Off;
    }
    const bool runs = isBusy() || activity("depth") > 0 || activity("pendingSteps") > 0;
    const bool byHand = activity("litByHand") != 0;
    if (byHand && !(runs && m(prog::key::weldOpen)->getBool(false))) {
        return CellStatus::Laser::ByHand;
    }
    if (!runs) {
        return CellStatus::Laser::WithoutProgram;
    }
    return package_.mode() == prog::runmode::byStation ? CellStatus::Laser::ByStation
                                                       : CellStatus::Laser::ByProgram;
}

void StatusWatcher::setEnded(const std::optional<EndedRun>& run) {
    ended_ = run;
    refreshLater();
}

CellStatus StatusWatcher::state() const {
    CellStatus state = readSwitches();
    state.emergencyStop = controller_->emergencyStop();
    state.linked = controller_->isLinked();
    state.lostEnd =
        controller_->isLinked(bridge::LinkEnd::Robot) ? bridge::LinkEnd::Device : bridge::LinkEnd::Robot;
    state.linkReason = controller_->linkReason();
    state.laser = laser();
    for (const I_PORT port : states) {
        if (isUsed(port) && !isOn(port)) {
            state.faults << labelOf(port);
        }
    }
    state.laserPorts = problemsOf(DO_LASER_ENABLE) + problemsOf(AO_LASER_POWER);
    state.gasPorts = problemsOf(DO_GAS);
    state.lastError = lastError_;
    state.ended = ended_;
    state.busy = isBusy();
    state.station = package_.mode() == prog::runmode::byStation;
    state.step = package_.mode() == prog::runmode::singleStep;
    state.projectOpen = package_.hasProject();
    if (state.projectOpen || project_.station() >= 0) {
        state.project = QFileInfo(project_.name()).completeBaseName();
    }
    state.hasLines = m(prog::key::program)->cmobjCount() > 0;
    state.lines =
        m(state.busy && state.station ? prog::key::stationProgram : prog::key::program)->cmobjCount();
    readPause(&state);
    readStations(&state);
    readWait(&state);
    readFindings(&state);
    return state;
}

/// After a reset there is neither an open weld nor a pause point.
void StatusWatcher::readPause(CellStatus* state) const {
    state->pausedInWeld = m(prog::key::weldOpen)->getBool(false);
    const bool isKept = state->pausedInWeld || m(prog::key::currentPausePoint)->cmobjCount() > 0;
    if (stopped_ && isKept && !state->busy) {
        state->pausedLine = m(prog::key::currentLine)->getInt();
    }
}

/// The page's count includes the running station.
void StatusWatcher::readStations(CellStatus* state) const {
    state->listening = listening_ && listening_->property("checked").toBool();
    if (stations_) {
        state->waitingStations =
            stations_->property("queued").toInt() - (state->busy && state->station ? 1 : 0);
    }
}

/// Not while something runs: nobody can mend the program then.
void StatusWatcher::readFindings(CellStatus* state) const {
    if (editor_ && state->projectOpen && !state->busy && !state->switchingOff) {
        state->errors = editor_->property("errors").toInt();
        state->warnings = editor_->property("warnings").toInt();
    }
}

void StatusWatcher::readWait(CellStatus* state) const {
    const QVariantMap waiting = this->waiting();
    const QString detail = waiting.value(QStringLiteral("detail")).toString();
    state->waiting = waiting.value(QStringLiteral("kind")).toString();
    state->switchingOff = activity("depth") > 0 || activity("pendingSteps") > 0;
    if (state->busy) {
        state->line =
            m(package_.mode() == prog::runmode::singleStep ? prog::key::executeLine : prog::key::currentLine)
                ->getInt();
    }
    if (state->waiting.isEmpty()) {
        return;
    }
    const qint64 now = mendo::Clock::current().elapsedMs();
    const qint64 due = waiting.value(QStringLiteral("due")).toLongLong();
    state->leftMs = due < 0 ? -1 : std::max<qint64>(0, due - now);
    if (state->waiting != prog::waits::input) {
        state->line = detail.toInt();
        return;
    }
    state->input = detail;
    state->waitedMs = std::max<qint64>(0, now - waiting.value(QStringLiteral("since")).toLongLong());
    // The edited program may differ from the running copy.
    const prog::Statement statement = prog::Statement::from(
        m(state->station ? prog::key::stationProgram : prog::key::program)->c(state->line));
    if (statement.signal.address() == detail) {
        state->awaited = statement.value ? prog::word::trueText : prog::word::falseText;
    }
}

}  // namespace app
