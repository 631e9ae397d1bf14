#pragma once

#include "stations/station.h"

#include <QString>
#include <QVector>

namespace lumo {

/// A station that waits for a run, and the start output that was switched on for it. That output is switched
/// off afterwards, even if the station has another one by then.
struct WaitingStation {
    int row = -1;  ///< -1: the station was deleted
    prog::Signal output;
};

/// The projects that wait for their start, in the order of their triggers. A project is queued once, with all
/// stations that asked for it. The first one stays queued while it runs.
class StationQueue {
public:
    struct Entry {
        int id;  ///< of this request: a project can leave the queue and be asked for again
        QString project;
        QVector<WaitingStation> stations;  ///< in the order in which they asked
        qint64 sinceMs;                    ///< host clock
    };

    [[nodiscard]] bool isEmpty() const { return entries_.isEmpty(); }
    [[nodiscard]] int size() const { return entries_.size(); }
    [[nodiscard]] const Entry& first() const { return entries_.first(); }
    [[nodiscard]] const QVector<Entry>& entries() const { return entries_; }
    /// Whether this request is still the first one.
    [[nodiscard]] bool isFirst(int id) const { return !isEmpty() && first().id == id; }

    /// A station asks for a project. Asking again with the same output changes nothing.
    void add(const QString& project, const WaitingStation& station);
    /// Removes the first project.
    Entry takeFirst();
    /// Removes all projects, except the first with `keepFirst` (it runs). Returns the stations that waited
    /// for them.
    QVector<WaitingStation> takeAll(bool keepFirst);
    /// A row withdraws its requests. Projects that no other row asked for leave the queue. `keepFirst`: the
    /// first one runs and is left alone. Returns the row's entries, with the outputs that were switched on.
    QVector<WaitingStation> withdraw(int row, bool keepFirst);
    /// A station was deleted: the rows below move up.
    void removeRow(int row);
    /// A station came there: the rows from there on move down.
    void insertRow(int row);

private:
    QVector<Entry> entries_;
    int lastId_ = 0;
};

}  // namespace lumo
