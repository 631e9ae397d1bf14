// What a large input costs the runner: a program of 100,000 lines, and a week of the stations of the
// examples.

#include "childrun.h"
#include "sidebyside.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

constexpr char settings[] = EXAMPLES "/lap_seam";

/// A program file of so many lines: three moves and a dwell, again and again, along rows of 100 points.
class LongProgram {
public:
    explicit LongProgram(int lines) : lines_(lines) {
        char name[] = "/tmp/lumo-bench-XXXXXX";
        close(mkstemp(name));
        file_ = name;
        std::ofstream out(file_);
        out << "[";
        for (int line = 0; line < lines; ++line) {
            out << (line == 0 ? "" : ",\n") << (line % 4 == 3 ? dwell : move(line));
        }
        out << "]";
    }
    ~LongProgram() { unlink(file_.c_str()); }
    LongProgram(const LongProgram&) = delete;
    LongProgram& operator=(const LongProgram&) = delete;

    bench::Spent run() const {
        return bench::run({bench::built("lumo-run"),
                           {"--quiet", "--settings", settings, "--until", "1000000000", file_},
                           {"LC_ALL=C.UTF-8"}});
    }
    int lines() const { return lines_; }

private:
    static constexpr char dwell[] = R"({"type":"delay","delaytime":10,"execute":true,"note":""})";
    static std::string move(int line) {
        const int step = line % 200 < 100 ? line % 200 : 200 - line % 200;
        return R"({"type":"moveL","execute":true,"note":"","speed":200,"zone":1,"point":{"near":[-0.29948590475,)"
               R"(0.45527947405,0.89993853553,-0.41702239605,0.20707702319,0.10852073394],"rot":[3.05432619099,)"
               R"(0,0],"trans":[0.48,-0.17,)" +
               std::to_string(0.074 + 0.001 * step) + "]}}";
    }

    int lines_;
    std::string file_;
};

void measureLine(benchmark::State& state) {
    constexpr double most = 1.5;
    constexpr int fewRounds = 9;
    const LongProgram few(1000), many(100000);
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<double> fewS;
        for (int round = 0; round < fewRounds; ++round) {
            fewS.push_back(few.run().processorS);
        }
        const bench::Spent spent = many.run();
        if (spent.status != 0) {
            state.SkipWithError("the program does not run");
            return;
        }
        bench::report(state, spent.processorS / many.lines() / (bench::median(fewS) / few.lines()), "", most,
                      bench::Bound::AtMost);
    }
}

void measureMemory(benchmark::State& state) {
    constexpr double mostMb = 150.0;
    const LongProgram many(100000);
    for ([[maybe_unused]] auto iteration : state) {
        bench::report(state, many.run().peakMb, "MB", mostMb, bench::Bound::AtMost);
    }
}

void measureWeek(benchmark::State& state) {
    constexpr double mostS = 300.0;
    const std::string folder = EXAMPLES "/stations";
    for ([[maybe_unused]] auto iteration : state) {
        const bench::Spent spent =
            bench::run({bench::built("lumo-run"),
                        {"--quiet", "--stations", folder, "--scenario", folder + "/scenario.json", "--repeat",
                         "168", "--every", "3600000", "--until", "600000000"},
                        {"LC_ALL=C.UTF-8"}});
        bench::report(state, spent.wallS, "s", mostS, bench::Bound::AtMost);
        state.counters["peak_mb"] = spent.peakMb;
    }
}

}  // namespace

int main(int argc, char** argv) {
    bench::add("limits: run of a line of 100000 / of 1000", measureLine);
    bench::add("limits: memory of a run of 100000 lines", measureMemory);
    bench::add("limits: a week of the stations, wall clock", measureWeek);
    return bench::runFigures(argc, argv);
}
