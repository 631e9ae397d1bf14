#include "simulator/motionqueue.h"

#include "mendo/clock.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

constexpr double braking = 4.0;  // m/s²
constexpr double mmPerM = 1000;
constexpr int tickMs = 10;
constexpr int resultGapMs = 1;

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

/// The first whole millisecond at or after a time.
qint64 wholeMs(double seconds) {
    return qint64(std::ceil(seconds * 1000 - 1e-6));
}

}  // namespace

bool MotionQueue::Batch::hasMarkToPass() const {
    return next + (plan.failsAtEnd() ? 1 : 0) < plan.marks().size();
}

double MotionQueue::Brake::seconds() const {
    return speed / braking;
}

double MotionQueue::Brake::at(double time) const {
    const double t = std::min(std::max(time, 0.0), seconds());
    return s + speed * t - braking * t * t / 2;
}

MotionQueue::MotionQueue(const Arm& arm, QObject* parent, const Latency& latency)
    : QObject(parent), arm_(arm), latency_(latency), posture_{arm.forward(arm.home()), arm.home()} {
    tick_.setInterval(latency.periodMs > 0 ? latency.periodMs : tickMs);
    tick_.setTimerType(Qt::PreciseTimer);
    connect(&tick_, &QTimer::timeout, this, &MotionQueue::ticked);
    event_.setSingleShot(true);
    event_.setTimerType(Qt::PreciseTimer);
    connect(&event_, &QTimer::timeout, this, &MotionQueue::advance);
}

MotionQueue::~MotionQueue() = default;

// --- Orders --------------------------------------------------------------------------------------

void MotionQueue::add(MotionCommand motion) {
    waiting_.push_back(std::move(motion));
}

void MotionQueue::release(int refusal) {
    if (waiting_.empty()) {
        return;
    }
    const bool isJog = waiting_.front().id == jogId;
    if (refusal == MotionDone && nextCode_ != MotionDone && !isJog) {
        refusal = nextCode_;
        nextCode_ = MotionDone;
    }
    if (refusal != MotionDone) {
        waiting_.front().refusal = refusal;
    }
    const bool standing = batches_.empty();
    MotionPlan plan(arm_, endPosture(), std::move(waiting_), latency_.cornerMmPerS2 / mmPerM);
    waiting_.clear();
    batches_.push_back({std::move(plan)});
    if (standing) {
        startBatch();
    }
    scheduleNext();
}

void MotionQueue::stop() {
    std::optional<ActiveMotion> current = activeMotion();
    if (brake_ && brake_->failure) {
        current = ActiveMotion{brake_->failure->id, brake_->failure->kind};
        brake_->failure.reset();
    }
    const std::vector<int> queued = takeQueued();
    if (moving() && !brake_) {
        beginBrake({});
    }
    if (current) {
        emit stopped(current->id, current->kind);
    }
    drop(queued);
}

void MotionQueue::fail(int code) {
    const std::optional<ActiveMotion> current = activeMotion();
    if (!current || current->id == jogId) {
        nextCode_ = code;
        return;
    }
    const std::vector<int> queued = takeQueued();
    beginBrake(MotionPlan::Failure{current->id, code, current->kind, {}});
    drop(queued);
}

std::optional<MotionQueue::ActiveMotion> MotionQueue::activeMotion() const {
    if (batches_.empty() || brake_ || batches_.front().next >= batches_.front().plan.marks().size()) {
        return {};
    }
    const Batch& front = batches_.front();
    return ActiveMotion{front.plan.marks()[front.next].id, front.plan.kind(front.next)};
}

/// Forgets every motion after the current one and returns their ids, in order.
std::vector<int> MotionQueue::takeQueued() {
    std::vector<int> ids;
    for (size_t i = 0; i < batches_.size(); ++i) {
        const MotionPlan& plan = batches_[i].plan;
        const bool front = i == 0;
        if (front && brake_) {
            continue;
        }
        for (size_t k = front ? batches_[i].next + 1 : 0; k < plan.marks().size(); ++k) {
            ids.push_back(plan.marks()[k].id);
        }
        if (plan.failure().code != MotionDone) {
            if (!plan.failsAtEnd()) {  // then it is one of the marks
                ids.push_back(plan.failure().id);
            }
            ids.insert(ids.end(), plan.failure().dropped.begin(), plan.failure().dropped.end());
        }
    }
    for (const MotionCommand& motion : waiting_) {
        ids.push_back(motion.id);
    }
    if (batches_.size() > 1) {
        batches_.erase(batches_.begin() + 1, batches_.end());
    }
    waiting_.clear();
    return ids;
}

void MotionQueue::drop(const std::vector<int>& ids) {
    for (const int id : ids) {
        emit dropped(id);
    }
}

// --- Where the arm is ----------------------------------------------------------------------------

MotionQueue::Posture MotionQueue::posture() const {
    return batches_.empty() ? posture_ : batches_.front().plan.at(position());
}

double MotionQueue::travelled() const {
    return batches_.empty() ? travelled_ : travelled_ + batches_.front().plan.travelled(position());
}

/// Where the arm will be after the released motions.
MotionQueue::Posture MotionQueue::endPosture() const {
    if (batches_.empty()) {
        return posture_;
    }
    if (brake_ && batches_.size() == 1) {
        return batches_.front().plan.at(brake_->at(brake_->seconds()));
    }
    return batches_.back().plan.end();
}

/// The path length so far in the current batch.
double MotionQueue::position() const {
    if (brake_) {
        return brake_->at(double(nowMs() - brake_->startMs) / 1000);
    }
    const Batch& front = batches_.front();
    return front.plan.profile().at(double(nowMs() - front.startMs) / 1000).s;
}

// --- In time -------------------------------------------------------------------------------------

void MotionQueue::startBatch() {
    Batch& front = batches_.front();
    front.startMs = nowMs() + latency_.startMs;
    if (!tick_.isActive()) {
        tick_.start();
    }
    if (!front.plan.marks().empty()) {
        emit started(front.plan.marks().front().id);
    }
}

/// Ends the current batch and starts the next one, if any.
void MotionQueue::finishFrontBatch(const Posture& posture, double s) {
    posture_ = posture;
    travelled_ += batches_.front().plan.travelled(s);
    batches_.pop_front();
    brake_.reset();
    if (!batches_.empty()) {
        startBatch();
    } else {
        tick_.stop();
    }
}

void MotionQueue::beginBrake(const std::optional<MotionPlan::Failure>& failure) {
    const Batch& front = batches_.front();
    const qint64 now = nowMs();
    const SpeedProfile::Point point = front.plan.profile().at(double(now - front.startMs) / 1000);
    brake_ = Brake{now, point.s, point.speed, failure};
    scheduleNext();
}

std::optional<qint64> MotionQueue::nextDue() const {
    if (batches_.empty()) {
        return {};
    }
    if (brake_) {
        const qint64 atRest = brake_->startMs + wholeMs(brake_->seconds());
        return brake_->failure ? std::max(atRest, lastResultMs_ + resultGapMs) : atRest;
    }
    const Batch& front = batches_.front();
    const auto& marks = front.plan.marks();
    const double time = front.next < marks.size() ? marks[front.next].time : front.plan.profile().duration();
    return std::max(
        {front.startMs + wholeMs(time), front.startMs + resultGapMs, lastResultMs_ + resultGapMs});
}

void MotionQueue::scheduleNext() {
    const auto due = nextDue();
    if (due) {
        event_.start(int(std::max<qint64>(*due - nowMs(), 0)));
    } else {
        event_.stop();
    }
}

void MotionQueue::advance() {
    const auto due = nextDue();
    if (!due || nowMs() < *due) {
        scheduleNext();  // fired early
    } else if (brake_) {
        endBrake();
    } else if (batches_.front().hasMarkToPass()) {
        passMark();
    } else {
        endFailed();
    }
}

void MotionQueue::passMark() {
    Batch& front = batches_.front();
    const ActiveMotion done = *activeMotion();
    const MotionPlan::Posture end = front.plan.end();
    const double length = front.plan.profile().length();
    const bool failing = front.plan.failure().code != MotionDone;
    ++front.next;
    lastResultMs_ = nowMs();
    emit passed(done.id);
    if (front.next < front.plan.marks().size()) {
        emit started(front.plan.marks()[front.next].id);
    } else if (!failing) {
        finishFrontBatch(end, length);
    }
    // Before the signal: a receiver may run a nested event loop.
    scheduleNext();
    emit finished(done.id, done.kind, MotionDone);
}

void MotionQueue::endBrake() {
    const MotionPlan& plan = batches_.front().plan;
    const double s = brake_->at(brake_->seconds());
    const std::optional<MotionPlan::Failure> failure = brake_->failure;
    Posture posture = plan.at(s);
    // On the path the joints are interpolated between knots; at rest they must fit the pose.
    if (const auto exact = arm_.inverse(posture.pose, posture.joints)) {
        posture.joints = *exact;
    }
    std::vector<int> queued;
    if (failure) {
        queued = takeQueued();
    }
    finishFrontBatch(posture, s);
    scheduleNext();
    if (failure) {
        report(*failure, queued);
    } else {
        emit braked();
    }
}

/// The current batch has reached the last target before the failing motion.
void MotionQueue::endFailed() {
    const MotionPlan& plan = batches_.front().plan;
    const MotionPlan::Failure failure = plan.failure();
    const MotionPlan::Posture end = plan.end();
    const double length = plan.profile().length();
    std::vector<int> queued = takeQueued();
    queued.erase(std::remove(queued.begin(), queued.end(), failure.id), queued.end());
    finishFrontBatch(end, length);
    scheduleNext();
    report(failure, queued);
}

void MotionQueue::report(const MotionPlan::Failure& failure, const std::vector<int>& queued) {
    lastResultMs_ = nowMs();
    emit failed(failure.id);
    drop(queued);
    emit finished(failure.id, failure.kind, failure.code);
}

}  // namespace sim
