#include "childrun.h"

#include <sys/resource.h>
#include <sys/wait.h>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>

namespace bench {

namespace {

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

/// Runs in the child: executes the program.
[[noreturn]] void become(const Call& call) {
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nowhere, stream);
    }
    for (const std::string& entry : call.environment) {
        const std::size_t split = entry.find('=');
        setenv(entry.substr(0, split).c_str(), entry.substr(split + 1).c_str(), 1);
    }
    std::vector<char*> arguments{const_cast<char*>(call.file.c_str())};
    for (const std::string& argument : call.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    execvp(call.file.c_str(), arguments.data());
    constexpr int notFound = 127;
    _exit(notFound);
}

}  // namespace

std::string built(const std::string& name) {
    return std::string(PROGRAMS) + "/" + name;
}

pid_t begin(const Call& call) {
    const pid_t child = fork();
    if (child == 0) {
        become(call);
    }
    return child < 0 ? 0 : child;
}

Spent finish(pid_t child) {
    Spent spent;
    rusage usage{};
    int status = 0;
    if (wait4(child, &status, 0, &usage) == child && WIFEXITED(status)) {
        spent.status = WEXITSTATUS(status);
    }
    spent.processorS = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    constexpr double kbPerMb = 1024.0;
    spent.peakMb = static_cast<double>(usage.ru_maxrss) / kbPerMb;
    return spent;
}

Spent run(const Call& call) {
    const double start = now();
    const pid_t child = begin(call);
    Spent spent = child == 0 ? Spent() : finish(child);
    spent.wallS = now() - start;
    return spent;
}

double processorTime(pid_t child) {
    std::ifstream file("/proc/" + std::to_string(child) + "/stat");
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    // The name before it is in brackets and may contain blanks.
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    constexpr int fieldsBefore = 11;
    std::string skipped;
    for (int field = 0; field < fieldsBefore; ++field) {
        fields >> skipped;
    }
    double user = 0.0, system = 0.0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

void end(pid_t child) {
    kill(child, SIGTERM);
    finish(child);
}

Screen::Screen() {
    int ends[2];
    if (pipe(ends) != 0) {
        return;
    }
    server_ =
        begin({"Xvfb",
               {"-displayfd", std::to_string(ends[1]), "-screen", "0", "1920x1080x24", "-nolisten", "tcp"},
               {}});
    close(ends[1]);
    std::string number;
    for (char letter = 0; read(ends[0], &letter, 1) == 1 && letter != '\n';) {
        number += letter;
    }
    close(ends[0]);
    name_ = number.empty() ? number : ":" + number;
}

Screen::~Screen() {
    if (server_ != 0) {
        end(server_);
    }
}

}  // namespace bench
