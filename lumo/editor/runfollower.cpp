#include "editor/runfollower.h"

#include "equipment/ports.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "program/runprogram.h"
#include "program/words.h"

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

constexpr double percent = 100.0;

bool isBusy() {
    return m(key::executeState)->getString() != word::idle;
}

Position toolPlace() {
    return TaughtPoint::from(kordservice()->dataNode(key::posture)).trans;
}

}  // namespace

RunFollower::RunFollower(QObject* parent) : QObject(parent) {
    connect(m(key::executeState), &ModuleObject::changed, this, &RunFollower::onState);
    for (const QLatin1String path : {key::executeLine, key::currentLine, key::weldOpen}) {
        connect(m(path), &ModuleObject::changed, this, &RunFollower::onLine);
    }
    for (const QLatin1String path : {key::program, key::param}) {
        const ModuleObject* const list = m(path);
        connect(list, &ModuleObject::changed, this, &RunFollower::onProgram);
        connect(list, &ModuleObject::added, this, &RunFollower::onProgram);
        connect(list, &ModuleObject::removed, this, &RunFollower::onProgram);
    }
}

ModuleObject* RunFollower::programNow() {
    const bool ofStation = isBusy() && hand_or_signalbing == runmode::byStation;
    return m(ofStation ? key::stationProgram : key::program);
}

void RunFollower::onProgram() {
    isRead_ = false;
    begunAt_ = 0;
    emit changed();
}

void RunFollower::readProgram() {
    isRead_ = true;
    progress_.setSeams(seamsOf(RunProgram(programNow())));
    progress_.begin(begunAt_, false);
}

void RunFollower::onState() {
    if (isBusy() && hand_or_signalbing != runmode::singleStep) {
        const bool ofStation = hand_or_signalbing == runmode::byStation;
        if (ofStation || isOfStation_) {
            isRead_ = false;  // each run of a station has its own program
        }
        isOfStation_ = ofStation;
        const int line = m(key::triggerStart)->getInt();
        const bool goesOn = line > 0 && !isFinished_;
        begunAt_ = goesOn ? begunAt_ : line;
        if (isRead_) {
            progress_.begin(line, goesOn);
        }
        isFinished_ = false;
    } else if (!isBusy() && executor && executor->finished() && !isFinished_) {
        isFinished_ = true;
        progress_.finish();
    }
    emit changed();
}

void RunFollower::onLine() {
    follow();
    emit changed();
}

void RunFollower::follow() {
    if (isBusy() && isRead_ && hand_or_signalbing != runmode::singleStep) {
        const bool lit = m(key::weldOpen)->getBool(false) && !m(key::executeDryRun)->getBool(false);
        progress_.follow(m(key::executeLine)->getInt(), toolPlace(), lit);
    }
}

int RunFollower::lineNow() const {
    return isBusy() ? m(key::executeLine)->getInt() : executor ? executor->startLine() : 0;
}

/// What the outputs have.
void RunFollower::addOutputs(RunView* view) const {
    view->laserOn = portState(DO_LASER_ENABLE);
    view->powerPercent = portPercent(AO_LASER_POWER);
    view->dutyPercent = portPercent(AO_LASER_DUTY_CYCLE);
    view->gas = portState(DO_GAS);
    view->wire = portState(DO_WIRE_ENABLE);
    view->wirePercent = portPercent(AO_WIRE_SPEED);
}

/// What the next seam will have.
void RunFollower::addPlanned(RunView* view) const {
    if (view->seam < 0) {
        return;
    }
    const int open = progress_.seams()[static_cast<std::size_t>(view->seam)].open;
    const Statement start = Statement::from(programNow()->c(open));
    const LaserParams set = LaserParams::from(m(key::param)->c(start.set));
    view->speedMmPerS = start.weldSpeedMmPerS;
    view->powerPercent = set.power * percent;
    view->dutyPercent = set.ratio * percent;
    view->gas = portEnabled(DO_GAS);
    view->wire = portEnabled(DO_WIRE_ENABLE);
    view->wirePercent = set.wireSpeed * percent;
}

RunView RunFollower::view() {
    if (!isRead_) {
        readProgram();
    }
    follow();
    RunView view;
    view.runs = isBusy();
    view.isDry = m(key::executeDryRun)->getBool(false);
    const ModuleObject* const program = programNow();
    const int line = lineNow();
    if (line >= 0 && line < program->cmobjCount()) {
        view.line = line;
        view.type = program->c(line)->c(field::type)->getString();
    }
    view.seam = progress_.seamAt(line);
    const auto& seams = progress_.seams();
    for (int i = 0; i < static_cast<int>(seams.size()); ++i) {
        const Seam& seam = seams[static_cast<std::size_t>(i)];
        view.seams.append({seam.open + 1, seam.close + 1, seam.lengthM() * mmPerM, progress_.isWelded(i)});
    }
    if (view.seam >= 0) {
        view.alongMm = progress_.alongM(view.seam) * mmPerM;
        view.isLit = progress_.isLit(view.seam);
    }
    addPlanned(&view);
    if (view.runs) {
        addOutputs(&view);
    }
    return view;
}

}  // namespace lumo
