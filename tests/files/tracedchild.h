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

/// What is done to the call before which a child stands: the child is killed, the call is not made and has
/// this error, or it gets half of the bytes that it was to read or write.
enum class Deed { Kill, Fail, Halve };
struct Fault {
    const char* name;
    Deed deed;
    int error = 0;
};

struct Outcome {
    bool isDone = false;   ///< the fault, which has no meaning for some calls
    bool crashed = false;  ///< by itself
    int calls = 0;         ///< that concern files
};

/// Whether this machine can trace a child and change its calls; some containers forbid it.
bool canTrace();
/// Forks; the child does `work`, and the fault comes at its file call of this number, from 1.
Outcome follow(int call, const Fault& fault, const std::function<void()>& work);

}  // namespace files
