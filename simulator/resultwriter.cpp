#include "simulator/resultwriter.h"

#include "kord/kordservice.h"

#include <QTimer>

#include <utility>

namespace sim {

namespace {

constexpr int secondCopyMs = 1;

MotionCommand::Kind wrongKind(MotionCommand::Kind kind) {
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

ResultWriter::ResultWriter(KordService* service, int delayMs, QObject* parent)
    : QObject(parent), service_(service), line_(delayMs, nullptr) {
    connect(&line_, &DelayLine::emptied, this, &ResultWriter::caughtUp);
}

void ResultWriter::deliver(const Result& result, bool last) {
    if (bunch_ && !held_ && !last) {
        held_ = result;
        return;
    }
    deliverHeld();
    writeWithCopy(result);
}

void ResultWriter::deliverHeld() {
    if (const auto held = std::exchange(held_, std::nullopt)) {
        writeWithCopy(*held);
    }
}

void ResultWriter::deliverLater(const Result& result, int ms) {
    ++scheduled_;
    QTimer::singleShot(ms, Qt::PreciseTimer, this, [this, result] {
        --scheduled_;
        write(result);
    });
}

void ResultWriter::writeWithCopy(const Result& result) {
    if (double_) {
        deliverLater(result, secondCopyMs);
    }
    line_.run([this, result] { write(result); });
}

void ResultWriter::write(const Result& written) {
    const QString command = commandName(wrongKind_ ? wrongKind(written.kind) : written.kind);
    emit result(command, written.id, written.code);
    service_->commandNode(command)->setValue(this, written.code);
}

}  // namespace sim
