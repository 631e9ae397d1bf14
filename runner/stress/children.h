#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace run::stress {

/// What a child process gave back.
struct Answer {
    QByteArray text;
    QString death;  ///< how the process died or that it hangs; empty when it ended as it should
};

/// Runs jobs in copies of this process, several at a time. So each job begins in the same state, whatever the
/// others have done, and one that crashes or hangs ends alone.
class Children {
public:
    /// `limitMs`: wall time after which a process counts as hanging and is killed.
    Children(int atOnce, int limitMs) : atOnce_(atOnce), limitMs_(limitMs) {}

    /// `job` gets the numbers 0 to count - 1, in a child each; `take` the answers, in this order.
    void run(int count, const std::function<QByteArray(int)>& job,
             const std::function<void(int, const Answer&)>& take) const;

private:
    int atOnce_, limitMs_;
};

}  // namespace run::stress
