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

namespace {

#ifdef __x86_64__
/// The calls that concern files and descriptors.
const std::map<long, const char*>& fileCalls() {
    static const std::map<long, const char*> calls{
        {SYS_open, "open"},         {SYS_openat, "openat"},       {SYS_close, "close"},
        {SYS_read, "read"},         {SYS_pread64, "pread64"},     {SYS_write, "write"},
        {SYS_writev, "writev"},     {SYS_pwrite64, "pwrite64"},   {SYS_lseek, "lseek"},
        {SYS_stat, "stat"},         {SYS_lstat, "lstat"},         {SYS_fstat, "fstat"},
        {SYS_statx, "statx"},       {SYS_newfstatat, "fstatat"},  {SYS_access, "access"},
        {SYS_faccessat, "access"},  {SYS_faccessat2, "access"},   {SYS_readlink, "readlink"},
        {SYS_rename, "rename"},     {SYS_renameat, "rename"},     {SYS_renameat2, "rename"},
        {SYS_link, "link"},         {SYS_linkat, "link"},         {SYS_unlink, "unlink"},
        {SYS_unlinkat, "unlink"},   {SYS_chmod, "chmod"},         {SYS_fchmod, "fchmod"},
        {SYS_fchmodat, "fchmodat"}, {SYS_ftruncate, "ftruncate"}, {SYS_fsync, "fsync"},
        {SYS_fdatasync, "fsync"},   {SYS_fcntl, "fcntl"},         {SYS_flock, "flock"},
        {SYS_getcwd, "getcwd"},     {SYS_ioctl, "ioctl"},         {SYS_mkdir, "mkdir"},
        {SYS_statfs, "statfs"},     {SYS_fstatfs, "fstatfs"},     {SYS_getdents64, "getdents"},
        {SYS_symlink, "symlink"},   {SYS_utimensat, "utimensat"}, {SYS_copy_file_range, "copy_file_range"},
        {SYS_sendfile, "sendfile"}};
    return calls;
}
#endif

pid_t forkTraced(const std::function<void()>& work) {
    Report* const report = newReport();
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
bool nextStop(pid_t child, Outcome* outcome) {
    long signal = 0;
    for (;;) {
        int status = 0;
        if (::ptrace(PTRACE_SYSCALL, child, nullptr, signal) != 0 || ::waitpid(child, &status, 0) != child) {
            return false;
        }
        if (WIFEXITED(status)) {
            outcome->crashed = WEXITSTATUS(status) != 0;  // the sanitizers end so
            return false;
        }
        if (WIFSIGNALED(status)) {
            outcome->crashed = true;
            return false;
        }
        if (WSTOPSIG(status) == (SIGTRAP | 0x80)) {
            return true;
        }
        signal = WSTOPSIG(status);
    }
}

void endChild(pid_t child) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

void runOn(pid_t child, Outcome* outcome) {
    while (nextStop(child, outcome)) {
    }
}

#ifdef __x86_64__
QString callName(const user_regs_struct& registers) {
    const auto found = fileCalls().find(long(registers.orig_rax));
    return found == fileCalls().end() ? QStringLiteral("other") : QString::fromLatin1(found->second);
}

/// Does the fault to the call on whose entry the child stands; false where it has no meaning.
bool inject(pid_t child, const Fault& fault, user_regs_struct registers, Outcome* outcome) {
    const auto count = registers.rdx;
    if (fault.kind == Fault::ShortCount) {
        const bool counts = registers.orig_rax == SYS_write || registers.orig_rax == SYS_read;
        if (!counts || count < 2) {
            return false;
        }
        registers.rdx = count / 2;
    } else {
        registers.orig_rax = static_cast<unsigned long long>(-1);  // no call at all
    }
    ::ptrace(PTRACE_SETREGS, child, nullptr, &registers);
    if (!nextStop(child, outcome)) {
        return false;
    }
    ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.rdx = count;
    if (fault.kind == Fault::Error) {
        registers.rax = static_cast<unsigned long long>(-fault.error);
    }
    ::ptrace(PTRACE_SETREGS, child, nullptr, &registers);
    return true;
}
#endif

}  // namespace

Report* sharedReport() {
    static void* const memory =
        ::mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    static Report* const report = new (memory) Report;
    return report;
}

Report* newReport() {
    return new (sharedReport()) Report;
}

bool canTrace() {
#ifdef __x86_64__
    Outcome outcome;
    const pid_t child = forkTraced([] {});
    if (child < 0) {
        return false;
    }
    runOn(child, &outcome);
    return !outcome.crashed;
#else
    return false;
#endif
}

Outcome killAtStop(int stop, const std::function<void()>& work) {
    Outcome outcome;
#ifdef __x86_64__
    Report* const report = sharedReport();
    const pid_t child = forkTraced(work);
    if (child < 0) {
        outcome.crashed = true;
        return outcome;
    }
    while (nextStop(child, &outcome)) {
        if (report->done) {
            runOn(child, &outcome);
            break;
        }
        ++outcome.stops;
        if (outcome.stops == stop) {
            user_regs_struct registers{};
            ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
            outcome.call = callName(registers);
            outcome.killed = true;
            endChild(child);
            break;
        }
    }
#else
    Q_UNUSED(stop)
    Q_UNUSED(work)
#endif
    return outcome;
}

Outcome failCall(int call, const Fault& fault, const std::function<void()>& work) {
    Outcome outcome;
#ifdef __x86_64__
    Report* const report = sharedReport();
    const pid_t child = forkTraced(work);
    if (child < 0) {
        outcome.crashed = true;
        return outcome;
    }
    int calls = 0;
    while (nextStop(child, &outcome)) {
        if (report->done) {
            continue;
        }
        user_regs_struct registers{};
        ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
        // The kernel leaves this in the result's place until the call is over.
        const bool isEntry = static_cast<long>(registers.rax) == -ENOSYS;
        if (isEntry && fileCalls().count(long(registers.orig_rax)) != 0 && ++calls == call) {
            outcome.call = callName(registers);
            outcome.injected = inject(child, fault, registers, &outcome);
        }
    }
    outcome.stops = calls;
#else
    Q_UNUSED(call)
    Q_UNUSED(fault)
    Q_UNUSED(work)
#endif
    return outcome;
}

}  // namespace files
