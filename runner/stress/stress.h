#pragma once

namespace run {

struct Options;

/// Runs the project under random schedules of disturbances, drawn from a seed (--stress), writes a scenario
/// for each schedule that breaks a rule, and prints counts. Returns the exit status: 0 none broke a rule, 1
/// some did, 2 bad input.
int runStress(const Options& options);

}  // namespace run
