#include "workcell/evidence.h"

#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/parameters.h"
#include "program/permission.h"
#include "program/ports.h"
#include "program/runprogram.h"
#include "program/words.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

#include <algorithm>
#include <utility>

namespace workcell {

using mendo::ModuleObject;
using sim::Controller;

namespace {

constexpr double msPerS = 1000.0;
constexpr double longestWaitMs = 1000.0;  // for a moving robot to tell where it was

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

bool isPermitted() {
    return prog::weldingPermitted(m(prog::key::robotMode)->getString() == prog::word::automatic,
                                  m(prog::key::weldSwitch)->getBool(true),
                                  m(prog::key::handWeldSwitch)->getBool(false));
}

bool isDryRun() {
    return m(prog::key::executeDryRun)->getBool(false);
}

}  // namespace

EvidenceRecorder::EvidenceRecorder(Controller* controller, sim::Cell* cell, TreeFollower* follower,
                                   RunWatch* watch, Span span, QObject* parent)
    : QObject(parent),
      controller_(controller),
      cell_(cell),
      watch_(watch),
      span_(span),
      isEmitting_(cell->emitting()),
      isEnabled_(controller->output(cell->wiring().laserEnable).toBool()),
      power_(controller->output(cell->wiring().laserPower).toInt()) {
    if (controller->output(cell->wiring().gas).toBool()) {
        gasSinceMs_ = nowMs();
    }
    for (int i = 0; i < sim::Cell::equipment().size(); ++i) {
        isFaulty_.push_back(!controller->input(sim::Cell::inputOf(i)));
    }
    isFaultTold_.resize(isFaulty_.size());
    connectAll(cell, follower);
}

EvidenceRecorder::~EvidenceRecorder() = default;

void EvidenceRecorder::connectAll(sim::Cell* cell, TreeFollower* follower) {
    connect(controller_, &Controller::postureMoved, this, &EvidenceRecorder::account);
    connect(controller_, &Controller::cameToRest, this, &EvidenceRecorder::onRest);
    connect(controller_, &Controller::motion, this, &EvidenceRecorder::onMotion);
    connect(controller_, &Controller::outputChanged, this, &EvidenceRecorder::onOutput);
    connect(controller_, &Controller::inputChanged, this, &EvidenceRecorder::onInput);
    connect(controller_, &Controller::rejected, this, &EvidenceRecorder::onRejected);
    connect(cell, &sim::Cell::emittingChanged, this, &EvidenceRecorder::onEmission);
    connect(follower, &TreeFollower::changed, this, &EvidenceRecorder::onChanged);
    connect(follower, &TreeFollower::switchWritten, this, &EvidenceRecorder::onPermission);
    connect(watch_, &RunWatch::begun, this, &EvidenceRecorder::onRunBegun);
    connect(watch_, &RunWatch::interrupted, this, [this] {
        closeSeam({});
        endSeamPath();
    });
    connect(watch_, &RunWatch::ended, this, &EvidenceRecorder::onRunEnded);
}

void EvidenceRecorder::setExecutor(QObject* executor) {
    executor_ = executor;
    connect(executor, SIGNAL(activityChanged()), this, SLOT(settleLater()));
}

// --- The record -----------------------------------------------------------------------------------

void EvidenceRecorder::begin() {
    isRecording_ = true;
    isOver_ = false;
    beganMs_ = sinceMs_ = nowMs();
    endedMs_.reset();
    const double travelledMm = controller_->travelled() * prog::mmPerM;
    shares_.begin(double(beganMs_), travelledMm);
    live_.clear();
    motions_.clear();
    open_ = lit_ = onPath_ = nullptr;
    record_ = RunRecord();
    record_.project = project();
    atBegin_ = RunRecord();
    atBegin_.lines = watch_->lines();
    atBegin_.pathMm = travelledMm;
    atBegin_.laserOnS = double(cell_->laserOnMs()) / msPerS;
    atBegin_.gasS = double(cell_->gasOnMs()) / msPerS;
    atBegin_.wireS = double(cell_->wireOnMs()) / msPerS;
}

RunRecord EvidenceRecorder::current() {
    if (!isRecording_) {
        return record_;
    }
    account();
    shares_.settle(double(nowMs()));
    RunRecord record = record_;
    record.reason = endedMs_ && watch_->isRunning() ? endReason_ : watch_->reason();
    record.lines = watch_->lines() - atBegin_.lines;
    record.seconds = endedMs_ ? double(*endedMs_ - beganMs_) / msPerS : nowS();
    record.pathMm = rounded(controller_->travelled() * prog::mmPerM - atBegin_.pathMm);
    record.laserOnS = rounded(double(cell_->laserOnMs()) / msPerS - atBegin_.laserOnS);
    record.gasS = rounded(double(cell_->gasOnMs()) / msPerS - atBegin_.gasS);
    record.wireS = rounded(double(cell_->wireOnMs()) / msPerS - atBegin_.wireS);
    for (const Seam& seam : live_) {
        record.seams.push_back(seam->record(here(), ratedWatts_));
    }
    return record;
}

void EvidenceRecorder::onRunBegun() {
    type_.clear();
    line_ = -1;
    isByHand_ = false;
    if (span_ != Span::Run) {
        record_.isDry = record_.isDry || isDryRun();
        return;
    }
    if (isRecording_) {
        settle();  // tells the run before, whose equipment may still be on
    }
    if (!watch_->isStep()) {
        begin();
    }
    record_.isDry = isDryRun();
}

void EvidenceRecorder::onRunEnded() {
    if (watch_->reason() == QLatin1String("finished")) {
        passSkippedLines(line_ + 1, program()->size());
        if (open_ && takesMoves_) {
            open_->setEndless();
        }
    }
    closeSeam({});
    endSeamPath();
    line_ = -1;
    if (span_ == Span::Run && isRecording_) {
        endedMs_ = nowMs();
        endReason_ = watch_->reason();
        isOver_ = true;
        settleLater();
    }
}

void EvidenceRecorder::settleLater() {
    if (!isOver_ || settlePosted_) {
        return;
    }
    settlePosted_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            settlePosted_ = false;
            const bool isBusy = executor_ && (executor_->property("depth").toInt() > 0 ||
                                              executor_->property("pendingSteps").toInt() > 0);
            if (isOver_ && !isBusy && controller_->standsStill()) {
                settle();
            }
        },
        Qt::QueuedConnection);
}

void EvidenceRecorder::settle() {
    record_ = current();
    isRecording_ = isOver_ = false;
    live_.clear();
    motions_.clear();
    open_ = lit_ = onPath_ = nullptr;
    emit finished(record_);
}

// --- What the tree shows --------------------------------------------------------------------------

void EvidenceRecorder::onChanged(const Change& change) {
    if (change.path == prog::key::triggerStart) {
        startLine_ = change.value.toInt();
    } else if (change.path == prog::key::robotMode) {
        onPermission();
    } else if (change.path == prog::key::robotState) {
        account();
        settleLater();
    } else if (!change.byExecutor()) {
        return;
    } else if (change.path == prog::key::executeLine) {
        isByHand_ = true;  // the executor writes it for hand programs only
    } else if (change.path == prog::key::currentLine) {
        lineBefore_ = std::exchange(line_, change.value.toInt());
    } else if (change.path == prog::key::currentType) {
        onStatement(change.value.toString());
    } else if (change.path == prog::key::curParam) {
        onSet(change.value.toInt());
    }
}

/// A "close" that is switched off ends the programmed path, though not the weld.
void EvidenceRecorder::passSkippedLines(int from, int to) {
    for (int line = from; open_ && takesMoves_ && line < to; ++line) {
        takesMoves_ = program()->c(line)->c(prog::field::type)->getString() != prog::statement::close;
    }
}

void EvidenceRecorder::onStatement(const QString& type) {
    passSkippedLines(lineBefore_ + 1, line_);
    type_ = type;
    const bool closes = type == prog::statement::close;
    if (!isRecording_ || (!closes && type != prog::statement::open)) {
        return;
    }
    if (!isPermitted() || isDryRun()) {
        record_.refused.push_back({line_ + 1, type, project(), isDryRun()});
    } else if (closes) {
        closeSeam(line_ + 1);
    }
    if (closes || (open_ && open_->isClosed())) {
        endSeamPath();
    }
}

void EvidenceRecorder::onSet(int set) {
    account();
    const ModuleObject* node = m(prog::key::param)->c(set);
    const prog::LaserParams params = prog::LaserParams::from(node);
    setPower_ = std::min(params.power, 1.0) * prog::analogueFullScale;
    setPauseMs_ = params.openIntervalMs;
    if (isRecording_ && watch_->isRunning() && type_ != prog::statement::param) {
        openSeam(node->c(prog::field::name)->getString());
    }
}

/// The robot goes on, so the moves that follow are still the seam's, dark.
void EvidenceRecorder::onPermission() {
    if (!isPermitted()) {
        closeSeam({});
    }
}

// --- Seams ----------------------------------------------------------------------------------------

void EvidenceRecorder::openSeam(const QString& set) {
    closeSeam({});
    const double atMm = controller_->travelled() * prog::mmPerM - atBegin_.pathMm;
    live_.push_back(std::make_unique<SeamTally>(openLine(), set, project(), rounded(atMm)));
    open_ = live_.back().get();
    if (type_.isEmpty()) {  // a weld that goes on
        open_->setOverlap(m(prog::key::executeOverlapped)->getDouble(0.0));
    }
    wasEnabled_ = false;
    takesMoves_ = true;
    if (!lit_ || !isEmitting_) {
        lit_ = open_;
    }
    keepFinished();
}

/// From 1. A weld that goes on has that of its "open", before the line at which the run began.
int EvidenceRecorder::openLine() const {
    const bool goesOn = type_.isEmpty();
    return 1 + (goesOn ? prog::openBefore(startLine_, prog::kindsIn(m(prog::key::program))) : line_);
}

void EvidenceRecorder::closeSeam(std::optional<int> line) {
    if (!open_ || open_->isClosed()) {
        return;
    }
    account();
    open_->close(line);
    if (lit_ == open_ && !isEmitting_) {
        lit_ = nullptr;
    }
    checkFaults();
}

void EvidenceRecorder::endSeamPath() {
    open_ = nullptr;
    keepFinished();
}

/// In the order of the openings: a seam waits for those before it.
void EvidenceRecorder::keepFinished() {
    while (!live_.empty() && isFinished(live_.front().get())) {
        record_.seams.push_back(live_.front()->record(here(), ratedWatts_));
        live_.erase(live_.begin());
    }
}

bool EvidenceRecorder::isFinished(const SeamTally* seam) const {
    if (!seam->isClosed() || seam == open_ || seam == lit_ || seam == onPath_ || seam->hasGas() ||
        shares_.concerns(seam)) {
        return false;
    }
    return std::none_of(motions_.begin(), motions_.end(), [seam](const SeamTally* of) { return of == seam; });
}

// --- The cell -------------------------------------------------------------------------------------

/// Adds what happened since the last call: called before anything changes that is added up.
void EvidenceRecorder::account() {
    if (!isRecording_) {
        return;
    }
    const qint64 now = nowMs();
    PathShares::Piece piece{double(sinceMs_), double(now), {}, isEmitting_ ? lit_ : nullptr, onPath_};
    piece.stretch.emitting = isEmitting_;
    piece.stretch.betweenPulses = isBetweenPulses();
    piece.stretch.powerPct = power_ / prog::analogueFullScale * 100.0;
    piece.stretch.atSetPower = power_ + 0.51 >= setPower_;  // the register rounds to the nearest
    sinceMs_ = now;
    const bool wasWaiting = shares_.isWaiting();
    shares_.add(piece);
    shares_.tell(controller_->postureMs(), controller_->travelled() * prog::mmPerM);
    shares_.settle(double(now) - longestWaitMs);
    if (wasWaiting) {
        keepFinished();
    }
}

/// Whether the laser is disabled for a pause of its pulses, and no longer than that takes.
bool EvidenceRecorder::isBetweenPulses() const {
    constexpr int lateMs = 20;  // of a timer
    return lit_ && !lit_->isClosed() && !isEnabled_ && setPauseMs_ > 0 &&
           nowMs() - disabledMs_ <= setPauseMs_ + lateMs;
}

void EvidenceRecorder::onMotion(int id, Controller::MotionEvent event) {
    account();
    switch (event) {
        case Controller::MotionEvent::Queued:
            if (open_ && takesMoves_) {
                motions_.insert(id, open_);
            }
            return;
        case Controller::MotionEvent::Started:
            onPath_ = motions_.value(id);
            isStopping_ = false;
            return;
        case Controller::MotionEvent::Stopped:
            isStopping_ = true;
            break;
        case Controller::MotionEvent::Passed:
        case Controller::MotionEvent::Failed:
            onPath_ = nullptr;
            break;
        case Controller::MotionEvent::Dropped:
            break;
    }
    motions_.remove(id);
    keepFinished();
}

void EvidenceRecorder::onRest() {
    account();
    if (isStopping_) {
        isStopping_ = false;
        onPath_ = nullptr;
        keepFinished();
    }
    settleLater();
}

void EvidenceRecorder::onEmission(bool on) {
    account();
    isEmitting_ = on;
    if (lit_ && on) {
        lit_->beginEmission(here(), gasOnS());
    } else if (lit_) {
        lit_->endEmission(here(), gasSinceMs_.has_value());
        if (lit_->isClosed()) {
            lit_ = open_ && !open_->isClosed() ? open_ : nullptr;
        }
        keepFinished();
    }
    checkFaults();
    settleLater();
}

void EvidenceRecorder::onOutput(const QString& name, const QVariant& value) {
    const sim::Wiring& wiring = cell_->wiring();
    if (name == wiring.laserPower) {
        account();
        power_ = value.toInt();
    }
    if (name == wiring.laserEnable) {
        account();
        isEnabled_ = value.toBool();
        disabledMs_ = nowMs();
        wasEnabled_ = wasEnabled_ || isEnabled_;
        checkFaults();
    }
    if (name == wiring.gas) {
        onGas(value.toBool());
    }
}

void EvidenceRecorder::onGas(bool on) {
    if (on) {
        gasSinceMs_ = nowMs();
        return;
    }
    gasSinceMs_.reset();
    for (const Seam& seam : live_) {
        seam->endGas(nowS());
    }
    keepFinished();
}

void EvidenceRecorder::onInput(const QString& name, bool value) {
    for (std::size_t i = 0; i < isFaulty_.size(); ++i) {
        if (name == sim::Cell::inputOf(int(i))) {
            isFaulty_[i] = !value;
            checkFaults();
        }
    }
}

void EvidenceRecorder::onRejected(const QString& name, const QString& reason) {
    if (!isRecording_) {
        return;
    }
    ++record_.rejected;
    const auto same = std::find_if(
        record_.rejections.begin(), record_.rejections.end(),
        [&](const Rejection& rejection) { return rejection.name == name && rejection.reason == reason; });
    if (same == record_.rejections.end()) {
        record_.rejections.push_back({name, reason, 1});
    } else {
        ++same->count;
    }
}

/// A faulty source stops to emit, but it is still switched on; between two pulses it counts as on, too.
bool EvidenceRecorder::isLit() const {
    return isEmitting_ || isEnabled_ || (lit_ && wasEnabled_ && !lit_->isClosed());
}

void EvidenceRecorder::checkFaults() {
    const bool lit = isLit();
    for (std::size_t i = 0; i < isFaulty_.size(); ++i) {
        const bool wasTold = isFaultTold_[i];
        isFaultTold_[i] = lit && isFaulty_[i];
        if (!isFaultTold_[i] || wasTold) {
            continue;
        }
        const QString name = sim::Cell::equipment()[int(i)];
        if (isRecording_) {
            record_.faults.push_back({name, nowS(), line_ + 1, line_ < 0 ? QString() : project()});
            if (lit_) {
                lit_->addFault(name);
            }
        }
        emit faultWhileLit(name);
    }
}

/// The program that runs.
const ModuleObject* EvidenceRecorder::program() const {
    return m(isByHand_ ? prog::key::program : prog::key::stationProgram);
}

QString EvidenceRecorder::project() const {
    return projectName_ ? projectName_() : QString();
}

double EvidenceRecorder::nowS() const {
    return double(nowMs() - beganMs_) / msPerS;
}

EmissionPoint EvidenceRecorder::here() const {
    const auto& trans = controller_->posture().pose.trans;
    return {nowS(), prog::Position{trans[0], trans[1], trans[2]} * prog::mmPerM};
}

double EvidenceRecorder::gasOnS() const {
    return gasSinceMs_ ? double(nowMs() - *gasSinceMs_) / msPerS : 0.0;
}

}  // namespace workcell
