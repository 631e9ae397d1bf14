#include "runner/longtime.h"

#include <algorithm>
#include <limits>

namespace run {

namespace {

constexpr qint64 longestPiece = std::numeric_limits<int>::max();

}  // namespace

void callAfter(qint64 ms, QObject* context, const std::function<void()>& call) {
    if (ms <= longestPiece) {
        QTimer::singleShot(int(ms), Qt::PreciseTimer, context, call);
        return;
    }
    QTimer::singleShot(int(longestPiece), Qt::PreciseTimer, context,
                       [ms, context, call] { callAfter(ms - longestPiece, context, call); });
}

LongTimer::LongTimer(QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &LongTimer::onPiece);
}

void LongTimer::start(qint64 ms) {
    leftMs_ = ms;
    startPiece();
}

void LongTimer::startPiece() {
    const qint64 piece = std::min(leftMs_, longestPiece);
    leftMs_ -= piece;
    timer_.start(int(piece));
}

void LongTimer::onPiece() {
    if (leftMs_ > 0) {
        startPiece();
    } else {
        emit timeout();
    }
}

}  // namespace run
