#pragma once

#include <functional>

namespace files {

/// What a child tells, in memory shared with its parent: it survives the child's sudden end.
struct Report {
    volatile bool done = false;    ///< the work returned
    volatile bool result = false;  ///< of the work, for its own use
    volatile int problems = 0;     ///< reports of the host's file service that gave a reason
};
Report* sharedReport();

/// Where a traced child stands: before or behind a system call.
struct Stop {
    int number = 0;              ///< of all of its stops, counted from 1
    int fileCall = 0;            ///< before a call that concerns files: number of it, counted from 1; else 0
    const char* name = "other";  ///< of the call
};

/// What is done to the call before which a child stands: an errno in place of the call, or half of the bytes
/// that it was to read or write.
struct Fault {
    int error = 0;
    bool half = false;
};

struct Outcome {
    bool killed = false;    ///< where it was to be
    bool injected = false;  ///< the fault had a meaning for the call and was done
    bool crashed = false;   ///< by a signal of its own
    int fileCalls = 0;
    const char* name = "";  ///< of the call that was killed or failed
};

/// Whether this machine can trace a child and change its calls; some containers forbid it.
bool canTrace();
/// Forks, and kills the child, which does `work`, at this stop.
Outcome killAt(int stop, const std::function<void()>& work);
/// Forks; the child does `work`, whose file call of this number goes wrong.
Outcome failCall(int fileCall, const Fault& fault, const std::function<void()>& work);

}  // namespace files
