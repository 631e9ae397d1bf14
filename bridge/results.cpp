#include "bridge/results.h"

#include "mendo/clock.h"

namespace bridge {

namespace {

constexpr int gapMs = 1;
constexpr size_t kept = 256;  // records of motions that are over, to know a late result

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

}  // namespace

Results::Results(const Options& options, QObject* parent) : QObject(parent), options_(options) {
    next_.setSingleShot(true);
    next_.setTimerType(Qt::PreciseTimer);
    connect(&next_, &QTimer::timeout, this, &Results::deliver);
}

// --- Motions -------------------------------------------------------------------------------------

int Results::add(Motion::Kind kind) {
    trim();
    records_.push_back({kind});
    ++waiting_;
    return firstId_ + int(records_.size()) - 1;
}

void Results::trim() {
    while (records_.size() > kept &&
           (records_.front().state == State::Answered || records_.front().state == State::Gone)) {
        records_.pop_front();
        ++firstId_;
    }
}

void Results::release() {
    for (Record& record : records_) {
        if (record.state == State::Waiting) {
            setState(&record, State::Released);
        }
    }
    startNext();
}

void Results::drop() {
    const int current = started_;
    const std::vector<int> ids = dropAll();
    for (const int id : ids) {
        tell(id, id == current ? MotionEvent::Stopped : MotionEvent::Dropped);
    }
}

void Results::refuse(int id, int code) {
    told_.insert(id, code);
    deliver();
}

Results::Record* Results::find(int id) {
    const bool known = id >= firstId_ && id < firstId_ + int(records_.size());
    return known ? &records_[size_t(id - firstId_)] : nullptr;
}

int Results::firstReleased() const {
    for (size_t i = 0; released_ > 0 && i < records_.size(); ++i) {
        if (records_[i].state == State::Released) {
            return firstId_ + int(i);
        }
    }
    return 0;
}

/// A failure ends all motions.
bool Results::isLast(int id, int code) const {
    return code < 0 || (released_ == 1 && firstReleased() == id);
}

void Results::setState(Record* record, State state) {
    waiting_ -= record->state == State::Waiting ? 1 : 0;
    released_ += (state == State::Released ? 1 : 0) - (record->state == State::Released ? 1 : 0);
    record->state = state;
}

/// Forgets all that wait or are under way; returns their ids.
std::vector<int> Results::dropAll() {
    std::vector<int> ids;
    for (size_t i = 0; i < records_.size(); ++i) {
        if (records_[i].state == State::Waiting || records_[i].state == State::Released) {
            setState(&records_[i], State::Gone);
            ids.push_back(firstId_ + int(i));
        }
    }
    told_.clear();
    started_ = 0;
    next_.stop();
    return ids;
}

void Results::tell(int id, MotionEvent what) {
    if (options_.events) {
        emit happened(id, what);
    }
}

void Results::startNext() {
    if (started_ == 0 && (started_ = firstReleased()) != 0) {
        tell(started_, MotionEvent::Started);
    }
}

// --- Results -------------------------------------------------------------------------------------

/// What is wrong with a result; such a one is not for the package.
std::optional<Rule> Results::judge(int id) const {
    if (id < 1 || id >= firstId_ + int(records_.size())) {
        return Rule::UnknownResult;
    }
    if (id < firstId_) {
        return Rule::SecondResult;
    }
    switch (records_[size_t(id - firstId_)].state) {
        case State::Waiting:
            return Rule::EarlyResult;
        case State::Answered:
            return Rule::SecondResult;
        case State::Gone:
            return Rule::StoppedResult;
        case State::Released:
            break;
    }
    return told_.contains(id) ? std::optional<Rule>(Rule::SecondResult) : std::nullopt;
}

/// What is wrong with the time of a result.
void Results::nameLateness(int id, int code) {
    for (int before = firstReleased(); before != 0 && before < id; ++before) {
        const Record* record = find(before);
        if (record->state == State::Released && !told_.contains(before)) {
            emit violated(Rule::ResultOrder, id);
            break;
        }
    }
    if (takenMs_ == nowMs()) {
        emit violated(Rule::ResultsTogether, id);
    }
    if (!hasPosture_) {
        emit violated(Rule::PostureMissing, id);
    }
    if (isMoving_ && isLast(id, code)) {
        emit violated(Rule::LateState, id);
    }
}

void Results::take(int id, int code) {
    const std::optional<Rule> wrong = judge(id);
    if (wrong) {
        emit violated(*wrong, id);
    } else {
        nameLateness(id, code);
    }
    takenMs_ = nowMs();
    hasPosture_ = false;
    if (options_.repair && !wrong) {
        told_.insert(id, code);
        deliver();
    } else if (!options_.repair) {
        settle(id, code);
    }
}

void Results::setMoving(bool moving) {
    isMoving_ = moving;
    deliver();
}

void Results::endCall() {
    if (--calls_ == 0 && !told_.isEmpty()) {
        next_.start(gapMs);
    }
}

/// Hands on the next result, if it is known and may be.
void Results::deliver() {
    const int id = firstReleased();
    const auto found = told_.constFind(id);
    if (id == 0 || found == told_.constEnd() || calls_ > 0 || (isMoving_ && isLast(id, *found))) {
        return;
    }
    if (writtenMs_ >= 0 && nowMs() < writtenMs_ + gapMs) {
        next_.start(gapMs);
        return;
    }
    const int code = told_.take(id);
    if (!told_.isEmpty()) {
        next_.start(gapMs);
    }
    settle(id, code);
}

void Results::settle(int id, int code) {
    writtenMs_ = nowMs();
    Record* const record = find(id);
    if (!record) {
        return;  // nobody knows its command
    }
    const Motion::Kind kind = record->kind;
    const bool isFirst = record->state == State::Waiting || record->state == State::Released;
    if (isFirst) {
        setState(record, State::Answered);
    }
    if (isFirst && code < 0) {
        tell(id, MotionEvent::Failed);
        const std::vector<int> behind = dropAll();
        for (const int other : behind) {
            tell(other, MotionEvent::Dropped);
        }
    } else if (isFirst) {
        started_ = started_ == id ? 0 : started_;
        tell(id, MotionEvent::Passed);
        startNext();
    }
    emit due(kind, id, code);
}

}  // namespace bridge
