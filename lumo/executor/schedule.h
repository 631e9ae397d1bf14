#pragma once

#include "equipment/ports.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <vector>

/// One write of a timed sequence to a logical output port.
struct PortStep {
    /// How the step is treated when the sequence does not run to its end.
    enum class Role {
        Progress,   ///< ramp steps, wire on: dropped when a new sequence begins
        RampDown,   ///< Progress that must not raise the power: written as min(value, last power)
        SwitchOff,  ///< done at once when a new sequence begins
        GasOff,     ///< dropped when a new sequence begins, which then owns the gas
    };

    I_PORT port = DO_GAS;
    double value = 0.0;  ///< digital: 0 or 1; analogue: fraction of full scale
    Role role = Role::Progress;
};

/// A port step and its time in ms from the beginning of its sequence.
struct TimedStep {
    int ms = 0;
    PortStep step;
};
using Sequence = std::vector<TimedStep>;

/// Everything that the executor does at a later time, in one list walked by one timer: the steps of
/// laser sequences and the ends of timed waits. Entries due together run in the order they were
/// added, also when a busy machine runs them late. Times are the host clock's milliseconds.
class Schedule : public QObject {
    Q_OBJECT
public:
    explicit Schedule(QObject* parent = nullptr);

    /// What performs a port step.
    void setPerformer(std::function<void(const PortStep&)> performer);

    void add(qint64 baseMs, const Sequence& sequence);
    /// Calls `expired` at `dueMs`, once. Returns an id above 0.
    int wakeAt(qint64 dueMs, std::function<void()> expired);
    /// A wake that has gone off, or was cancelled, is no error.
    void cancelWake(int id);

    /// Runs what is due by now. For other timers of the executor to call first, so that what was
    /// scheduled before them comes before them.
    void runDue();

    /// Removes all port steps, with those that end the gas or without them, and returns them in their order;
    /// wakes stay. Tells nobody: what is taken may have to be done before anybody may hear that nothing is
    /// pending.
    std::vector<PortStep> takeSteps(bool withGasOff = true);
    /// Removes pending progress steps of one port.
    void dropProgress(I_PORT port);
    [[nodiscard]] bool isPending(I_PORT port, PortStep::Role role) const;
    [[nodiscard]] int pendingSteps() const;

signals:
    void pendingChanged();

private:
    struct Entry {
        int wakeId = 0;  ///< 0: a port step
        PortStep step;
        std::function<void()> expired;
    };

    void arm();
    template <typename Predicate>
    bool removeWhere(Predicate predicate);

    QTimer timer_;
    std::multimap<qint64, Entry> entries_;  ///< by due time; equal times in the order of insertion
    std::function<void(const PortStep&)> performer_;
    int lastWakeId_ = 0;
};
