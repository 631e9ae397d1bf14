#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// Starting other programs and measuring them.
namespace bench {

/// Path of a program of the build tree.
std::string built(const std::string& name);

/// A program to run: its file, its arguments, and "NAME=VALUE" added to the environment.
struct Call {
    std::string file;
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
};

struct Spent {
    double wallS = 0.0;
    double processorS = 0.0;
    double peakMb = 0.0;  ///< of main memory
    int status = -1;      ///< exit status; -1 when it was killed
};

/// Starts the program and discards its output. Returns 0 when it cannot be started.
pid_t begin(const Call& call);
/// Waits for the end of a process.
Spent finish(pid_t child);
/// Starts a program and waits for its end.
Spent run(const Call& call);

/// Processor time of a running process, in seconds.
double processorTime(pid_t child);
/// Ends a process started here and waits for it.
void end(pid_t child);

/// Runs an X server without a screen during its lifetime.
class Screen {
public:
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    /// ":N"; empty when no server could be started.
    [[nodiscard]] const std::string& name() const { return name_; }

private:
    pid_t server_ = 0;
    std::string name_;
};

}  // namespace bench
