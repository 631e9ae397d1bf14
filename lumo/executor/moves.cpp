// Moves: the commands of the four move statements, and waiting for their results.

#include "executor/circle.h"
#include "executor/lumoexecutor.h"
#include "program/words.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

using namespace lumo;
using namespace prog;

namespace {

constexpr int zonePollMs = 50;
constexpr double mmPerM = 1000.0;

/// An impossible circle at queueing is treated like the controller's motion error of the same kind.
constexpr int noCircleCode = -3;

QString asJson(const ModuleObject* list) {
    return QString::fromUtf8(
        QJsonDocument(list->exportToJson(true).toArray()).toJson(QJsonDocument::Compact));
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
    keepQueuedArc(stmt, positionOf(start->c(field::trans)), &args);
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
