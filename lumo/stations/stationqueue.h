#pragma once

#include "stations/station.h"

#include <QString>
#include <QVector>

namespace lumo {

/// A station that waits for a run, and the output that was switched on for it: that one is switched
/// off afterwards, whatever the station was changed to meanwhile.
struct WaitingStation {
    int row = -1;  ///< -1: it was deleted
    prog::Signal output;
};

/// The projects that wait for their start, in the order of their triggers. A project is in it once,
/// with every station that asked for it. The first one stays in it while it runs.
class StationQueue {
public:
    struct Entry {
        int id;  ///< of this request: the project may leave the queue and come again
        QString project;
        QVector<WaitingStation> stations;  ///< the first asked first
    };

    [[nodiscard]] bool isEmpty() const { return entries_.isEmpty(); }
    [[nodiscard]] int size() const { return entries_.size(); }
    [[nodiscard]] const Entry& first() const { return entries_.first(); }
    /// Whether that request is the first one still.
    [[nodiscard]] bool isFirst(int id) const { return !isEmpty() && first().id == id; }

    /// A station asks for a project. One that did so already, with the same output, changes nothing.
    void add(const QString& project, const WaitingStation& station);
    /// Takes the first project out.
    Entry takeFirst();
    /// Takes all of them out; `keepFirst`: but for the first one, which runs. Whoever waited for them.
    QVector<WaitingStation> takeAll(bool keepFirst);
    /// A row asks for nothing any more. Projects that nobody else asked for leave the queue. `keepFirst`:
    /// the first one runs, nothing of it changes. The outputs that were switched on for the row.
    QVector<WaitingStation> withdraw(int row, bool keepFirst);
    /// The rows below move up.
    void removeRow(int row);

private:
    QVector<Entry> entries_;
    int lastId_ = 0;
};

}  // namespace lumo
