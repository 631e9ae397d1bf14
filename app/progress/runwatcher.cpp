#include "app/progress/runwatcher.h"

#include "app/path/seamtrack.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/dryspeed.h"
#include "program/words.h"

namespace app {

using mendo::ModuleObject;

namespace {

constexpr int tickMs = 200;
constexpr int linesAtOnce = 40;  // takes about 20 ms

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
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

qint64 RunWatcher::elapsedMs() const {
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
    start.posture = postureNow();
    QVariantMap outlook;
    QMetaObject::invokeMethod(package_.executor, "startAt", Q_RETURN_ARG(QVariantMap, outlook),
                              Q_ARG(int, start.line));
    start.permitted = outlook.value(QStringLiteral("permitted")).toBool();
    start.inWeld = mode == prog::runmode::byHand && outlook.value(QStringLiteral("inWeld")).toBool();
    if (m(prog::key::executeDryRun)->getBool(false)) {
        start.permitted = false;
        start.dryPercent = prog::drySpeedPercent(m(prog::key::executeDrySpeed)->getDouble(0.0));
    }
    start.set = m(prog::key::curParam)->getInt();
    start.defaultZoneM = kordservice()->dataNode(prog::key::defaultZone)->getDouble();
    const ModuleObject* program =
        m(mode == prog::runmode::byStation ? prog::key::stationProgram : prog::key::program);
    startLine_ = line_ = start.line;
    begunMs_ = lineBegunMs_ = nowMs();
    progress_.reset();
    estimate_.reset();
    arm_ = std::make_unique<sim::Arm>(kordservice()->dataNode(prog::key::jointCount)->getInt());
    estimate_ = std::make_unique<RunEstimate>(prog::RunProgram(program),
                                              prog::LaserParams::allFrom(m(prog::key::param)), start, *arm_);
    idle_.start(0);
    estimate();
}

/// A part of the estimate; the event loop runs between the parts.
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
