#include "app/progress/runestimate.h"

#include "program/dryspeed.h"
#include "program/laserplan.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace app {

namespace {

using prog::Statement;
using prog::StatementType;
using prog::TaughtPoint;

constexpr int rampStepMs = 20;  // does not change how long a ramp takes
constexpr qint64 inputPollMs = 100;
constexpr qint64 zonePollMs = 50;

/// The first whole millisecond at or after a time.
qint64 wholeMs(double seconds) {
    return qint64(std::ceil(seconds * 1000 - 1e-6));
}

sim::Pose poseAt(const prog::Position& position, const prog::Orientation& rot) {
    return {{position.x, position.y, position.z}, rot};
}

sim::Pose poseOf(const TaughtPoint& point) {
    return poseAt(point.trans, point.rot);
}

}  // namespace

RunEstimate::RunEstimate(prog::RunProgram program, std::vector<prog::LaserParams> sets, const RunStart& start,
                         const sim::Arm& arm)
    : program_(std::move(program)),
      sets_(std::move(sets)),
      start_(start),
      arm_(arm),
      lines_(size_t(program_.lineCount())),
      next_(std::max(start.line, 0)),
      weldOpen_(start.inWeld),
      set_(start.set),
      target_(start.posture.pose),
      posture_(start.posture) {
    if (weldOpen_ && start_.permitted && next_ < program_.lineCount()) {
        const int open = program_.openBefore(next_);
        set_ = open < 0 ? set_ : program_.statement(open).set;
        nowMs_ = openingMs();
        lines_[size_t(next_)].ms = nowMs_;
    }
}

bool RunEstimate::advance(int lines) {
    const int end = start_.step ? std::min(start_.line + 1, program_.lineCount()) : program_.lineCount();
    for (; lines > 0 && next_ < end && !failed_; ++next_, --lines) {
        const qint64 begunMs = nowMs_;
        if (program_.isExecuted(next_)) {
            passLine(next_);
        }
        lines_[size_t(next_)].ms += nowMs_ - begunMs;
    }
    return failed_ || next_ >= end;
}

void RunEstimate::passLine(int line) {
    const Statement statement = program_.statement(line);
    if (statement.moves) {
        if (line >= batchTo_) {
            queueBatch(line);
        }
        waitForMove(line);
        return;
    }
    switch (statement.type) {
        case StatementType::Param:
            set_ = statement.set;
            break;
        case StatementType::Open:
            if (start_.permitted) {
                set_ = statement.set;
                nowMs_ += openingMs();
                weldOpen_ = true;
            }
            break;
        case StatementType::Close:
            if (start_.permitted) {
                nowMs_ += closingMs();
                weldOpen_ = false;
            }
            break;
        case StatementType::WaitDI:
            nowMs_ += inputPollMs;
            lines_[size_t(line)].waitsForInput = true;
            break;
        case StatementType::Delay:
            nowMs_ += statement.delayMs;
            break;
        default:
            break;
    }
}

prog::LaserParams RunEstimate::params() const {
    return set_ >= 0 && size_t(set_) < sets_.size() ? sets_[size_t(set_)] : prog::LaserParams();
}

qint64 RunEstimate::openingMs() const {
    return durationMs(prog::openingPlan(params(), rampStepMs));
}

qint64 RunEstimate::closingMs() const {
    return durationMs(prog::closingPlan(params(), rampStepMs, prog::Closing::Awaited));
}

/// A long batch is cut: the halt that this adds is short.
void RunEstimate::queueBatch(int line) {
    constexpr int mostPlanned = 40;
    const int end = start_.step ? line + 1 : std::min(program_.batchEnd(line), line + mostPlanned);
    std::vector<sim::MotionCommand> motions;
    batchFrom_ = batchTo_ = line;
    while (batchTo_ < end) {
        motions.push_back(motionOf(batchTo_++));
    }
    plan_ = std::make_unique<sim::MotionPlan>(arm_, posture_, std::move(motions));
    posture_ = plan_->end();
    target_ = posture_.pose;
    batchMs_ = std::max(nowMs_, robotFreeMs_);
    robotFreeMs_ = batchMs_ + wholeMs(plan_->profile().duration());
}

sim::MotionCommand RunEstimate::motionOf(int line) {
    using Kind = sim::MotionCommand::Kind;
    const Statement statement = program_.statement(line);
    sim::MotionCommand motion;
    motion.id = line;
    const bool isDryWeld = start_.dryPercent > 0.0 && program_.weldOf(line) >= 0;
    motion.speed = program_.speedMmPerS(line, weldOpen_ || isDryWeld) / prog::mmPerM;
    if (isDryWeld) {
        const double own = statement.speedMmPerS / prog::mmPerM;
        motion.speed = prog::dryMmPerS(motion.speed, own, start_.dryPercent);
    }
    motion.zone = std::max(0.0, statement.zoneMm.value_or(0) / prog::mmPerM);
    if (!(motion.speed > 0)) {
        motion.refusal = sim::NoSpeed;
    }
    if (statement.type == StatementType::MoveJ) {
        motion.kind = Kind::Joint;
        motion.joints = statement.point.joints;
        if (int(motion.joints.size()) == arm_.axes()) {
            target_ = arm_.forward(motion.joints);
        } else {
            motion.refusal = sim::NoTarget;
        }
        return motion;
    }
    motion.kind = statement.type == StatementType::MoveL ? Kind::Line : Kind::Arc;
    if (statement.type == StatementType::MoveCC) {
        addCircle(line, &motion);
        return motion;
    }
    target_ = poseOf(motion.kind == Kind::Line ? statement.point : statement.point1);
    motion.poses = {{poseOf(statement.point), target_}};
    return motion;
}

/// Once round in two halves takes as long as in the robot's three thirds.
void RunEstimate::addCircle(int line, sim::MotionCommand* motion) {
    const auto before = program_.targetBefore(line);
    const auto& trans = start_.posture.pose.trans;
    const prog::Position start =
        before ? program_.point(*before).trans : prog::Position{trans[0], trans[1], trans[2]};
    const prog::Position p1 = program_.statement(line).point.trans,
                         p2 = program_.statement(line).point1.trans;
    const auto circle = prog::Arc::circle(start, p1, p2);
    if (!circle || circleFault(start, p1, p2) != prog::CircleFault::None) {
        motion->refusal = sim::NoCircle;
        return;
    }
    const auto quarter = [&](int n) { return poseAt(circle->at(circle->total() * n / 4), target_.rot); };
    motion->poses = {{quarter(1), quarter(2)}, {quarter(3), quarter(4)}};
}

void RunEstimate::waitForMove(int line) {
    const size_t mark = size_t(line - batchFrom_);
    if (mark >= plan_->marks().size()) {
        failed_ = true;
        return;
    }
    qint64 doneMs = batchMs_ + wholeMs(plan_->marks()[mark].time);
    // Arcs reach their zone too seldom to count on it.
    const StatementType type = program_.statement(line).type;
    const bool isStraight = type == StatementType::MoveJ || type == StatementType::MoveL;
    if (isStraight && !start_.step && program_.isLastBeforeClose(line)) {
        const qint64 entryMs = batchMs_ + zoneEntryMs(line);
        const qint64 polls = std::max<qint64>(1, (entryMs - nowMs_ + zonePollMs - 1) / zonePollMs);
        doneMs = std::min(doneMs, nowMs_ + polls * zonePollMs);
    }
    nowMs_ = std::max(nowMs_, doneMs);
}

/// When the tool comes as near to the target of a line as the zone is wide, from the batch's beginning.
qint64 RunEstimate::zoneEntryMs(int line) const {
    const std::optional<double> zoneMm = program_.statement(line).zoneMm;
    const double radius = zoneMm ? *zoneMm / prog::mmPerM : start_.defaultZoneM;
    const sim::SpeedProfile& profile = plan_->profile();
    const double end = profile.at(plan_->marks()[size_t(line - batchFrom_)].time).s;
    return wholeMs(profile.timeAt(radius > 0 ? std::max(0.0, end - radius) : end)) +
           (radius > 0 ? 0 : zonePollMs);
}

// --- The progress ---------------------------------------------------------------------------------

RunProgress::RunProgress(std::vector<LineEstimate> lines, int line, qint64 nowMs)
    : lines_(std::move(lines)),
      behindMs_(lines_.size()),
      inputBehind_(lines_.size()),
      line_(line),
      lineBegunMs_(nowMs) {
    bool input = false;
    for (size_t i = lines_.size(); i > 0; --i) {
        behindMs_[i - 1] = totalMs_;
        inputBehind_[i - 1] = input;
        totalMs_ += lines_[i - 1].ms;
        input = input || lines_[i - 1].waitsForInput;
    }
}

void RunProgress::beginLine(int line, qint64 nowMs) {
    if (line == line_ || line < 0 || size_t(line) >= lines_.size()) {
        return;
    }
    line_ = line;
    lineBegunMs_ = nowMs;
}

RunProgress::View RunProgress::at(qint64 nowMs) const {
    View view;
    if (line_ < 0 || size_t(line_) >= lines_.size()) {
        return view;
    }
    const LineEstimate& line = lines_[size_t(line_)];
    view.leftMs = behindMs_[size_t(line_)] + std::max<qint64>(0, line.ms - (nowMs - lineBegunMs_));
    view.fraction = totalMs_ > 0 ? double(totalMs_ - view.leftMs) / double(totalMs_) : 1;
    view.waits = line.waitsForInput;
    view.willWait = inputBehind_[size_t(line_)];
    return view;
}

}  // namespace app
