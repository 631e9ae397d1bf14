// Moves: the commands of the four move statements, and waiting for their results.

#include "executor/circle.h"
#include "executor/lumoexecutor.h"
#include "module/keys.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

using namespace lumo;

namespace {

constexpr int zonePollMs = 50;
constexpr double mmPerM = 1000.0;

/// An impossible circle at queueing is treated like the controller's motion error of the same kind.
constexpr int noCircleCode = -3;

QString asJson(const ModuleObject* list) {
    return QString::fromUtf8(
        QJsonDocument(list->exportToJson(true).toArray()).toJson(QJsonDocument::Compact));
}

/// The taught points of a statement, to be compared.
QString pointsOf(const ModuleObject* stmt) {
    const QJsonArray points{stmt->c(field::point)->exportToJson(), stmt->c(field::point1)->exportToJson()};
    return QString::fromUtf8(QJsonDocument(points).toJson(QJsonDocument::Compact));
}

void appendCopy(QObject* sender, ModuleObject* parent, QLatin1String name, const ModuleObject* source) {
    parent->append(sender, name)->copyFrom(sender, source, true, false);
}

}  // namespace

bool isNearTrans(const ModuleObject* a, const ModuleObject* b, double distanceM) {
    double squares = 0.0;
    for (int i = 0; i < 3; ++i) {
        const double difference = a->c(i)->getDouble(0.0) - b->c(i)->getDouble(0.0);
        squares += difference * difference;
    }
    return std::sqrt(squares) < distanceM;
}

ModuleObject* LumoExecutor::findNearestForwardParam(ModuleObject* stmt) const {
    if (run_ && run_->program.holds(stmt)) {
        return run_->program.openBefore(stmt->indexInPmobj());
    }
    for (ModuleObject* before = stmt->prevBmobj(); !before->isNull(); before = before->prevBmobj()) {
        if (before->c(field::type, false)->getString(QString()) == statement::open) {
            return before;
        }
    }
    return nullptr;
}

void LumoExecutor::setTrajectory(ModuleObject* args, ModuleObject* stmt) {
    const ModuleObject* speed = stmt->c(field::speed, false);
    if (m(key::weldOpen)->getBool(false)) {
        if (const ModuleObject* open = findNearestForwardParam(stmt)) {
            speed = open->c(field::weldspeed, false);
        }
    }
    args->set(this, QStringLiteral("traj.speed"), speed->getDouble(0.0) / mmPerM, true)
        ->set(this, QStringLiteral("traj.zone"), stmt->c(field::zone, false)->getDouble(0.0) / mmPerM, true);
}

void LumoExecutor::addMoveJCmd(ModuleObject* stmt) {
    ModuleObject args(QStringLiteral("tmp"));
    appendCopy(this, &args, field::point, stmt->r(QStringLiteral("point.near")));
    setTrajectory(&args, stmt);
    queueMotion(stmt, command::moveJ, &args);
}

void LumoExecutor::addMoveLCmd(ModuleObject* stmt) {
    ModuleObject args(QStringLiteral("tmp"));
    appendCopy(this, &args, field::point, stmt->c(field::point, false));
    setTrajectory(&args, stmt);
    queueMotion(stmt, command::moveL, &args);
}

void LumoExecutor::addMoveCCmd(ModuleObject* stmt) {
    if (queueRest(stmt)) {
        return;
    }
    ModuleObject args(QStringLiteral("tmp"));
    appendCopy(this, &args, QLatin1String("aux"), stmt->c(field::point, false));
    appendCopy(this, &args, field::point, stmt->c(field::point1, false));
    setTrajectory(&args, stmt);
    keepQueuedArc(stmt, startOfNextMotion(), &args);
    queueMotion(stmt, command::moveC, &args);
}

int LumoExecutor::addMoveCCCmd(ModuleObject* stmt) {
    if (queueRest(stmt)) {
        return 0;
    }
    ModuleObject* const p1 = stmt->c(field::point, false);
    ModuleObject* const p2 = stmt->c(field::point1, false);
    const int line = stmt->indexInPmobj();
    const bool held = run_ && run_->program.holds(stmt);
    ModuleObject* start = held ? run_->program.targetBefore(line) : findLastTargetPosNode(stmt);
    if (!start) {
        start = kordservice()->get(nullptr, key::posture);
    }
    // With a taught first point this was checked before the start; the posture is known only now.
    const CircleFault fault = circleFault(start, p1, p2);
    if (fault != CircleFault::None) {
        if (run_) {
            run_->circleError = circleText(fault, line);
        }
        return noCircleCode;
    }
    ModuleObject args(QStringLiteral("tmp"));
    setTrajectory(&args, stmt);
    ModuleObject* const path = args.append(this, QStringLiteral("path"));
    ModuleObject* const corners[] = {start, p1, p2, start};
    ModuleObject* aux[3];
    for (int arc = 0; arc < 3; ++arc) {
        ModuleObject* const element = path->append(this, QString());
        appendCopy(this, element, QLatin1String("aux"), corners[arc]);
        appendCopy(this, element, field::point, corners[arc + 1]);
        aux[arc] = element->c(QStringLiteral("aux"), false);
    }
    calcAux(start, p1, p2, aux[0], aux[1], aux[2]);
    keepQueuedArc(stmt, Position::of(start->c(field::trans)), &args);
    queueMotion(stmt, command::moveC, &args);
    return 0;
}

void LumoExecutor::queueMotion(ModuleObject* stmt, QLatin1String command, const ModuleObject* args) {
    // Counted before the call: a controller may answer inside it.
    if (run_ && stmt && run_->program.holds(stmt)) {
        run_->motionOfLine[stmt->indexInPmobj()] = motions_.size();
        queuedLast_ = stmt;
    }
    motions_.append(Motion());
    kordservice()->command(this, command, args);
}

/// Where the robot will be when the motion that is queued next begins.
Position LumoExecutor::startOfNextMotion() const {
    if (outstanding() == 0 || !queuedLast_) {
        return Position::of(kordservice()->get(nullptr, key::posture, field::trans));
    }
    const auto arc = run_->arcs.find(queuedLast_->indexInPmobj());
    const QString type = statementType(queuedLast_);
    if (type == statement::moveCC && arc != run_->arcs.end()) {
        return arc->second.start;
    }
    const QLatin1String end = type == statement::moveC ? field::point1 : field::point;
    return Position::of(queuedLast_->c(end)->c(field::trans));
}

// --- What is left of an arc -----------------------------------------------------------------------

void LumoExecutor::keepQueuedArc(ModuleObject* stmt, const Position& start, const ModuleObject* args) {
    if (!run_ || !run_->program.holds(stmt)) {
        return;
    }
    QueuedArc& kept = run_->arcs[stmt->indexInPmobj()];
    kept.start = start;
    kept.command = std::make_shared<ModuleObject>(QStringLiteral("arc"));
    kept.command->copyFrom(this, args);
}

/// The arc that a stop interrupts, with how far the tool has come on it.
void LumoExecutor::keepArc() {
    stopped_.reset();
    if (!run_->original(line_)) {
        return;
    }
    const auto queued = run_->arcs.find(line_);
    if (queued == run_->arcs.end()) {
        if (run_->rest && run_->restLine == line_) {
            stopped_ = run_->rest;  // stopped before the rest was queued
        }
        return;
    }
    const std::optional<Arc> arc = queued->second.arc();
    if (!arc) {
        return;
    }
    constexpr double msPerS = 1000.0;
    const double seconds = double(mendo::Clock::current().elapsedMs() - awaitedSinceMs_) / msPerS;
    const double expected = queued->second.from + queued->second.speedMPerS() * seconds / arc->radiusM();
    StoppedArc stopped;
    stopped.statement = run_->original(line_);
    stopped.queued = queued->second;
    stopped.reached =
        arc->angleOnTheWay(Position::of(kordservice()->get(nullptr, key::posture, field::trans)),
                           queued->second.from, std::min(expected, arc->total()));
    stopped.points = pointsOf(run_->program.statement(line_));
    stopped_ = stopped;
}

/// Decides before the laser may open whether the rest of a stopped arc can be run from where the tool stands.
/// If not, all of it is run, dark.
void LumoExecutor::takeUpArc(Run& run, int line) {
    StoppedArc rest = *stopped_;
    const std::optional<Arc> arc = rest.queued.arc();
    const Position tool = Position::of(kordservice()->get(nullptr, key::posture, field::trans));
    rest.reached = arc ? arc->angleNear(tool, rest.queued.from, rest.reached) : 0.0;
    constexpr double nearM = 0.002;
    if (!arc || rest.points != pointsOf(run.program.statement(line)) ||
        distance(tool, arc->at(rest.reached)) > nearM) {
        setWeldFlag(false);
        return;
    }
    run.rest = rest;
    run.restLine = line;
}

/// Queues what is left of the arc that the run takes up. False for any other statement. Where nothing is left
/// nothing is queued.
bool LumoExecutor::queueRest(ModuleObject* stmt) {
    const int line = stmt->indexInPmobj();
    if (!run_ || !run_->rest || run_->restLine != line || !run_->program.holds(stmt)) {
        return false;
    }
    const StoppedArc rest = *std::exchange(run_->rest, std::nullopt);
    const Arc arc = *rest.queued.arc();
    ModuleObject args(QStringLiteral("tmp"));
    if (!rest.queued.fillRest(&args, arc, rest.reached)) {
        return true;
    }
    setTrajectory(&args, stmt);
    QueuedArc& kept = run_->arcs[line];
    kept = rest.queued;
    kept.from = rest.reached;
    queueMotion(stmt, command::moveC, &args);
    return true;
}

void LumoExecutor::handleMove(const QString& type, int code) {
    logW() << "LumoExecutor::handleMove move" << type << code;
    if (outstanding() == 0) {
        logW() << "unexpected move result!";
        return;
    }
    const int motion = settle(code);
    if (motions_.at(motion).zoneEnded) {
        logW() << "ignore move result!";
        zoneReached = false;
        if (code != 0) {
            failRun(code);  // told also when the run is over
        }
        return;
    }
    if (motion == awaited_) {
        waiter_.end(WaitEnd::Result, code);
    }
}

int LumoExecutor::settle(int code) {
    const int motion = settled_++;
    motions_[motion].settled = true;
    motions_[motion].code = code;
    return motion;
}

void LumoExecutor::forgetMotions() {
    motions_.clear();
    settled_ = 0;
    zoneReached = false;
}

bool LumoExecutor::IsLastMoveBeforeStop(ModuleObject* stmt, const QString& caller) const {
    if (caller == QLatin1String("runOnce")) {
        return false;
    }
    for (ModuleObject* next = stmt->nextBmobj(); !next->isNull(); next = next->nextBmobj()) {
        const QString type = next->c(field::type, false)->getString(QString());
        if (type == statement::close) {
            return true;
        }
        if (type == statement::open || isMoveStatement(next)) {
            return false;
        }
    }
    return false;
}

int LumoExecutor::waitMoveing(ModuleObject* stmt, const QString& caller) {
    const int motion = run_ && run_->program.holds(stmt) ? run_->motionOfLine.at(stmt->indexInPmobj()) : -1;
    if (motion < 0 || motion >= motions_.size()) {
        return 0;  // nothing was queued for it
    }
    if (!IsLastMoveBeforeStop(stmt, caller)) {
        return awaitMotion(motion, line_);
    }
    if (motions_.at(motion).settled) {
        return motions_.at(motion).code;
    }
    awaited_ = motion;
    awaitedSinceMs_ = mendo::Clock::current().elapsedMs();
    const int code = waitZone(stmt);
    awaited_ = -1;
    return code;
}

int LumoExecutor::awaitMotion(int motion, int line) {
    if (motions_.at(motion).settled) {
        return motions_.at(motion).code;
    }
    awaited_ = motion;
    awaitedSinceMs_ = mendo::Clock::current().elapsedMs();
    // Ended by the motion's result, a pause or an emergency stop.
    const int code = motionCode(waiter_.run(WaitKind::Move, QString::number(line), -1));
    awaited_ = -1;
    return code;
}

int LumoExecutor::motionCode(WaitEnd end) {
    if (end == WaitEnd::Quit) {
        quit();
    }
    return end == WaitEnd::Result ? waiter_.resultCode() : 0;
}

int LumoExecutor::waitZone(ModuleObject* stmt) {
    const QString type = stmt->c(field::type, false)->getString(QString());
    const double radiusM = stmt->hasCmobj(field::zone, false)
                               ? stmt->c(field::zone, false)->getDouble(0.0) / mmPerM
                               : kordservice()->get(this, key::defaultZone)->getDouble(0.0);
    arcFirstReached = false;
    arcSecondReached = false;
    ModuleObject circleStart(QStringLiteral("trans_cc"));
    circleStart.copyFrom(this, kordservice()->get(this, key::posture, field::trans), true, false);
    passedBefore(stmt, &circleStart);
    logD() << "target: " << asJson(stmt->r(QStringLiteral("point.trans"))) << ", zone: " << radiusM;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this,
            [this, stmt, &type, radiusM, &circleStart] { testZone(stmt, type, radiusM, &circleStart); });
    poll.start(zonePollMs);
    // Ended by the tool entering the zone, the motion's result, a pause or an emergency stop.
    return motionCode(waiter_.run(WaitKind::Zone, QString::number(line_), -1));
}

/// An arc that was taken up in the middle: the tool does not come past the points again that it has passed,
/// and a circle still ends where it began.
void LumoExecutor::passedBefore(const ModuleObject* stmt, ModuleObject* circleStart) {
    const auto queued = run_->arcs.find(stmt->indexInPmobj());
    if (queued == run_->arcs.end() || !(queued->second.from > 0.0)) {
        return;
    }
    const std::optional<Arc> arc = queued->second.arc();
    const double from = queued->second.from;
    if (statementType(stmt) == statement::moveC) {
        const Position via = Position::of(stmt->c(field::point)->c(field::trans));
        arcFirstReached = arc->angleNear(via, 0.0, arc->total() / 2) <= from;
        return;
    }
    const Position& start = queued->second.start;
    arcFirstReached = arc->legAt(from) >= 1;
    arcSecondReached = arc->legAt(from) >= 2;
    circleStart->set(this, mIndex(0), start.x)->set(this, mIndex(1), start.y)->set(this, mIndex(2), start.z);
}

void LumoExecutor::testZone(ModuleObject* stmt, const QString& type, double radiusM,
                            const ModuleObject* circleStart) {
    if (!waiter_.waitsFor(WaitKind::Zone)) {
        return;
    }
    const bool isArc = type == statement::moveC;
    const bool isCircle = type == statement::moveCC;
    const ModuleObject* target = stmt->r(QStringLiteral("point.trans"));
    if (arcSecondReached) {
        target = circleStart;
    } else if (arcFirstReached) {
        target = stmt->r(QStringLiteral("point1.trans"));
    }
    const ModuleObject* const current = kordservice()->get(this, key::posture, field::trans);
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
    const bool named = isArc || isCircle || type == statement::moveL;
    const QString line = QStringLiteral("enter zone! %1: ").arg(named ? type : QString());
    const QString place = asJson(current);
    zoneReached = true;
    motions_[awaited_].zoneEnded = true;
    waiter_.end(WaitEnd::Zone);
    logE() << line << place;  // last: who reads along may pause
}

void LumoExecutor::storeCurrentMoveData(ModuleObject* stmt, const QString& type) {
    m(key::currentMoveType)->setValue(this, type);
    m(key::currentStartPoint)->copyFrom(this, kordservice()->get(this, key::posture), true, false);
    if (type == statement::moveJ || type == statement::moveL || type == statement::moveC ||
        type == statement::moveCC) {
        m(key::currentProgram)->append(this, type)->copyFrom(this, stmt, true, false);
    }
}
