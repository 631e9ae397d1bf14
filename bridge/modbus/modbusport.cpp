#include "bridge/modbus/modbusport.h"

#include "mendo/clock.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace bridge {

namespace {

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

/// Registers and single signals have names of their own.
QString key(SignalRow::Kind kind, const QString& name, int bias) {
    return kind == SignalRow::Kind::Register ? QStringLiteral("%1.#%2").arg(name).arg(bias) : name;
}

}  // namespace

ModbusPort::ModbusPort(const ModbusMap& map, QObject* parent)
    : SignalPort(parent), map_(map), link_(map_), values_(map_.elements.size()) {
    for (int i = 0; i < int(map_.elements.size()); ++i) {
        byLabel_.insert(key(element(i).kind, element(i).name, element(i).bias), i);
    }
    for (const ModbusPoll& poll : pollsOf(map_)) {
        polls_.push_back({poll});
    }
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &ModbusPort::next);
    connect(&link_, &ModbusLink::opened, this, &ModbusPort::onOpened);
    connect(&link_, &ModbusLink::lost, this, &ModbusPort::onLost);
}

ModbusPort::~ModbusPort() {
    std::vector<QModbusDataUnit> off;
    if (phase_ == Phase::Up) {
        for (const ModbusWrite& write : writesOff(map_)) {
            off.push_back(unitOf(map_, write, {}));
        }
    }
    link_.disconnect(this);
    link_.finish(off);
}

void ModbusPort::start() {
    link_.start();
}

void ModbusPort::write(const QVector<SignalWrite>& writes, int ticket) {
    if (phase_ != Phase::Up) {
        emit written(ticket, false);
        return;
    }
    Group group{ticket, nowMs(), true, {}};
    std::vector<ModbusOrder> orders;
    for (const SignalWrite& write : writes) {
        const int index = find(write);
        if (index < 0 || !element(index).isOutput || !element(index).toDevice(write.value)) {
            group.isAccepted = false;
            tell(QStringLiteral("%1 = %2 cannot be written")
                     .arg(key(write.kind, write.name, write.bias))
                     .arg(write.value));
        } else {
            orders.push_back({index, write.value});
        }
    }
    const std::vector<ModbusWrite> telegrams = writesOf(map_, orders);
    group.writes.assign(telegrams.begin(), telegrams.end());
    groups_.push_back(group);
    next();
}

int ModbusPort::find(const SignalWrite& write) const {
    return byLabel_.value(key(write.kind, write.name, write.bias), -1);
}

void ModbusPort::onOpened() {
    phase_ = Phase::Opening;
    words_.clear();
    openingPolls_ = 0;
    isBeatTaken_ = false;
    beatMs_ = nowMs();
    const std::vector<ModbusWrite> off = writesOff(map_);
    openingWrites_.assign(off.begin(), off.end());
    next();
}

void ModbusPort::onLost(const LinkReason& reason) {
    timer_.stop();
    const bool wasUp = phase_ == Phase::Up;
    phase_ = Phase::Down;
    const std::deque<Group> dropped = std::exchange(groups_, {});
    if (wasUp || reason != downReason_) {
        downReason_ = reason;
        emit linkChanged(false, reason);
    }
    for (const Group& group : dropped) {
        emit written(group.ticket, false);
    }
}

/// Sends what is most urgent. A poll that is late by a period goes between two writes, so that a stream of
/// writes does not hide the inputs.
void ModbusPort::next() {
    if (phase_ == Phase::Down || isAnswering_ || link_.isBusy() ||
        (phase_ == Phase::Opening && nextOpening())) {
        return;
    }
    answerGroups();
    if (phase_ != Phase::Up || link_.isBusy()) {
        return;  // a listener wrote meanwhile
    }
    const qint64 now = nowMs();
    Poll* const poll = duePoll(now);
    const bool isLate = poll && now - poll->dueMs >= poll->asked.periodMs;
    if (map_.heartbeat && now >= beatDueMs_) {
        sendBeat();
    } else if (!groups_.empty() && !(isLate && wasWrite_)) {
        if (now - groups_.front().sinceMs > map_.lateMs) {
            link_.lose({LinkReason::Kind::TooSlow, map_.place(), {}, int(now - groups_.front().sinceMs)});
            return;
        }
        wasWrite_ = true;
        const ModbusWrite write = groups_.front().writes.front();
        groups_.front().writes.pop_front();
        sendWrite(write);
    } else if (poll) {
        wasWrite_ = false;
        sendPoll(poll);
    } else {
        sleep(now);
    }
}

/// Sends the next read or write that must be answered before the link is up. False if all were: it is up
/// then.
bool ModbusPort::nextOpening() {
    // First a read: a device that hangs accepts connections, and what is written to them would be carried out
    // later.
    if (openingPolls_ < polls_.size()) {
        sendPoll(&polls_[openingPolls_++]);
        return true;
    }
    if (!openingWrites_.empty()) {
        const ModbusWrite write = openingWrites_.front();
        openingWrites_.pop_front();
        sendWrite(write);
        return true;
    }
    if (map_.heartbeat && !isBeatTaken_) {
        sendBeat();
        return true;
    }
    comeUp();
    return false;
}

void ModbusPort::comeUp() {
    phase_ = Phase::Up;
    downReason_ = {};
    link_.settle();
    emit linkChanged(true, {});
    for (int i = 0; i < int(values_.size()) && phase_ == Phase::Up; ++i) {
        emit changed(element(i).kind, element(i).name, element(i).bias, values_[std::size_t(i)]);
    }
}

/// Answers the calls whose writes are all answered.
void ModbusPort::answerGroups() {
    while (!groups_.empty() && groups_.front().writes.empty() && !link_.isBusy()) {
        const Group group = groups_.front();
        groups_.pop_front();
        emit written(group.ticket, group.isAccepted);
    }
}

void ModbusPort::sendWrite(const ModbusWrite& write) {
    link_.write(unitOf(map_, write, words_), [this, write](const ModbusAnswer& answer) {
        isAnswering_ = true;
        onWritten(write, answer);
        isAnswering_ = false;
        next();
    });
}

void ModbusPort::onWritten(const ModbusWrite& write, const ModbusAnswer& answer) {
    if (answer.isGood) {
        const QModbusDataUnit unit = unitOf(map_, write, words_);
        if (element(write.front().element).bit >= 0) {
            words_[unit.startAddress()] = unit.value(0);
        }
        for (const ModbusOrder& order : write) {
            show(order.element, order.value);
        }
        return;
    }
    if (repeatOneByOne(write, answer)) {
        return;
    }
    const ModbusElement& first = element(write.front().element);
    tell(QStringLiteral("%1 refuses %2 at address %3: %4")
             .arg(map_.place(), first.label())
             .arg(first.address)
             .arg(answer.reason));
    if (phase_ == Phase::Up && !groups_.empty()) {
        groups_.front().isAccepted = false;
    } else if (phase_ == Phase::Opening && answer.exception > QModbusPdu::IllegalDataValue) {
        // The device has this output and did not switch it off: it may be on.
        link_.lose({LinkReason::Kind::StaysOn, map_.place(),
                    QStringLiteral("%1 (%2)").arg(first.label(), answer.reason)});
    }
}

/// Where a device does not take several elements in one telegram, or lacks one of them, the others are still
/// written.
bool ModbusPort::repeatOneByOne(const ModbusWrite& write, const ModbusAnswer& answer) {
    const bool isRefused =
        answer.exception >= QModbusPdu::IllegalFunction && answer.exception <= QModbusPdu::IllegalDataValue;
    if (!isRefused || write.size() == 1 || element(write.front().element).bit >= 0) {
        return false;
    }
    std::deque<ModbusWrite>& waiting = phase_ == Phase::Up ? groups_.front().writes : openingWrites_;
    for (auto order = write.rbegin(); order != write.rend(); ++order) {
        waiting.push_front({*order});
    }
    return true;
}

void ModbusPort::sendPoll(Poll* poll) {
    poll->dueMs = nowMs() + poll->asked.periodMs;
    const ModbusPoll asked = poll->asked;
    link_.read(asked.unit, [this, asked](const ModbusAnswer& answer) {
        isAnswering_ = true;
        onRead(asked, answer);
        isAnswering_ = false;
        next();
    });
}

void ModbusPort::onRead(const ModbusPoll& poll, const ModbusAnswer& answer) {
    if (!answer.isGood) {
        const int count = int(poll.unit.valueCount());
        tell(QStringLiteral("%1 refuses to read %2 from address %3, %4 in number: %5")
                 .arg(map_.place(), element(poll.elements.empty() ? 0 : poll.elements.front()).label())
                 .arg(poll.unit.startAddress())
                 .arg(count)
                 .arg(answer.reason));
        return;
    }
    for (const int index : poll.elements) {
        const ModbusElement& input = element(index);
        show(index, input.fromDevice(answer.values.value(input.address - poll.unit.startAddress())));
    }
}

void ModbusPort::sendBeat() {
    const qint64 now = nowMs();
    if (map_.heartbeat->watchdogMs > 0 && now - beatMs_ > map_.heartbeat->watchdogMs) {
        link_.lose({LinkReason::Kind::NoHeartbeat, map_.place(), {}, int(now - beatMs_)});
        return;
    }
    beatDueMs_ = now + map_.heartbeat->periodMs;
    const QModbusDataUnit unit(QModbusDataUnit::HoldingRegisters, map_.heartbeat->address,
                               QVector<quint16>{++beat_});
    link_.write(unit, [this, now](const ModbusAnswer& answer) {
        if (answer.isGood) {
            isBeatTaken_ = true;
            beatMs_ = now;
        } else {
            onBeatRefused(answer);
        }
        next();
    });
}

/// A device without heartbeats would leave its outputs on when this process ends. One that is only busy is
/// lost when it has taken none for the time of its watchdog.
void ModbusPort::onBeatRefused(const ModbusAnswer& answer) {
    tell(QStringLiteral("%1 refuses the heartbeat: %2").arg(map_.place(), answer.reason));
    if (!isBeatTaken_ || answer.exception <= QModbusPdu::IllegalDataValue) {
        link_.lose({isBeatTaken_ ? LinkReason::Kind::Lost : LinkReason::Kind::NoConnection, map_.place(),
                    QStringLiteral("it refuses the heartbeat: %1").arg(answer.reason)});
    }
}

ModbusPort::Poll* ModbusPort::duePoll(qint64 now) {
    const auto first = std::min_element(polls_.begin(), polls_.end(), [](const Poll& one, const Poll& other) {
        return one.dueMs < other.dueMs;
    });
    return first != polls_.end() && first->dueMs <= now ? &*first : nullptr;
}

void ModbusPort::sleep(qint64 now) {
    qint64 due = map_.heartbeat ? beatDueMs_ : std::numeric_limits<qint64>::max();
    for (const Poll& poll : polls_) {
        due = std::min(due, poll.dueMs);
    }
    if (map_.heartbeat || !polls_.empty()) {
        timer_.start(int(std::max<qint64>(0, due - now)));
    }
}

/// Before the link is up the values are only noted: comeUp() tells all of them.
void ModbusPort::show(int index, int value) {
    int& known = values_[std::size_t(index)];
    if (known == value) {
        return;
    }
    known = value;
    if (phase_ == Phase::Up) {
        emit changed(element(index).kind, element(index).name, element(index).bias, value);
    }
}

void ModbusPort::tell(const QString& text) {
    if (!told_.contains(text)) {
        told_.insert(text);
        emit told(text);
    }
}

}  // namespace bridge
