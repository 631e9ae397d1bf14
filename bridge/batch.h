#pragma once

#include "bridge/controller.h"

#include <vector>

namespace bridge {

class Results;

/// Gives a backend the motions of a batch. A backend that takes refusals gets each motion when it is ordered;
/// any other gets them with the release, up to the first that cannot be made, which the adapter answers
/// itself.
class Batch {
public:
    /// Both must outlive it.
    Batch(Controller* backend, Results* results, bool takesRefusals);

    void add(const Motion& motion);
    /// Without power the first motion fails with DriveOff.
    void release(bool powered);
    /// Forgets the motions that wait, after a stop or a failure.
    void clear();

private:
    Controller* backend_;
    Results* results_;
    const bool takesRefusals_;
    std::vector<Motion> waiting_;
    bool isRefused_ = false;  ///< a motion of the batches under way fails; what comes behind is dropped
};

}  // namespace bridge
