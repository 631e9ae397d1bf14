#include "simulator/resultsender.h"

#include <QTimer>

#include <utility>

namespace sim {

namespace {

constexpr int secondCopyMs = 1;

}  // namespace

ResultSender::ResultSender(int delayMs, QObject* parent) : QObject(parent), line_(delayMs, nullptr) {
    connect(&line_, &DelayLine::emptied, this, &ResultSender::caughtUp);
}

void ResultSender::deliver(const Result& result, bool last) {
    if (bunch_ && !held_ && !last) {
        held_ = result;
        return;
    }
    deliverHeld();
    sendWithCopy(result);
}

void ResultSender::deliverHeld() {
    if (const auto held = std::exchange(held_, std::nullopt)) {
        sendWithCopy(*held);
    }
}

void ResultSender::deliverLater(const Result& result, int ms) {
    ++scheduled_;
    QTimer::singleShot(ms, Qt::PreciseTimer, this, [this, result] {
        --scheduled_;
        send(result);
    });
}

void ResultSender::sendWithCopy(const Result& result) {
    if (double_) {
        deliverLater(result, secondCopyMs);
    }
    line_.run([this, result] { send(result); });
}

void ResultSender::send(const Result& result) {
    emit due(result.id, result.code);
}

}  // namespace sim
