#include "runner/replay/recordedcell.h"

#include "flight/posturerecord.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace run::replay {

using flight::Record;
using mendo::ModuleObject;
using Kind = Record::Kind;

namespace {

/// A value as the tree stores it: whole numbers as integers.
QVariant scalar(const QJsonValue& value) {
    if (value.isNull() || value.isUndefined()) {
        return {};
    }
    const double number = value.toDouble();
    const bool isInt = value.isDouble() && number == std::trunc(number) &&
                       std::abs(number) <= std::numeric_limits<int>::max();
    return isInt ? QVariant(int(number)) : value.toVariant();
}

bool isTrigger(const QString& path) {
    return path == prog::key::triggerStart || path == prog::key::triggerOnce ||
           path == prog::key::triggerPause;
}

void writeList(ModuleObject* list, const std::vector<double>& numbers, QObject* sender) {
    if (std::size_t(list->cmobjCount()) > numbers.size()) {
        list->clear(sender, false);
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (int(i) < list->cmobjCount()) {
            list->c(int(i))->setValue(sender, numbers[i]);
        } else {
            list->set(sender, mIndex(int(i)), numbers[i], true);
        }
    }
}

}  // namespace

void restore(ModuleObject* node, const QJsonValue& content, QObject* sender) {
    if (!content.isObject()) {
        if (content.isArray()) {
            node->loadJson(sender, content);
        } else {
            node->setValue(sender, scalar(content));
        }
        return;
    }
    const QJsonObject object = content.toObject();
    for (auto field = object.begin(); field != object.end(); ++field) {
        if (node->c(field.key())->isNull()) {
            node->append(sender, field.key());
        }
        restore(node->c(field.key()), field.value(), sender);
    }
}

RecordedCell::RecordedCell(const Script* script, Comparison* comparison, int* runMode, QObject* parent)
    : QObject(parent), script_(script), comparison_(comparison), runMode_(runMode) {
    connect(kordservice(), &KordService::issued, this, &RecordedCell::onIssued);
    connect(comparison, &Comparison::advanced, this, &RecordedCell::feedSoon);
}

/// Timers due together fire in the order in which they were armed. All but postures are armed now: they come
/// before what the package arms meanwhile for the same time, as the record shows them. What the package reads
/// of a posture the record does not show: it is armed when a controller does it, a step before.
void RecordedCell::begin() {
    qint64 armedMs = -1;
    for (const Script::Input& input : script_->inputs) {
        if (input.record->kind != Kind::Posture && input.record->ms > armedMs) {
            armedMs = input.record->ms;
            arm(armedMs);
        }
    }
}

int RecordedCell::arm(qint64 ms) {
    const qint64 delay = std::max<qint64>(0, ms - comparison_->nowMs());
    return startTimer(int(std::min<qint64>(delay, std::numeric_limits<int>::max())), Qt::PreciseTimer);
}

/// The next posture, if nothing else of the cell comes before it.
void RecordedCell::armPosture() {
    for (std::size_t at = next_; at < script_->inputs.size(); ++at) {
        const Record& record = *script_->inputs[at].record;
        if (record.by == Record::By::Cell) {
            if (record.kind == Kind::Posture && at >= armed_) {
                armed_ = at + 1;
                postureTimer_ = arm(record.ms);
            }
            return;
        }
    }
}

void RecordedCell::timerEvent(QTimerEvent* event) {
    killTimer(event->timerId());
    if (event->timerId() == postureTimer_) {
        postureMs_ = comparison_->nowMs();
    }
    feed();
}

bool RecordedCell::isNextDue() const {
    if (next_ >= script_->inputs.size() || comparison_->difference()) {
        return false;
    }
    const Script::Input& input = script_->inputs[next_];
    if (input.record->kind == Kind::Posture && waitsForTimer(next_)) {
        return false;
    }
    return !input.isInCommand && input.record->ms <= comparison_->nowMs() &&
           input.outputsBefore <= comparison_->matched();
}

/// A posture waits for its own timer, unless something else comes behind it at the same time.
bool RecordedCell::waitsForTimer(std::size_t posture) const {
    const qint64 ms = script_->inputs[posture].record->ms;
    if (posture >= armed_ || ms <= postureMs_ || ms < comparison_->nowMs()) {
        return false;
    }
    for (std::size_t at = posture + 1; at < script_->inputs.size(); ++at) {
        const Script::Input& later = script_->inputs[at];
        if (later.record->ms != ms) {
            return true;
        }
        if (later.record->kind != Kind::Posture && !later.isInCommand) {
            return false;
        }
    }
    return true;
}

/// An input may run a whole program before it returns; the loop inside then feeds what follows.
void RecordedCell::feed() {
    while (isNextDue()) {
        const Script::Input& input = script_->inputs[next_++];
        armPosture();
        if (input.record->by != Record::By::Cell) {
            feedSoon();
        }
        apply(*input.record);
    }
}

void RecordedCell::feedSoon() {
    if (isPosted_ || !isNextDue()) {
        return;
    }
    isPosted_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            isPosted_ = false;
            feed();
        },
        Qt::QueuedConnection);
}

/// What the controller had written when the command returned, and what it had written before the command.
void RecordedCell::onIssued(const KordCall& call) {
    if (call.sender && !call.sender->inherits("LumoExecutor")) {
        return;
    }
    while (next_ < script_->inputs.size() && !comparison_->difference()) {
        const Script::Input& input = script_->inputs[next_];
        const bool isOverdue = !input.isInCommand && input.record->by == Record::By::Cell &&
                               input.record->ms <= comparison_->nowMs() &&
                               input.outputsBefore < comparison_->matched();
        const bool isAnswer = input.isInCommand && input.outputsBefore <= comparison_->matched();
        if (!isOverdue && !isAnswer) {
            return;
        }
        ++next_;
        armPosture();
        apply(*input.record);
    }
}

// --- Applying ---------------------------------------------------------------------------------------

QObject* RecordedCell::senderOf(const Record& record) {
    if (record.by == Record::By::Nobody) {
        return nullptr;
    }
    return record.by == Record::By::Cell ? this : &hand_;
}

void RecordedCell::apply(const Record& record) {
    if (record.kind == Kind::Posture) {
        applyPosture(record.body);
        return;
    }
    const QJsonObject body = record.object();
    if (record.kind == Kind::Run) {
        if (runMode_) {
            *runMode_ = body.value(QStringLiteral("mode")).toInt();
        }
        m(prog::key::execute)
            ->r(QStringLiteral("trigger.") + body.value(QStringLiteral("trigger")).toString())
            ->setValue(senderOf(record), scalar(body.value(QStringLiteral("v"))));
    } else if (record.kind == Kind::Value || record.kind == Kind::Content || record.kind == Kind::Announced) {
        applyValue(record, body);
    } else {
        applyStructure(record, body);
    }
}

/// What a page writes because of another write it writes in the replay by itself: such a write is repeated
/// only where that did not happen.
void RecordedCell::applyValue(const Record& record, const QJsonObject& body) {
    const QString path = body.value(QStringLiteral("p")).toString();
    const QJsonValue value = body.value(QStringLiteral("v"));
    ModuleObject* const node = trees_.find(record.tree, path);
    const bool isDone = record.inside == Record::Inside::Act && !isTrigger(path) && !node->isNull() &&
                        node->exportToJson() == value;
    if (isDone) {
        return;
    }
    if (record.kind == Kind::Announced) {
        node->trigger();
    } else if (record.kind == Kind::Content) {
        node->loadJson(senderOf(record), value);
    } else if (node->isNull()) {
        trees_.root(record.tree)->set(senderOf(record), path, scalar(value));
    } else {
        node->setValue(senderOf(record), scalar(value));
    }
}

void RecordedCell::applyStructure(const Record& record, const QJsonObject& body) {
    ModuleObject* const parent = trees_.find(record.tree, body.value(QStringLiteral("p")).toString());
    QObject* const sender = senderOf(record);
    const int position = body.value(QStringLiteral("i")).toInt();
    const int count = body.value(QStringLiteral("n")).toInt();
    if (record.kind == Kind::Moved) {
        parent->reorder(sender, body.value(QStringLiteral("f")).toInt(),
                        body.value(QStringLiteral("t")).toInt());
    } else if (record.kind == Kind::Removed && parent->cmobjCount() == count + 1) {
        parent->remove(sender, mIndex(position));
    } else if (record.kind == Kind::Inserted && parent->cmobjCount() == count - 1) {
        const QString name = body.value(QStringLiteral("k")).toString();
        auto* const child = new ModuleObject(name.isEmpty() ? ModuleObject::generateId(parent) : name);
        child->loadJson(sender, body.value(QStringLiteral("v")), false);
        if (!parent->insert(sender, child, true, position)) {
            delete child;
        }
    }
}

void RecordedCell::applyPosture(const QByteArray& body) {
    const flight::Posture posture = flight::Posture::decoded(body);
    ModuleObject* const node = trees_.posture();
    writeList(node->c(prog::field::trans), posture.trans, this);
    writeList(node->c(prog::field::rot), posture.rot, this);
    writeList(node->c(prog::field::near), posture.near, this);
    node->trigger();
}

}  // namespace run::replay
