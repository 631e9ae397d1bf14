#include "stations/stationview.h"

#include "equipment/signalio.h"
#include "executor/lumoexecutor.h"
#include "program/statement.h"
#include "program/words.h"
#include "stations/stationrows.h"

#include <QTableWidget>

using namespace prog;

namespace lumo {

namespace {

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

/// "0:08"
QString durationText(qint64 ms) {
    constexpr qint64 msPerSecond = 1000, secondsPerMinute = 60;
    constexpr int digits = 2, decimal = 10;
    const qint64 seconds = ms / msPerSecond;
    return QStringLiteral("%1:%2")
        .arg(seconds / secondsPerMinute)
        .arg(seconds % secondsPerMinute, digits, decimal, QLatin1Char('0'));
}

}  // namespace

QString stationName(const StationQueue::Entry& entry) {
    return m(key::signalsConfig)->c(entry.stations.first().row)->c(field::stationName)->getString();
}

StationView::StationView(QTableWidget* table, StationCards* cards)
    : rows_(new StationRows(table)), cards_(cards) {}

void StationView::listen() {
    tally_ = {};
    tally_.since = mendo::Clock::current().now().toString(QStringLiteral("HH:mm"));
}

void StationView::runBegan() {
    runSinceMs_ = nowMs();
    seam_.reset();
}

void StationView::runEnded(bool toItsEnd) {
    ++(toItsEnd ? tally_.ended : tally_.stopped);
}

void StationView::show(const StationQueue& queue, bool firstWaits, bool runs, bool isHeld) {
    showLamps();
    const int next = firstWaits ? 0 : 1;
    QVector<int> rows;
    for (int i = next; i < queue.size(); ++i) {
        rows.append(queue.entries()[i].stations.first().row);
    }
    rows_->showWaiting(rows);
    StationCards::Waiting waiting;
    if (!rows.isEmpty()) {
        const StationQueue::Entry& entry = queue.entries()[next];
        waiting.station = stationName(entry);
        waiting.project = entry.project;
        waiting.waited = durationText(nowMs() - entry.sinceMs);
        waiting.behind = next > 0 ? stationName(queue.first()) : QString();
        waiting.more = rows.size() - 1;
        waiting.isHeld = isHeld;
    }
    cards_->show(runs ? running(queue.first()) : StationCards::Running(), waiting, tally_);
}

void StationView::showLamps() {
    QVector<StationRows::Lamps> lamps;
    const QList<ModuleObject*> stations = m(key::signalsConfig)->cmobjs();
    for (const ModuleObject* const station : stations) {
        lamps.append({signalLevel(nullptr, readSignal(station, StationSignal::StartInput)),
                      signalLevel(nullptr, readSignal(station, StationSignal::StopInput))});
    }
    rows_->showLamps(lamps);
}

StationCards::Running StationView::running(const StationQueue::Entry& entry) {
    if (!seam_) {
        seam_.emplace(m(key::stationProgram));
    }
    StationCards::Running card;
    card.station = stationName(entry);
    card.project = entry.project;
    const int line = m(key::currentLine)->getInt();
    card.line = line + 1;
    card.seam = seam_->at(line, TaughtPoint::from(kordservice()->get(nullptr, key::posture)).trans);
    // Where welding is not permitted, nothing is welded.
    const bool isDark = !LumoExecutor::weldingPermitted() || m(key::executeDryRun)->getBool(false);
    card.seam.share = isDark ? 0.0 : card.seam.share;
    card.laserOn = !isDark && card.seam.isInside && m(key::weldOpen)->getBool(false);
    card.elapsed = durationText(nowMs() - runSinceMs_);
    return card;
}

}  // namespace lumo
