#include "app/status/statuswatcher.h"

#include "app/cell/nodes.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/signal.h"
#include "simulator/controller.h"

#include <QAbstractItemView>
#include <QVariantMap>

#include <algorithm>

namespace app {

using mendo::ModuleObject;

namespace {

constexpr int tickMs = 100;
// A pulsed laser counts as on while its gaps are not longer.
constexpr int pulseGapMs = 500;

// Rows of the port table.
constexpr int states[] = {0, 1, 2, 3, 4};  // of laser, head, cooling, gas pressure and temperature
constexpr int gasRow = 6, laserEnableRow = 9, laserPowerRow = 16;

const QString enable = QStringLiteral("enable");
const QString nameKey = QStringLiteral("name");

const ModuleObject* portField(int row, const QString& field) {
    return m(node::ports)->c(row)->c(field);
}

bool isUsed(int row) {
    return portField(row, enable)->getBool(false);
}

QString labelOf(int row) {
    return portField(row, QStringLiteral("tag"))->getString();
}

/// The data node of the signal that a port is assigned to; the null node when the controller has none.
const ModuleObject* signalOf(int row) {
    const QString name = portField(row, nameKey)->getString();
    return name.isEmpty() ? ModuleObject::null()
                          : kordservice()->dataNode(QStringLiteral("register.values"))->r(name);
}

bool isOn(int row) {
    return isUsed(row) && signalOf(row)->getBool(false);
}

/// The problem of an output needed for welding; empty without one.
QVector<PortProblem> problemsOf(int row) {
    const QString name = portField(row, nameKey)->getString();
    if (!isUsed(row)) {
        return {{PortProblem::OutOfUse, labelOf(row), name}};
    }
    if (name.isEmpty()) {
        return {{PortProblem::NotAssigned, labelOf(row), name}};
    }
    if (signalOf(row)->isNull()) {
        return {{PortProblem::NoSuchSignal, labelOf(row), name}};
    }
    return {};
}

bool isWord(const QString& path, const char* word) {
    return m(path)->getString() == QLatin1String(word);
}

}  // namespace

CellStatus readSwitches() {
    CellStatus state;
    state.power = isWord(node::power, "on");
    state.automatic = isWord(node::mode, "auto");
    state.weldSwitch = m(node::weldSwitch)->getBool(true);
    state.handWeldSwitch = m(node::handWeldSwitch)->getBool(false);
    return state;
}

StatusWatcher::StatusWatcher(const PackageFlags& package, const sim::Controller* controller,
                             const QWidget* page, QObject* parent)
    : QObject(parent), package_(package), controller_(controller) {
    tick_.setInterval(tickMs);
    connect(&tick_, &QTimer::timeout, this, &StatusWatcher::refresh);
    gap_.setSingleShot(true);
    gap_.setInterval(pulseGapMs);
    connect(&gap_, &QTimer::timeout, this, &StatusWatcher::refresh);
    followTree();
    followStations(page);
    connect(controller, &sim::Controller::emergencyStopChanged, this, &StatusWatcher::refreshLater);
    if (package.executor) {
        connect(package.executor, SIGNAL(activityChanged()), this, SLOT(refreshLater()));
    }
    refresh();
}

void StatusWatcher::followTree() {
    for (const QString& path : {node::power, node::mode, node::weldSwitch, node::handWeldSwitch,
                                node::programState, node::currentLine, node::executeLine, node::program,
                                node::projectToolset, node::weldOpen, node::pausePoint}) {
        connect(m(path), &ModuleObject::changed, this, &StatusWatcher::refreshLater);
    }
    connect(m(node::program), &ModuleObject::added, this, &StatusWatcher::refreshLater);
    connect(m(node::program), &ModuleObject::removed, this, &StatusWatcher::refreshLater);
    connect(m(node::ports), &ModuleObject::changed, this, &StatusWatcher::refreshLater);
    connect(m(node::ports), &ModuleObject::added, this, &StatusWatcher::refreshLater);
    const ModuleObject* registers = kordservice()->dataNode(QStringLiteral("register.values"));
    connect(registers, &ModuleObject::added, this, &StatusWatcher::refreshLater);
    connect(m(node::programState), &ModuleObject::changed, this, &StatusWatcher::onState);
    connect(m(node::pausePoint), &ModuleObject::changed, this, &StatusWatcher::onStopped);
    for (const char* move : {"move.j", "move.l", "move.c"}) {
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
    const QStringList sentences = statusText(now);
    if (sentences == sentences_) {
        return;
    }
    sentences_ = sentences;
    emit changed();
}

/// Connects to the ports' nodes again, because loading settings and assigning signals replaces them.
void StatusWatcher::followPorts() {
    const auto follow = [this](int row) {
        for (const ModuleObject* watched : {portField(row, enable), portField(row, nameKey), signalOf(row)}) {
            if (!watched->isNull()) {
                connect(watched, &ModuleObject::changed, this, &StatusWatcher::refreshLater,
                        Qt::UniqueConnection);
            }
        }
    };
    std::for_each(std::begin(states), std::end(states), follow);
    for (const int row : {gasRow, laserEnableRow, laserPowerRow}) {
        follow(row);
    }
}

void StatusWatcher::followLaser() {
    const bool on = isOn(laserEnableRow);
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
    }
    const bool isStep = package_.mode() == PackageFlags::SingleStep;
    if (busy && !isStep) {  // a single step does not end a pause
        stopped_ = false;
    } else if (!busy && package_.mode() == PackageFlags::ByHand && m(node::weldOpen)->getBool(false)) {
        stopped_ = true;
    }
}

/// The package writes the pause point when it stops a run.
void StatusWatcher::onStopped() {
    if (isBusy() && package_.mode() == PackageFlags::ByHand) {
        stopped_ = true;
    }
}

/// Results without drive power are not errors of a run.
void StatusWatcher::onResult(const QVariant& code) {
    if (code.toInt() < 0 && isWord(node::power, "on")) {
        lastError_ = code.toInt();
    }
    refreshLater();
}

bool StatusWatcher::isBusy() const {
    return !isWord(node::programState, "idle");
}

int StatusWatcher::activity(const char* property) const {
    return package_.executor ? package_.executor->property(property).toInt() : 0;
}

QVariantMap StatusWatcher::waiting() const {
    return package_.executor ? package_.executor->property("waiting").toMap() : QVariantMap();
}

/// During the dwell and the weld, until the closing begins, the laser will come on again.
bool StatusWatcher::isInPulseGap() const {
    if (!gap_.isActive()) {
        return false;
    }
    const QString kind = waiting().value(QStringLiteral("kind")).toString();
    const bool closes = kind == QLatin1String("closedelay") || kind == QLatin1String("postflow");
    return kind == QLatin1String("dwell") || (m(node::weldOpen)->getBool(false) && !closes);
}

/// A laser switched on by hand during a program's weld counts as the program's.
CellStatus::Laser StatusWatcher::laser() const {
    if (!laserOn_ && !isInPulseGap()) {
        return CellStatus::Laser::Off;
    }
    const bool runs = isBusy() || activity("depth") > 0 || activity("pendingSteps") > 0;
    const bool byHand = activity("litByHand") != 0;
    if (byHand && !(runs && m(node::weldOpen)->getBool(false))) {
        return CellStatus::Laser::ByHand;
    }
    if (!runs) {
        return CellStatus::Laser::WithoutProgram;
    }
    return package_.mode() == PackageFlags::ByStation ? CellStatus::Laser::ByStation
                                                      : CellStatus::Laser::ByProgram;
}

CellStatus StatusWatcher::state() const {
    CellStatus state = readSwitches();
    state.emergencyStop = controller_->emergencyStop();
    state.laser = laser();
    for (const int row : states) {
        if (isUsed(row) && !isOn(row)) {
            state.faults << labelOf(row);
        }
    }
    state.laserPorts = problemsOf(laserEnableRow) + problemsOf(laserPowerRow);
    state.gasPorts = problemsOf(gasRow);
    state.lastError = lastError_;
    state.busy = isBusy();
    state.station = package_.mode() == PackageFlags::ByStation;
    state.projectOpen = package_.hasProject();
    readPause(&state);
    readStations(&state);
    readWait(&state);
    return state;
}

/// After a reset there is neither an open weld nor a pause point.
void StatusWatcher::readPause(CellStatus* state) const {
    state->pausedInWeld = m(node::weldOpen)->getBool(false);
    const bool isKept = state->pausedInWeld || m(node::pausePoint)->cmobjCount() > 0;
    if (stopped_ && isKept && !state->busy) {
        state->pausedLine = m(node::currentLine)->getInt();
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

void StatusWatcher::readWait(CellStatus* state) const {
    const QVariantMap waiting = this->waiting();
    const QString detail = waiting.value(QStringLiteral("detail")).toString();
    state->waiting = waiting.value(QStringLiteral("kind")).toString();
    state->switchingOff = activity("depth") > 0 || activity("pendingSteps") > 0;
    if (state->busy) {
        state->line =
            m(package_.mode() == PackageFlags::SingleStep ? node::executeLine : node::currentLine)->getInt();
    }
    if (state->waiting.isEmpty()) {
        return;
    }
    const qint64 now = mendo::Clock::current().elapsedMs();
    const qint64 due = waiting.value(QStringLiteral("due")).toLongLong();
    state->leftMs = due < 0 ? -1 : std::max<qint64>(0, due - now);
    if (state->waiting != QLatin1String("input")) {
        state->line = detail.toInt();
        return;
    }
    state->input = detail;
    state->waitedMs = std::max<qint64>(0, now - waiting.value(QStringLiteral("since")).toLongLong());
    // The edited program may differ from the running copy.
    const ModuleObject* statement = m(state->station ? node::stationProgram : node::program)->c(state->line);
    if (prog::Signal::from(statement, prog::awaitedInput).address() == detail) {
        state->awaited = statement->c(QStringLiteral("value1"))->getString() == QLatin1String("false")
                             ? QStringLiteral("false")
                             : QStringLiteral("true");
    }
}

}  // namespace app
