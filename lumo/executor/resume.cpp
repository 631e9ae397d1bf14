// Going on after a stop: what a stop keeps, the way back to its place, and what is left of an arc.

#include "executor/lumoexecutor.h"
#include "program/words.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtMath>

#include <algorithm>
#include <utility>

using namespace lumo;
using namespace prog;

namespace {

constexpr double mmPerM = 1000.0;

/// The taught points of a statement, to be compared.
QString pointsOf(const ModuleObject* stmt) {
    const QJsonArray points{stmt->c(field::point)->exportToJson(), stmt->c(field::point1)->exportToJson()};
    return QString::fromUtf8(QJsonDocument(points).toJson(QJsonDocument::Compact));
}

}  // namespace

/// A weld or an arc that was stopped goes on where it stopped: the tool goes back there, dark, and the laser
/// opens there. A line that does not lie in the weld that was left open goes dark.
void LumoExecutor::takeUp(Run& run, int line) {
    if (m(key::weldOpen)->getBool(false) && !run.inWeld) {
        setWeldFlag(false);
    }
    const bool ofArc = isStoppedArc(run.original(line)) && run.program.isExecuted(line);
    const bool reopens = run.inWeld && m(key::weldOpen)->getBool(false) && weldingPermitted();
    if (run.inWeld && !weldingPermitted()) {
        resume_.weldOpened(nullptr);  // from here on its seam is left dark: no later start may go on with it
    }
    if (!isAborted() && run.ofHandProgram() && mustGoBack(line, reopens || ofArc)) {
        goBack(run, line);
        if (!isAborted() && isAway()) {  // a controller that says too early that it is there
            pause();
            warn(tr("机器人正在运行中"));
        }
    }
    if (!isAborted() && ofArc) {
        takeUpArc(run, line);
    }
    if (!isAborted() && run.inWeld && m(key::weldOpen)->getBool(false)) {
        limitopenLaser(run.program.openBefore(line));
    }
}

void LumoExecutor::goBack(const Run& run, int line) {
    constexpr double jointStatementMmPerS = 50.0;
    const ModuleObject* const stmt = run.program.statement(line);
    double speed = stmt->c(field::speed, false)->getDouble(0.0);
    if (statementType(stmt) == statement::moveJ || !(speed > 0.0)) {
        speed = jointStatementMmPerS;
    }
    ModuleObject args(QStringLiteral("tmp"));
    args.append(this, field::point)->copyFrom(this, m(key::currentPausePoint), true, false);
    args.set(this, QStringLiteral("traj.speed"), speed / mmPerM, true)
        ->set(this, QStringLiteral("traj.zone"), 0.0, true);
    const int motion = motions_.size();
    queueMotion(nullptr, command::moveL, &args);
    if (!isAborted()) {
        kordservice()->command(this, command::enough, static_cast<const ModuleObject*>(nullptr));
    }
    if (isAborted()) {
        return;
    }
    const int code = awaitMotion(motion, line);
    if (!isAborted() && code != 0) {
        failRun(code);
    }
}

/// Whether a start of the hand program at this line goes on from the last stop: at its statement or, where
/// that was removed, at the line that has its number now.
bool LumoExecutor::isStopped(int line) const {
    if (!stopKept_ || m(key::currentPausePoint)->size() == 0) {
        return false;
    }
    const bool isThere = stoppedStatement_ && stoppedStatement_->pmobj() == m(key::program);
    return line == (isThere ? stoppedStatement_->indexInPmobj() : m(key::currentLine)->getInt(-1));
}

/// Whether the last stop interrupted this statement, and on an arc.
bool LumoExecutor::isStoppedArc(const ModuleObject* statement) const {
    return stopped_ && statement && statement == stoppedStatement_ && isStopped(statement->indexInPmobj());
}

/// Whether a run from a line would light the laser where the tool stands, before it moves.
bool LumoExecutor::opensBeforeItMoves(const ModuleObject* program, int line) {
    for (const ModuleObject* stmt = program->c(line); !stmt->isNull(); stmt = stmt->nextBmobj()) {
        const bool isOpening = statementType(stmt) == statement::open;
        if (isExecutedStatement(stmt) && (isOpening || isMoveStatement(stmt))) {
            return isOpening;
        }
    }
    return false;
}

/// Whether the tool left the place of the last stop, and a run from this line needs it there.
bool LumoExecutor::mustGoBack(int line, bool goesOnThere, double* distanceMm) const {
    return (goesOnThere || (isStopped(line) && opensBeforeItMoves(m(key::program), line))) &&
           isAway(distanceMm);
}

/// Whether the tool stands elsewhere than where the last stop was. Where nothing was kept it does not.
bool LumoExecutor::isAway(double* distanceMm) {
    constexpr double nearMm = 2.0;
    const double nearRad = qDegreesToRadians(2.0);
    const ModuleObject* const stop = m(key::currentPausePoint);
    const ModuleObject* const tool = kordservice()->get(nullptr, key::posture);
    if (!stop->hasCmobj(field::trans)) {
        return false;
    }
    const double away =
        mmPerM * prog::distance(positionOf(stop->c(field::trans)), positionOf(tool->c(field::trans)));
    if (distanceMm) {
        *distanceMm = away;
    }
    return away > nearMm ||
           (stop->hasCmobj(field::rot) && turnBetween(stop->c(field::rot), tool->c(field::rot)) > nearRad);
}

LumoExecutor::Outlook LumoExecutor::outlook(int line) const {
    Outlook outlook;
    ModuleObject* const stmt = m(key::program)->c(line);
    outlook.reopens = m(key::weldOpen)->getBool(false) && resume_.liesInWeld(line) && weldingPermitted();
    const bool ofArc = !stmt->isNull() && isStoppedArc(stmt) && isExecutedStatement(stmt);
    outlook.goesBack = mustGoBack(line, outlook.reopens || ofArc, &outlook.distanceMm);
    return outlook;
}

/// The resume data of a stop. One that interrupts no statement (on the way back, while idle, a second one)
/// leaves those of the stop before.
void LumoExecutor::keepStop() {
    if (!std::exchange(inStatement_, false)) {
        resume_.release();
        return;
    }
    if (!run_->isStep) {
        stopKept_ = run_->ofHandProgram();
        stoppedStatement_ = run_->original(line_);
        keepArc();
        resume_.hold(run_->original(line_));
    } else if (stopKept_ || m(key::weldOpen)->getBool(false)) {
        return;  // a step must not move the place where a stopped program goes on
    }
    // Last: who hears of it may stop once more, and finds the line kept.
    m(key::currentPausePoint)->copyFrom(this, kordservice()->get(this, key::posture), true, false);
}

// --- What is left of an arc -----------------------------------------------------------------------

/// Where the robot will be when the motion that is queued next begins.
prog::Position LumoExecutor::startOfNextMotion() const {
    if (outstanding() == 0 || !queuedLast_) {
        return positionOf(kordservice()->get(nullptr, key::posture, field::trans));
    }
    const auto arc = run_->arcs.find(queuedLast_->indexInPmobj());
    const QString type = statementType(queuedLast_);
    if (type == statement::moveCC && arc != run_->arcs.end()) {
        return arc->second.start;
    }
    const QLatin1String end = type == statement::moveC ? field::point1 : field::point;
    return positionOf(queuedLast_->c(end)->c(field::trans));
}

void LumoExecutor::keepQueuedArc(ModuleObject* stmt, const prog::Position& start, const ModuleObject* args) {
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
    const std::optional<prog::Arc> arc = queued->second.arc();
    if (!arc) {
        return;
    }
    constexpr double msPerS = 1000.0;
    const double seconds = double(mendo::Clock::current().elapsedMs() - awaitedSinceMs_) / msPerS;
    const double expected = queued->second.from + queued->second.speedMPerS() * seconds / arc->radiusM();
    StoppedArc stopped;
    stopped.queued = queued->second;
    stopped.reached = arc->angleOnTheWay(positionOf(kordservice()->get(nullptr, key::posture, field::trans)),
                                         queued->second.from, std::min(expected, arc->total()));
    stopped.points = pointsOf(run_->program.statement(line_));
    stopped_ = stopped;
}

/// Decides before the laser may open whether the rest of a stopped arc can be run from where the tool stands.
/// If not, all of it is run, dark.
void LumoExecutor::takeUpArc(Run& run, int line) {
    StoppedArc rest = *stopped_;
    const std::optional<prog::Arc> arc = rest.queued.arc();
    const prog::Position tool = positionOf(kordservice()->get(nullptr, key::posture, field::trans));
    rest.reached = arc ? arc->angleNear(tool, rest.queued.from, rest.reached) : 0.0;
    constexpr double nearM = 0.002;
    if (!arc || rest.points != pointsOf(run.program.statement(line)) ||
        prog::distance(tool, arc->at(rest.reached)) > nearM) {
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
    const prog::Arc arc = *rest.queued.arc();
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

/// An arc that was taken up in the middle: the tool does not come past the points again that it has passed,
/// and a circle still ends where it began.
void LumoExecutor::passedBefore(const ModuleObject* stmt, ModuleObject* circleStart) {
    const auto queued = run_->arcs.find(stmt->indexInPmobj());
    if (queued == run_->arcs.end() || !(queued->second.from > 0.0)) {
        return;
    }
    const std::optional<prog::Arc> arc = queued->second.arc();
    const double from = queued->second.from;
    if (statementType(stmt) == statement::moveC) {
        const prog::Position via = positionOf(stmt->c(field::point)->c(field::trans));
        arcFirstReached = arc->angleNear(via, 0.0, arc->total() / 2) <= from;
        return;
    }
    const prog::Position& start = queued->second.start;
    arcFirstReached = arc->legAt(from) >= 1;
    arcSecondReached = arc->legAt(from) >= 2;
    circleStart->set(this, mIndex(0), start[0])
        ->set(this, mIndex(1), start[1])
        ->set(this, mIndex(2), start[2]);
}
