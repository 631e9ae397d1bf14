#include "editor/seamrows.h"

#include "module/globals.h"
#include "module/host.h"
#include "program/words.h"

#include <algorithm>

using namespace prog;

namespace lumo {

SeamRows::SeamRows(QObject* parent) : QObject(parent) {
    connect(m(key::executeState), &ModuleObject::changed, this, &SeamRows::onState);
    connect(m(key::executeLine), &ModuleObject::changed, this, &SeamRows::onLine);
    connect(m(key::weldOpen), &ModuleObject::changed, this, &SeamRows::onWeldOpen);
    onState();
}

SeamRows::Place SeamRows::at(int at) const {
    if (isStale_) {
        findSeams();
    }
    const Row& place = row(at);
    if (!place.inSeam) {
        return {};
    }
    const bool isNow = isFollowing_ && isLit_ && at == line_;
    const auto weld = isNow ? look::Weld::Now : place.isWelded ? look::Weld::Welded : look::Weld::ToWeld;
    return {weld, place.isFirst, place.isLast};
}

int SeamRows::seamsTo(int end) const {
    if (isStale_) {
        findSeams();
    }
    return static_cast<int>(
        std::count_if(rows_.begin(), rows_.begin() + end, [](const Row& row) { return row.isFirst; }));
}

int SeamRows::seamOf(int at) const {
    if (at >= count()) {
        return 0;
    }
    const int number = seamsTo(at + 1);
    return row(at).inSeam ? number : 0;
}

int SeamRows::seamCount() const {
    return seamsTo(count());
}

// --- Rows -----------------------------------------------------------------------------------------

void SeamRows::reset(int count) {
    rows_.assign(static_cast<std::size_t>(count), Row());
    restructured();
}

void SeamRows::insert(int row) {
    rows_.insert(rows_.begin() + row, Row());
    restructured();
}

void SeamRows::remove(int row) {
    rows_.erase(rows_.begin() + row);
    restructured();
}

void SeamRows::restructured() {
    for (Row& each : rows_) {
        each.isWelded = false;
    }
    isStale_ = true;
    emit changed(0, count() - 1);
}

void SeamRows::setKind(int at, const LineKind& kind) {
    const LineKind& known = row(at).kind;
    const bool isSame = known.opens == kind.opens && known.closes == kind.closes &&
                        known.executed == kind.executed && known.moves == kind.moves;
    row(at).kind = kind;
    if (!isSame && !isStale_) {
        isStale_ = true;
        emit changed(0, count() - 1);
    }
}

void SeamRows::findSeams() const {
    isStale_ = false;
    bool isOpen = false;
    for (int at = 0; at < count(); ++at) {
        Row& here = row(at);
        const bool opens = here.kind.opens && here.kind.executed;
        const bool closes = here.kind.closes && here.kind.executed;
        if (opens && isOpen) {
            row(at - 1).isLast = true;
        }
        here.isFirst = opens;
        here.isLast = isOpen && closes;
        here.inSeam = opens || isOpen;
        isOpen = here.inSeam && !closes;
    }
    weldedBeforeTheStop();
}

/// Marks the lines before the stop of a weld that was left open, also before the panel was started anew.
void SeamRows::weldedBeforeTheStop() const {
    if (isFollowing_ || !m(key::weldOpen)->getBool(false)) {
        return;
    }
    for (int at = m(key::currentLine)->getInt() - 1; at >= 0 && at < count() && row(at).inSeam; --at) {
        row(at).isWelded = true;
        if (row(at).isFirst) {
            break;
        }
    }
}

// --- The run --------------------------------------------------------------------------------------

void SeamRows::onState() {
    const bool isBusy = m(key::executeState)->getString() == word::busy;
    if (isBusy == isFollowing_) {
        return;
    }
    if (isBusy && hand_or_signalbing == runmode::byHand && !m(key::executeDryRun)->getBool(false)) {
        isFollowing_ = true;
        isStarting_ = true;
        isLit_ = false;
    } else if (!isBusy) {
        isFollowing_ = false;
        isLit_ = false;
        announce(line_);
    }
}

void SeamRows::onLine(const QVariant& value) {
    if (!isFollowing_) {
        return;
    }
    const int before = line_;
    line_ = value.toInt();
    if (isStarting_) {
        isStarting_ = false;
        for (int at = std::max(line_, 0); at < count(); ++at) {
            row(at).isWelded = false;
        }
        emit changed(0, count() - 1);
        return;
    }
    if (isLit_ && before != line_) {
        setWelded(before);
    }
    announce(before);
    announce(line_);
}

void SeamRows::onWeldOpen(const QVariant& value) {
    const bool wasLit = isLit_;
    isLit_ = isFollowing_ && value.toBool();
    if (wasLit && !isLit_ && line_ >= 0 && line_ < count() && row(line_).kind.closes) {
        setWelded(line_);
    }
    announce(line_);
}

void SeamRows::setWelded(int at) {
    if (at >= 0 && at < count()) {
        row(at).isWelded = true;
    }
}

void SeamRows::announce(int at) {
    if (at >= 0 && at < count()) {
        emit changed(at, at);
    }
}

}  // namespace lumo
