#pragma once

#include <QString>

#include <functional>

namespace files {

/// What a child tells, in memory shared with its parent: it survives the child's sudden end.
struct Report {
    volatile int started = 0;    ///< generation of the save that was begun
    volatile int finished = 0;   ///< generation of the last that returned
    volatile bool done = false;  ///< the work returned
    volatile bool result = false;
    volatile int problems = 0;  ///< reports of the host's file service that gave a reason
    volatile bool loaded = false;
};

/// One for a process and its children.
Report* sharedReport();
/// The same, cleared for the next child.
Report* newReport();

/// What is done to one call of a traced child.
struct Fault {
    enum Kind { Error, ShortCount };
    Kind kind = Error;
    int error = 0;  ///< an errno
};

/// What became of a traced child.
struct Outcome {
    bool killed = false;    ///< at the stop that was asked for
    bool crashed = false;   ///< by a signal of its own
    bool injected = false;  ///< the call that was asked for came, and the fault could be done to it
    int stops = 0;          ///< of system calls until then; of failCall: file-system calls
    QString call;           ///< name of the call of the kill or of the fault
};

/// Whether this machine can trace, and change the calls of, a child; some containers forbid it.
bool canTrace();

/// Forks; the child does `work`. It is killed at its stop number `stop`, counted from 1: each system call
/// stops on entry and on exit. 0 never kills.
Outcome killAtStop(int stop, const std::function<void()>& work);

/// Forks; in the child file-system call number `call` of `work`, counted from 1, goes wrong.
Outcome failCall(int call, const Fault& fault, const std::function<void()>& work);

}  // namespace files
