#include "bridge/linuxcnc/progress.h"

#include <algorithm>
#include <cmath>

namespace bridge::linuxcnc {

namespace {
constexpr double noNearer = 1e-6;  // m
}

int Progress::current(const MachineState& state) {
    const int lines = int(batch_.owners.size());
    if (state.line > 0 && state.line <= lines) {
        line_ = state.line;
    }
    if (line_ == 0) {
        return 0;
    }
    const int owner = batch_.owners[std::size_t(line_ - 1)];
    // Between a joint motion and the next one LinuxCNC stands for some 90 ms and has no line.
    const bool isOver = state.line == 0 && batch_.targets[std::size_t(owner)].isJoint;
    return isOver ? owner + 1 : owner;
}

void Progress::follow(const MachineState& state, const KDL::Vector& tool) {
    const int count = int(batch_.targets.size());
    if (isDone(state)) {
        ended_ = count;
    }
    if (!hasBegun(state)) {
        return;
    }
    const int now = current(state);
    while (ended_ < now) {
        const Batch::Target& target = batch_.targets[std::size_t(ended_)];
        if (target.isCorner && ended_ + 1 == now) {
            const KDL::Vector left = target.place - tool;
            const double distance = std::sqrt(dot(left, left));
            if (nearest_ < 0 || distance < nearest_ - noNearer) {
                nearest_ = distance;
                break;
            }
        }
        nearest_ = -1;
        ++ended_;
    }
}

int Progress::currentId() const {
    return told_ < int(batch_.targets.size()) ? batch_.targets[std::size_t(told_)].id : batch_.failedId;
}

}  // namespace bridge::linuxcnc
