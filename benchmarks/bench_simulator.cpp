// Speed of the simulated cell: virtual time of the examples and of the hour of production, divided by the
// runner's processor time.

#include "childrun.h"
#include "sidebyside.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

constexpr double target = 1000.0;

struct Run {
    std::string name;
    std::vector<std::string> arguments;
};

Run example(const std::string& name) {
    const std::string folder = EXAMPLES "/" + name;
    return {name, {"--scenario", folder + "/scenario.json", folder + "/" + name + ".json"}};
}

Run hour() {
    const std::string folder = EXAMPLES "/stations";
    return {"the hour of production", {"--stations", folder, "--scenario", folder + "/scenario.json"}};
}

bench::Call callOf(const Run& run, const std::vector<std::string>& more) {
    bench::Call call{bench::built("lumo-run"), more, {"LC_ALL=C.UTF-8"}};
    call.arguments.insert(call.arguments.end(), run.arguments.begin(), run.arguments.end());
    return call;
}

/// Virtual seconds of the run, from the last line of its trace; 0 without one.
double virtualSeconds(const Run& run) {
    char name[] = "/tmp/lumo-bench-XXXXXX";
    const int file = mkstemp(name);
    close(file);
    bench::run(callOf(run, {"--quiet", "--trace", name}));
    std::ifstream trace(name);
    std::string line, last;
    while (std::getline(trace, line)) {
        last = line;
    }
    unlink(name);
    const std::size_t place = last.rfind("\"ms\":");
    return place == std::string::npos ? 0.0 : std::stod(last.substr(place + 5)) / 1000.0;
}

/// Virtual seconds per second of the whole call; with `running` without the time of a call that ends at once.
void measure(benchmark::State& state, const Run& run, bool running) {
    constexpr int rounds = 21;
    for ([[maybe_unused]] auto iteration : state) {
        const double virtualS = virtualSeconds(run);
        if (virtualS <= 0.0) {
            state.SkipWithError("no run");
            return;
        }
        std::vector<double> wholeS, startS;
        for (int round = 0; round < rounds; ++round) {
            wholeS.push_back(bench::run(callOf(run, {"--quiet"})).processorS);
            startS.push_back(bench::run(callOf(run, {"--quiet", "--until", "1"})).processorS);
        }
        const double start = bench::median(startS);
        const double spentS = bench::median(wholeS) - (running ? start : 0.0);
        bench::report(state, virtualS / spentS, "virtual seconds a second", target,
                      running ? bench::Bound::AtLeast : bench::Bound::None);
        state.counters["virtual_s"] = virtualS;
        state.counters["start_s"] = start;
    }
}

}  // namespace

int main(int argc, char** argv) {
    for (const Run& run : {example("lap_seam"), example("flange"), example("box_stitch"), hour()}) {
        bench::add(("simulator: " + run.name + ", its run").c_str(),
                   [run](benchmark::State& state) { measure(state, run, true); });
        bench::add(("simulator: " + run.name + ", with the program's start").c_str(),
                   [run](benchmark::State& state) { measure(state, run, false); });
    }
    return bench::runFigures(argc, argv);
}
