#include "bridge/batch.h"

#include "bridge/results.h"

#include <utility>

namespace bridge {

Batch::Batch(Controller* backend, Results* results, bool takesRefusals)
    : backend_(backend), results_(results), takesRefusals_(takesRefusals) {}

void Batch::add(const Motion& motion) {
    if (takesRefusals_) {
        backend_->queue(motion);
    } else {
        waiting_.push_back(motion);
    }
}

void Batch::release(bool powered) {
    if (takesRefusals_) {
        backend_->release();
        return;
    }
    const std::vector<Motion> motions = std::exchange(waiting_, {});
    if (isRefused_ || motions.empty()) {
        return;
    }
    if (!powered) {
        isRefused_ = true;
        results_->refuse(motions.front().id, DriveOff);
        return;
    }
    bool isAny = false;
    for (const Motion& motion : motions) {
        if (motion.refusal != MotionDone) {
            isRefused_ = true;
            results_->refuse(motion.id, motion.refusal);
            break;
        }
        isAny = true;
        backend_->queue(motion);
    }
    if (isAny) {
        backend_->release();
    }
}

void Batch::clear() {
    waiting_.clear();
    isRefused_ = false;
}

}  // namespace bridge
