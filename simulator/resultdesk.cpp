#include "simulator/resultdesk.h"

#include "kord/kordservice.h"

#include <QTimer>

#include <utility>

namespace sim {

namespace {

constexpr int secondCopyMs = 1;

MotionCommand::Kind another(MotionCommand::Kind kind) {
    switch (kind) {
        case MotionCommand::Kind::Joint:
            return MotionCommand::Kind::Line;
        case MotionCommand::Kind::Line:
            return MotionCommand::Kind::Arc;
        case MotionCommand::Kind::Arc:
            break;
    }
    return MotionCommand::Kind::Joint;
}

}  // namespace

ResultDesk::ResultDesk(KordService* service, QObject* parent) : QObject(parent), service_(service) {}

void ResultDesk::deliver(const Result& result, bool last) {
    if (bunch_ && !held_ && !last) {
        held_ = result;
        return;
    }
    deliverHeld();
    writeWithCopy(result);
}

void ResultDesk::deliverHeld() {
    if (const auto held = std::exchange(held_, std::nullopt)) {
        writeWithCopy(*held);
    }
}

void ResultDesk::deliverLater(const Result& result, int ms) {
    ++onTheirWay_;
    QTimer::singleShot(ms, Qt::PreciseTimer, this, [this, result] {
        --onTheirWay_;
        write(result);
    });
}

void ResultDesk::writeWithCopy(const Result& result) {
    if (double_) {
        deliverLater(result, secondCopyMs);
    }
    write(result);
}

void ResultDesk::write(const Result& written) {
    const QString command = commandName(wrongKind_ ? another(written.kind) : written.kind);
    emit result(command, written.id, written.code);
    service_->commandNode(command)->setValue(this, written.code);
}

}  // namespace sim
