#include "executor/motions.h"

#include "executor/circle.h"
#include "executor/weldflag.h"
#include "program/dryspeed.h"
#include "program/words.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace prog;

namespace lumo {

namespace {

QString asJson(const ModuleObject* list) {
    return QString::fromUtf8(
        QJsonDocument(list->exportToJson(true).toArray()).toJson(QJsonDocument::Compact));
}

void appendCopy(QObject* sender, ModuleObject* parent, QLatin1String name, const ModuleObject* source) {
    parent->append(sender, name)->copyFrom(sender, source, true, false);
}

void sendEnough(QObject* sender) {
    kordservice()->command(sender, command::enough, static_cast<const ModuleObject*>(nullptr));
}

/// A point of the way back: what it has beyond position and rotation is that of the stop.
void appendPoint(QObject* sender, ModuleObject* parent, QLatin1String name, const Pose& pose) {
    appendCopy(sender, parent, name, m(key::currentPausePoint));
    ModuleObject* const point = parent->c(name);
    for (std::size_t i = 0; i < 3; ++i) {
        const QString index = mIndex(int(i));
        point->set(sender, mName(field::trans, index), pose.trans[i], true)
            ->set(sender, mName(field::rot, index), pose.rot[i], true);
    }
}

}  // namespace

Motions::Motions(QObject* sender, Waiter& waiter) : sender_(sender), waiter_(waiter) {}

void Motions::begin(const Run& run) {
    run_ = &run;
    motionOfLine_ = QVector<int>(run.program.lineCount(), -1);
}

void Motions::end() {
    run_ = nullptr;
    arcs_.endRun();
    queuedLastLine_ = -1;
    circleFault_ = CircleFault::None;
}

bool Motions::isOfRun(const ModuleObject* stmt) const {
    return run_ && stmt && run_->holds(stmt);
}

/// Of a run's statement, or of one of the tree.
int Motions::lineOf(const ModuleObject* stmt) const {
    return isOfRun(stmt) ? run_->lineOf(stmt) : stmt->indexInPmobj();
}

/// The values of a statement: of the run's copy, or read now.
Statement Motions::valueOf(const ModuleObject* stmt) const {
    return isOfRun(stmt) ? run_->program.statement(run_->lineOf(stmt)) : Statement::from(stmt);
}

// --- Queueing -------------------------------------------------------------------------------------

void Motions::beginBatches(int line) {
    queueLine = line;
    queueNeeded = true;
}

int Motions::queueBatchFrom(int line) {
    return queueLine >= 0 && line >= queueLine && queueNeeded ? queueBatch(line) : 0;
}

int Motions::queueBatch(int line) {
    if (!run_) {
        return 0;
    }
    const RunProgram& program = run_->program;
    for (int i = line; i < program.lineCount(); ++i) {
        queueLine = i;
        if (!program.isMove(i) || !program.isExecuted(i)) {
            queueNeeded = true;
            break;
        }
        queueNeeded = false;
        const int code = queue(run_->record(i));
        if (code != 0 || isAborted()) {
            return code;
        }
    }
    sendEnough(sender_);
    return 0;
}

int Motions::queue(ModuleObject* stmt) {
    switch (valueOf(stmt).type) {
        case StatementType::MoveJ:
            queueMoveJ(stmt);
            break;
        case StatementType::MoveL:
            queueMoveL(stmt);
            break;
        case StatementType::MoveC:
            queueMoveC(stmt);
            break;
        case StatementType::MoveCC:
            return queueMoveCC(stmt);
        default:
            break;
    }
    return 0;
}

int Motions::queueAlone(ModuleObject* stmt) {
    const int code = queue(stmt);
    if (code == 0 && !isAborted()) {
        sendEnough(sender_);
    }
    return code;
}

ModuleObject* Motions::openBefore(ModuleObject* stmt) const {
    if (isOfRun(stmt)) {
        const int open = run_->program.openBefore(run_->lineOf(stmt));
        return open < 0 ? nullptr : run_->record(open);
    }
    const int open = prog::openBefore(stmt->indexInPmobj(), kindsIn(stmt->pmobj()));
    return open < 0 ? nullptr : stmt->pmobj()->c(open);
}

/// Inside a weld the speed is that of its "open".
void Motions::setTrajectory(ModuleObject* args, ModuleObject* stmt) {
    const bool isDry = run_ && run_->inDryWeld && isOfRun(stmt);
    const ModuleObject* const open = isDry || isWeldFlagged() ? openBefore(stmt) : nullptr;
    double speed = open ? valueOf(open).weldSpeedMmPerS : valueOf(stmt).speedMmPerS;
    if (isDry && open) {
        speed = dryMmPerS(speed, valueOf(stmt).speedMmPerS, run_->dryPercent);
    }
    args->set(sender_, QStringLiteral("traj.speed"), speed / mmPerM, true)
        ->set(sender_, QStringLiteral("traj.zone"), valueOf(stmt).zoneMm.value_or(0.0) / mmPerM, true);
}

void Motions::queueMoveJ(ModuleObject* stmt) {
    ModuleObject args(QStringLiteral("tmp"));
    appendCopy(sender_, &args, field::point, stmt->r(QStringLiteral("point.near")));
    setTrajectory(&args, stmt);
    send(stmt, command::moveJ, &args);
}

void Motions::queueMoveL(ModuleObject* stmt) {
    ModuleObject args(QStringLiteral("tmp"));
    appendCopy(sender_, &args, field::point, stmt->c(field::point, false));
    setTrajectory(&args, stmt);
    send(stmt, command::moveL, &args);
}

void Motions::queueMoveC(ModuleObject* stmt) {
    if (queueRest(stmt)) {
        return;
    }
    ModuleObject args(QStringLiteral("tmp"));
    appendCopy(sender_, &args, QLatin1String("aux"), stmt->c(field::point, false));
    appendCopy(sender_, &args, field::point, stmt->c(field::point1, false));
    setTrajectory(&args, stmt);
    if (isOfRun(stmt)) {
        arcs_.keep(lineOf(stmt), startOfNext(), &args);
    }
    send(stmt, command::moveC, &args);
}

/// Where a full circle begins; in a run without reading the whole program again.
ModuleObject* Motions::targetBefore(ModuleObject* stmt) const {
    if (!isOfRun(stmt)) {
        return findLastTargetPosNode(stmt);
    }
    const std::optional<RunProgram::Target> target = run_->program.targetBefore(run_->lineOf(stmt));
    return target ? targetNode(run_->record(target->line), target->isPoint1)
                  : kordservice()->get(nullptr, key::posture);
}

int Motions::queueMoveCC(ModuleObject* stmt) {
    /// Treated like the controller's motion error of the same kind.
    constexpr int noCircleCode = -3;
    if (queueRest(stmt)) {
        return 0;
    }
    ModuleObject* const p1 = stmt->c(field::point, false);
    ModuleObject* const p2 = stmt->c(field::point1, false);
    ModuleObject* const start = targetBefore(stmt);
    // With a taught first point this was checked before the start; the posture is known only now.
    const CircleFault fault = prog::circleFault(positionOf(start), positionOf(p1), positionOf(p2));
    if (fault != CircleFault::None) {
        circleFault_ = run_ ? fault : CircleFault::None;
        badCircle_ = lineOf(stmt);
        return noCircleCode;
    }
    ModuleObject args(QStringLiteral("tmp"));
    setTrajectory(&args, stmt);
    ModuleObject* const path = args.append(sender_, QStringLiteral("path"));
    ModuleObject* const corners[] = {start, p1, p2, start};
    ModuleObject* aux[3];
    for (int arc = 0; arc < 3; ++arc) {
        ModuleObject* const element = path->append(sender_, QString());
        appendCopy(sender_, element, QLatin1String("aux"), corners[arc]);
        appendCopy(sender_, element, field::point, corners[arc + 1]);
        aux[arc] = element->c(QStringLiteral("aux"), false);
    }
    calcAux(start, p1, p2, aux[0], aux[1], aux[2]);
    if (isOfRun(stmt)) {
        arcs_.keep(lineOf(stmt), poseOf(start), &args);
    }
    send(stmt, command::moveC, &args);
    return 0;
}

/// Sends a motion of the way back, for the statement of a line.
int Motions::sendDark(QLatin1String command, ModuleObject* args, int line) {
    constexpr double jointStatementMmPerS = 50.0;
    const Statement statement = run_->program.statement(line);
    const bool isOwn = statement.type != StatementType::MoveJ && statement.speedMmPerS > 0.0;
    const double speed = isOwn ? statement.speedMmPerS : jointStatementMmPerS;
    args->set(sender_, QStringLiteral("traj.speed"), speed / mmPerM, true)
        ->set(sender_, QStringLiteral("traj.zone"), 0.0, true);
    return send(nullptr, command, args);
}

int Motions::goBack(int line) {
    ModuleObject args(QStringLiteral("tmp"));
    appendCopy(sender_, &args, field::point, m(key::currentPausePoint));
    return awaitDark({sendDark(command::moveL, &args, line)});
}

int Motions::goBackAlong(const std::vector<WayBack>& way, int line) {
    std::vector<int> motions;
    for (const WayBack& leg : way) {
        ModuleObject args(QStringLiteral("tmp"));
        if (leg.via) {
            appendPoint(sender_, &args, QLatin1String("aux"), *leg.via);
        }
        appendPoint(sender_, &args, field::point, leg.target);
        motions.push_back(sendDark(leg.via ? command::moveC : command::moveL, &args, line));
        if (isAborted()) {
            break;
        }
    }
    return awaitDark(motions);
}

int Motions::awaitDark(const std::vector<int>& motions) {
    if (!isAborted()) {
        sendEnough(sender_);
    }
    int code = 0;
    for (auto motion = motions.begin(); motion != motions.end() && code == 0 && !isAborted(); ++motion) {
        code = awaitMotion(*motion);
    }
    return isAborted() ? 0 : code;
}

/// Sends a motion for a statement (null: for none) and returns its number.
int Motions::send(const ModuleObject* stmt, QLatin1String command, const ModuleObject* args) {
    // Counted before the call: a controller may answer inside it.
    const int motion = motions_.size();
    if (isOfRun(stmt)) {
        const int line = run_->lineOf(stmt);
        if (run_->ofHandProgram() && isWeldFlagged()) {
            welded_.queued(*run_, line, startOfNext(), arcs_.queuedBy(line));
        }
        queuedLastLine_ = line;
        motionOfLine_[queuedLastLine_] = motion;
    }
    motions_.append(Motion());
    kordservice()->command(sender_, command, args);
    return motion;
}

// --- Results and waits ----------------------------------------------------------------------------

void Motions::onResult(const QString& kind, int code) {
    logW() << "LumoExecutor::handleMove move" << kind << code;
    if (outstanding() == 0) {
        logW() << "unexpected move result!";
        return;
    }
    const int number = answered_++;
    Motion& motion = motions_[number];
    motion.isAnswered = true;
    motion.code = code;
    if (motion.zoneEnded) {
        logW() << "ignore move result!";
        zoneReached = false;
        if (code != 0) {
            emit failed(code, motionOfLine_.indexOf(number));  // also when the run is over
        }
        return;
    }
    if (number == awaited_) {
        waiter_.end(WaitEnd::Result, code);
    }
}

void Motions::forget() {
    motions_.clear();
    answered_ = 0;
    zoneReached = false;
}

int Motions::await(ModuleObject* stmt, bool isStep) {
    const int motion = isOfRun(stmt) ? motionOfLine_.at(run_->lineOf(stmt)) : -1;
    if (motion < 0 || motion >= motions_.size()) {
        return 0;  // nothing was queued for it
    }
    const bool waitsForZone = !isStep && run_->program.isLastBeforeClose(run_->lineOf(stmt));
    return waitsForZone ? awaitZone(stmt, motion) : awaitMotion(motion);
}

int Motions::awaitMotion(int motion) {
    if (motions_.at(motion).isAnswered) {
        return motions_.at(motion).code;
    }
    awaited_ = motion;
    awaitedSinceMs_ = mendo::Clock::current().elapsedMs();
    // Ended by the motion's result, a pause or an emergency stop.
    const int code = codeOf(waiter_.run(waits::move, -1));
    awaited_ = -1;
    return code;
}

int Motions::codeOf(WaitEnd end) const {
    return end == WaitEnd::Result ? waiter_.resultCode() : 0;
}

int Motions::awaitZone(ModuleObject* stmt, int motion) {
    constexpr int pollMs = 50;
    if (motions_.at(motion).isAnswered) {
        return motions_.at(motion).code;
    }
    awaited_ = motion;
    awaitedSinceMs_ = mendo::Clock::current().elapsedMs();
    const std::optional<double> zoneMm = valueOf(stmt).zoneMm;
    const double radiusM =
        zoneMm ? *zoneMm / mmPerM : kordservice()->get(sender_, key::defaultZone)->getDouble(0.0);
    arcFirstReached = false;
    arcSecondReached = false;
    ModuleObject circleStart(QStringLiteral("trans_cc"));
    circleStart.copyFrom(sender_, kordservice()->get(sender_, key::posture, field::trans), true, false);
    passedBefore(stmt, &circleStart);
    logD() << "target: " << asJson(stmt->r(QStringLiteral("point.trans"))) << ", zone: " << radiusM;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this,
            [this, stmt, radiusM, &circleStart] { testZone(stmt, radiusM, &circleStart); });
    poll.start(pollMs);
    // Ended by the tool entering the zone, the motion's result, a pause or an emergency stop.
    const int code = codeOf(waiter_.run(waits::zone, -1));
    awaited_ = -1;
    return code;
}

/// The tool comes near the corners of an arc or circle one after the other; the zone is that of the last.
void Motions::testZone(ModuleObject* stmt, double radiusM, const ModuleObject* circleStart) {
    if (!waiter_.waitsFor(waits::zone)) {
        return;
    }
    const Statement statement = valueOf(stmt);
    const bool isArc = statement.type == StatementType::MoveC;
    const bool isCircle = statement.type == StatementType::MoveCC;
    const ModuleObject* target = stmt->r(QStringLiteral("point.trans"));
    if (arcSecondReached) {
        target = circleStart;
    } else if (arcFirstReached) {
        target = stmt->r(QStringLiteral("point1.trans"));
    }
    const ModuleObject* const current = kordservice()->get(sender_, key::posture, field::trans);
    if (!isNearTrans(current, target, radiusM)) {
        return;
    }
    if ((isArc || isCircle) && !arcFirstReached) {
        arcFirstReached = true;
        return;
    }
    if (isCircle && !arcSecondReached) {
        arcSecondReached = true;
        return;
    }
    const bool named = isArc || isCircle || statement.type == StatementType::MoveL;
    const QString line = QStringLiteral("enter zone! %1: ").arg(named ? statement.word : QString());
    const QString place = asJson(current);
    zoneReached = true;
    motions_[awaited_].zoneEnded = true;
    waiter_.end(WaitEnd::Zone);
    logE() << line << place;  // last: a listener of the log may pause
}

void Motions::storeCurrent(const ModuleObject* stmt, const QString& type) {
    m(key::currentMoveType)->setValue(sender_, type);
    m(key::currentStartPoint)->copyFrom(sender_, kordservice()->get(sender_, key::posture), true, false);
    const StatementRow* const row = statementRow(type);
    if (row && row->moves) {
        m(key::currentProgram)->append(sender_, type)->copyFrom(sender_, stmt, true, false);
    }
}

// --- Going on after a stop ------------------------------------------------------------------------

/// Where the robot will be when the motion that is queued next begins.
Pose Motions::startOfNext() const {
    if (outstanding() == 0 || queuedLastLine_ < 0) {
        return toolPose();
    }
    const Statement last = run_->program.statement(queuedLastLine_);
    const QueuedArc* const arc = arcs_.queuedBy(queuedLastLine_);
    if (last.type == StatementType::MoveCC && arc) {
        return arc->start;
    }
    const TaughtPoint& end = last.type == StatementType::MoveC ? last.point1 : last.point;
    return {end.trans, end.rot};
}

void Motions::keepArc() {
    constexpr double msPerS = 1000.0;
    arcs_.forgetStopped();
    if (run_->original(run_->line)) {
        const double seconds = double(mendo::Clock::current().elapsedMs() - awaitedSinceMs_) / msPerS;
        arcs_.stopIn(run_->line, run_->record(run_->line), toolPose().trans, seconds);
    }
}

bool Motions::takeUpArc(int line) {
    return arcs_.takeUp(line, run_->record(line), toolPose().trans);
}

Overlap Motions::overlap(int line, double mm) {
    return welded_.back(*run_, line, toolPose().trans, arcs_.reachedOn(line), mm);
}

void Motions::beginOverlap(const Overlap& overlap) {
    arcs_.setRest(overlap.line, overlap.rest);
    beginBatches(overlap.line);
}

/// Queues what is left of the arc that the run takes up; nothing where nothing is left. False for any other
/// statement.
bool Motions::queueRest(ModuleObject* stmt) {
    const int line = lineOf(stmt);
    const std::optional<Arcs::Begun> rest = isOfRun(stmt) ? arcs_.takeRest(line) : std::nullopt;
    if (!rest) {
        return false;
    }
    const Arc arc = *rest->queued.arc();
    ModuleObject args(QStringLiteral("tmp"));
    if (!rest->queued.fillRest(&args, arc, rest->reached)) {
        return true;
    }
    setTrajectory(&args, stmt);
    arcs_.keepRest(line, *rest);
    send(stmt, command::moveC, &args);
    return true;
}

/// An arc that was taken up in the middle: the tool does not come past the points again that it has passed,
/// and a circle still ends where it began.
void Motions::passedBefore(const ModuleObject* stmt, ModuleObject* circleStart) {
    const QueuedArc* const queued = arcs_.queuedBy(lineOf(stmt));
    if (!queued || !(queued->from > 0.0)) {
        return;
    }
    const std::optional<Arc> arc = queued->arc();
    const double from = queued->from;
    const Statement statement = valueOf(stmt);
    if (statement.type == StatementType::MoveC) {
        arcFirstReached = arc->angleNear(statement.point.trans, 0.0, arc->total() / 2) <= from;
        return;
    }
    const Position& start = queued->start.trans;
    arcFirstReached = arc->legAt(from) >= 1;
    arcSecondReached = arc->legAt(from) >= 2;
    circleStart->set(sender_, mIndex(0), start[0])
        ->set(sender_, mIndex(1), start[1])
        ->set(sender_, mIndex(2), start[2]);
}

}  // namespace lumo
