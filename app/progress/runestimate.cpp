#include "app/progress/runestimate.h"

#include "mendo/convert.h"
#include "program/geometry.h"

#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

using Stand = sim::MotionPlan::Posture;

constexpr double mmPerM = 1000;
constexpr qint64 inputPollMs = 100;
constexpr qint64 zonePollMs = 50;
constexpr int mostPlanned = 40;  // moves at once

/// The first whole millisecond at or after a time.
qint64 wholeMs(double seconds) {
    return qint64(std::ceil(seconds * 1000 - 1e-6));
}

double number(const QJsonValue& value) {
    return mendo::toDouble(value.toVariant(), 0);
}

int milliseconds(const QJsonObject& set, const char* name) {
    return std::max(0, int(number(set.value(QLatin1String(name)))));
}

QString typeOf(const QJsonObject& statement) {
    return statement.value(QLatin1String("type")).toString();
}

bool isMove(const QJsonObject& statement) {
    return typeOf(statement).startsWith(QLatin1String("move"));
}

bool isExecuted(const QJsonObject& statement) {
    return mendo::toBool(statement.value(QLatin1String("execute")).toVariant(), true);
}

sim::Pose poseOf(const QJsonValue& point) {
    sim::Pose pose;
    for (const auto& part : {std::make_pair("trans", &pose.trans), std::make_pair("rot", &pose.rot)}) {
        const QJsonArray values = point.toObject().value(QLatin1String(part.first)).toArray();
        for (int i = 0; i < 3; ++i) {
            (*part.second)[size_t(i)] = number(values.at(i));
        }
    }
    return pose;
}

sim::Joints jointsOf(const QJsonValue& point) {
    sim::Joints joints;
    const QJsonArray values = point.toObject().value(QLatin1String("near")).toArray();
    for (const QJsonValue& value : values) {
        joints.push_back(number(value));
    }
    return joints;
}

prog::Position placeOf(const sim::Pose& pose) {
    return {pose.trans[0], pose.trans[1], pose.trans[2]};
}

sim::Pose poseAt(const prog::Position& place, const sim::Pose& turned) {
    return {{place.x, place.y, place.z}, turned.rot};
}

}  // namespace

/// Goes through a program as a run does, with two clocks: that of the run and that of the robot, which
/// may still be moving when the run goes on at the entrance of a zone.
struct RunEstimate::Walk {
    Walk(const QJsonArray& statements, const QJsonArray& sets, const RunStart& start, const sim::Arm& arm);
    bool advance(int lines);

    int count() const { return int(statements_.size()); }
    const QJsonObject& at(int line) const { return statements_[size_t(line)]; }
    QJsonObject set() const { return sets_.at(set_).toObject(); }
    void passLine(int line);
    void resumeWeld(int line);
    qint64 openingMs() const;
    qint64 closingMs() const;
    void queueBatch(int line);
    sim::MotionCommand motionOf(int line);
    double speedOf(int line) const;
    bool endsWeld(int line) const;
    void waitForMove(int line);
    qint64 zoneEntryMs(size_t mark) const;

    std::vector<QJsonObject> statements_;
    std::vector<int> openBefore_;  ///< the nearest start of welding before each line, -1: none
    const QJsonArray sets_;
    const RunStart start_;
    const sim::Arm& arm_;
    std::vector<LineEstimate> lines_;

    int next_;  ///< line
    qint64 nowMs_ = 0;
    bool weldOpen_;
    int set_;
    // The batch queued last.
    int batchFrom_ = 0, batchTo_ = 0;  ///< lines, the second one behind it
    qint64 batchMs_ = 0;               ///< when it begins
    qint64 robotFreeMs_ = 0;
    sim::Pose target_;  ///< of the move laid last
    Stand stand_;
    std::unique_ptr<sim::MotionPlan> plan_;
    bool failed_ = false;
};

RunEstimate::Walk::Walk(const QJsonArray& statements, const QJsonArray& sets, const RunStart& start,
                        const sim::Arm& arm)
    : sets_(sets),
      start_(start),
      arm_(arm),
      lines_(size_t(statements.size())),
      next_(std::max(start.line, 0)),
      weldOpen_(start.weldOpen),
      set_(start.set),
      target_(start.stand.pose),
      stand_(start.stand) {
    int open = -1;
    for (const QJsonValue& statement : statements) {
        openBefore_.push_back(open);
        statements_.push_back(statement.toObject());
        if (typeOf(statements_.back()) == QLatin1String("open")) {
            open = count() - 1;
        }
    }
}

bool RunEstimate::Walk::advance(int lines) {
    const int end = start_.step ? std::min(start_.line + 1, count()) : count();
    for (; lines > 0 && next_ < end && !failed_; ++next_, --lines) {
        const qint64 begun = nowMs_;
        if (next_ == start_.line && weldOpen_ && !start_.step && start_.permitted) {
            resumeWeld(next_);
        }
        if (isExecuted(at(next_))) {
            passLine(next_);
        }
        lines_[size_t(next_)].ms = nowMs_ - begun;
    }
    return failed_ || next_ >= end;
}

void RunEstimate::Walk::passLine(int line) {
    const QJsonObject& statement = at(line);
    const QString type = typeOf(statement);
    if (isMove(statement)) {
        if (line >= batchTo_) {
            queueBatch(line);
        }
        waitForMove(line);
        return;
    }
    if (type == QLatin1String("param") || (type == QLatin1String("open") && start_.permitted)) {
        set_ = int(number(statement.value(QLatin1String("index"))));
    }
    if (type == QLatin1String("delay")) {
        nowMs_ += milliseconds(statement, "delaytime");
    } else if (type == QLatin1String("waitDI")) {
        nowMs_ += inputPollMs;
        lines_[size_t(line)].waitsForInput = true;
    } else if (type == QLatin1String("open") && start_.permitted) {
        nowMs_ += openingMs();
        weldOpen_ = true;
    } else if (type == QLatin1String("close") && start_.permitted) {
        nowMs_ += closingMs();
        weldOpen_ = false;
    }
}

void RunEstimate::Walk::resumeWeld(int line) {
    const int open = openBefore_[size_t(line)];
    if (open >= 0) {
        set_ = int(number(at(open).value(QLatin1String("index"))));
    }
    nowMs_ += openingMs();
}

/// Gas before the weld, and the dwell.
qint64 RunEstimate::Walk::openingMs() const {
    return milliseconds(set(), "delay_before_blow") + milliseconds(set(), "stay_time");
}

/// The ramp, the delay behind it, and gas after the weld.
qint64 RunEstimate::Walk::closingMs() const {
    return milliseconds(set(), "decrease_time") + milliseconds(set(), "close_delay") +
           milliseconds(set(), "delay_after_blow");
}

/// In a weld its start tells the speed, in m/s.
double RunEstimate::Walk::speedOf(int line) const {
    const int open = openBefore_[size_t(line)];
    const bool welds = weldOpen_ && open >= 0;
    return number(welds ? at(open).value(QLatin1String("weldspeed"))
                        : at(line).value(QLatin1String("speed"))) /
           mmPerM;
}

sim::MotionCommand RunEstimate::Walk::motionOf(int line) {
    using Kind = sim::MotionCommand::Kind;
    const QJsonObject& statement = at(line);
    const QString type = typeOf(statement);
    const QJsonValue point = statement.value(QLatin1String("point"));
    const QJsonValue point1 = statement.value(QLatin1String("point1"));
    const sim::Pose pose = poseOf(point);
    sim::MotionCommand motion;
    motion.id = line;
    motion.speed = speedOf(line);
    motion.zone = std::max(0.0, number(statement.value(QLatin1String("zone"))) / mmPerM);
    if (!(motion.speed > 0)) {
        motion.refusal = sim::NoSpeed;
    }
    if (type == QLatin1String("moveJ")) {
        motion.kind = Kind::Joint;
        motion.joints = jointsOf(point);
        if (int(motion.joints.size()) == arm_.axes()) {
            target_ = arm_.forward(motion.joints);
        } else {
            motion.refusal = sim::NoTarget;
        }
        return motion;
    }
    motion.kind = type == QLatin1String("moveL") ? Kind::Line : Kind::Arc;
    if (type != QLatin1String("moveCC")) {
        target_ = motion.kind == Kind::Line ? pose : poseOf(point1);
        motion.poses = {{pose, target_}};
        return motion;
    }
    // Once round in two halves takes as long as in the robot's three thirds.
    const prog::Position start = placeOf(target_), p1 = placeOf(pose), p2 = placeOf(poseOf(point1));
    const auto circle = prog::Arc::circle(start, p1, p2);
    if (!circle || circleFault(start, p1, p2) != prog::CircleFault::None) {
        motion.refusal = sim::NoCircle;
        return motion;
    }
    const auto quarter = [&circle](int n) { return circle->at(circle->total() * n / 4); };
    const sim::Pose half = poseAt(quarter(2), target_);
    motion.poses = {{poseAt(quarter(1), target_), half}, {poseAt(quarter(3), target_), target_}};
    return motion;
}

/// The moves from a line on, up to the next other statement or skipped line, are one motion. A long one is
/// cut: the halt that this adds is short.
void RunEstimate::Walk::queueBatch(int line) {
    std::vector<sim::MotionCommand> motions;
    batchFrom_ = batchTo_ = line;
    const int end = start_.step ? line + 1 : std::min(count(), line + mostPlanned);
    while (batchTo_ < end && isMove(at(batchTo_)) && isExecuted(at(batchTo_))) {
        motions.push_back(motionOf(batchTo_++));
    }
    plan_ = std::make_unique<sim::MotionPlan>(arm_, stand_, std::move(motions));
    stand_ = plan_->end();
    target_ = stand_.pose;
    batchMs_ = std::max(nowMs_, robotFreeMs_);
    robotFreeMs_ = batchMs_ + wholeMs(plan_->profile().duration());
}

/// Whether the next statement of laser or robot switches the laser off.
bool RunEstimate::Walk::endsWeld(int line) const {
    for (int i = line + 1; i < count() && !start_.step; ++i) {
        if (typeOf(at(i)) == QLatin1String("close")) {
            return true;
        }
        if (typeOf(at(i)) == QLatin1String("open") || isMove(at(i))) {
            return false;
        }
    }
    return false;
}

void RunEstimate::Walk::waitForMove(int line) {
    const size_t mark = size_t(line - batchFrom_);
    if (mark >= plan_->marks().size()) {
        failed_ = true;
        return;
    }
    qint64 done = batchMs_ + wholeMs(plan_->marks()[mark].time);
    if (endsWeld(line)) {
        // The zone is looked for in steps, arcs reach theirs too seldom to count on it.
        const QString type = typeOf(at(line));
        const qint64 entry = batchMs_ + zoneEntryMs(mark);
        const qint64 polls = std::max<qint64>(1, (entry - nowMs_ + zonePollMs - 1) / zonePollMs);
        if (type == QLatin1String("moveJ") || type == QLatin1String("moveL")) {
            done = std::min(done, nowMs_ + polls * zonePollMs);
        }
    }
    nowMs_ = std::max(nowMs_, done);
}

/// When the tool comes as near to the target as the zone is wide, from the batch's beginning.
qint64 RunEstimate::Walk::zoneEntryMs(size_t mark) const {
    const QJsonObject& statement = at(batchFrom_ + int(mark));
    const QJsonValue own = statement.value(QLatin1String("zone"));
    const double radius = own.isUndefined() ? start_.defaultZoneM : number(own) / mmPerM;
    const sim::SpeedProfile& profile = plan_->profile();
    const double end = profile.at(plan_->marks()[mark].time).s;
    return wholeMs(profile.timeAt(radius > 0 ? std::max(0.0, end - radius) : end)) +
           (radius > 0 ? 0 : zonePollMs);
}

// --- The estimate --------------------------------------------------------------------------------

RunEstimate::RunEstimate(const QJsonArray& statements, const QJsonArray& sets, const RunStart& start,
                         const sim::Arm& arm)
    : walk_(std::make_unique<Walk>(statements, sets, start, arm)) {}

RunEstimate::~RunEstimate() = default;

bool RunEstimate::advance(int lines) {
    return walk_->advance(lines);
}

const std::vector<LineEstimate>& RunEstimate::lines() const {
    return walk_->lines_;
}

}  // namespace app
