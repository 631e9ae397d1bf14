#include "workcell/safety/eventsource.h"

#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

namespace workcell::safety {

using mendo::ModuleObject;

EventSource::EventSource(TreeFollower* follower, QObject* parent) : QObject(parent) {
    connect(follower, &TreeFollower::changed, this, &EventSource::onChanged);
    connect(follower, &TreeFollower::switchWritten, this, [this] { report(Kind::Permission); });
    for (const QLatin1String command : {prog::command::moveJ, prog::command::moveL, prog::command::moveC}) {
        connect(kordservice()->commandNode(command), &ModuleObject::changed, this,
                [this, command](const QVariant& code) { report(Kind::Result, command, code.toInt()); });
    }
    connect(kordservice(), &KordService::issued, this, &EventSource::onIssued);
    connect(mendo::LogHub::instance(), &mendo::LogHub::line, this, &EventSource::onLog);
}

void EventSource::setExecutor(QObject* executor) {
    executor_ = executor;
    connect(executor, SIGNAL(activityChanged()), this, SLOT(onActivity()));
}

qint64 EventSource::waitDueMs() const {
    const QVariant due =
        executor_ ? executor_->property("waiting").toMap().value(QStringLiteral("due")) : QVariant();
    return due.isValid() ? due.toLongLong() : -1;
}

void EventSource::report(Kind kind, const QString& text, int value, int port) {
    Event event;
    event.kind = kind;
    event.text = text;
    event.value = value;
    event.port = port;
    emit happened(event);
}

/// Reports a change of the depth, of the wait, or of whether steps are pending.
void EventSource::onActivity() {
    const QVariantMap wait = executor_->property("waiting").toMap();
    const int depth = executor_->property("depth").toInt();
    const bool isPending = executor_->property("pendingSteps").toInt() > 0;
    const bool begins = wait != wait_;
    if (!begins && depth == depth_ && isPending == isPending_) {
        return;
    }
    wait_ = wait;
    depth_ = depth;
    isPending_ = isPending;
    report(Kind::Wait, begins ? wait.value(QStringLiteral("kind")).toString() : QString());
}

void EventSource::onChanged(const Change& change) {
    struct Row {
        QLatin1String path;
        Kind kind;
        bool byExecutor;
    };
    static constexpr Row rows[] = {
        {prog::key::executeState, Kind::State, false},
        {prog::key::robotState, Kind::Robot, false},
        {prog::key::robotMode, Kind::Permission, false},
        {prog::key::currentLine, Kind::Line, true},
        {prog::key::currentType, Kind::Statement, true},
        {prog::key::weldOpen, Kind::WeldFlag, true},
        {prog::key::curParam, Kind::Set, true},
        {prog::key::currentPausePoint, Kind::PausePoint, true},
    };
    for (const Row& row : rows) {
        if (change.path == row.path && (!row.byExecutor || change.byExecutor())) {
            report(row.kind, change.value.toString(), change.value.toInt());
        }
    }
}

void EventSource::onIssued(const KordCall& call) {
    const bool byHand = call.sender && !call.sender->inherits("LumoExecutor");
    if (!call.sender) {
        if (call.name == prog::command::outDo) {  // a statement's output has no sender
            report(Kind::Output, call.argument(prog::field::name).toString());
        }
    } else if (call.name == prog::command::registerWriteMulti) {
        for (const ModuleObject* record : call.node ? call.node->cmobjs() : QList<ModuleObject*>()) {
            onRegister(record->c(prog::field::name)->getString(), record->c(prog::field::bias)->getInt(),
                       record->c(prog::field::value)->getInt(), byHand);
        }
    } else if (call.name == prog::command::registerWrite) {
        if (!call.node && !byHand) {
            report(Kind::Output, call.argument(prog::field::name).toString());
        } else {
            onRegister(call.argument(prog::field::name).toString(), call.argument(prog::field::bias).toInt(),
                       call.argument(prog::field::value).toInt(), byHand);
        }
    } else if (!byHand) {
        report(Kind::Command, call.name);
    }
}

/// Reports a write of a register that is a port's.
void EventSource::onRegister(const QString& name, int bit, int value, bool byHand) {
    const QString bitName = name + QLatin1Char('.') + mIndex(bit);
    for (int port = DO_GAS; port < prog::portCount; ++port) {
        const QString assigned = m(prog::key::port)->c(port)->c(prog::field::name)->getString();
        if (assigned == bitName || assigned == name) {
            report(byHand ? Kind::ByHand : Kind::Write, prog::portInfo(I_PORT(port)).word, value, port);
        }
    }
}

void EventSource::onLog(const QString&, const QString& text) {
    if (text.startsWith(QLatin1String("enter zone!"))) {
        report(Kind::Zone);
    } else if (text.contains(QLatin1String(" move result!"))) {
        report(Kind::Dropped, text);
    }
}

}  // namespace workcell::safety
