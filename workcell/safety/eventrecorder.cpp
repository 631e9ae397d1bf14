#include "workcell/safety/eventrecorder.h"

#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

#include <QApplication>
#include <QMessageBox>
#include <QWidget>

#include <algorithm>

namespace workcell::safety {

using mendo::ModuleObject;

namespace {

/// Equipment that has to be off when nothing runs.
constexpr I_PORT equipment[] = {DO_GAS, DO_WIRE_ENABLE, DO_WIRE_PULLBACK, DO_LASER_ENABLE, AO_LASER_POWER};

int visibleBoxes() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return int(std::count_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && qobject_cast<const QMessageBox*>(window);
    }));
}

/// A time of a set; negative times count as 0.
int timeOf(const ModuleObject* set, const char* field) {
    return std::max(0, set->c(QLatin1String(field))->getInt(0));
}

}  // namespace

void EventRecorder::begin(QObject* executor) {
    executor_ = executor;
    startMs_ = mendo::Clock::current().elapsedMs();
    objectsBefore_ = objects();
}

qint64 EventRecorder::nowMs() const {
    return mendo::Clock::current().elapsedMs() - startMs_;
}

void EventRecorder::record(Event event) {
    if (!executor_) {
        return;
    }
    event.ms = nowMs();
    readState(&event);
    if (event.port >= 0 && (event.kind == Kind::ByHand || event.value == 0)) {
        byHand_[std::size_t(event.port)] = event.value;
    }
    events_.push_back(std::move(event));
}

void EventRecorder::acts(Event event) {
    event.action = ++actions_;
    open_.push_back(event.action);
    record(std::move(event));
}

void EventRecorder::returned() {
    if (open_.empty()) {
        return;
    }
    Event done;
    done.kind = Kind::Done;
    done.action = open_.back();
    open_.pop_back();
    record(std::move(done));
}

void EventRecorder::complain(const QString& text) {
    Event event;
    event.kind = Kind::Complaint;
    event.text = text;
    record(std::move(event));
}

void EventRecorder::readState(Event* event) const {
    const bool automatic = m(prog::key::robotMode)->getString() == prog::word::automatic;
    const bool mayWeld = automatic || m(prog::key::handWeldSwitch)->getBool(false);
    const ModuleObject* set = m(prog::key::param)->c(m(prog::key::curParam)->getInt(-1));
    event->idle = m(prog::key::executeState)->getString() == prog::word::idle;
    event->powered = m(prog::key::robotPower)->getString() == prog::word::on;
    event->robotIdle = m(prog::key::robotState)->getString() == prog::word::idle;
    event->permitted = m(prog::key::weldSwitch)->getBool(true) && mayWeld;
    event->gasUsed = m(prog::key::port)->c(DO_GAS)->c(prog::field::enable)->getBool(false);
    event->resumeLine = m(prog::key::currentLine)->getInt(-1);
    event->dry = m(prog::key::executeDryRun)->getBool(false);
    event->overlaps = m(prog::key::executeOverlapped)->getDouble(0.0) > 0.0;
    event->weldOpen = m(prog::key::weldOpen)->getBool(false);
    event->decreaseMs = timeOf(set, "decrease_time");
    event->postFlowMs = timeOf(set, "delay_after_blow");
    event->depth = executor_->property("depth").toInt();
    event->pending = executor_->property("pendingSteps").toInt();
    event->boxes = event->kind == Kind::Done ? visibleBoxes() : 0;
}

/// Number of message boxes and of the executor's objects.
int EventRecorder::objects() const {
    return visibleBoxes() + executor_->findChildren<QObject*>().size();
}

void EventRecorder::end(const sim::Controller* controller) {
    Event event;
    event.kind = Kind::End;
    record(std::move(event));
    for (const I_PORT port : equipment) {
        const ModuleObject* row = m(prog::key::port)->c(port);
        const bool isUsed = row->c(prog::field::enable)->getBool(false);
        const bool isOn = controller->output(row->c(prog::field::name)->getString()).toInt() != 0;
        if (isUsed && isOn && byHand_[port] == 0) {
            complain(QStringLiteral("%1 is on at the controller").arg(prog::portInfo(port).word));
        }
    }
    const int more = objects() - objectsBefore_;
    if (more > 0) {
        complain(QStringLiteral("%1 objects are left").arg(more));
    }
}

Event requestOf(Kind kind, int line, int runMode) {
    const bool once = kind == Kind::Once;
    const bool ofStation = runMode == prog::runmode::byStation && !once;
    const ModuleObject* program = m(ofStation ? prog::key::stationProgram : prog::key::program);
    const auto typeAt = [program](int at) { return program->c(at)->c(prog::field::type)->getString(); };
    Event event;
    event.kind = kind;
    event.value = line;
    event.mode = runMode;
    event.lineCount = program->cmobjCount();
    event.mayBeRefused = once && !typeAt(line).startsWith(QLatin1String("move"));
    for (int i = std::max(0, line); i < (once ? line + 1 : event.lineCount); ++i) {
        event.mayBeRefused |= typeAt(i) == prog::statement::moveCC;  // an impossible circle
    }
    return event;
}

}  // namespace workcell::safety
