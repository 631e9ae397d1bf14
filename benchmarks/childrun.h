#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// Other programs, measured from outside.
namespace bench {

/// A program in the build tree's folder of programs.
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
    int status = -1;  ///< exit status; -1 when it did not end by itself
};

/// Starts the program, without its output. 0 when it cannot be started.
pid_t begin(const Call& call);
/// Waits for its end.
Spent finish(pid_t child);
/// Starts it and waits for its end.
Spent run(const Call& call);

/// Processor time of a running process so far, in seconds.
double processorTime(pid_t child);
/// Ends a process that was begun here, and waits.
void end(pid_t child);

/// An X server of our own, without a screen, for as long as this lives.
class Screen {
public:
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    /// ":N"; empty where no server could be started.
    [[nodiscard]] const std::string& name() const { return name_; }

private:
    pid_t server_ = 0;
    std::string name_;
};

}  // namespace bench
