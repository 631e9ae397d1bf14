#pragma once

#include "program/laserplan.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <map>
#include <vector>

namespace lumo {

/// Everything that the executor does at a later time, in one list walked by one timer: the steps of
/// openings and closings and the ends of timed waits. Entries due together run in the order they were
/// added, also when a busy machine runs them late. Times are the host clock's milliseconds.
///
/// Openings, closings and shutdowns are sequences. Each new one supersedes the one before: from then on the
/// schedule performs and adds nothing for the old one.
class Schedule : public QObject {
    Q_OBJECT
public:
    explicit Schedule(QObject* parent = nullptr);

    /// What performs a port step.
    void setPerformer(std::function<void(const prog::PortStep&)> performer);

    // --- Sequences ----------------------------------------------------------------------------

    /// The number of the newest sequence.
    [[nodiscard]] int newest() const { return newest_; }
    [[nodiscard]] bool isSuperseded(int sequence) const { return sequence != newest_; }
    /// Begins a sequence and returns its number. Pending switch-offs of earlier ones are performed at once,
    /// in the order of a shutdown; their other steps are dropped. With `keepsGasOff` a pending gas-off stays
    /// planned. Listeners of the writes can supersede the new sequence before this returns.
    int begin(bool keepsGasOff = false);
    /// Supersedes without performing or dropping anything: for a shutdown, which writes all outputs itself.
    void supersede() { ++newest_; }
    /// Drops all steps that are planned. Does not emit pendingChanged(): the caller may first have to write
    /// the outputs.
    void drop();

    /// Performs a step at once, adds steps: unless the sequence is superseded.
    void perform(int sequence, const prog::PortStep& step);
    void add(int sequence, qint64 baseMs, const std::vector<prog::TimedStep>& steps);

    /// Removes pending progress steps of one port.
    void dropProgress(I_PORT port);
    [[nodiscard]] bool isPending(I_PORT port, prog::PortStep::Role role) const;
    [[nodiscard]] int pendingSteps() const;

    // --- Wakes --------------------------------------------------------------------------------

    /// Calls `expired` at `dueMs`, once. Returns an id above 0.
    int wakeAt(qint64 dueMs, std::function<void()> expired);
    /// A wake that has gone off, or was cancelled, is no error.
    void cancelWake(int id);

    /// Runs what is due by now. The pulse timer calls this first, so that steps which were due before it come
    /// before it.
    void runDue();

signals:
    void pendingChanged();

private:
    struct Entry {
        int wakeId = 0;  ///< 0: a port step
        prog::PortStep step;
        std::function<void()> expired;
    };

    std::vector<prog::PortStep> takeSteps(bool withGasOff);
    void arm();
    template <typename Predicate>
    bool removeWhere(Predicate predicate);

    QTimer timer_;
    std::multimap<qint64, Entry> entries_;  ///< by due time; equal times in the order of insertion
    std::function<void(const prog::PortStep&)> performer_;
    /// Switch-offs of superseded sequences that begin() has still to perform. A member, because performing
    /// can re-enter: a sequence that a listener begins finishes these first.
    std::deque<prog::PortStep> settling_;
    int newest_ = 0;
    int lastWakeId_ = 0;
};

}  // namespace lumo
