#pragma once

#include "app/progress/runestimate.h"

#include <vector>

namespace app {

/// How far a run has come, by what its lines are estimated to take. Times are those of one clock,
/// milliseconds.
class RunProgress {
public:
    struct View {
        qint64 leftMs = 0;      ///< without what inputs keep the run waiting
        double share = 0;       ///< 0 to 1; never less than at a moment before
        bool waits = false;     ///< an input is being waited for
        bool willWait = false;  ///< one is still to come
    };

    RunProgress(std::vector<LineEstimate> lines, int line, qint64 nowMs);

    /// Lines outside the program are passed over.
    void beginLine(int line, qint64 nowMs);
    View at(qint64 nowMs) const;

private:
    std::vector<LineEstimate> lines_;
    std::vector<qint64> behindMs_;  ///< of each line: what all the lines behind it take
    std::vector<bool> inputBehind_;
    int line_ = 0;
    qint64 lineBegunMs_ = 0;
    qint64 totalMs_ = 0;
};

}  // namespace app
