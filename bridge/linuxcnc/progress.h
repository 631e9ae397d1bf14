#pragma once

#include "bridge/linuxcnc/batch.h"
#include "bridge/linuxcnc/machinestate.h"

namespace bridge::linuxcnc {

/// The id of a motion that no command ordered: a jog, alone in its batch. It has no result.
constexpr int jogId = 0;

/// Tells from LinuxCNC's state which motions of a batch have ended.
class Progress {
public:
    Progress(int number, Batch batch) : number_(number), batch_(std::move(batch)) {}

    int number() const { return number_; }
    const Batch& batch() const { return batch_; }
    bool isJog() const { return !batch_.targets.empty() && batch_.targets.front().id == jogId; }
    bool hasBegun(const MachineState& state) const { return state.batch == number_; }
    bool isDone(const MachineState& state) const { return state.done == number_ || batch_.lines.isEmpty(); }

    /// Takes LinuxCNC's state. The line under way changes where a blended corner begins; the motion before
    /// ends in the corner's middle, when `tool` (m) no longer comes nearer to it.
    void follow(const MachineState& state, const KDL::Vector& tool);
    /// How many motions have ended and were not told.
    int due() const { return ended_ - told_; }
    /// How many were not told.
    int untold() const { return int(batch_.targets.size()) - told_; }
    bool isTold() const { return untold() == 0; }
    /// The id of the next one, which counts as told then.
    int tell() { return batch_.targets[std::size_t(told_++)].id; }
    /// The id of the first that was not told; that of the failed one behind all others.
    int currentId() const;

private:
    /// Index of the motion under way, or of the one behind a joint motion that has ended.
    int current(const MachineState& state);

    int number_;
    Batch batch_;
    int ended_ = 0, told_ = 0;
    int line_ = 0;         ///< the last that was under way
    double nearest_ = -1;  ///< of the tool to the corner, m; negative: not there yet
};

}  // namespace bridge::linuxcnc
