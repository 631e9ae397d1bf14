#include "stations/stationqueue.h"

#include <algorithm>
#include <iterator>

namespace lumo {

void StationQueue::add(const QString& project, const WaitingStation& station) {
    auto entry = std::find_if(entries_.begin(), entries_.end(),
                              [&project](const Entry& queued) { return queued.project == project; });
    if (entry == entries_.end()) {
        entries_.append({++lastId_, project, {}, mendo::Clock::current().elapsedMs()});
        entry = std::prev(entries_.end());
    }
    const auto isSame = [&station](const WaitingStation& waiting) {
        return waiting.row == station.row && waiting.output.isSameAs(station.output);
    };
    if (std::none_of(entry->stations.cbegin(), entry->stations.cend(), isSame)) {
        entry->stations.append(station);
    }
}

StationQueue::Entry StationQueue::takeFirst() {
    return entries_.takeFirst();
}

QVector<WaitingStation> StationQueue::takeAll(bool keepFirst) {
    QVector<WaitingStation> taken;
    while (entries_.size() > (keepFirst ? 1 : 0)) {
        taken += entries_.takeAt(keepFirst ? 1 : 0).stations;
    }
    return taken;
}

QVector<WaitingStation> StationQueue::withdraw(int row, bool keepFirst) {
    QVector<WaitingStation> withdrawn;
    for (int i = entries_.size() - 1; i >= (keepFirst ? 1 : 0); --i) {
        QVector<WaitingStation>& stations = entries_[i].stations;
        const auto isOfOthers = [row](const WaitingStation& waiting) { return waiting.row != row; };
        const auto own = std::stable_partition(stations.begin(), stations.end(), isOfOthers);
        std::copy(own, stations.end(), std::back_inserter(withdrawn));
        stations.erase(own, stations.end());
        if (stations.isEmpty()) {
            entries_.removeAt(i);
        }
    }
    return withdrawn;
}

void StationQueue::removeRow(int row) {
    for (Entry& entry : entries_) {
        for (WaitingStation& station : entry.stations) {
            if (station.row == row) {
                station.row = -1;
            } else if (station.row > row) {
                --station.row;
            }
        }
    }
}

void StationQueue::insertRow(int row) {
    for (Entry& entry : entries_) {
        for (WaitingStation& station : entry.stations) {
            station.row += station.row >= row ? 1 : 0;
        }
    }
}

}  // namespace lumo
