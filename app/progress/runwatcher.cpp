#include "app/progress/runwatcher.h"

#include "app/status/statuswatcher.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

namespace app {

using mendo::ModuleObject;

namespace {

constexpr int tickMs = 200;
constexpr int linesAtOnce = 40;  // some 20 ms

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

std::array<double, 3> tripleAt(const ModuleObject* list) {
    return {list->c(0)->getDouble(), list->c(1)->getDouble(), list->c(2)->getDouble()};
}

sim::MotionPlan::Posture standNow() {
    const ModuleObject* posture = kordservice()->dataNode(prog::key::posture);
    sim::MotionPlan::Posture stand;
    stand.pose = {tripleAt(posture->c(prog::field::trans)), tripleAt(posture->c(prog::field::rot))};
    const QList<ModuleObject*> joints = posture->c(prog::field::near)->cmobjs();
    for (const ModuleObject* joint : joints) {
        stand.joints.push_back(joint->getDouble());
    }
    return stand;
}

}  // namespace

RunWatcher::RunWatcher(const workcell::PackageFlags& package, QObject* parent)
    : QObject(parent), package_(package) {
    tick_.setInterval(tickMs);
    connect(&idle_, &QTimer::timeout, this, &RunWatcher::estimate);
    connect(&tick_, &QTimer::timeout, this, &RunWatcher::advanced);
    connect(m(prog::key::executeState), &ModuleObject::changed, this, &RunWatcher::onState);
    connect(m(prog::key::currentLine), &ModuleObject::changed, this, &RunWatcher::onLine);
}

qint64 RunWatcher::goneMs() const {
    return nowMs() - begunMs_;
}

std::optional<RunProgress::View> RunWatcher::view() const {
    return progress_ ? std::optional<RunProgress::View>(progress_->at(nowMs())) : std::nullopt;
}

void RunWatcher::onState() {
    const bool running = m(prog::key::executeState)->getString() == prog::word::busy;
    if (running == running_) {
        return;
    }
    running_ = running;
    if (running) {
        begin();
        tick_.start();
        emit begun();
    } else {
        tick_.stop();
        idle_.stop();
        emit ended();
    }
}

void RunWatcher::begin() {
    const int mode = package_.mode();
    RunStart start;
    start.step = mode == prog::runmode::singleStep;
    start.line = m(start.step ? prog::key::triggerOnce : prog::key::triggerStart)->getInt();
    start.stand = standNow();
    start.permitted = readSwitches().isSwitchedOn();
    start.weldOpen = mode == prog::runmode::byHand && m(prog::key::weldOpen)->getBool(false);
    start.set = m(prog::key::curParam)->getInt();
    start.defaultZoneM = kordservice()->dataNode(prog::key::defaultZone)->getDouble();
    const ModuleObject* program =
        m(mode == prog::runmode::byStation ? prog::key::stationProgram : prog::key::program);
    startLine_ = line_ = start.line;
    begunMs_ = lineBegunMs_ = nowMs();
    progress_.reset();
    estimate_.reset();
    arm_ = std::make_unique<sim::Arm>(kordservice()->dataNode(prog::key::jointCount)->getInt());
    estimate_ = std::make_unique<RunEstimate>(program->exportToJson().toArray(),
                                              m(prog::key::param)->exportToJson().toArray(), start, *arm_);
    idle_.start(0);
    estimate();
}

/// A part of it, between everything else.
void RunWatcher::estimate() {
    if (!estimate_->advance(linesAtOnce)) {
        return;
    }
    idle_.stop();
    progress_.emplace(estimate_->lines(), startLine_, begunMs_);
    progress_->beginLine(line_, lineBegunMs_);
    estimate_.reset();
    emit advanced();
}

void RunWatcher::onLine(const QVariant& line) {
    if (!running_ || package_.mode() == prog::runmode::singleStep || line.toInt() == line_) {
        return;
    }
    line_ = line.toInt();
    lineBegunMs_ = nowMs();
    if (progress_) {
        progress_->beginLine(line_, lineBegunMs_);
    }
    emit advanced();
}

}  // namespace app
