#include "files/tracedchild.h"

#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <new>

namespace files {

namespace {

using Registers = user_regs_struct;

const unsigned long long fileCalls[] = {
    SYS_open,      SYS_openat,     SYS_close,  SYS_read,    SYS_pread64,  SYS_write,     SYS_writev,
    SYS_pwrite64,  SYS_lseek,      SYS_stat,   SYS_lstat,   SYS_fstat,    SYS_statx,     SYS_newfstatat,
    SYS_access,    SYS_faccessat,  SYS_rename, SYS_link,    SYS_renameat, SYS_renameat2, SYS_faccessat2,
    SYS_readlink,  SYS_unlinkat,   SYS_linkat, SYS_unlink,  SYS_chmod,    SYS_fchmod,    SYS_fchmodat,
    SYS_fsync,     SYS_fdatasync,  SYS_fcntl,  SYS_flock,   SYS_getcwd,   SYS_mkdir,     SYS_mkdirat,
    SYS_ftruncate, SYS_readlinkat, SYS_statfs, SYS_symlink, SYS_sendfile, SYS_fstatfs,   SYS_copy_file_range};

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
    if (fault.deed == Deed::Kill) {
        return ::kill(child, SIGKILL) == 0;
    }
    const auto count = registers.rdx;
    if (fault.deed == Deed::Fail) {
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
    if (fault.deed == Deed::Fail) {
        registers.rax = static_cast<unsigned long long>(-fault.error);
    }
    ::ptrace(PTRACE_SETREGS, child, nullptr, &registers);
    return true;
}

}  // namespace

Report* sharedReport() {
    static void* const memory =
        ::mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return static_cast<Report*>(memory);
}

bool canTrace() {
    return !follow(1, {"", Deed::Fail}, [] {}).crashed;
}

Outcome follow(int call, const Fault& fault, const std::function<void()>& work) {
    Outcome outcome;
    const pid_t child = forkTraced(work);
    outcome.crashed = child < 0;
    while (child >= 0 && goOn(child, &outcome)) {
        Registers registers{};
        ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
        // The kernel leaves this in the result's place until the call is over.
        const bool isEntry = static_cast<long>(registers.rax) == -ENOSYS;
        const bool isOfFiles = std::count(std::begin(fileCalls), std::end(fileCalls), registers.orig_rax) > 0;
        if (isEntry && isOfFiles && !sharedReport()->done && ++outcome.calls == call) {
            outcome.isDone = inject(child, fault, registers, &outcome);
        }
    }
    outcome.crashed = outcome.crashed && !(outcome.isDone && fault.deed == Deed::Kill);
    return outcome;
}

}  // namespace files
