#include "files/tracedchild.h"

#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <map>
#include <new>

namespace files {

Report* sharedReport() {
    static void* const memory =
        ::mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return static_cast<Report*>(memory);
}

#ifdef __x86_64__

namespace {

using Registers = user_regs_struct;

const std::map<unsigned long long, const char*> fileCalls{
    {SYS_open, "open"},         {SYS_openat, "openat"},      {SYS_close, "close"},
    {SYS_read, "read"},         {SYS_pread64, "pread64"},    {SYS_write, "write"},
    {SYS_writev, "writev"},     {SYS_pwrite64, "pwrite64"},  {SYS_lseek, "lseek"},
    {SYS_stat, "stat"},         {SYS_lstat, "lstat"},        {SYS_fstat, "fstat"},
    {SYS_statx, "statx"},       {SYS_newfstatat, "fstatat"}, {SYS_access, "access"},
    {SYS_faccessat, "access"},  {SYS_faccessat2, "access"},  {SYS_readlink, "readlink"},
    {SYS_rename, "rename"},     {SYS_renameat, "rename"},    {SYS_renameat2, "rename"},
    {SYS_link, "link"},         {SYS_linkat, "link"},        {SYS_unlink, "unlink"},
    {SYS_unlinkat, "unlink"},   {SYS_chmod, "chmod"},        {SYS_fchmod, "fchmod"},
    {SYS_fchmodat, "fchmodat"}, {SYS_fsync, "fsync"},        {SYS_fdatasync, "fsync"},
    {SYS_fcntl, "fcntl"},       {SYS_flock, "flock"},        {SYS_getcwd, "getcwd"},
    {SYS_mkdir, "mkdir"},       {SYS_statfs, "statfs"},      {SYS_fstatfs, "fstatfs"},
    {SYS_symlink, "symlink"},   {SYS_sendfile, "sendfile"},  {SYS_copy_file_range, "copy_file_range"}};

pid_t forkTraced(const std::function<void()>& work) {
    Report* const report = new (sharedReport()) Report;
    const pid_t child = ::fork();
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            ::_exit(2);
        }
        ::raise(SIGSTOP);  // what comes from here on is counted
        work();
        report->done = true;
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) {
        return -1;
    }
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    return child;
}

/// Goes on to the next stop at a system call; false when the child has ended.
bool goOn(pid_t child, Outcome* outcome) {
    long signal = 0;
    for (;;) {
        int status = 0;
        if (::ptrace(PTRACE_SYSCALL, child, nullptr, signal) != 0 || ::waitpid(child, &status, 0) != child) {
            return false;
        }
        if (WIFEXITED(status) || WIFSIGNALED(status)) {
            outcome->crashed = WIFSIGNALED(status) || WEXITSTATUS(status) != 0;
            return false;
        }
        if (WSTOPSIG(status) == (SIGTRAP | 0x80)) {
            return true;
        }
        signal = WSTOPSIG(status);
    }
}

/// Does the fault to the call before which the child stands; false where it has no meaning.
bool inject(pid_t child, const Fault& fault, Registers registers, Outcome* outcome) {
    const auto count = registers.rdx;
    if (!fault.half) {
        registers.orig_rax = static_cast<unsigned long long>(-1);  // no call at all
    } else if ((registers.orig_rax == SYS_write || registers.orig_rax == SYS_read) && count > 1) {
        registers.rdx = count / 2;
    } else {
        return false;
    }
    ::ptrace(PTRACE_SETREGS, child, nullptr, &registers);
    if (!goOn(child, outcome)) {
        return false;
    }
    ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.rdx = count;
    if (!fault.half) {
        registers.rax = static_cast<unsigned long long>(-fault.error);
    }
    ::ptrace(PTRACE_SETREGS, child, nullptr, &registers);
    return true;
}

using Deed = std::function<bool(pid_t, const Stop&, const Registers&, Outcome*)>;

/// Follows a child to its end. `deed` is asked at each stop until it says that it has done its part.
Outcome follow(const std::function<void()>& work, const Deed& deed) {
    Outcome outcome;
    const pid_t child = forkTraced(work);
    outcome.crashed = child < 0;
    bool isDone = false;
    for (Stop stop; child >= 0 && goOn(child, &outcome);) {
        if (isDone || sharedReport()->done) {
            continue;
        }
        Registers registers{};
        ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
        const auto found = fileCalls.find(registers.orig_rax);
        // The kernel leaves this in the result's place until the call is over.
        const bool isEntry = static_cast<long>(registers.rax) == -ENOSYS;
        ++stop.number;
        stop.name = found == fileCalls.end() ? "other" : found->second;
        stop.fileCall = isEntry && found != fileCalls.end() ? ++outcome.fileCalls : 0;
        isDone = deed(child, stop, registers, &outcome);
        if (isDone) {
            outcome.name = stop.name;
        }
    }
    return outcome;
}

}  // namespace

bool canTrace() {
    return !follow([] {}, [](auto&&...) { return false; }).crashed;
}

Outcome killAt(int stop, const std::function<void()>& work) {
    Outcome outcome = follow(work, [stop](pid_t child, const Stop& at, const Registers&, Outcome* out) {
        out->killed = at.number == stop;
        return out->killed && ::kill(child, SIGKILL) == 0;
    });
    outcome.crashed = outcome.crashed && !outcome.killed;
    return outcome;
}

Outcome failCall(int fileCall, const Fault& fault, const std::function<void()>& work) {
    return follow(work, [&](pid_t child, const Stop& at, const Registers& registers, Outcome* out) {
        if (at.fileCall != fileCall) {
            return false;
        }
        out->injected = inject(child, fault, registers, out);
        return true;
    });
}

#else

bool canTrace() {
    return false;
}
Outcome killAt(int, const std::function<void()>&) {
    return {};
}
Outcome failCall(int, const Fault&, const std::function<void()>&) {
    return {};
}

#endif

}  // namespace files
